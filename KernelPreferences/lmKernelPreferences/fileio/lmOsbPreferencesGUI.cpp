#include "lmOsbPreferencesGUI.h"

#include "OpenSG/OSGSceneFileHandler.h"
#include "OpenSGFileIO.h"
#include "lmController.h"
#include "lmFileIO.h"
#include "lmImportOptions.h"
#include "lmKeyTable.h"
#include "lmMessageHelpers.h"
#include "lmPageHelpers.h"

#include <QCoreApplication>

#include <algorithm>
#include <string>

namespace {

const char *const kPositionRes = "OsbFileIO position res";
const char *const kNormalsRes = "OsbFileIO normals res";
const char *const kTexcoordsRes = "OsbFileIO texcoords res";
const char *const kPackIndices = "OsbFileIO pack indices";
const char *const kUnpack16BitIndices = "OsbFileIO unpack 16 bit indices";
const char *const kInlineTextures = "OsbFileIO inline textures";
const char *const kTextureCompressionType = "OsbFileIO texture compression type";
const char *const kCompressQuality = "OsbFileIO compress quality";
const char *const kForceCompression = "OsbFileIO force compression";
const char *const kCompressionType = "OsbFileIO compression type";
const char *const kOldFormat = "OsbFileIO old format";
const char *const kReaderCRCTest = "OsbFileIO reader crc test";
const char *const kWriterCRCTest = "OsbFileIO writer crc test";
const char *const kCalcVsetPreviews = "VpbFileIO calc vset previews";
const char *const kShowCalcVsetPreviewsDialog = "VpbFileIO show calc vset previews dialog";
const char *const kIncrementalSave = "VpbFileIO Incremental save enabled";
const char *const kMaxIncrements = "VpbFileIO Maximal number of increments";
const char *const kExecuteScript = "VpbFileIO execute embedded script";
const char *const kShowThumbnail = "VpbFileIO show thumbnail preview";
// Retired in favour of the texture compression type; migrated on update.
const char *const kRetiredCompressTextures = "OsbFileIO compress textures";
const char *const kRetiredTexturesImageType = "OsbFileIO textures image type";

// Import behaviour of native files: keys formed like the CAD import options,
// format word and option joined without a separator.
const char *const kLUMO = "LUMO";
const char *const kOpenSG = "OpenSG";
std::string smartBehaviorKey(const char *format)
{
    return std::string(format) + "Options import smart reference behavior";
}
std::string createAsSmartKey(const char *format)
{
    return std::string(format) + "Options import create as smart";
}
const std::string kLUMOSmartBehavior = smartBehaviorKey(kLUMO);
const std::string kLUMOCreateAsSmart = createAsSmartKey(kLUMO);
const std::string kOpenSGSmartBehavior = smartBehaviorKey(kOpenSG);
const std::string kOpenSGCreateAsSmart = createAsSmartKey(kOpenSG);

bool crcTestDefault()
{
    return lmController::isEssentialsEdition();
}

const lmKeyTable kKeys{
    lmKey<int>(kPositionRes, 0),
    lmKey<int>(kNormalsRes, 0),
    lmKey<int>(kTexcoordsRes, 0),
    lmKey<bool>(kPackIndices, true),
    lmKey<bool>(kUnpack16BitIndices, true),
    lmKey<bool>(kInlineTextures, true),
    lmKey<int>(kTextureCompressionType, 0),
    lmKey<int>(kCompressQuality, 85),
    lmKey<bool>(kForceCompression, true),
    lmKey<int>(kCompressionType, 2),
    lmKey<bool>(kOldFormat, false),
    lmKeyComputed<bool>(kReaderCRCTest, crcTestDefault),
    lmKeyComputed<bool>(kWriterCRCTest, crcTestDefault),
    lmKey<bool>(kCalcVsetPreviews, true),
    lmKey<bool>(kShowCalcVsetPreviewsDialog, true),
    lmKey<bool>(kIncrementalSave, true),
    lmKey<unsigned int>(kMaxIncrements, 5u),
    lmKey<bool>(kExecuteScript, true),
    lmKey<bool>(kShowThumbnail, true),
    lmKey<int>(kLUMOSmartBehavior.c_str(), 2),
    lmKey<bool>(kLUMOCreateAsSmart.c_str(), false),
    lmKey<int>(kOpenSGSmartBehavior.c_str(), 2),
    lmKey<bool>(kOpenSGCreateAsSmart.c_str(), false),
    lmKeyWithoutDefault<bool>(kRetiredCompressTextures),
    lmKeyWithoutDefault<std::string>(kRetiredTexturesImageType),
};

// Texture compression combo.
const int kTextureNone = 0;
const int kTextureLossless = 1;
const int kTextureLossy = 2;

// The stored compression type is one below the writer's numbering, except
// for 2, the old "fast" value, which the writer already understands.
int writerCompressionType(int stored)
{
    switch (stored) {
    case 0:
        return 1;
    case 1:
        return 2;
    case 3:
        return 4;
    case 4:
        return 5;
    default:
        return stored;
    }
}

// File compression combo: "Off", "Fast", "Best".
const int kStoredCompression[] = {0, 1, 3};
const int kWriterOff = 1;
const int kWriterFast = 2;
const int kWriterBest = 4;

// Import behaviour combo: "Keep References", "Remove References".
const int kKeepReferences = lmImportOptions::KeepReferences;
const int kRemoveReferences = lmImportOptions::RemoveReferences;

void setIndex(QComboBox *combo, const char *key, lmLoadedValues &loaded)
{
    int index = 0;
    if (!getFromMessage(lmPreferences::getData(), key, index))
        return;
    if (index >= 0 && index < combo->count())
        combo->setCurrentIndex(index);
    loaded.loaded(key, combo, index);
}

// Read only so that a mistyped key is reported; the writer takes these
// settings from elsewhere.
template <class T>
void readUnused(const lmMessage &data, const char *key)
{
    T value{};
    getFromMessage(data, key, value);
}

} // namespace

lmOsbPreferencesGUII::lmOsbPreferencesGUII()
    : QObject(nullptr),
      lmPreferences(QCoreApplication::translate("lmPreferences", "FileIO"), QStringLiteral("OSB / VPB")),
      m_page(new lmOsbPreferencesGUIW)
{
    addPreferencesGUI(m_page);

    connect(m_page->_image_type, QOverload<int>::of(&QComboBox::activated), this,
            &lmOsbPreferencesGUII::changedTextureCompression);
    connect(m_page->_incrementalSave, &QAbstractButton::toggled, this, &lmOsbPreferencesGUII::toggledIncrementalSave);
    changedTextureCompression(m_page->_image_type->currentIndex());
    toggledIncrementalSave(m_page->_incrementalSave->isChecked());

    if (lmController::isEssentialsEdition()) {
        m_page->_inline_textures_frame->hide();
        m_page->_validate->hide();
        m_page->_reader_frame->hide();
    }
}

lmOsbPreferencesGUII::~lmOsbPreferencesGUII()
{
    kKeys.removeFrom(getData());
    subPreferencesGUI(m_page);
    delete m_page;
}

void lmOsbPreferencesGUII::setDefault(lmMessage &, bool overwrite)
{
    kKeys.writeDefaults(getData(), overwrite);
}

void lmOsbPreferencesGUII::apply()
{
    const lmMessage &data = getData();
    const bool essentials = lmController::isEssentialsEdition();

    readUnused<int>(data, kPositionRes);
    readUnused<int>(data, kNormalsRes);
    readUnused<int>(data, kTexcoordsRes);
    readUnused<bool>(data, kPackIndices);
    readUnused<bool>(data, kUnpack16BitIndices);
    bool inlineTextures = true;
    getFromMessage(data, kInlineTextures, inlineTextures);
    if (essentials)
        inlineTextures = true;
    int textureCompression = kTextureNone;
    getFromMessage(data, kTextureCompressionType, textureCompression);
    int quality = 75;
    getFromMessage(data, kCompressQuality, quality);
    readUnused<bool>(data, kForceCompression);

    int compressionType = 2;
    getFromMessage(data, kCompressionType, compressionType);
    OpenSGFileIO::the().setCompressionType(essentials ? kWriterFast : writerCompressionType(compressionType));

    bool oldFormat = false;
    getFromMessage(data, kOldFormat, oldFormat);
    OpenSGFileIO::the().setNewFormat(!oldFormat);

    // A missing writer key takes the reader's value.
    bool crcTest = false;
    getFromMessage(data, kReaderCRCTest, crcTest);
    lmFileIO::setReaderCRCTest(essentials ? true : crcTest);
    getFromMessage(data, kWriterCRCTest, crcTest);
    lmFileIO::setWriterCRCTest(essentials ? true : crcTest);

    // The writer always packs indices its own way.
    std::string options = "packIndices=false,unpack16BitIndices=true,";
    options += inlineTextures ? "inlineTextures=true," : "inlineTextures=false,";
    if (textureCompression < kTextureLossless) {
        options += "compressTextures=false";
    } else {
        options += "compressTextures=true,";
        options += "texturesCompressionQuality=" + std::to_string(quality) + ",";
        options += textureCompression == kTextureLossless ? "texturesImageType=png" : "texturesImageType=jpeg";
    }
    osg::SceneFileHandler::the().setOptions("osb", options.c_str());

    bool flag = false;
    if (getFromMessage(data, kIncrementalSave, flag))
        lmFileIO::enableIncrementalSave(flag);
    unsigned int maxIncrements = 0;
    if (getFromMessage(data, kMaxIncrements, maxIncrements))
        lmFileIO::setIncrementalSaveLimit(maxIncrements);
    if (getFromMessage(data, kExecuteScript, flag))
        lmFileIO::setExecuteEmbeddedScript(flag);
    if (getFromMessage(data, kShowThumbnail, flag))
        lmFileIO::setShowPreviewHint(flag);

    // Both native formats import the way the LUMO keys say; the OpenSG keys
    // are kept for the store's sake only. An unreadable behaviour counts as 0,
    // which removes references.
    int smartBehavior = 0;
    getFromMessage(data, kLUMOSmartBehavior, smartBehavior);
    bool createAsSmart = false;
    getFromMessage(data, kLUMOCreateAsSmart, createAsSmart);
    for (const char *format : {kLUMO, kOpenSG}) {
        lmImportOptions importOptions(format, true, true);
        importOptions.setSmartReferenceBehavior(smartBehavior == kKeepReferences ? lmImportOptions::KeepReferences
                                                                                 : lmImportOptions::RemoveReferences);
        importOptions.setImportAsSmartReference(createAsSmart);
        importOptions.write();
    }
}

void lmOsbPreferencesGUII::updateGUI()
{
    lmMessage &data = getData();
    lmOsbPreferencesGUIW *page = m_page;

    m_loaded.clear();
    setIndex(page->_positions_res, kPositionRes, m_loaded);
    setIndex(page->_normals_res, kNormalsRes, m_loaded);
    setIndex(page->_texcoords_res, kTexcoordsRes, m_loaded);
    lmCheckFromStore(page->_inline_textures, kInlineTextures);
    int number = 0;
    if (getFromMessage(data, kCompressQuality, number)) {
        page->_compress_quality->setValue(number);
        m_loaded.loaded(kCompressQuality, page->_compress_quality, number);
    }
    lmCheckFromStore(page->_crc, kReaderCRCTest);
    lmCheckFromStore(page->_validate, kWriterCRCTest);
    lmCheckFromStore(page->_old_format, kOldFormat);
    lmCheckFromStore(page->_calc_missing_previews, kCalcVsetPreviews);
    lmCheckFromStore(page->_incrementalSave, kIncrementalSave);
    unsigned int maxIncrements = 0;
    if (getFromMessage(data, kMaxIncrements, maxIncrements))
        page->_incrementLimit->setValue(int(std::min(maxIncrements, unsigned(page->_incrementLimit->maximum()))));
    lmCheckFromStore(page->_execute_script, kExecuteScript);
    lmCheckFromStore(page->_show_thumbnail_preview, kShowThumbnail);

    page->m_importBehavior->clear();
    page->m_importBehavior->addItems({tr("Keep References"), tr("Remove References")});
    if (getFromMessage(data, kLUMOSmartBehavior, number))
        page->m_importBehavior->setCurrentIndex(number == kKeepReferences ? 0 : 1);
    lmCheckFromStore(page->m_importAsSmart, kLUMOCreateAsSmart);

    // Stores written before the compression type existed carry a flag and an
    // image type instead; they are converted once and dropped.
    bool compressTextures = false;
    std::string imageType;
    if (getFromMessage(data, kRetiredCompressTextures, compressTextures)
        && getFromMessage(data, kRetiredTexturesImageType, imageType)) {
        data.remove(kRetiredCompressTextures);
        data.remove(kRetiredTexturesImageType);
        page->_image_type->setCurrentIndex(!compressTextures ? kTextureNone
                                           : imageType == "png" ? kTextureLossless
                                                                : kTextureLossy);
    } else {
        setIndex(page->_image_type, kTextureCompressionType, m_loaded);
    }
    changedTextureCompression(page->_image_type->currentIndex());

    if (getFromMessage(data, kCompressionType, number)) {
        switch (lmController::isEssentialsEdition() ? kWriterFast : writerCompressionType(number)) {
        case kWriterOff:
            page->_compression->setCurrentIndex(0);
            break;
        case kWriterFast:
            page->_compression->setCurrentIndex(1);
            break;
        case kWriterBest:
            page->_compression->setCurrentIndex(2);
            break;
        default:
            break;
        }
    }
    toggledIncrementalSave(page->_incrementalSave->isChecked());
}

void lmOsbPreferencesGUII::storeGUI()
{
    const lmOsbPreferencesGUIW *page = m_page;
    const bool essentials = lmController::isEssentialsEdition();

    const auto index = [this](const char *key, const QComboBox *combo) {
        return m_loaded.value(key, combo, combo->currentIndex());
    };
    lmStorePlain(kPositionRes, index(kPositionRes, page->_positions_res));
    lmStorePlain(kNormalsRes, index(kNormalsRes, page->_normals_res));
    lmStorePlain(kTexcoordsRes, index(kTexcoordsRes, page->_texcoords_res));
    lmStorePlain(kInlineTextures, page->_inline_textures->isChecked());
    lmStorePlain(kCompressQuality,
                 m_loaded.value(kCompressQuality, page->_compress_quality, page->_compress_quality->value()));
    lmStorePlain(kTextureCompressionType, index(kTextureCompressionType, page->_image_type));

    const int compressionIndex = page->_compression->currentIndex();
    int compressionType = compressionIndex >= 0 && compressionIndex < 3 ? kStoredCompression[compressionIndex]
                                                                        : compressionIndex;
    if (essentials)
        compressionType = 1;
    lmStorePlain(kCompressionType, compressionType);
    lmStorePlain(kForceCompression, compressionType != 1);

    lmStorePlain(kOldFormat, page->_old_format->isChecked());
    lmStorePlain(kReaderCRCTest, essentials || page->_crc->isChecked());
    lmStorePlain(kWriterCRCTest, essentials || page->_validate->isChecked());
    lmStorePlain(kCalcVsetPreviews, page->_calc_missing_previews->isChecked());
    lmStorePlain(kIncrementalSave, page->_incrementalSave->isChecked());
    lmStorePlain(kMaxIncrements, unsigned(page->_incrementLimit->value()));
    lmStorePlain(kExecuteScript, page->_execute_script->isChecked());
    lmStorePlain(kShowThumbnail, page->_show_thumbnail_preview->isChecked());

    const int smartBehavior = page->m_importBehavior->currentIndex() == 0 ? kKeepReferences : kRemoveReferences;
    const bool createAsSmart = page->m_importAsSmart->isChecked();
    lmStorePlain(kLUMOSmartBehavior, smartBehavior);
    lmStorePlain(kOpenSGSmartBehavior, smartBehavior);
    lmStorePlain(kLUMOCreateAsSmart, createAsSmart);
    lmStorePlain(kOpenSGCreateAsSmart, createAsSmart);
}

void lmOsbPreferencesGUII::changedTextureCompression(int index)
{
    // Only the lossy format takes a quality.
    m_page->_compress_quality->setEnabled(index == kTextureLossy);
}

void lmOsbPreferencesGUII::toggledIncrementalSave(bool on)
{
    m_page->_incrementLimit->setEnabled(on);
}

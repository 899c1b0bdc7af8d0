#include "lmOsbPreferencesGUI.h"

#include "OpenSG/OSGSceneFileHandler.h"
#include "OpenSGFileIO.h"
#include "lmController.h"
#include "lmFileTypePreferences.h"
#include "lmFileIO.h"
#include "lmImportOptions.h"

#include <QCoreApplication>

#include <algorithm>
#include <string>

namespace {

const lmTypedKey<int> kPositionRes{"OsbFileIO position res", 0};
const lmTypedKey<int> kNormalsRes{"OsbFileIO normals res", 0};
const lmTypedKey<int> kTexcoordsRes{"OsbFileIO texcoords res", 0};
const lmTypedKey<bool> kPackIndices{"OsbFileIO pack indices", true};
const lmTypedKey<bool> kUnpack16BitIndices{"OsbFileIO unpack 16 bit indices", true};
const lmTypedKey<bool> kInlineTextures{"OsbFileIO inline textures", true};
const lmTypedKey<int> kTextureCompressionType{"OsbFileIO texture compression type", 0};
const lmTypedKey<int> kCompressQuality{"OsbFileIO compress quality", 85};
const lmTypedKey<bool> kForceCompression{"OsbFileIO force compression", true};
const lmTypedKey<int> kCompressionType{"OsbFileIO compression type", 2};
const lmTypedKey<bool> kOldFormat{"OsbFileIO old format", false};
// The two CRC defaults depend on the edition; the table computes them.
const lmTypedKey<bool> kReaderCRCTest{"OsbFileIO reader crc test", false};
const lmTypedKey<bool> kWriterCRCTest{"OsbFileIO writer crc test", false};
const lmTypedKey<bool> kCalcVsetPreviews{"VpbFileIO calc vset previews", true};
const lmTypedKey<bool> kShowCalcVsetPreviewsDialog{"VpbFileIO show calc vset previews dialog", true};
const lmTypedKey<bool> kIncrementalSave{"VpbFileIO Incremental save enabled", true};
const lmTypedKey<unsigned int> kMaxIncrements{"VpbFileIO Maximal number of increments", 5u};
const lmTypedKey<bool> kExecuteScript{"VpbFileIO execute embedded script", true};
const lmTypedKey<bool> kShowThumbnail{"VpbFileIO show thumbnail preview", true};
// Retired in favour of the texture compression type; migrated on update.
const char *const kRetiredCompressTextures = "OsbFileIO compress textures";
const char *const kRetiredTexturesImageType = "OsbFileIO textures image type";

// Import behaviour of the native formats: the CAD file-type base names their
// keys as it names every other format's.
const std::string kLUMO = lmFileTypePreferences::typeName(lmCADFileTypes::LUMO);
const std::string kOpenSG = lmFileTypePreferences::typeName(lmCADFileTypes::OpenSG);
const std::string kLUMOSmartBehavior = lmFileTypePreferences::smartReferenceBehaviorKey(lmCADFileTypes::LUMO);
const std::string kLUMOCreateAsSmart = lmFileTypePreferences::createAsSmartKey(lmCADFileTypes::LUMO);
const std::string kOpenSGSmartBehavior = lmFileTypePreferences::smartReferenceBehaviorKey(lmCADFileTypes::OpenSG);
const std::string kOpenSGCreateAsSmart = lmFileTypePreferences::createAsSmartKey(lmCADFileTypes::OpenSG);
const lmTypedKey<int> kLUMOSmart{kLUMOSmartBehavior.c_str(), 2};
const lmTypedKey<bool> kLUMOSmartCreate{kLUMOCreateAsSmart.c_str(), false};
const lmTypedKey<int> kOpenSGSmart{kOpenSGSmartBehavior.c_str(), 2};
const lmTypedKey<bool> kOpenSGSmartCreate{kOpenSGCreateAsSmart.c_str(), false};

bool crcTestDefault()
{
    return lmController::isEssentialsEdition();
}

const lmKeyTable kKeys{
    kPositionRes,
    kNormalsRes,
    kTexcoordsRes,
    kPackIndices,
    kUnpack16BitIndices,
    kInlineTextures,
    kTextureCompressionType,
    kCompressQuality,
    kForceCompression,
    kCompressionType,
    kOldFormat,
    lmKeyComputed<bool>(kReaderCRCTest, crcTestDefault),
    lmKeyComputed<bool>(kWriterCRCTest, crcTestDefault),
    kCalcVsetPreviews,
    kShowCalcVsetPreviewsDialog,
    kIncrementalSave,
    kMaxIncrements,
    kExecuteScript,
    kShowThumbnail,
    kLUMOSmart,
    kLUMOSmartCreate,
    kOpenSGSmart,
    kOpenSGSmartCreate,
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

// Read only so that a mistyped key is reported; the writer takes these
// settings from elsewhere.
template <class T>
void readUnused(const lmMessage &data, const lmTypedKey<T> &key)
{
    T value{};
    key.read(data, value);
}

// Forced on in the essentials edition.
bool onInEssentials(bool on)
{
    return on || lmController::isEssentialsEdition();
}

} // namespace

lmOsbPreferencesGUII::lmOsbPreferencesGUII()
    : QObject(nullptr),
      lmPreferencesPage(this, QCoreApplication::translate("lmPreferences", "FileIO"), QStringLiteral("OSB / VPB"),
                        kKeys)
{
    // Plain writes: apply pushes every readable key anyway. An index the
    // combo does not offer leaves the choice as it is.
    bindings.writeFromHere(lmPageBindings::Plain);
    bindings.bind(kPositionRes, page()->_positions_res, lmIfNoItem::Keep);
    bindings.bind(kNormalsRes, page()->_normals_res, lmIfNoItem::Keep);
    bindings.bind(kTexcoordsRes, page()->_texcoords_res, lmIfNoItem::Keep);
    bindings.bind(kInlineTextures, page()->_inline_textures);
    bindings.bind(kCompressQuality, page()->_compress_quality);
    const auto checked = [](const QAbstractButton *button) { return button->isChecked(); };
    const auto check = [](QAbstractButton *button, bool on) { button->setChecked(on); };
    bindings.bind(kReaderCRCTest, page()->_crc, check, checked, onInEssentials);
    bindings.bind(kWriterCRCTest, page()->_validate, check, checked, onInEssentials);
    bindings.bind(kOldFormat, page()->_old_format);
    bindings.bind(kCalcVsetPreviews, page()->_calc_missing_previews);
    bindings.bind(kIncrementalSave, page()->_incrementalSave);
    // A limit beyond the spin box shows its maximum and stores it.
    bindings.bindShown(
        kMaxIncrements, page()->_incrementLimit,
        [](QSpinBox *spin, unsigned int limit) { spin->setValue(int(std::min(limit, unsigned(spin->maximum())))); },
        [](const QSpinBox *spin) { return unsigned(spin->value()); });
    bindings.bind(kExecuteScript, page()->_execute_script);
    bindings.bind(kShowThumbnail, page()->_show_thumbnail_preview);
    // The texture compression, the file compression and the import behaviour
    // are loaded and stored by hand; their forms name their keys.

    addPreferencesGUI(page());

    connect(page()->_image_type, QOverload<int>::of(&QComboBox::activated), this,
            &lmOsbPreferencesGUII::changedTextureCompression);
    connect(page()->_incrementalSave, &QAbstractButton::toggled, this, &lmOsbPreferencesGUII::toggledIncrementalSave);
    changedTextureCompression(page()->_image_type->currentIndex());
    toggledIncrementalSave(page()->_incrementalSave->isChecked());

    if (lmController::isEssentialsEdition()) {
        page()->_inline_textures_frame->hide();
        page()->_validate->hide();
        page()->_reader_frame->hide();
    }
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
    kInlineTextures.read(data, inlineTextures);
    if (essentials)
        inlineTextures = true;
    int textureCompression = kTextureNone;
    kTextureCompressionType.read(data, textureCompression);
    int quality = 75;
    kCompressQuality.read(data, quality);
    readUnused<bool>(data, kForceCompression);

    int compressionType = 2;
    kCompressionType.read(data, compressionType);
    OpenSGFileIO::the().setCompressionType(essentials ? kWriterFast : writerCompressionType(compressionType));

    bool oldFormat = false;
    kOldFormat.read(data, oldFormat);
    OpenSGFileIO::the().setNewFormat(!oldFormat);

    // A missing writer key takes the reader's value.
    bool crcTest = false;
    kReaderCRCTest.read(data, crcTest);
    lmFileIO::setReaderCRCTest(essentials ? true : crcTest);
    kWriterCRCTest.read(data, crcTest);
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
    if (kIncrementalSave.read(data, flag))
        lmFileIO::enableIncrementalSave(flag);
    unsigned int maxIncrements = 0;
    if (kMaxIncrements.read(data, maxIncrements))
        lmFileIO::setIncrementalSaveLimit(maxIncrements);
    if (kExecuteScript.read(data, flag))
        lmFileIO::setExecuteEmbeddedScript(flag);
    if (kShowThumbnail.read(data, flag))
        lmFileIO::setShowPreviewHint(flag);

    // Both native formats import the way the LUMO keys say; the OpenSG keys
    // are kept for the store's sake only. An unreadable behaviour counts as 0,
    // which removes references.
    int smartBehavior = 0;
    kLUMOSmart.read(data, smartBehavior);
    bool createAsSmart = false;
    kLUMOSmartCreate.read(data, createAsSmart);
    for (const std::string &format : {kLUMO, kOpenSG}) {
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
    lmOsbPreferencesGUIW *page = this->page();
    lmLoadedValues &loaded = bindings.loaded();

    loadBound();

    int number = 0;
    page->m_importBehavior->clear();
    page->m_importBehavior->addItems({tr("Keep References"), tr("Remove References")});
    if (kLUMOSmart.read(data, number))
        page->m_importBehavior->setCurrentIndex(number == kKeepReferences ? 0 : 1);
    bool createAsSmart = false;
    if (kLUMOSmartCreate.read(data, createAsSmart))
        page->m_importAsSmart->setChecked(createAsSmart);

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
    } else if (kTextureCompressionType.read(data, number)) {
        lmSelectIndex(page->_image_type, number, lmIfNoItem::Keep);
        loaded.loaded(kTextureCompressionType.name, page->_image_type, number);
    }
    changedTextureCompression(page->_image_type->currentIndex());

    if (kCompressionType.read(data, number)) {
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
    const lmOsbPreferencesGUIW *page = this->page();

    storeBound();

    storePlain(kTextureCompressionType, bindings.loaded().value(kTextureCompressionType.name, page->_image_type,
                                                                page->_image_type->currentIndex()));

    const int compressionIndex = page->_compression->currentIndex();
    int compressionType = compressionIndex >= 0 && compressionIndex < 3 ? kStoredCompression[compressionIndex]
                                                                        : compressionIndex;
    if (lmController::isEssentialsEdition())
        compressionType = 1;
    storePlain(kCompressionType, compressionType);
    storePlain(kForceCompression, compressionType != 1);

    const int smartBehavior = page->m_importBehavior->currentIndex() == 0 ? kKeepReferences : kRemoveReferences;
    const bool createAsSmart = page->m_importAsSmart->isChecked();
    storePlain(kLUMOSmart, smartBehavior);
    storePlain(kOpenSGSmart, smartBehavior);
    storePlain(kLUMOSmartCreate, createAsSmart);
    storePlain(kOpenSGSmartCreate, createAsSmart);
}

void lmOsbPreferencesGUII::changedTextureCompression(int index)
{
    // Only the lossy format takes a quality.
    page()->_compress_quality->setEnabled(index == kTextureLossy);
}

void lmOsbPreferencesGUII::toggledIncrementalSave(bool on)
{
    page()->_incrementLimit->setEnabled(on);
}

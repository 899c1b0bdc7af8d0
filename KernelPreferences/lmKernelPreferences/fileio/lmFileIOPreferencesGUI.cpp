#include "lmFileIOPreferencesGUI.h"

#include "lmCADFileTypes.h"
#include "lmController.h"
#include "lmFile.h"
#include "lmFileIO.h"
#include "lmKeyTable.h"
#include "lmMessageHelpers.h"
#include "lmPageHelpers.h"
#include "lmPlatform.h"
#include "lmTexSearch.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QSettings>

#include <string>
#include <vector>

namespace {

const char *const kVerifyGeometry = "Loader verify geometry only";
const char *const kCompressTextureMode = "Loader compress texture mode";
const char *const kCompressTextureSize = "Loader compress texture size";
const char *const kOptimizeGeometry = "Loader optimize geometry";
const char *const kParallelLoading = "Loader parallel loading";
const char *const kTmpPath = "FileIO tmp path";
const char *const kShowDialog = "FileIO show dialog";
const char *const kCloseDialogOnSuccess = "FileIO close dialog on successful import";
const char *const kReferenceBehavior = "FileIO dialog reference behavior";
const char *const kMergeMaterials = "FileIO dialog merge materials";
const char *const kCenterInOrigin = "FileIO dialog center in origin";
const char *const kPutOnGround = "FileIO dialog put on ground";
const char *const kMaxParallelTasks = "BCADOptions max parallel tasks";
const char *const kConverterOutputFormat = "FileIO converter output format";
const char *const kTextureSearchPaths = "texture search paths";
// Retired: no longer written, still cleared from stores that carry it.
const char *const kCreateUberMaterials = "FileIO create uber materials";

const lmKeyTable kKeys{
    lmKey<bool>(kVerifyGeometry, true),
    lmKey<int>(kCompressTextureMode, 1),
    lmKey<int>(kCompressTextureSize, 128),
    lmKey<bool>(kOptimizeGeometry, false),
    lmKey<bool>(kParallelLoading, false),
    lmKey<QString>(kTmpPath, QString()),
    lmKey<bool>(kShowDialog, true),
    lmKey<bool>(kCloseDialogOnSuccess, true),
    lmKey<int>(kReferenceBehavior, 1),
    lmKey<bool>(kMergeMaterials, false),
    lmKey<bool>(kCenterInOrigin, false),
    lmKey<bool>(kPutOnGround, false),
    lmKey<int>(kMaxParallelTasks, 4),
    lmKey<std::string>(kConverterOutputFormat, std::string("OpenSG")),
    lmKeyWithoutDefault<std::vector<std::string>>(kTextureSearchPaths),
    lmKeyWithoutDefault<bool>(kCreateUberMaterials),
};

const char *const kLUMOFormat = "LUMO";
const char *const kTmpDirVariable = "LUMO_FILEIO_TMP_DIR";
const char *const kCloseOnSuccessSetting = "importDialog/closeOnSuccess";
const int kReferenceCreate = 1;
const int kConverterLUMOIndex = 1;



} // namespace

lmFileIOPreferencesGUII::lmFileIOPreferencesGUII()
    : QObject(nullptr),
      lmPreferences(QCoreApplication::translate("lmPreferences", "FileIO"),
                    QCoreApplication::translate("lmPreferences", "FileIO")),
      m_page(new lmFileIOPreferencesGUIW)
{
    m_page->_texturepaths->setHorizontalHeaderLabels({tr("Path")});
    m_page->_texturepaths->setSortingEnabled(true);
    m_page->_texturepaths->sortByColumn(0, Qt::AscendingOrder);

    addPreferencesGUI(m_page);

    connect(m_page->_add_button, &QAbstractButton::clicked, this, &lmFileIOPreferencesGUII::clickedAdd);
    connect(m_page->_sub_button, &QAbstractButton::clicked, this, &lmFileIOPreferencesGUII::clickedSub);
    connect(m_page->_tmp_path_button, &QAbstractButton::clicked, this, &lmFileIOPreferencesGUII::clickedGetTmpPath);
}

lmFileIOPreferencesGUII::~lmFileIOPreferencesGUII()
{
    kKeys.removeFrom(getData());
    subPreferencesGUI(m_page);
    delete m_page;
}

void lmFileIOPreferencesGUII::setDefault(lmMessage &, bool overwrite)
{
    kKeys.writeDefaults(getData(), overwrite);
}

void lmFileIOPreferencesGUII::apply()
{
    const lmMessage &data = getData();

    // The host reads the paths from the store itself.
    lmTexSearch::set();

    bool verifyGeometry = true;
    if (getFromMessage(data, kVerifyGeometry, verifyGeometry))
        lmFileIO::enableVerifyGeometry(verifyGeometry);
    bool optimizeGeometry = false;
    if (getFromMessage(data, kOptimizeGeometry, optimizeGeometry))
        lmFileIO::enableOptimizeGeometry(optimizeGeometry);

    lmFileIO::enableOptimizeTransparencies(false);
    lmFileIO::setShowFileIOProgress(true);

    // The folder is taken from the page as typed; a missing folder is kept
    // in the preferences but never handed to the converters.
    const QString tmpPath = m_page->_tmp_path->text();
    const QByteArray tmpPathUtf8 = tmpPath.toUtf8();
    if (tmpPath.isEmpty() || lmFile::exists(tmpPathUtf8.toStdString()))
        qputenv(kTmpDirVariable, tmpPathUtf8);
    else
        lmLog::error(QStringLiteral("FileIO preferences: tmp path doesn't exist!"));

    bool showDialog = true;
    if (getFromMessage(data, kShowDialog, showDialog))
        lmController::setShowImportOptions(showDialog);

    bool closeOnSuccess = true;
    if (getFromMessage(data, kCloseDialogOnSuccess, closeOnSuccess)) {
        // Rewriting an equal value would still rewrite the settings file on
        // every accept.
        QSettings settings;
        const QString key = QLatin1String(kCloseOnSuccessSetting);
        if (!settings.contains(key) || settings.value(key).toBool() != closeOnSuccess)
            settings.setValue(key, closeOnSuccess);
    }

    int referenceBehavior = 1;
    if (getFromMessage(data, kReferenceBehavior, referenceBehavior))
        lmFileIO::setImportCreateReferences(referenceBehavior == kReferenceCreate);
    bool mergeMaterials = false;
    if (getFromMessage(data, kMergeMaterials, mergeMaterials))
        lmFileIO::setImportMergeMaterials(mergeMaterials);
    bool centerInOrigin = false;
    if (getFromMessage(data, kCenterInOrigin, centerInOrigin))
        lmController::setImportOptionsCenterInOrigin(centerInOrigin);
    bool putOnGround = false;
    if (getFromMessage(data, kPutOnGround, putOnGround))
        lmController::setImportOptionsPutOnGround(putOnGround);
    int maxParallelTasks = 4;
    if (getFromMessage(data, kMaxParallelTasks, maxParallelTasks))
        lmFileIO::setMaxParallelImportTasks(maxParallelTasks);

    std::string converterFormat = "OpenSG";
    if (getFromMessage(data, kConverterOutputFormat, converterFormat))
        lmFileIO::setConverterOutputFormat(converterFormat == kLUMOFormat ? lmCADFileTypes::LUMO
                                                                          : lmCADFileTypes::OpenSG);
}

void lmFileIOPreferencesGUII::updateGUI()
{
    const lmMessage &data = getData();
    lmFileIOPreferencesGUIW *page = m_page;

    page->_texturepaths->setRowCount(0);
    std::vector<std::string> paths;
    if (getFromMessage(data, kTextureSearchPaths, paths)) {
        page->_texturepaths->setSortingEnabled(false);
        for (const std::string &path : paths)
            addTexturePathRow(QString::fromStdString(path));
        page->_texturepaths->setSortingEnabled(true);
    }

    lmCheckFromStore(page->_verify_geometry, kVerifyGeometry);
    lmCheckFromStore(page->_optimize_geometry, kOptimizeGeometry);

    m_loaded.clear();
    int number = 0;
    if (getFromMessage(data, kCompressTextureMode, number)) {
        if (number >= 0 && number < page->_texture_compression_mode->count())
            page->_texture_compression_mode->setCurrentIndex(number);
        m_loaded.loaded(kCompressTextureMode, page->_texture_compression_mode, number);
    }
    if (getFromMessage(data, kCompressTextureSize, number)) {
        // A size the combo does not offer leaves the choice as it is.
        const int index = page->_texture_compression_size->findText(QString::number(number, 10));
        if (index >= 0)
            page->_texture_compression_size->setCurrentIndex(index);
        m_loaded.loaded(kCompressTextureSize, page->_texture_compression_size, number);
    }
    if (getFromMessage(data, kMaxParallelTasks, number)) {
        page->_max_procs->setValue(number);
        m_loaded.loaded(kMaxParallelTasks, page->_max_procs, number);
    }

    QString tmpPath;
    if (getFromMessage(data, kTmpPath, tmpPath))
        page->_tmp_path->setText(tmpPath);

    lmCheckFromStore(page->_showImportDialog, kShowDialog);
    lmCheckFromStore(page->_closeDialogOnSuccessfulImport, kCloseDialogOnSuccess);
    if (getFromMessage(data, kReferenceBehavior, number))
        page->_referenceBehavior->setCurrentIndex(number == kReferenceCreate ? 1 : 0);
    lmCheckFromStore(page->_importMergeMaterials, kMergeMaterials);
    lmCheckFromStore(page->_importCenterInOrigin, kCenterInOrigin);
    lmCheckFromStore(page->_importPutOnGround, kPutOnGround);

    std::string converterFormat;
    if (getFromMessage(data, kConverterOutputFormat, converterFormat))
        page->m_converterOutputFormat->setCurrentIndex(converterFormat == kLUMOFormat ? kConverterLUMOIndex : 0);
}

void lmFileIOPreferencesGUII::storeGUI()
{
    const lmFileIOPreferencesGUIW *page = m_page;

    std::vector<std::string> paths;
    for (int row = 0; row < page->_texturepaths->rowCount(); ++row)
        if (const QTableWidgetItem *item = page->_texturepaths->item(row, 0))
            paths.push_back(item->text().toUtf8().toStdString());
    // No paths means no key, not an empty list.
    if (paths.empty())
        getData().remove(kTextureSearchPaths);
    else
        lmStorePlain(kTextureSearchPaths, paths);

    lmStorePlain(kVerifyGeometry, page->_verify_geometry->isChecked());
    lmStorePlain(kOptimizeGeometry, page->_optimize_geometry->isChecked());
    lmStorePlain(kCompressTextureMode, m_loaded.value(kCompressTextureMode, page->_texture_compression_mode,
                                                      page->_texture_compression_mode->currentIndex()));
    lmStorePlain(kCompressTextureSize,
                 m_loaded.value(kCompressTextureSize, page->_texture_compression_size,
                                page->_texture_compression_size->currentText().toInt(nullptr, 10)));
    lmStorePlain(kMaxParallelTasks, m_loaded.value(kMaxParallelTasks, page->_max_procs, page->_max_procs->value()));

    lmStorePlain(kConverterOutputFormat,
          std::string(page->m_converterOutputFormat->currentIndex() == kConverterLUMOIndex ? kLUMOFormat : "OpenSG"));

    lmStorePlain(kTmpPath, page->_tmp_path->text());

    lmStorePlain(kShowDialog, page->_showImportDialog->isChecked());
    lmStorePlain(kCloseDialogOnSuccess, page->_closeDialogOnSuccessfulImport->isChecked());
    lmStorePlain(kReferenceBehavior, page->_referenceBehavior->currentIndex());
    lmStorePlain(kMergeMaterials, page->_importMergeMaterials->isChecked());
    lmStorePlain(kCenterInOrigin, page->_importCenterInOrigin->isChecked());
    lmStorePlain(kPutOnGround, page->_importPutOnGround->isChecked());
}

void lmFileIOPreferencesGUII::addTexturePathRow(const QString &path)
{
    QTableWidget *table = m_page->_texturepaths;
    const int row = table->rowCount();
    table->insertRow(row);
    table->setRowHeight(row, 20);
    auto *item = new QTableWidgetItem(path);
    item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    table->setItem(row, 0, item);
}

void lmFileIOPreferencesGUII::clickedAdd()
{
    const QString path = QFileDialog::getExistingDirectory(m_page, tr("Select Texture Search Directory"),
                                                           QDir::currentPath(), QFileDialog::ShowDirsOnly);
    if (path.isEmpty())
        return;

    QTableWidget *table = m_page->_texturepaths;
    for (int row = 0; row < table->rowCount(); ++row) {
        const QTableWidgetItem *item = table->item(row, 0);
        if (item && item->text() == path) {
            QMessageBox::information(m_page, lmPlatform::getVersionName(), tr("Path already inserted!"),
                                     QMessageBox::Ok);
            return;
        }
    }

    table->setSortingEnabled(false);
    addTexturePathRow(path);
    table->setSortingEnabled(true);
}

void lmFileIOPreferencesGUII::clickedSub()
{
    // Only the first selected row goes, however many are selected.
    const QList<QTableWidgetItem *> selected = m_page->_texturepaths->selectedItems();
    if (!selected.isEmpty())
        m_page->_texturepaths->removeRow(selected.first()->row());
}

void lmFileIOPreferencesGUII::clickedGetTmpPath()
{
    // A cancelled chooser returns an empty path, which clears the field.
    m_page->_tmp_path->setText(QFileDialog::getExistingDirectory(m_page, tr("Select Temporary File Path"),
                                                                 m_page->_tmp_path->text()));
}

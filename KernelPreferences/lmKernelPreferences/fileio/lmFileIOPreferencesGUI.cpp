#include "lmFileIOPreferencesGUI.h"

#include "lmCADFileTypes.h"
#include "lmController.h"
#include "lmFile.h"
#include "lmFileIO.h"
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

const lmTypedKey<bool> kVerifyGeometry{"Loader verify geometry only", true};
const lmTypedKey<int> kCompressTextureMode{"Loader compress texture mode", 1};
const lmTypedKey<int> kCompressTextureSize{"Loader compress texture size", 128};
const lmTypedKey<bool> kOptimizeGeometry{"Loader optimize geometry", false};
const lmTypedKey<bool> kParallelLoading{"Loader parallel loading", false};
const lmTypedKey<QString> kTmpPath{"FileIO tmp path", QString()};
const lmTypedKey<bool> kShowDialog{"FileIO show dialog", true};
const lmTypedKey<bool> kCloseDialogOnSuccess{"FileIO close dialog on successful import", true};
const lmTypedKey<int> kReferenceBehavior{"FileIO dialog reference behavior", 1};
const lmTypedKey<bool> kMergeMaterials{"FileIO dialog merge materials", false};
const lmTypedKey<bool> kCenterInOrigin{"FileIO dialog center in origin", false};
const lmTypedKey<bool> kPutOnGround{"FileIO dialog put on ground", false};
const lmTypedKey<int> kMaxParallelTasks{"BCADOptions max parallel tasks", 4};
const lmTypedKey<std::string> kConverterOutputFormat{"FileIO converter output format", std::string("OpenSG")};
// Written only while the table holds paths.
const lmTypedKey<std::vector<std::string>> kTextureSearchPaths{"texture search paths", {}};
// Retired: no longer written, still cleared from stores that carry it.
const char *const kCreateUberMaterials = "FileIO create uber materials";

const lmKeyTable kKeys{
    kVerifyGeometry,
    kCompressTextureMode,
    kCompressTextureSize,
    kOptimizeGeometry,
    kParallelLoading,
    kTmpPath,
    kShowDialog,
    kCloseDialogOnSuccess,
    kReferenceBehavior,
    kMergeMaterials,
    kCenterInOrigin,
    kPutOnGround,
    kMaxParallelTasks,
    kConverterOutputFormat,
    lmKeyWithoutDefault<std::vector<std::string>>(kTextureSearchPaths),
    lmKeyWithoutDefault<bool>(kCreateUberMaterials),
};

const char *const kLUMOFormat = "LUMO";
const char *const kOpenSGFormat = "OpenSG";
const char *const kTmpDirVariable = "LUMO_FILEIO_TMP_DIR";
const char *const kCloseOnSuccessSetting = "importDialog/closeOnSuccess";
// Reference behavior combo: the second item creates references.
const int kReferenceCreate = 1;
// Converter output format combo: "OpenSG", "LUMO".
const int kConverterLUMOIndex = 1;

// Pushes the key's value when it reads; a key that does not is skipped.
template <class T, class Push>
void pushIfRead(const lmMessage &data, const lmTypedKey<T> &key, Push push)
{
    T value = key.defaultValue;
    if (key.read(data, value))
        push(value);
}

void writeCloseOnSuccess(bool closeOnSuccess)
{
    // Rewriting an equal value would still rewrite the settings file on
    // every accept.
    QSettings settings;
    const QString key = QLatin1String(kCloseOnSuccessSetting);
    if (!settings.contains(key) || settings.value(key).toBool() != closeOnSuccess)
        settings.setValue(key, closeOnSuccess);
}

} // namespace

lmFileIOPreferencesGUII::lmFileIOPreferencesGUII()
    : QObject(nullptr),
      lmPreferencesPage(this, QCoreApplication::translate("lmPreferences", "FileIO"),
                        QCoreApplication::translate("lmPreferences", "FileIO"), kKeys)
{
    lmFileIOPreferencesGUIW *page = this->page();
    page->_texturepaths->setHorizontalHeaderLabels({tr("Path")});
    page->_texturepaths->setSortingEnabled(true);
    page->_texturepaths->sortByColumn(0, Qt::AscendingOrder);

    // Plain writes: apply pushes every readable key anyway. The texture
    // search paths are loaded and stored by hand; the form names their key.
    bindings.writeFromHere(lmPageBindings::Plain);
    bindings.bind(kVerifyGeometry, page->_verify_geometry);
    // An index the combo does not offer leaves the choice as it is.
    bindings.bind(kCompressTextureMode, page->_texture_compression_mode, lmIfNoItem::Keep);
    // The items are sizes in megabytes; one not offered leaves the choice.
    bindings.bind(
        kCompressTextureSize, page->_texture_compression_size,
        [](QComboBox *combo, int size) {
            const int index = combo->findText(QString::number(size, 10));
            if (index >= 0)
                combo->setCurrentIndex(index);
        },
        [](const QComboBox *combo) { return combo->currentText().toInt(nullptr, 10); });
    bindings.bind(kOptimizeGeometry, page->_optimize_geometry);
    bindings.bind(kTmpPath, page->_tmp_path);
    bindings.bind(kShowDialog, page->_showImportDialog);
    bindings.bind(kCloseDialogOnSuccess, page->_closeDialogOnSuccessfulImport);
    // Any behavior but creating references shows, and stores, the first item.
    bindings.bindShown(
        kReferenceBehavior, page->_referenceBehavior,
        [](QComboBox *combo, int behavior) { combo->setCurrentIndex(behavior == kReferenceCreate ? 1 : 0); },
        [](const QComboBox *combo) { return combo->currentIndex(); });
    bindings.bind(kMergeMaterials, page->_importMergeMaterials);
    bindings.bind(kCenterInOrigin, page->_importCenterInOrigin);
    bindings.bind(kPutOnGround, page->_importPutOnGround);
    bindings.bind(kMaxParallelTasks, page->_max_procs);
    // Any format but exactly "LUMO" shows, and stores, "OpenSG".
    bindings.bindShown(
        kConverterOutputFormat, page->m_converterOutputFormat,
        [](QComboBox *combo, const std::string &format) {
            combo->setCurrentIndex(format == kLUMOFormat ? kConverterLUMOIndex : 0);
        },
        [](const QComboBox *combo) {
            return std::string(combo->currentIndex() == kConverterLUMOIndex ? kLUMOFormat : kOpenSGFormat);
        });

    addPreferencesGUI(page);

    connect(page->_add_button, &QAbstractButton::clicked, this, &lmFileIOPreferencesGUII::clickedAdd);
    connect(page->_sub_button, &QAbstractButton::clicked, this, &lmFileIOPreferencesGUII::clickedSub);
    connect(page->_tmp_path_button, &QAbstractButton::clicked, this, &lmFileIOPreferencesGUII::clickedGetTmpPath);
}

void lmFileIOPreferencesGUII::apply()
{
    const lmMessage &data = getData();

    // The host reads the paths from the store itself.
    lmTexSearch::set();

    pushIfRead(data, kVerifyGeometry, lmFileIO::enableVerifyGeometry);
    pushIfRead(data, kOptimizeGeometry, lmFileIO::enableOptimizeGeometry);

    lmFileIO::enableOptimizeTransparencies(false);
    lmFileIO::setShowFileIOProgress(true);

    // The folder is taken from the page as typed; a missing folder is kept
    // in the preferences but never handed to the converters.
    const QString tmpPath = page()->_tmp_path->text();
    const QByteArray tmpPathUtf8 = tmpPath.toUtf8();
    if (tmpPath.isEmpty() || lmFile::exists(tmpPathUtf8.toStdString()))
        qputenv(kTmpDirVariable, tmpPathUtf8);
    else
        lmLog::error(QStringLiteral("FileIO preferences: tmp path doesn't exist!"));

    pushIfRead(data, kShowDialog, lmController::setShowImportOptions);
    pushIfRead(data, kCloseDialogOnSuccess, writeCloseOnSuccess);

    pushIfRead(data, kReferenceBehavior,
               [](int behavior) { lmFileIO::setImportCreateReferences(behavior == kReferenceCreate); });
    pushIfRead(data, kMergeMaterials, lmFileIO::setImportMergeMaterials);
    pushIfRead(data, kCenterInOrigin, lmController::setImportOptionsCenterInOrigin);
    pushIfRead(data, kPutOnGround, lmController::setImportOptionsPutOnGround);
    pushIfRead(data, kMaxParallelTasks, lmFileIO::setMaxParallelImportTasks);

    pushIfRead(data, kConverterOutputFormat, [](const std::string &format) {
        lmFileIO::setConverterOutputFormat(format == kLUMOFormat ? lmCADFileTypes::LUMO : lmCADFileTypes::OpenSG);
    });
}

void lmFileIOPreferencesGUII::updateGUI()
{
    QTableWidget *table = page()->_texturepaths;
    table->setRowCount(0);
    std::vector<std::string> paths;
    if (kTextureSearchPaths.read(getData(), paths)) {
        table->setSortingEnabled(false);
        for (const std::string &path : paths)
            addTexturePathRow(QString::fromStdString(path));
        table->setSortingEnabled(true);
    }

    loadBound();
}

void lmFileIOPreferencesGUII::storeGUI()
{
    const QTableWidget *table = page()->_texturepaths;
    std::vector<std::string> paths;
    for (int row = 0; row < table->rowCount(); ++row)
        if (const QTableWidgetItem *item = table->item(row, 0))
            paths.push_back(item->text().toUtf8().toStdString());
    // No paths means no key, not an empty list.
    if (paths.empty())
        getData().remove(kTextureSearchPaths.name);
    else
        storePlain(kTextureSearchPaths, paths);

    storeBound();
}

void lmFileIOPreferencesGUII::addTexturePathRow(const QString &path)
{
    QTableWidget *table = page()->_texturepaths;
    const int row = table->rowCount();
    table->insertRow(row);
    table->setRowHeight(row, 20);
    auto *item = new QTableWidgetItem(path);
    item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
    table->setItem(row, 0, item);
}

void lmFileIOPreferencesGUII::clickedAdd()
{
    const QString path = QFileDialog::getExistingDirectory(page(), tr("Select Texture Search Directory"),
                                                           QDir::currentPath(), QFileDialog::ShowDirsOnly);
    if (path.isEmpty())
        return;

    QTableWidget *table = page()->_texturepaths;
    for (int row = 0; row < table->rowCount(); ++row) {
        const QTableWidgetItem *item = table->item(row, 0);
        if (item && item->text() == path) {
            QMessageBox::information(page(), lmPlatform::getVersionName(), tr("Path already inserted!"),
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
    const QList<QTableWidgetItem *> selected = page()->_texturepaths->selectedItems();
    if (!selected.isEmpty())
        page()->_texturepaths->removeRow(selected.first()->row());
}

void lmFileIOPreferencesGUII::clickedGetTmpPath()
{
    // A cancelled chooser returns an empty path, which clears the field.
    page()->_tmp_path->setText(QFileDialog::getExistingDirectory(page(), tr("Select Temporary File Path"),
                                                                 page()->_tmp_path->text()));
}

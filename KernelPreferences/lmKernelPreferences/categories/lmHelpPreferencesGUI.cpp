#include "lmHelpPreferencesGUI.h"

#include "lmController.h"
#include "lmKeyTable.h"
#include "lmMessageHelpers.h"
#include "lmPlatform.h"

#include <QFileDialog>

namespace {

const char *const kLocation = "Help Location";
const char *const kPath = "Help Path";
const char *const kPopup = "Help Popup";

// The installed help lies in the data directory. The separators of the
// default are backslashes, as the help installer has always written them.
QString defaultHelpPath()
{
    return QStringLiteral("file:///") + lmPlatform::getDataDir() + QStringLiteral("\\ToolClip\\Help");
}

const lmKeyTable kKeys{
    lmKey<int>(kLocation, 0),
    lmKeyComputed<QString>(kPath, defaultHelpPath),
    lmKey<int>(kPopup, 0),
};

enum Location { KnowledgeNetwork = 0, InstalledHelp = 1 };
enum Popup { Toolclips = 0, SimpleToolclips = 1 };

} // namespace

lmHelpPreferencesGUII::lmHelpPreferencesGUII()
    : QObject(nullptr), lmPreferences(tr("Help"), QString()), m_page(new lmHelpPreferencesGUIW)
{
    connect(m_page->_helpLocationComboBox, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &lmHelpPreferencesGUII::indexChangedLocation);
    connect(m_page->_help_path_button, &QToolButton::clicked, this, &lmHelpPreferencesGUII::clickedGetHelpPath);
    connect(m_page->_helpPopupComboBox, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &lmHelpPreferencesGUII::indexChangedPopup);

    const QSize buttonSize = lmPlatform::getIconSize(lmPlatform::MediumIcon) + QSize(2, 2);
    m_page->_help_path_button->setMinimumSize(buttonSize);
    m_page->_help_path_button->setMaximumSize(buttonSize);
    indexChangedLocation(m_page->_helpLocationComboBox->currentIndex());

    addPreferencesGUI(m_page);
}

lmHelpPreferencesGUII::~lmHelpPreferencesGUII()
{
    kKeys.removeFrom(getData());
    subPreferencesGUI(m_page);
    delete m_page;
}

void lmHelpPreferencesGUII::setDefault(lmMessage &, bool overwrite)
{
    kKeys.writeDefaults(getData(), overwrite);
}

void lmHelpPreferencesGUII::apply()
{
    const lmMessage &store = getData();

    // Location and path are read by the host's help viewer when it opens a
    // page; reading them here only reports a mistyped key early.
    int location = 0;
    if (isChanged(kLocation))
        getFromMessage(store, kLocation, location);
    QString path;
    if (isChanged(kPath))
        getFromMessage(store, kPath, path);

    if (isChanged(kPopup)) {
        int popup = Toolclips;
        getFromMessage(store, kPopup, popup);
        lmMessage message;
        message.set("useSimpleToolclips", boost::any(popup == SimpleToolclips), true);
        lmController::call("updateToolclip", message, 0);
    }
}

void lmHelpPreferencesGUII::updateGUI()
{
    const lmMessage &store = getData();
    m_loaded.clear();
    int index = 0;
    if (getFromMessage(store, kLocation, index)) {
        m_page->_helpLocationComboBox->setCurrentIndex(index);
        m_loaded.loaded(kLocation, m_page->_helpLocationComboBox, index);
    }
    QString path;
    if (getFromMessage(store, kPath, path))
        m_page->_help_path->setText(path);
    if (getFromMessage(store, kPopup, index)) {
        m_page->_helpPopupComboBox->setCurrentIndex(index);
        m_loaded.loaded(kPopup, m_page->_helpPopupComboBox, index);
    }
}

void lmHelpPreferencesGUII::storeGUI()
{
    lmMessage &store = getData();
    const int location =
        m_loaded.value(kLocation, m_page->_helpLocationComboBox, m_page->_helpLocationComboBox->currentIndex());
    if (!setToMessage(store, kLocation, location, true))
        addUnchanged(kLocation);
    if (!setToMessage(store, kPath, m_page->_help_path->text(), true))
        addUnchanged(kPath);
    const int popup = m_loaded.value(kPopup, m_page->_helpPopupComboBox, m_page->_helpPopupComboBox->currentIndex());
    if (!setToMessage(store, kPopup, popup, true))
        addUnchanged(kPopup);
}

void lmHelpPreferencesGUII::indexChangedLocation(int index)
{
    const bool installed = index != KnowledgeNetwork;
    m_page->_help_path->setVisible(installed);
    m_page->_help_path_button->setVisible(installed);
}

void lmHelpPreferencesGUII::clickedGetHelpPath()
{
    const QString dir = QFileDialog::getExistingDirectory(nullptr, tr("Help Path"), lmPlatform::getDataDir(),
                                                          QFileDialog::ShowDirsOnly);
    if (!dir.isEmpty())
        m_page->_help_path->setText(QStringLiteral("file:///") + dir);
}

void lmHelpPreferencesGUII::indexChangedPopup(int)
{
    // The popup kind changes on accept, through apply.
}

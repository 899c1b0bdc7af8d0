#include "lmHelpPreferencesGUI.h"

#include "lmController.h"
#include "lmPlatform.h"

#include <QFileDialog>

namespace {

const lmTypedKey<int> kLocation{"Help Location", 0};
// The default depends on the host's data directory; the table computes it.
const lmTypedKey<QString> kPath{"Help Path", QString()};
const lmTypedKey<int> kPopup{"Help Popup", 0};

// The installed help lies in the data directory. The separators of the
// default are backslashes, as the help installer has always written them.
QString defaultHelpPath()
{
    return QStringLiteral("file:///") + lmPlatform::getDataDir() + QStringLiteral("\\ToolClip\\Help");
}

const lmKeyTable kKeys{
    kLocation,
    lmKeyComputed<QString>(kPath, defaultHelpPath),
    kPopup,
};

enum Location { KnowledgeNetwork = 0, InstalledHelp = 1 };
enum Popup { Toolclips = 0, SimpleToolclips = 1 };

} // namespace

lmHelpPreferencesGUII::lmHelpPreferencesGUII()
    : QObject(nullptr), lmPreferencesPage(this, tr("Help"), QString(), kKeys)
{
    // The location first: choosing it shows or hides the path.
    bindings.bind(kLocation, page()->_helpLocationComboBox, lmIfNoItem::Clear);
    bindings.bind(kPath, page()->_help_path);
    bindings.bind(kPopup, page()->_helpPopupComboBox, lmIfNoItem::Clear);

    connect(page()->_helpLocationComboBox, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &lmHelpPreferencesGUII::indexChangedLocation);
    connect(page()->_help_path_button, &QToolButton::clicked, this, &lmHelpPreferencesGUII::clickedGetHelpPath);
    connect(page()->_helpPopupComboBox, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &lmHelpPreferencesGUII::indexChangedPopup);

    const QSize buttonSize = lmPlatform::getIconSize(lmPlatform::MediumIcon) + QSize(2, 2);
    page()->_help_path_button->setMinimumSize(buttonSize);
    page()->_help_path_button->setMaximumSize(buttonSize);
    indexChangedLocation(page()->_helpLocationComboBox->currentIndex());

    addPreferencesGUI(page());
}

void lmHelpPreferencesGUII::apply()
{
    const lmMessage &store = getData();

    // Location and path are read by the host's help viewer when it opens a
    // page; reading them here only reports a mistyped key early.
    int location = 0;
    if (isChanged(kLocation))
        kLocation.read(store, location);
    QString path;
    if (isChanged(kPath))
        kPath.read(store, path);

    if (isChanged(kPopup)) {
        int popup = Toolclips;
        kPopup.read(store, popup);
        lmMessage message;
        message.set("useSimpleToolclips", boost::any(popup == SimpleToolclips), true);
        lmController::call("updateToolclip", message, 0);
    }
}

void lmHelpPreferencesGUII::updateGUI()
{
    loadBound();
}

void lmHelpPreferencesGUII::storeGUI()
{
    storeBound();
}

void lmHelpPreferencesGUII::indexChangedLocation(int index)
{
    const bool installed = index != KnowledgeNetwork;
    page()->_help_path->setVisible(installed);
    page()->_help_path_button->setVisible(installed);
}

void lmHelpPreferencesGUII::clickedGetHelpPath()
{
    const QString dir = QFileDialog::getExistingDirectory(nullptr, tr("Help Path"), lmPlatform::getDataDir(),
                                                          QFileDialog::ShowDirsOnly);
    if (!dir.isEmpty())
        page()->_help_path->setText(QStringLiteral("file:///") + dir);
}

void lmHelpPreferencesGUII::indexChangedPopup(int)
{
    // The popup kind changes on accept, through apply.
}

// The keys the page controls say they hold, with the real module: a control
// changed as a person would changes exactly its keys, and every key that
// has a control on its page is held by one.
#include "lmPreferencesSession.h"
#include "lmSettingControls.h"
#include "lmStoreFile.h"

#include "lmKeyBinding.h"
#include "QLMColorManipulator.h"
#include "QLMSlider.h"
#include "lmPreferences.h"
#include "lmPreferencesHost.h"
#include "lmTestSupport.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLibrary>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTableWidget>
#include <QTreeWidget>
#include <QtTest>

#include <map>
#include <memory>
#include <set>

namespace {

using Keys = std::set<std::string>;

// Keys that their category writes but that no control on its page holds.
const Keys kWithoutControl = {
    "MainWindow show tool buttons text", "Loader parallel loading", "OsbFileIO pack indices",
    "OsbFileIO unpack 16 bit indices", "VpbFileIO show calc vset previews dialog", "RenderOptions antialiase distance",
    "RenderOptions antialiase scale", "RenderOptions fast fullscreen", "RenderOptions gl context sharing",
    "RenderOptions correct two sided lighting", "RenderOptions clipping plane adaption",
    "RenderOptions hardware antialiasing samples", "RenderOptions nvidia sli enable",
    "STLOptions import source reference behavior",
};

// The common CAD options without a control on the page of the format whose
// type name prefixes them.
bool cadOptionWithoutControl(const std::string &type, const std::string &suffix)
{
    static const Keys everyFormat = {"Options tessellation", "Options import smart reference behavior",
                                     "Options import create as smart"};
    static const Keys tessellationWidget = {
        "Options stitching", "Options stitching tolerance", "Options keep surface data", "Options create groups for layers",
        "Options chord deviation", "Options normal tolerance", "Options max chord length", "Options merge geometries",
        "Options remove empty groups", "Options unshare nodes", "Options flush transformations",
        "Options unify surface normals"};
    if (type == "STL" || everyFormat.count(suffix)) // the STL page shows the export format only
        return true;
    if (suffix == "Options import empty layers")
        return type != "Ondra" && type != "NX";
    // PLM XML's sub-references use "PLMXML load referenced files".
    return type == "PLMXML" && (suffix == "Options import referenced files" || tessellationWidget.count(suffix));
}

// A person's change to a control; false when the test does not know how.
bool change(QWidget *control)
{
    if (auto *group = qobject_cast<QGroupBox *>(control)) {
        group->setChecked(!group->isChecked());
    } else if (auto *button = qobject_cast<QAbstractButton *>(control)) {
        button->setChecked(!button->isChecked());
    } else if (auto *combo = qobject_cast<QComboBox *>(control)) {
        if (combo->count() < 2)
            return false;
        const int index = (combo->currentIndex() + 1) % combo->count();
        combo->setCurrentIndex(index);
        QMetaObject::invokeMethod(combo, "activated", Q_ARG(int, index));
    } else if (auto *spin = qobject_cast<QAbstractSpinBox *>(control)) {
        const QString before = spin->text();
        spin->stepBy(1);
        if (spin->text() == before)
            spin->stepBy(-1);
    } else if (auto *slider = qobject_cast<QAbstractSlider *>(control)) {
        slider->triggerAction(slider->value() < slider->maximum() ? QAbstractSlider::SliderSingleStepAdd
                                                                  : QAbstractSlider::SliderSingleStepSub);
    } else if (auto *slider = qobject_cast<QLMSlider *>(control)) {
        const double step = slider->smallStep() > 0 ? slider->smallStep() : (slider->maximum() - slider->minimum()) / 10;
        slider->setValue(slider->value() + step <= slider->maximum() ? slider->value() + step : slider->value() - step);
    } else if (auto *edit = qobject_cast<QLineEdit *>(control)) {
        const QString before = edit->text();
        edit->end(false);
        edit->insert(QStringLiteral("1")); // typed: the validator has its say
        if (edit->text() == before)
            edit->setText(QStringLiteral("2"));
    } else if (auto *text = qobject_cast<QPlainTextEdit *>(control)) {
        text->insertPlainText(QStringLiteral("host"));
    } else if (auto *table = qobject_cast<QTableWidget *>(control)) {
        const int row = table->rowCount();
        table->insertRow(row);
        for (int column = 0; column < table->columnCount(); ++column)
            table->setItem(row, column, new QTableWidgetItem(QStringLiteral("1")));
    } else if (auto *tree = qobject_cast<QTreeWidget *>(control)) {
        QTreeWidgetItem *item = tree->topLevelItem(0);
        if (!item)
            return false;
        item->setText(0, item->text(0) == QLatin1String("0.5") ? QStringLiteral("0.25") : QStringLiteral("0.5"));
    } else if (auto *color = qobject_cast<QLMColorManipulator *>(control)) {
        float r, g, b;
        color->getColor(r, g, b);
        color->setColor(1.0f - r, 1.0f - g, b < 0.5f ? 1.0f : 0.0f);
    } else {
        return false;
    }
    return true;
}

Keys keysOf(const QStringList &names)
{
    Keys keys;
    for (const QString &name : names)
        keys.insert(name.toStdString());
    return keys;
}

QString join(const Keys &keys)
{
    QStringList names;
    for (const std::string &key : keys)
        names << QString::fromStdString(key);
    return names.join(QStringLiteral(", "));
}

} // namespace

class tst_KeyBinding : public QObject
{
    Q_OBJECT

private:
    QLibrary m_library;
    std::unique_ptr<lmPreferencesSession> m_session;

private slots:
    void initTestCase()
    {
        lmResetHost();
        m_session = std::make_unique<lmPreferencesSession>();
        QVERIFY2(lmRunPluginEntry(m_library, QStringLiteral(LM_PLUGIN_PATH)), qPrintable(m_library.errorString()));
        m_session->startUp();
    }

    void cleanupTestCase()
    {
        m_session.reset();
        QVERIFY(m_library.unload());
    }

    void eachControlChangesExactlyItsKeys()
    {
        // Notices and confirmations (the web server's "Enable") are accepted.
        const lmDialogAnswerer::Answer acceptAny = [](QDialog *dialog) {
            if (auto *box = qobject_cast<QMessageBox *>(dialog))
                for (QAbstractButton *button : box->buttons())
                    if (box->buttonRole(button) == QMessageBox::AcceptRole)
                        return button->click();
            dialog->accept();
        };
        lmDialogAnswerer answerer(std::vector<lmDialogAnswerer::Answer>(1000, acceptAny));
        // The interaction mode sets a preset of other navigation controls.
        const std::map<std::string, Keys> alsoChanges = {
            {"Interaction mode",
             {"Navigator invert zoom", "Navigator invert wheel zoom", "Navigator speed mode",
              "Navigator pivot based panning", "Navigator dolly axis", "Navigator dolly to pivot"}},
        };
        lmMessage &store = lmPreferences::getData();
        int checked = 0;
        for (const lmPreferencesHost::Page &page : lmPreferencesHost::pages()) {
            const lmMessage &defaults = m_session->defaultsOf(page.owner);
            for (QWidget *control : page.widget->findChildren<QWidget *>()) {
                const Keys bound = keysOf(lmBoundKeys(control));
                if (bound.empty())
                    continue;
                const QString where = page.path() + QLatin1Char(' ') + control->metaObject()->className() + QLatin1Char(' ') + control->objectName();
                // A shared form's group of another format: out of reach here.
                if (std::none_of(bound.begin(), bound.end(), [&](const std::string &key) {
                        return defaults.contains(key) || key == "texture search paths";
                    })) {
                    QVERIFY2(lmSettingControls::isHidden(control, page.widget), qPrintable(where + " holds another page's keys"));
                    continue;
                }
                lmPreferencesHost::storeGUI(page.owner);
                const lmMessage before = store;
                Keys changed;
                // A few steps may round to the stored value (a cursor size below its base).
                for (int attempt = 0; attempt < 10 && changed.empty(); ++attempt) {
                    QVERIFY2(change(control), qPrintable(where + ": no way to change a " + control->metaObject()->className()));
                    lmPreferencesHost::storeGUI(page.owner);
                    for (const lmMessage *values : std::initializer_list<const lmMessage *>{&before, &store})
                        for (const auto &entry : values->values())
                            if (!lmStoreDocument::sameValue(before.get(entry.first), store.get(entry.first)))
                                changed.insert(entry.first);
                }
                Keys allowed = bound;
                for (const std::string &key : bound)
                    if (alsoChanges.count(key))
                        allowed.insert(alsoChanges.at(key).begin(), alsoChanges.at(key).end());
                const bool own = std::any_of(bound.begin(), bound.end(), [&](const std::string &key) { return changed.count(key); });
                const bool others = std::any_of(changed.begin(), changed.end(), [&](const std::string &key) { return !allowed.count(key); });
                QVERIFY2(own && !others, qPrintable(QStringLiteral("%1 holds %2 but changed %3")
                                                        .arg(where, join(bound), changed.empty() ? "nothing" : join(changed))));
                ++checked;
            }
        }
        QVERIFY(checked > 200);
    }

    void everyKeyWithAControlIsHeldByOne()
    {
        for (const lmPreferencesHost::Page &page : lmPreferencesHost::pages()) {
            Keys bound;
            for (const QWidget *control : page.widget->findChildren<QWidget *>())
                for (const QString &key : lmBoundKeys(control))
                    bound.insert(key.toStdString());
            std::string cadType; // the prefix of a CAD format page's keys
            for (const std::string &key : m_session->defaultsOf(page.owner).keys())
                if (key.size() > 17 && key.compare(key.size() - 17, 17, "Options stitching") == 0)
                    cadType = key.substr(0, key.size() - 17);
            Keys unbound;
            for (const std::string &key : m_session->defaultsOf(page.owner).keys()) {
                if (bound.count(key) || kWithoutControl.count(key))
                    continue;
                if (!cadType.empty()) {
                    if (key == "BCADOptions use ATF" || (key == "PLMXML load referenced files" && cadType != "PLMXML"))
                        continue;
                    if (key.compare(0, cadType.size(), cadType) == 0 && cadOptionWithoutControl(cadType, key.substr(cadType.size())))
                        continue;
                }
                unbound.insert(key);
            }
            QVERIFY2(unbound.empty(), qPrintable(page.path() + ": no control holds " + join(unbound)));
        }
    }
};

QTEST_MAIN(tst_KeyBinding)
#include "tst_keybinding.moc"

// Each page driven as the host and a user drive it, from the scenarios in
// tests/data/scenarios: host state, stored values, hooks, control edits and
// dialog answers in, host calls, stored values, control states and dialogs
// out. The format is described at the top of README.txt in that folder.
#include "lmCADFileTypeRegistry.h"
#include "lmCategoryRows.h"
#include "lmCallLog.h"
#include "lmHostProcess.h"
#include "lmHostSettings.h"
#include "lmKernelServicesHost.h"
#include "lmOSGWidget.h"
#include "lmPreferencesHost.h"
#include "lmRenderHostState.h"
#include "lmStoreFile.h"
#include "lmTestSupport.h"

#include "QLMColorManipulator.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QColorDialog>
#include <QDir>
#include <QSettings>
#include <QStandardPaths>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>

namespace {

std::function<bool(const QString &)> onOff(void (*set)(bool))
{
    return [set](const QString &value) { return (value == "on" || value == "off") && (set(value == "on"), true); };
}

std::function<bool(const QString &)> service(lmKernelServicesHost::Presence presence)
{
    return [presence](const QString &name) {
        return lmKernelServicesHost::setServicePresence(name.toLatin1().constData(), presence), true;
    };
}

// Host state, set before a page is created or under a running one; false for
// a value it does not know.
const std::map<QString, std::function<bool(const QString &)>> kHostState = {
    {"edition",
     [](const QString &name) {
         lmHostSettings::Edition edition;
         return lmHostSettings::editionFromName(name, edition) && (lmHostSettings::setEdition(edition), true);
     }},
    {"language",
     [](const QString &name) {
         lmHostSettings::Language language;
         return lmHostSettings::languageFromName(name, language) && (lmHostSettings::setDisplayLanguage(language), true);
     }},
    {"datadir", [](const QString &dir) { return lmHostSettings::setDataDir(dir), true; }},
    {"folder", [](const QString &path) { return QDir().mkpath(path); }},
    {"analysis", [](const QString &) { return lmHostSettings::setAnalysisMode(true), true; }},
    {"viewer", [](const QString &) { return lmHostProcess::setViewer(true), true; }},
    {"vserver", [](const QString &) { return lmHostProcess::setVServerNode(true), true; }},
    {"webport", [](const QString &port) { return lmHostProcess::setWebInterfacePort(port.toInt()), true; }},
    {"webpipe", [](const QString &pipe) { return lmHostProcess::setWebInterfacePipe(pipe), true; }},
    {"webfails", [](const QString &) { return lmHostProcess::setWebInterfaceStartFails(true), true; }},
    {"nocadtype",
     [](const QString &type) {
         bool ok = false;
         const int number = type.toInt(&ok);
         return ok && (lmCADFileTypeRegistry::removeType(lmCADFileTypes::FileType(number)), true);
     }},
    {"appname", [](const QString &name) { return lmHostSettings::setApplicationName(name), true; }},
    {"renderpaused", [](const QString &) { return lmRenderHostState::state().renderEnabled = false, true; }},
    {"hqaa", [](const QString &) { return lmRenderHostState::state().highQualityAntialiasing = true, true; }},
    {"cursorbase", [](const QString &size) { return (lmRenderHostState::state().cursorBaseSize = size.toInt()) > 0; }},
    {"noheadlight", [](const QString &) { return lmRenderHostState::state().headlight = nullptr, true; }},
    {"display",
     [](const QString &type) { return lmOSGWidget::setDisplayType(lmOSGWidget::lmDisplay(type.toInt())), true; }},
    {"service", service(lmKernelServicesHost::Present)},
    {"nullservice", service(lmKernelServicesHost::NullService)},
    {"noservice", service(lmKernelServicesHost::UnknownClass)},
    {"eyetracking", onOff(lmKernelServicesHost::setEyeTrackingSupported)},
    {"starvr", onOff(lmKernelServicesHost::setStarVRHandlerPresent)},
    {"shadingrate", onOff(lmKernelServicesHost::setShadingRateImageSupported)},
};

// What pages change beyond the store and the host calls, as text.
const std::map<QString, std::function<QString(const QString &)>> kOutside = {
    {"env",
     [](const QString &name) {
         return qEnvironmentVariableIsSet(qPrintable(name)) ? qEnvironmentVariable(qPrintable(name)) : "unset";
     }},
    {"setting", [](const QString &key) { return QSettings().value(key, "unset").toString(); }},
};

// The keys named by wrong-type reports in printed, in key order, each once.
QStringList wrongTypeReports(const QString &printed)
{
    static const QRegularExpression report(QStringLiteral("getFromMessage : Attribute '([^']*)' has wrong type"));
    QStringList keys;
    for (auto match = report.globalMatch(printed); match.hasNext();)
        keys << match.next().captured(1);
    keys.sort();
    keys.removeDuplicates();
    return keys;
}

lmDialogAnswerer::Answer chooseColor(const QColor &color)
{
    return [color](QDialog *dialog) {
        static_cast<QColorDialog *>(dialog)->setCurrentColor(color);
        dialog->accept();
    };
}

// One line of a scenario split into words; "quoted words" are JSON strings.
QStringList words(const QString &line, QString *rest = nullptr, int restAfter = -1)
{
    QStringList out;
    int i = 0;
    while (i < line.size()) {
        while (i < line.size() && line[i].isSpace())
            ++i;
        if (i >= line.size())
            break;
        if (out.size() == restAfter && rest) {
            *rest = line.mid(i);
            break;
        }
        int end = i;
        if (line[i] == '"') {
            for (end = i + 1; end < line.size() && line[end] != '"'; ++end)
                if (line[end] == '\\')
                    ++end;
            const QByteArray json = "[" + line.mid(i, end + 1 - i).toUtf8() + "]";
            out << QJsonDocument::fromJson(json).array().at(0).toString();
            i = end + 1;
        } else {
            while (end < line.size() && !line[end].isSpace())
                ++end;
            out << line.mid(i, end - i);
            i = end;
        }
    }
    return out;
}

// Runs one scenario; the first failing step ends it with a message.
class Scenario
{
public:
    explicit Scenario(QStringList lines) : m_lines(std::move(lines)) {}
    ~Scenario()
    {
        m_page.reset();
        for (const QByteArray &name : m_env)
            qunsetenv(name.constData());
    }

    QString run()
    {
        lmResetHost();
        QSettings().clear();
        for (QString &line : m_lines)
            line.replace(QLatin1String("$TMP"), m_dir.path());
        for (m_at = 0; m_at < m_lines.size() && m_error.isEmpty(); ++m_at)
            if (!m_lines[m_at].trimmed().isEmpty())
                step(m_lines[m_at]);
        if (m_error.isEmpty() && m_dialogsChecked != m_answerer.count())
            fail(QStringLiteral("%1 dialog(s) shown, %2 expected; first unexpected: \"%3\"")
                     .arg(m_answerer.count())
                     .arg(m_dialogsChecked)
                     .arg(m_answerer.seen()[std::size_t(m_dialogsChecked)].title));
        return m_error;
    }

private:
    void fail(const QString &message)
    {
        if (m_error.isEmpty())
            m_error = QStringLiteral("line %1: %2").arg(m_at + 1).arg(message);
    }

    lmPreferencesHost::Category category()
    {
        const auto categories = lmPreferencesHost::categories();
        if (categories.empty())
            fail(QStringLiteral("no page was created"));
        return categories.empty() ? lmPreferencesHost::Category() : categories.front();
    }

    QWidget *control(const QString &name)
    {
        for (const auto &page : lmPreferencesHost::pages())
            if (QWidget *widget = name == "page" ? page.widget : page.widget->findChild<QWidget *>(name))
                return widget;
        fail(QStringLiteral("no control %1 on the page").arg(name));
        return nullptr;
    }

    void compare(const QString &what, const QString &actual, const QString &expected)
    {
        if (actual != expected)
            fail(QStringLiteral("%1\n   actual: %2\n expected: %3").arg(what, actual, expected));
    }

    // The indented lines after the current one.
    QStringList block()
    {
        QStringList out;
        while (m_at + 1 < m_lines.size() && m_lines[m_at + 1].startsWith(' '))
            out << m_lines[++m_at].trimmed();
        return out;
    }

    static QString text(const boost::any &v)
    {
        return lmStoreDocument::typeName(v) + ' ' + QString::fromStdString(lmStoreDocument::valueJson(v));
    }

    // The calls written in the data file, each of changes replacing every call
    // of its Class::operation and each "-CALL" dropping that call.
    QStringList knownCalls(const QString &name, const QStringList &changes)
    {
        QFile file(QStringLiteral(LM_TEST_DATA_DIR "/") + name);
        if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
            fail(QStringLiteral("cannot read %1").arg(file.fileName()));
        QStringList calls = QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
        calls.erase(std::remove_if(calls.begin(), calls.end(), [](const QString &l) { return l.startsWith('#'); }),
                    calls.end());
        for (const QString &change : changes) {
            const bool drop = change.startsWith('-');
            const QString call = drop ? change.mid(1) : change;
            const QString operation = call.left(call.indexOf('(') + 1);
            int found = drop ? calls.removeAll(call) : 0;
            for (QString &line : calls)
                if (!drop && line.startsWith(operation) && ++found)
                    line = call;
            if (!found)
                fail(QStringLiteral("no call %1 in %2").arg(drop ? call : operation, name));
        }
        return calls;
    }

    boost::any value(const QString &type, const QString &json)
    {
        boost::any out;
        QString error;
        const QJsonDocument document = QJsonDocument::fromJson("[" + json.toUtf8() + "]");
        if (!lmStoreDocument::readValue(type, document.array().at(0), out, &error))
            fail(QStringLiteral("bad value %1 %2: %3").arg(type, json, error));
        return out;
    }

    void step(const QString &line)
    {
        QString rest;
        const QStringList w = words(line, &rest, line.startsWith("store ") || line.startsWith("stored ") ? 3 : -1);
        const QString verb = w.value(0);
        const lmPreferencesHost::Category none;
        if (kHostState.count(verb)) {
            if (!kHostState.at(verb)(w.value(1)))
                fail(QStringLiteral("unknown %1 %2").arg(verb, w.value(1)));
        } else if (verb == "env") {
            m_env << w.value(1).toUtf8();
            qputenv(w.value(1).toUtf8().constData(), w.value(2).toUtf8());
        } else if (verb == "page") {
            for (const lmCategoryRow &row : lmCategoryRows())
                if (w.value(1) == row.className)
                    m_page = row.make();
            if (!m_page)
                return fail(QStringLiteral("unknown page class %1").arg(w.value(1)));
            for (const QByteArray &name : m_env) // read at construction only
                qunsetenv(name.constData());
        } else if (verb == "store") {
            lmPreferences::getData().set(w.value(1).toStdString(), value(w.value(2), rest), true);
        } else if (verb == "remove") {
            lmPreferences::getData().remove(w.value(1).toStdString());
        } else if (verb == "stored") {
            const std::string key = w.value(1).toStdString();
            compare(w.value(1), lmPreferences::getData().contains(key) ? text(lmPreferences::getData().get(key)) : "missing",
                    w.value(2) == "missing" ? "missing" : text(value(w.value(2), rest)));
        } else if (verb == "keys") {
            QStringList actual, expected;
            for (const auto &entry : lmPreferences::getData().values())
                actual << QString::fromStdString(entry.first) + ' ' + text(entry.second);
            for (const QString &entry : block()) {
                const QStringList k = words(entry, &rest, 2);
                expected << k.value(0) + ' ' + text(value(k.value(1), rest));
            }
            compare(QStringLiteral("store"), actual.join("\n           "), expected.join("\n           "));
        } else if (verb == "setDefault") {
            lmPreferencesHost::setDefault(category(), w.value(1) == "overwrite");
        } else if (verb == "apply") {
            lmPreferencesHost::apply(category());
        } else if (verb == "updateGUI") {
            lmPreferencesHost::updateGUI(category());
        } else if (verb == "storeGUI") {
            lmPreferencesHost::storeGUI(category());
        } else if (verb == "newScene") {
            lmPreferencesHost::newScene(category());
        } else if (verb == "resetUnchanged") {
            lmPreferencesHost::resetUnchanged();
        } else if (verb == "start") { // as the host starts: defaults kept, applied, shown
            const auto c = category();
            lmPreferencesHost::setDefault(c, false);
            lmPreferencesHost::apply(c);
            lmPreferencesHost::updateGUI(c);
            lmCallLog::clear();
        } else if (verb == "accept") { // as the host accepts the dialog
            const auto c = category();
            lmPreferencesHost::resetUnchanged();
            lmPreferencesHost::storeGUI(c);
            lmPreferencesHost::apply(c);
        } else if (verb == "calls") {
            QStringList actual = lmCallLog::lines();
            QStringList expected = block();
            if (w.value(1) == "like")
                expected = knownCalls(w.value(2), expected);
            for (int i = 0; i < std::min(actual.size(), expected.size()); ++i) { // "..." stands for any text
                QString pattern = QRegularExpression::escape(expected[i]);
                pattern.replace(QLatin1String("\\.\\.\\."), QLatin1String(".*"));
                if (expected[i].contains("...") && QRegularExpression("^" + pattern + "$").match(actual[i]).hasMatch())
                    actual[i] = expected[i];
            }
            compare(QStringLiteral("host calls"), actual.join("\n           "), expected.join("\n           "));
            lmCallLog::clear();
        } else if (verb == "printed") {
            QString expected;
            for (const QString &printed : block())
                expected += printed + '\n';
            compare(QStringLiteral("printed"), m_stderr->text(), expected);
            m_stderr = std::make_unique<lmStderrCapture>();
        } else if (verb == "keys") {
            compare(QStringLiteral("keys stored"), QString::number(lmPreferences::getData().size()), w.value(1));
        } else if (verb == "unchanged") {
            QStringList keys;
            for (const std::string &key : lmPreferencesHost::unchangedKeys(category()))
                keys << QString::fromStdString(key);
            compare(QStringLiteral("unchanged keys"), keys.join(", "), w.mid(1).join(", "));
        } else if (verb == "pages") {
            QStringList actual(QString::number(lmPreferencesHost::pages().size()));
            for (const auto &page : lmPreferencesHost::pages())
                if (w.size() > 2) // and the pages' paths, when given
                    actual << page.path();
            compare(QStringLiteral("pages"), actual.join(" | "), w.mid(1).join(" | "));
        } else if (verb == "emit") { // a picker's signal, as if the user chose a colour
            auto *picker = qobject_cast<QLMColorManipulator *>(control(w.value(1)));
            if (picker)
                emit picker->colorChanged(w.value(3).toFloat(), w.value(4).toFloat(), w.value(5).toFloat());
        } else if (verb == "cell") { // a table cell made current and, given a text, edited
            auto *table = qobject_cast<QTableWidget *>(control(w.value(1)));
            const int row = w.value(2).toInt(), column = w.value(3).toInt();
            if (table)
                table->setCurrentCell(row, column);
            if (table && w.size() > 4 && !table->item(row, column))
                fail(QStringLiteral("no cell %1 %2").arg(row).arg(column));
            else if (table && w.size() > 4)
                table->item(row, column)->setText(w.value(4));
        } else if (verb == "set" || verb == "click" || verb == "type" || verb == "press" || verb == "shows") {
            QWidget *widget = control(w.value(1));
            if (!widget)
                return;
            if (verb == "set" && !widget->setProperty(w.value(2).toLatin1().constData(), w.value(3)))
                fail(QStringLiteral("cannot set %1 of %2").arg(w.value(2), w.value(1)));
            if (verb == "click") { // a button, or the first button inside the control
                auto *button = qobject_cast<QAbstractButton *>(widget);
                (button ? button : widget->findChild<QAbstractButton *>())->click();
            }
            if (verb == "type")
                QTest::keyClicks(widget, w.value(2));
            if (verb == "press")
                QTest::keySequence(widget, QKeySequence::fromString(w.value(2)));
            if (verb == "shows") {
                QString actual = widget->property(w.value(2).toLatin1().constData()).toString();
                QString expected = w.value(3);
                if (w.value(2) == "hidden")
                    actual = widget->isHidden() ? "true" : "false";
                // Each row's cells joined by " | ", one row per word.
                if (auto *view = qobject_cast<QAbstractItemView *>(widget); view && w.value(2) == "rows") {
                    QStringList rows;
                    for (int row = 0; row < view->model()->rowCount(); ++row) {
                        QStringList cells;
                        for (int column = 0; column < view->model()->columnCount(); ++column)
                            cells << view->model()->index(row, column).data().toString();
                        rows << cells.join(" | ");
                    }
                    actual = rows.join("; ");
                    expected = w.mid(3).join("; ");
                }
                if (auto *picker = qobject_cast<QLMColorManipulator *>(widget)) {
                    float r = 0, g = 0, b = 0;
                    picker->getColor(r, g, b);
                    actual = QStringLiteral("%1 %2 %3").arg(r).arg(g).arg(b);
                }
                auto *table = qobject_cast<QTableWidget *>(widget);
                if (table && w.value(2) == "currentRow")
                    actual = QString::number(table->currentRow());
                compare(w.value(1) + ' ' + w.value(2), actual, expected);
            }
        } else if (verb == "select" || verb == "edit") { // rows of a list, table or tree, as a user picks them
            auto *view = qobject_cast<QAbstractItemView *>(control(w.value(1)));
            if (!view)
                return fail(QStringLiteral("%1 is not a list").arg(w.value(1)));
            if (verb == "select")
                view->clearSelection();
            for (const QString &row : w.mid(2, verb == "edit" ? 1 : -1)) {
                const QModelIndex index = view->model()->index(row.toInt(), 0);
                if (verb == "select")
                    view->selectionModel()->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
                else if (index.flags() & Qt::ItemIsEditable) // a cell that is not editable keeps its text
                    view->model()->setData(index, w.value(3));
            }
        } else if (verb == "answer") {
            m_answerer.add(w.value(1) == "accept"      ? lmDialogAnswerer::accept()
                           : w.value(1) == "reject"    ? lmDialogAnswerer::reject()
                           : w.value(1) == "directory" ? lmDialogAnswerer::chooseDirectory(w.value(2))
                           : w.value(1) == "color"     ? chooseColor(QColor(w.value(2)))
                                                       : lmDialogAnswerer::clickButton(w.value(1)));
        } else if (verb == "wrongtype") {
            compare(QStringLiteral("wrong-type reports"), wrongTypeReports(m_stderr->text()).join(", "), w.mid(1).join(", "));
            m_stderr = std::make_unique<lmStderrCapture>();
        } else if (verb == "outside") {
            if (!kOutside.count(w.value(1)))
                return fail(QStringLiteral("unknown outside %1").arg(w.value(1)));
            compare(w.value(1) + ' ' + w.value(2), kOutside.at(w.value(1))(w.value(2)), w.value(3));
        } else if (verb == "errors") {
            compare(QStringLiteral("error log"), lmHostSettings::errorLog().join(" | "), w.mid(1).join(" | "));
        } else if (verb == "says") {
            if (m_dialogsChecked == 0)
                return fail(QStringLiteral("no dialog was checked"));
            compare(QStringLiteral("dialog text"), m_answerer.seen()[std::size_t(m_dialogsChecked - 1)].text, w.value(1));
        } else if (verb == "dialog") {
            if (m_dialogsChecked >= m_answerer.count())
                return fail(QStringLiteral("no dialog \"%1\" was shown").arg(w.value(1)));
            const lmDialogAnswerer::Seen &seen = m_answerer.seen()[std::size_t(m_dialogsChecked++)];
            QStringList buttons = seen.buttons;
            buttons.sort();
            compare(QStringLiteral("dialog"), (QStringList(seen.title) + buttons).join(" | "), w.mid(1).join(" | "));
        } else {
            fail(QStringLiteral("unknown step \"%1\"").arg(verb));
        }
    }

    QStringList m_lines;
    int m_at = 0;
    QString m_error;
    std::unique_ptr<QObject> m_page;
    lmDialogAnswerer m_answerer;
    int m_dialogsChecked = 0;
    QList<QByteArray> m_env;
    QTemporaryDir m_dir;
    std::unique_ptr<lmStderrCapture> m_stderr = std::make_unique<lmStderrCapture>();
};

} // namespace

class tst_PageScenarios : public QObject
{
    Q_OBJECT

private slots:
    // Pages write Qt settings; keep the user's own out of reach.
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void scenario_data()
    {
        QTest::addColumn<QStringList>("lines");
        const QDir dir(QStringLiteral(LM_TEST_DATA_DIR "/scenarios"));
        for (const QString &name : dir.entryList({"*.txt"}, QDir::Files, QDir::Name)) {
            QFile file(dir.filePath(name));
            QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
            QString title;
            QStringList lines;
            // A scenario runs from its "== title" line to the next one; the
            // row keeps blank and comment lines so that line numbers match.
            const QStringList all = QString::fromUtf8(file.readAll()).split('\n');
            for (int i = 0; i <= all.size(); ++i) {
                const QString line = i < all.size() ? all[i] : QStringLiteral("== ");
                if (line.startsWith("== ")) {
                    if (!title.isEmpty())
                        QTest::newRow(qPrintable(name + ": " + title)) << lines;
                    title = line.mid(3);
                    lines = QStringList();
                    for (int k = 0; k <= i; ++k)
                        lines << QString();
                } else {
                    lines << (line.trimmed().startsWith('#') ? QString() : line);
                }
            }
        }
    }

    void scenario()
    {
        QFETCH(QStringList, lines);
        const QString error = Scenario(lines).run();
        QVERIFY2(error.isEmpty(), qPrintable(error));
    }
};

QTEST_MAIN(tst_PageScenarios)
#include "tst_pagescenarios.moc"

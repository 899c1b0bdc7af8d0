// What every page of the real module owes, key by key and control by
// control: a key holding another type is reported and changes neither the
// page nor the store, and the defaults, texts, validators and bounds written
// down in tests/data are what the pages hold and show.
#include "lmPluginUnderTest.h"

#include "QLMCollapsibleFrame.h"
#include "QLMColorManipulator.h"
#include "lmCallLog.h"
#include "lmMessage.h"
#include "lmPreferences.h"
#include "lmPreferencesHost.h"
#include "lmTestSupport.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDoubleValidator>
#include <QFile>
#include <QGroupBox>
#include <QHeaderView>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTableWidget>
#include <QTextDocument>
#include <QTreeWidget>
#include <QtTest>

#include <map>

namespace {

// Rows of a tab-separated table beside this test; '#' starts a comment line
// and "\n" stands for a line break.
QList<QStringList> readTable(const char *name)
{
    QFile file(QStringLiteral(LM_TEST_DATA_DIR "/") + QLatin1String(name));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        qFatal("cannot read %s", name);
    QList<QStringList> rows;
    for (QString line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
        if (line.trimmed().isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        rows << line.replace(QLatin1String("\\n"), QLatin1String("\n")).split(QLatin1Char('\t'));
    }
    return rows;
}

QString plain(QString text)
{
    if (Qt::mightBeRichText(text)) {
        QTextDocument document;
        document.setHtml(text);
        text = document.toPlainText();
    }
    return text.remove(QLatin1Char('&'));
}

// "kind|text" for every text a person can read on the page.
QStringList textsOf(QWidget *page)
{
    QStringList texts;
    const auto add = [&texts](const char *kind, const QString &text) {
        if (!text.isEmpty())
            texts << QLatin1String(kind) + QLatin1Char('|') + plain(text);
    };
    QList<QWidget *> widgets = page->findChildren<QWidget *>();
    widgets.prepend(page);
    for (QWidget *w : widgets) {
        add("tip", w->toolTip());
        if (auto *label = qobject_cast<QLabel *>(w))
            add("text", label->text());
        else if (auto *button = qobject_cast<QAbstractButton *>(w))
            add("text", button->text());
        else if (auto *group = qobject_cast<QGroupBox *>(w))
            add("title", group->title());
        else if (auto *frame = qobject_cast<QLMCollapsibleFrame *>(w))
            add("title", frame->title());
        else if (auto *combo = qobject_cast<QComboBox *>(w))
            for (int i = 0; i < combo->count(); ++i)
                add("item", combo->itemText(i));
        else if (auto *tabs = qobject_cast<QTabWidget *>(w))
            for (int i = 0; i < tabs->count(); ++i)
                add("title", tabs->tabText(i));
        else if (auto *table = qobject_cast<QTableWidget *>(w))
            for (int i = 0; i < table->columnCount(); ++i)
                add("title", table->horizontalHeaderItem(i) ? table->horizontalHeaderItem(i)->text() : QString());
        else if (auto *tree = qobject_cast<QTreeWidget *>(w))
            add("title", tree->headerItem()->text(0));
    }
    return texts;
}

// Everything a control shows or holds, one line per control.
QStringList stateOf(QWidget *page)
{
    QStringList lines;
    QList<QWidget *> widgets = page->findChildren<QWidget *>();
    widgets.prepend(page);
    for (QWidget *w : widgets) {
        QString line = w->objectName() + QLatin1Char(' ') + w->metaObject()->className();
        const QMetaProperty user = w->metaObject()->userProperty();
        if (user.isValid())
            line += QLatin1Char(' ') + user.read(w).toString();
        if (auto *combo = qobject_cast<QComboBox *>(w))
            line += QStringLiteral(" index %1").arg(combo->currentIndex());
        else if (auto *group = qobject_cast<QGroupBox *>(w))
            line += QStringLiteral(" checked %1").arg(group->isChecked());
        else if (auto *text = qobject_cast<QPlainTextEdit *>(w))
            line += QLatin1Char(' ') + text->toPlainText();
        else if (auto *color = qobject_cast<QLMColorManipulator *>(w)) {
            float r, g, b;
            color->getColor(r, g, b);
            line += QStringLiteral(" %1 %2 %3").arg(r).arg(g).arg(b);
        } else if (auto *table = qobject_cast<QTableWidget *>(w)) {
            for (int row = 0; row < table->rowCount(); ++row)
                for (int column = 0; column < table->columnCount(); ++column)
                    line += QLatin1Char(' ') + (table->item(row, column) ? table->item(row, column)->text() : QString());
        } else if (auto *tree = qobject_cast<QTreeWidget *>(w)) {
            for (int i = 0; i < tree->topLevelItemCount(); ++i)
                line += QLatin1Char(' ') + tree->topLevelItem(i)->text(0);
        }
        lines << line + (w->isEnabled() ? QString() : QStringLiteral(" disabled"));
    }
    return lines;
}

QString firstDifference(const QStringList &before, const QStringList &after)
{
    for (int i = 0; i < std::min(before.size(), after.size()); ++i)
        if (before[i] != after[i])
            return before[i] + QStringLiteral(" -> ") + after[i];
    return QStringLiteral("controls added or removed");
}

QWidget *pageOf(const lmPreferencesHost::Category &category)
{
    for (const lmPreferencesHost::Page &page : lmPreferencesHost::pages())
        if (page.owner.object() == category.object())
            return page.widget;
    return nullptr;
}

QWidget *pageAt(const QString &path)
{
    for (const lmPreferencesHost::Page &page : lmPreferencesHost::pages())
        if (page.path() == path)
            return page.widget;
    return nullptr;
}

// Keys their page writes but no hook of it reads: values the host reads on
// its own, and import options that only one page, or no page, reads (the OSB
// page reads the "LUMO" pair of its two).
bool neverRead(const QString &page, const std::string &key)
{
    static const std::set<std::string> keys = {
        "MainWindow show tool buttons text",     "Loader parallel loading",
        "VpbFileIO show calc vset previews dialog", "RenderOptions clipping plane adaption",
        "RenderOptions correct two sided lighting", "RenderOptions fast fullscreen",
        "RenderOptions gl context sharing",      "RenderOptions hardware antialiasing samples",
        "STLOptions import source reference behavior", "PLMXMLOptions import referenced files",
        "BCADOptions use ATF",
    };
    const auto endsWith = [&key](const std::string &suffix) {
        return key.size() > suffix.size() && key.compare(key.size() - suffix.size(), suffix.size(), suffix) == 0;
    };
    if (keys.count(key))
        return true;
    if (key == "PLMXML load referenced files")
        return page != QLatin1String("FileIO/PLM XML");
    return page.startsWith(QLatin1String("FileIO/")) && key.compare(0, 4, "LUMO") != 0
        && (endsWith("Options import create as smart") || endsWith("Options import smart reference behavior"));
}

// Keys apply writes back whatever they held.
const std::set<std::string> kRewrittenByApply = {
    "STLOptions export",
    "STLOptions import source reference behavior",
};

template <class T>
bool describe(const boost::any &value, const char *type, QString *text)
{
    if (!lmHoldsType(value, typeid(T)))
        return false;
    *text = QLatin1String(type) + QLatin1Char('|') + QString::fromStdString(lmLogText(*boost::unsafe_any_cast<T>(&value)));
    return true;
}

// "type|value", the value as the call log prints it.
QString describe(const boost::any &value)
{
    QString text = QStringLiteral("missing or of another type");
    describe<bool>(value, "bool", &text) || describe<int>(value, "int", &text)
        || describe<unsigned int>(value, "uint", &text) || describe<float>(value, "float", &text)
        || describe<double>(value, "double", &text) || describe<std::string>(value, "string", &text)
        || describe<QString>(value, "qstring", &text) || describe<osg::Color3f>(value, "color", &text)
        || describe<std::vector<float>>(value, "floats", &text);
    return text;
}

// Whether value is still the mistyped 7 that the test stored.
bool stillHolds(const boost::any &value, bool asString)
{
    if (asString)
        return lmHoldsType(value, typeid(std::string)) && *boost::unsafe_any_cast<std::string>(&value) == "7";
    return lmHoldsType(value, typeid(int)) && *boost::unsafe_any_cast<int>(&value) == 7;
}

} // namespace

class tst_PageInvariants : public QObject
{
    Q_OBJECT

private:
    lmPluginUnderTest m_plugin;

private slots:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QString error;
        QVERIFY2(m_plugin.load(&error), qPrintable(error));
        lmPreferencesHost::setDefaultAll(false);
        lmPreferencesHost::updateGUIAll();
    }

    void cleanupTestCase() { QVERIFY(m_plugin.unload()); }

    void mistypedKeyIsReportedAndChangesNeitherPageNorStore()
    {
        lmDialogAnswerer dialogs(std::vector<lmDialogAnswerer::Answer>(100000, lmDialogAnswerer::reject()));
        lmMessage &store = lmPreferences::getData();
        QStringList faults;
        for (const lmPreferencesHost::Category &category : lmPreferencesHost::categories()) {
            lmMessage own;
            lmMessage *shared = lmPreferencesHost::swapStore(&own);
            lmPreferencesHost::setDefault(category, true);
            lmPreferencesHost::swapStore(shared);
            QWidget *page = pageOf(category);
            for (const std::string &key : own.keys()) {
                const QString where = category.path() + QStringLiteral(": ") + QString::fromStdString(key);
                lmPreferencesHost::setDefault(category, true);
                lmPreferencesHost::updateGUI(category);
                const QStringList before = page ? stateOf(page) : QStringList();
                const bool isInt = lmHoldsType(own.get(key), typeid(int));
                const boost::any wrong = isInt ? boost::any(std::string("7")) : boost::any(7);
                store.set(key, wrong, true);

                lmStderrCapture capture;
                lmPreferencesHost::updateGUI(category);
                const QStringList after = page ? stateOf(page) : QStringList();
                lmPreferencesHost::resetUnchanged(category);
                lmPreferencesHost::apply(category);
                const QString printed = capture.text();

                const QString report = QStringLiteral("getFromMessage : Attribute '%1' has wrong type").arg(QString::fromStdString(key));
                if (!printed.contains(report) && !neverRead(category.path(), key))
                    faults << where + QStringLiteral(": not reported");
                if (after != before)
                    faults << where + QStringLiteral(": changed ") + firstDifference(before, after);
                if (!kRewrittenByApply.count(key) && !stillHolds(store.get(key), isInt))
                    faults << where + QStringLiteral(": the store no longer holds what was there");
            }
            lmPreferencesHost::setDefault(category, true);
            lmPreferencesHost::updateGUI(category);
        }
        for (const QString &fault : faults)
            qWarning("%s", qPrintable(fault));
        QVERIFY2(faults.isEmpty(), "the keys above break the rule");
    }

    // Runs after the mistyped keys: restoring the defaults repairs every type.
    void everyKeyHoldsItsTypeAndDefault()
    {
        lmPreferencesHost::setDefaultAll(true);
        QStringList wrong;
        for (const QStringList &row : readTable("key-defaults.tsv")) {
            const QString shown = describe(lmPreferences::getData().get(row.value(0).toStdString()));
            if (shown != row.value(1) + QLatin1Char('|') + row.value(2))
                wrong << row.value(0) + QStringLiteral(": ") + shown;
        }
        for (const QString &key : wrong)
            qWarning("%s", qPrintable(key));
        QVERIFY2(wrong.isEmpty(), "the keys above hold another type or default");
    }

    void pageShowsEveryTextWrittenForIt_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QStringList>("texts");
        std::map<QString, QStringList> pages;
        for (const QStringList &row : readTable("page-texts.tsv"))
            pages[row.value(0)] << row.value(1) + QLatin1Char('|') + row.value(2);
        for (const auto &page : pages)
            QTest::newRow(qPrintable(page.first)) << page.first << page.second;
    }

    void pageShowsEveryTextWrittenForIt()
    {
        QFETCH(QString, path);
        QFETCH(QStringList, texts);
        QWidget *page = pageAt(path);
        QVERIFY2(page, qPrintable(path + QStringLiteral(" is not in the dialog")));
        QStringList shown = textsOf(page);
        QStringList missing;
        for (const QString &text : texts)
            if (!shown.removeOne(text))
                missing << text;
        QVERIFY2(missing.isEmpty(), qPrintable(QStringLiteral("missing: ") + missing.join(QStringLiteral("\n  "))));
    }

    void controlKeepsItsValidatorAndBounds_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("control");
        QTest::addColumn<QString>("property");
        QTest::addColumn<QString>("value");
        for (const QStringList &row : readTable("page-controls.tsv"))
            QTest::addRow("%s %s %s", qPrintable(row.value(0)), qPrintable(row.value(1)), qPrintable(row.value(2)))
                << row.value(0) << row.value(1) << row.value(2) << row.value(3);
    }

    void controlKeepsItsValidatorAndBounds()
    {
        QFETCH(QString, path);
        QFETCH(QString, control);
        QFETCH(QString, property);
        QFETCH(QString, value);
        QWidget *page = pageAt(path);
        QVERIFY2(page, qPrintable(path + QStringLiteral(" is not in the dialog")));
        auto *widget = page->findChild<QWidget *>(control);
        QVERIFY2(widget, qPrintable(control + QStringLiteral(" is not on the page")));
        if (property != QLatin1String("validator")) {
            QCOMPARE(widget->property(qPrintable(property)).toString(), value);
            return;
        }
        auto *edit = qobject_cast<QLineEdit *>(widget);
        QVERIFY(edit);
        const QValidator *validator = edit->validator();
        QVERIFY2(validator, "no validator");
        QString shown = QLatin1String(validator->metaObject()->className());
        if (const auto *number = qobject_cast<const QDoubleValidator *>(validator)) {
            // No limit on the decimals reads 1000 in Qt 5 and -1 in Qt 6.
            const int decimals = number->decimals() < 0 ? 1000 : number->decimals();
            shown += QStringLiteral(" %1 %2 %3").arg(number->bottom()).arg(number->top()).arg(decimals);
        } else if (const auto *integer = qobject_cast<const QIntValidator *>(validator))
            shown += QStringLiteral(" %1 %2").arg(integer->bottom()).arg(integer->top());
        QCOMPARE(shown, value);
    }
};

QTEST_MAIN(tst_PageInvariants)
#include "tst_pageinvariants.moc"

// Every page typed into as a careless user would: text that is no number,
// empty text, huge numbers and very long strings in every text field, spin
// box and editable list, every combo item picked, every check box toggled,
// then accepted. Nothing may crash and every key keeps its documented type.
#include "lmPluginUnderTest.h"

#include "lmCallLog.h"
#include "lmMessageHelpers.h"
#include "lmPreferences.h"
#include "lmPreferencesHost.h"
#include "lmTestSupport.h"

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTableWidget>
#include <QTreeWidget>
#include <QtTest>

namespace {

const QStringList &garbage()
{
    static const QStringList texts = {
        QStringLiteral("abc"),
        QString(),
        QStringLiteral("1e309"),
        QStringLiteral("-99999999999999999999999"),
        QStringLiteral("nan"),
        QString(20000, QLatin1Char('7')),
        QStringLiteral("12,5;\"\\"),
    };
    return texts;
}

QList<QWidget *> pageWidgets()
{
    QList<QWidget *> widgets;
    for (const lmPreferencesHost::Page &page : lmPreferencesHost::pages())
        widgets << page.widget;
    return widgets;
}

template <class W>
QList<W *> all()
{
    QList<W *> found;
    for (QWidget *page : pageWidgets())
        found << page->findChildren<W *>();
    return found;
}

// Line edits of their own, not the editors inside spin boxes and combos.
QList<QLineEdit *> plainLineEdits()
{
    QList<QLineEdit *> edits;
    for (QLineEdit *edit : all<QLineEdit>())
        if (!qobject_cast<QAbstractSpinBox *>(edit->parentWidget()) && !qobject_cast<QComboBox *>(edit->parentWidget()))
            edits << edit;
    return edits;
}

} // namespace

class tst_PageInput : public QObject
{
    Q_OBJECT

private:
    lmPluginUnderTest m_plugin;

    void accept()
    {
        lmPreferencesHost::storeGUIAll();
        lmPreferencesHost::applyAll();
        lmPreferencesHost::resetUnchanged();
        lmCallLog::clear();
    }

    void verifyDocumentedTypes(const QString &after)
    {
        const lmMessage &store = lmPreferences::getData();
        for (const auto &entry : m_plugin.documentedTypes()) {
            const boost::any &value = store.get(entry.first);
            if (value.empty())
                continue; // a page may legitimately remove a key (an empty list)
            QVERIFY2(value.type().name() == entry.second,
                     qPrintable(QStringLiteral("after %1: '%2' changed its type").arg(after, QString::fromStdString(entry.first))));
        }
    }

private slots:
    void initTestCase()
    {
        QString error;
        QVERIFY2(m_plugin.load(&error), qPrintable(error));
        lmPreferencesHost::setDefaultAll(false);
        lmPreferencesHost::applyAll();
        lmPreferencesHost::updateGUIAll();
    }

    void cleanupTestCase() { QVERIFY(m_plugin.unload()); }

    void garbageTextIsStoredInTheKeysOwnType()
    {
        lmDialogAnswerer dialogs;
        for (const QString &text : garbage()) {
            for (QLineEdit *edit : plainLineEdits())
                edit->setText(text);
            for (QAbstractSpinBox *spin : all<QAbstractSpinBox>()) {
                if (auto *edit = spin->findChild<QLineEdit *>())
                    edit->setText(text);
                spin->interpretText();
            }
            for (QPlainTextEdit *edit : all<QPlainTextEdit>())
                edit->setPlainText(text);
            for (QTableWidget *table : all<QTableWidget>())
                for (int row = 0; row < table->rowCount(); ++row)
                    for (int column = 0; column < table->columnCount(); ++column)
                        if (QTableWidgetItem *item = table->item(row, column))
                            item->setText(text);
            for (QTreeWidget *tree : all<QTreeWidget>())
                for (int i = 0; i < tree->topLevelItemCount(); ++i)
                    tree->topLevelItem(i)->setText(0, text);
            accept();
            verifyDocumentedTypes(QStringLiteral("text \"%1\"").arg(text.left(20)));
        }

        // Text that is no number is stored as 0 by the pages that convert it.
        for (QLineEdit *edit : plainLineEdits())
            edit->setText(QStringLiteral("abc"));
        accept();
        float fov = -1.0f, eyeSeparation = -1.0f;
        QVERIFY(getFromMessage(lmPreferences::getData(), "Stereo eye separation", eyeSeparation));
        QCOMPARE(eyeSeparation, 0.0f);
        QVERIFY(getFromMessage(lmPreferences::getData(), "Camera fov", fov));
        QVERIFY(fov >= 1.0f && fov <= 100.0f);
    }

    void extremeSpinValues()
    {
        lmDialogAnswerer dialogs;
        for (int pass = 0; pass < 2; ++pass) {
            for (QSpinBox *spin : all<QSpinBox>())
                spin->setValue(pass ? spin->maximum() : spin->minimum());
            for (QDoubleSpinBox *spin : all<QDoubleSpinBox>())
                spin->setValue(pass ? spin->maximum() : spin->minimum());
            accept();
            verifyDocumentedTypes(pass ? QStringLiteral("maximal spin values") : QStringLiteral("minimal spin values"));
        }
    }

    void everyComboItemAndCheckBox()
    {
        lmDialogAnswerer dialogs;
        int items = 0;
        for (QComboBox *combo : all<QComboBox>())
            items = std::max(items, combo->count());
        for (int index = -1; index < items; ++index) {
            for (QComboBox *combo : all<QComboBox>())
                combo->setCurrentIndex(std::min(index, combo->count() - 1));
            for (QCheckBox *box : all<QCheckBox>())
                box->toggle();
            for (QGroupBox *group : all<QGroupBox>())
                if (group->isCheckable())
                    group->setChecked(!group->isChecked());
            accept();
            verifyDocumentedTypes(QStringLiteral("combo index %1").arg(index));
        }
        lmPreferencesHost::updateGUIAll();
        accept();
        verifyDocumentedTypes(QStringLiteral("reloading the pages"));
    }
};

QTEST_MAIN(tst_PageInput)
#include "tst_pageinput.moc"

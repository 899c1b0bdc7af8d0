// The tessellation page: quality levels that sort by value, the edit check
// with its warning, add and remove, and the topology settings.
#include "fileio/lmTesselationListViewItem.h"
#include "fileio/lmTesselationPreferencesGUI.h"
#include "lmPageTestSupport.h"
#include "lmTestSupport.h"

#include <QtTest>

namespace {

const char *const kQuality = "Optimizer Teselation Quality";

QStringList levelTexts(const QTreeWidget *list)
{
    QStringList texts;
    for (int i = 0; i < list->topLevelItemCount(); ++i)
        texts << list->topLevelItem(i)->text(0);
    return texts;
}

} // namespace

class tst_Tesselation : public QObject
{
    Q_OBJECT

private:
    void start(lmTesselationPreferencesGUII &tesselation)
    {
        tesselation.setDefault(lmPreferences::getData(), false);
        tesselation.updateGUI();
    }

private slots:
    void init() { lmResetHost(); }

    void nothingIsPushedAndRemoveStartsDisabled()
    {
        lmTesselationPreferencesGUII tesselation;
        tesselation.setDefault(lmPreferences::getData(), true);
        tesselation.updateGUI();
        QVERIFY(!tesselation.page()->_remove_button->isEnabled());
        lmPreferencesHost::resetUnchanged();
        tesselation.storeGUI();
        tesselation.apply();
        QVERIFY(lmCallLog::lines().isEmpty());
    }

    void levelsSortByValueAndStoreInListOrder()
    {
        lmTesselationPreferencesGUII tesselation;
        start(tesselation);
        setStored(kQuality, std::vector<float>{0.5f, 10.0f, 0.05f, 2.0f});
        tesselation.updateGUI();
        QCOMPARE(levelTexts(tesselation.page()->_quality), QStringList({"0.05", "0.5", "2", "10"}));

        lmTesselationPreferencesGUIW *page = tesselation.page();
        page->_topology->setCurrentIndex(2);
        page->_tolerance->setText("0.25");
        page->_offset_factor->setText("abc"); // no number stores 0
        page->_check_orientation->setChecked(false);
        tesselation.storeGUI();
        QVERIFY(holds(kQuality, std::vector<float>{0.05f, 0.5f, 2.0f, 10.0f}));
        QVERIFY(holds("Optimizer Topology Method", 2));
        QVERIFY(holds("Optimizer Topology Tolerance", 0.25f));
        QVERIFY(holds("Optimizer Offset Factor", 0.0f));
        QVERIFY(holds("Optimizer Check Orientation", false));
    }

    void invalidEditsAreRefusedAndRestored()
    {
        lmTesselationPreferencesGUII tesselation;
        start(tesselation);
        setStored(kQuality, std::vector<float>{0.1f, 1.0f});
        tesselation.updateGUI();
        QTreeWidget *list = tesselation.page()->_quality;
        QTreeWidgetItem *first = list->topLevelItem(0);

        {
            lmDialogAnswerer answerer({lmDialogAnswerer::clickButton("OK"), lmDialogAnswerer::clickButton("OK"),
                                       lmDialogAnswerer::clickButton("OK"), lmDialogAnswerer::reject()});
            for (const char *text : {"0", "abc", "-2", "inf"})
                first->setText(0, text);
            QCOMPARE(answerer.count(), 4);
            for (const lmDialogAnswerer::Seen &seen : answerer.seen()) {
                QCOMPARE(seen.title, QStringLiteral("LUMO 2026"));
                QCOMPARE(seen.text, QStringLiteral("Only positive non zero values are allowed!"));
                QCOMPARE(seen.buttons, QStringList({"OK"}));
            }
            QCOMPARE(levelTexts(list), QStringList({"0.1", "1"}));
        }

        // A valid edit is taken and the list sorts again.
        lmDialogAnswerer none;
        first->setText(0, "5");
        QCOMPARE(none.count(), 0);
        QCOMPARE(levelTexts(list), QStringList({"1", "5"}));
        tesselation.storeGUI();
        QVERIFY(holds(kQuality, std::vector<float>{1.0f, 5.0f}));
    }

    void addAndRemoveLevels()
    {
        lmTesselationPreferencesGUII tesselation;
        start(tesselation);
        lmTesselationPreferencesGUIW *page = tesselation.page();
        QTreeWidget *list = page->_quality;

        QTest::mouseClick(page->_add_button, Qt::LeftButton);
        QTest::mouseClick(page->_add_button, Qt::LeftButton);
        QCOMPARE(list->topLevelItemCount(), 3);
        auto *added = dynamic_cast<lmTesselationListViewItem *>(list->topLevelItem(2));
        QVERIFY(added);
        QVERIFY(added->flags() & Qt::ItemIsEditable);
        added->setText(0, "0.01");
        QCOMPARE(levelTexts(list).first(), QStringLiteral("0.01"));

        list->clearSelection();
        QVERIFY(!page->_remove_button->isEnabled());
        list->topLevelItem(0)->setSelected(true);
        list->topLevelItem(1)->setSelected(true);
        QVERIFY(page->_remove_button->isEnabled());
        QTest::mouseClick(page->_remove_button, Qt::LeftButton);
        QCOMPARE(list->topLevelItemCount(), 1);
        QVERIFY(!page->_remove_button->isEnabled());

        list->selectAll();
        QTest::mouseClick(page->_remove_button, Qt::LeftButton);
        tesselation.storeGUI();
        QVERIFY(holds(kQuality, std::vector<float>{}));
    }

};

QTEST_MAIN(tst_Tesselation)
#include "tst_tesselation.moc"

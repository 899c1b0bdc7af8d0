// The selection page: six values pushed on every apply, three shared render
// options pushed only when changed, and the colour pickers.
#include "categories/lmMarkerPreferencesGUI.h"
#include "lmHostSettings.h"
#include "lmPageTestSupport.h"
#include "lmTestSupport.h"

#include <QColorDialog>
#include <QToolButton>
#include <QtTest>

namespace {

const QStringList kUntrackedPushes = {
    "lmScenegraph::setMarkerSize(1)",
    "lmScenegraph::setLODSelection(true)",
    "lmScenegraph::setAutoScroll(true)",
    "osg::Selection::setForceTransparentObjectSelection(false)",
    "lmScenegraph::setPreselectionEnabled(true)",
    "lmScenegraph::setPreselectionColor(Color3f(0.1, 0.3, 0.9))",
};

QList<float> colorOf(const QLMColorManipulator *picker)
{
    float r = -1.0f, g = -1.0f, b = -1.0f;
    picker->getColor(r, g, b);
    return {r, g, b};
}

// Picks a colour in the picker's dialog, as a user does.
lmDialogAnswerer::Answer pick(const QColor &color)
{
    return [color](QDialog *dialog) {
        static_cast<QColorDialog *>(dialog)->setCurrentColor(color);
        dialog->accept();
    };
}

void clickSwatch(QLMColorManipulator *picker)
{
    picker->findChild<QToolButton *>()->click();
}

} // namespace

class tst_Marker : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void defaultsArePushedInApplyOrder()
    {
        lmMarkerPreferencesGUII marker;
        marker.setDefault(lmPreferences::getData(), true);
        marker.apply();
        QCOMPARE(lmCallLog::lines(), kUntrackedPushes + QStringList({
                                                            "lmOSGWidget::setWireframeSelection(false)",
                                                            "lmScenegraph::setWireframeOverride(false)",
                                                            "lmOSGWidget::setWireframeAlwaysInFront(false)",
                                                            "lmScenegraph::setSelectionColor(Color3f(0.956, 0.521, 0.086))",
                                                        }));
    }

    void acceptWithoutEditsPushesOnlyTheUntrackedKeys()
    {
        lmMarkerPreferencesGUII marker;
        startPage(marker);
        QCOMPARE(acceptLog(marker), kUntrackedPushes);
        QCOMPARE(unchangedKeys(),
                 std::vector<std::string>({"RenderOptions selection color", "RenderOptions selection in front",
                                           "RenderOptions wireframe selection"}));
    }

    void trackedKeysArePushedWhenChanged()
    {
        lmMarkerPreferencesGUII marker;
        startPage(marker);
        marker.page()->_selection_in_front->setChecked(true);
        QCOMPARE(acceptLog(marker), kUntrackedPushes + QStringList({
                                                           "lmScenegraph::setWireframeOverride(true)",
                                                           "lmOSGWidget::setWireframeAlwaysInFront(true)",
                                                       }));
        marker.page()->_wireframe_selection->setChecked(true);
        QCOMPARE(acceptLog(marker), kUntrackedPushes + QStringList("lmOSGWidget::setWireframeSelection(true)"));
    }

    void markerSizeTextIsStoredAsAFloat()
    {
        lmMarkerPreferencesGUII marker;
        startPage(marker);
        marker.page()->_marker_size->clear();
        acceptPage(marker);
        QCOMPARE(lmStored<float>("Marker size"), 0.0f);
        QCOMPARE(lmCallLog::lines().first(), QStringLiteral("lmScenegraph::setMarkerSize(0)"));

        QTest::keyClicks(marker.page()->_marker_size, "2.75");
        QCOMPARE(acceptLog(marker).first(), QStringLiteral("lmScenegraph::setMarkerSize(2.75)"));
        setStored("Marker size", 0.123456789f);
        marker.updateGUI();
        QCOMPARE(marker.page()->_marker_size->text(), QStringLiteral("0.123457"));
    }

    void essentialsHidesTwoBoxesAndTurnsLODSelectionOff()
    {
        lmHostSettings::setEdition(lmHostSettings::Essentials);
        lmMarkerPreferencesGUII marker;
        QVERIFY(marker.page()->_lod_selection->isHidden());
        QVERIFY(marker.page()->_selection_in_front->isHidden());
        QVERIFY(!marker.page()->_wireframe_selection->isHidden());
        startPage(marker);
        QCOMPARE(lmStored<bool>("LOD selection"), false);
        QCOMPARE(acceptLog(marker).at(1), QStringLiteral("lmScenegraph::setLODSelection(false)"));
    }

    void wireframeColourEchoesIntoItsOwnPicker()
    {
        lmMarkerPreferencesGUII marker;
        startPage(marker);
        lmMarkerPreferencesGUIW *page = marker.page();
        emit page->_scolor->colorChanged(0.25f, 0.5f, 0.75f);
        QCOMPARE(colorOf(page->_scolor), QList<float>({0.25f, 0.5f, 0.75f}));
        QCOMPARE(colorOf(page->_preselection_color), QList<float>({0.1f, 0.3f, 0.9f}));
        // Neither the store nor the host hear of it before the page is stored.
        QVERIFY(lmStored<osg::Color3f>("RenderOptions selection color") == osg::Color3f(0.956f, 0.521f, 0.086f));
        QCOMPARE(lmCallLog::size(), 0);

        // The pre-selection picker has no echo.
        emit page->_preselection_color->colorChanged(1.0f, 1.0f, 1.0f);
        QCOMPARE(colorOf(page->_preselection_color), QList<float>({0.1f, 0.3f, 0.9f}));

        QCOMPARE(acceptLog(marker),
                 kUntrackedPushes + QStringList("lmScenegraph::setSelectionColor(Color3f(0.25, 0.5, 0.75))"));
    }

    void coloursChosenInTheDialogReachTheHost()
    {
        lmMarkerPreferencesGUII marker;
        startPage(marker);
        lmMarkerPreferencesGUIW *page = marker.page();
        QSignalSpy preselectionSpy(page->_preselection_color, &QLMColorManipulator::colorChanged);
        {
            lmDialogAnswerer answerer({pick(Qt::red), lmDialogAnswerer::reject(), pick(Qt::blue)});
            clickSwatch(page->_preselection_color);
            clickSwatch(page->_scolor); // cancelled
            QCOMPARE(colorOf(page->_scolor), QList<float>({0.956f, 0.521f, 0.086f}));
            clickSwatch(page->_scolor);
            QCOMPARE(answerer.count(), 3);
            QCOMPARE(answerer.seen()[0].className, QStringLiteral("QColorDialog"));
        }
        QCOMPARE(preselectionSpy.count(), 1);
        QCOMPARE(colorOf(page->_preselection_color), QList<float>({1.0f, 0.0f, 0.0f}));
        QCOMPARE(colorOf(page->_scolor), QList<float>({0.0f, 0.0f, 1.0f}));
        acceptPage(marker);
        QStringList expected = kUntrackedPushes;
        expected.last() = "lmScenegraph::setPreselectionColor(Color3f(1, 0, 0))";
        QCOMPARE(lmCallLog::lines(), expected + QStringList("lmScenegraph::setSelectionColor(Color3f(0, 0, 1))"));

        // Confirming the colour shown keeps its exact value.
        {
            lmDialogAnswerer answerer({lmDialogAnswerer::accept()});
            page->_scolor->setColor(0.956f, 0.521f, 0.086f);
            clickSwatch(page->_scolor);
        }
        QCOMPARE(colorOf(page->_scolor), QList<float>({0.956f, 0.521f, 0.086f}));
    }

    void wrongTypedKeysAreSkipped()
    {
        lmMarkerPreferencesGUII marker;
        startPage(marker);
        setStored("Marker size", 2.0); // double, not float
        setStored("Selection preselection color", std::vector<float>{1.0f, 0.0f, 0.0f});
        setStored("RenderOptions selection in front", 1);

        marker.updateGUI();
        lmPreferencesHost::resetUnchanged();
        marker.apply();
        QCOMPARE(lmCallLog::lines(), kUntrackedPushes.mid(1, 4) + QStringList({
                                                                      "lmOSGWidget::setWireframeSelection(false)",
                                                                      "lmScenegraph::setSelectionColor(Color3f(0.956, 0.521, 0.086))",
                                                                  }));
    }
};

QTEST_MAIN(tst_Marker)
#include "tst_marker.moc"

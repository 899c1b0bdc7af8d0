// The stand-in host: call-log text, undo marking, settings reset and host
// widgets.
#include "QLMCollapsibleFrame.h"
#include "QLMSlider.h"
#include "lmCallLog.h"
#include "lmController.h"
#include "lmFile.h"
#include "lmHostSettings.h"
#include "lmImportOptions.h"
#include "lmOSGWidget.h"
#include "lmPreferences.h"
#include "lmScopedUndoBlocker.h"
#include "lmTestSupport.h"
#include "OpenSG/OSGSceneFileHandler.h"
#include "OpenSGFileIO.h"

#include <QLabel>
#include <QTemporaryDir>
#include <QVBoxLayout>
#include <QtTest>

#include <limits>

class tst_Host : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void undoBlockerMarksCallsWhileAlive()
    {
        {
            lmScopedUndoBlocker outer(true);
            lmScopedUndoBlocker notBlocking(false);
            lmOSGWidget::setFov(-1, 45.0f);
            {
                lmScopedUndoBlocker inner(true);
            }
            lmOSGWidget::setGlobalEyeSeparation(63.0f);
        }
        lmOSGWidget::setGlobalEyeSeparation(64.0f);
        QCOMPARE(lmCallLog::lines(), QStringList({"lmOSGWidget::setFov(-1, 45) [undo blocked]",
                                                  "lmOSGWidget::setGlobalEyeSeparation(63) [undo blocked]",
                                                  "lmOSGWidget::setGlobalEyeSeparation(64)"}));
    }

    // A reset host is a fresh one: edition, store, call log, import records,
    // loader options and scene writer settings.
    void resetReturnsToAFreshHost()
    {
        lmHostSettings::setEdition(lmHostSettings::Restricted);
        lmPreferences::getData().set("Camera fov", boost::any(1.0f), true);
        lmImportOptions first("Rhino", true, true);
        first.setImportCameras(true);
        first.write();
        lmImportOptions second("Rhino", true, true);
        second.m_importNurbs = false;
        second.write();
        lmImportOptions last("", false, false);
        QVERIFY(lmImportOptions::lastWritten("Rhino", last));
        QVERIFY(last.getImportCameras() && !last.m_importNurbs); // each record starts from the last one written
        OpenSGFileIO::the().setCompressionType(4);
        OpenSGFileIO::the().setNewFormat(false);
        QCOMPARE(lmCallLog::lines().filter("OpenSGFileIO"), QStringList({"OpenSGFileIO::setCompressionType(4)", "OpenSGFileIO::setNewFormat(false)"}));

        lmResetHost();
        QVERIFY(lmController::isProfessionalEdition());
        QCOMPARE(lmPreferences::getData().size(), std::size_t(0));
        QCOMPARE(lmCallLog::size(), 0);
        QVERIFY(!lmImportOptions::lastWritten("Rhino", last));
        QVERIFY(osg::SceneFileHandler::the().getOptions("wrl") == nullptr);
        QCOMPARE(OpenSGFileIO::the().getCompressionType(), 2);
        QVERIFY(OpenSGFileIO::the().getNewFormat());
    }

    void sliderClampsAndIgnoresNan()
    {
        QLMSlider slider;
        slider.setRange(1.0, 100.0);
        QSignalSpy changed(&slider, &QLMSlider::valueChanged);
        for (double value : {45.5, 1000.0, std::numeric_limits<double>::quiet_NaN()})
            slider.setValue(value);
        QCOMPARE(slider.value(), 1.0);
        QCOMPARE(changed.count(), 3);
        QCOMPARE(changed.at(1).at(0).toDouble(), 100.0);
    }

    // Collapsing hides the body; a child shown or hidden while it is closed
    // (a page's warning label) is as the page asked once it opens, and
    // children hidden before stay hidden.
    void collapsedFrameKeepsWhatThePageAsked()
    {
        QLMCollapsibleFrame frame;
        auto *layout = new QVBoxLayout(&frame);
        QLabel *labels[5];
        for (QLabel *&label : labels)
            layout->addWidget(label = new QLabel(QStringLiteral("label"), &frame));
        QLabel *shown = labels[0], *toHide = labels[1], *toShow = labels[2], *hidden = labels[3], *flicker = labels[4];
        toShow->hide();
        hidden->hide();
        frame.show();
        frame.setCollapsed(true);
        QVERIFY(shown->isHidden() && toShow->isHidden());
        toHide->hide();
        toShow->show();
        flicker->hide();
        flicker->show();
        QVERIFY(toShow->isHidden() && flicker->isHidden());
        frame.setCollapsed(false);
        QVERIFY(!shown->isHidden() && toHide->isHidden() && !toShow->isHidden() && hidden->isHidden());
        QVERIFY(!flicker->isHidden());
        // Once open, the children are the page's again.
        frame.setCollapsed(true);
        frame.setCollapsed(false);
        toShow->hide();
        QVERIFY(toShow->isHidden() && !shown->isHidden());
    }

    void fileHelpers()
    {
        QCOMPARE(lmFile::convertSeparators("C:\\Kova\\bin/x"), std::string("C:/Kova/bin/x"));
        QTemporaryDir dir;
        const QString unicode = dir.filePath(QStringLiteral("t\u00ebmp"));
        QVERIFY(QDir().mkdir(unicode));
        QVERIFY(lmFile::exists(unicode.toUtf8().toStdString()));
        QVERIFY(!lmFile::exists(dir.filePath("missing").toUtf8().toStdString()));
        QVERIFY(!lmFile::exists(""));
    }
};

QTEST_MAIN(tst_Host)
#include "tst_host.moc"

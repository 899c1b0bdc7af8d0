// The stand-in host: call-log text, undo marking, settings reset, host
// widgets, and the test support that answers modal dialogs.
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

#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
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
        lmScopedUndoBlocker notBlocking(false);
        lmOSGWidget::setGlobalEyeSeparation(64.0f);
        QCOMPARE(lmCallLog::lines(), QStringList({
                                         "lmOSGWidget::setFov(-1, 45) [undo blocked]",
                                         "lmOSGWidget::setGlobalEyeSeparation(63) [undo blocked]",
                                         "lmOSGWidget::setGlobalEyeSeparation(64)",
                                     }));
    }

    void resetReturnsToAFreshHost()
    {
        lmHostSettings::setEdition(lmHostSettings::Restricted);
        lmPreferences::getData().set("Camera fov", boost::any(1.0f), true);
        lmOSGWidget::setFov(-1, 1.0f);
        lmImportOptions("Step", true, true).write();
        QVERIFY(lmController::isRestrictedEdition());

        lmResetHost();
        QVERIFY(lmController::isProfessionalEdition());
        QCOMPARE(lmPreferences::getData().size(), std::size_t(0));
        QCOMPARE(lmCallLog::size(), 0);
        lmImportOptions record("", false, false);
        QVERIFY(!lmImportOptions::lastWritten("Step", record));
        QVERIFY(osg::SceneFileHandler::the().getOptions("wrl") == nullptr);
    }

    void importOptionsStartFromTheLastWrittenRecord()
    {
        lmImportOptions first("Rhino", true, true);
        first.m_mergeGeometries = false;
        first.setImportCameras(true);
        first.write();
        lmImportOptions second("Rhino", true, true);
        second.m_importNurbs = false;
        second.write();
        lmImportOptions last("", false, false);
        QVERIFY(lmImportOptions::lastWritten("Rhino", last));
        QCOMPARE(last.m_mergeGeometries, false);
        QCOMPARE(last.getImportCameras(), true);
        QCOMPARE(last.m_importNurbs, false);
        QCOMPARE(lmCallLog::size(), 2);
        QVERIFY(lmCallLog::lines().at(1).startsWith("lmImportOptions::write(\"Rhino\", mergeGeometries=false"));
    }

    void sliderClampsAndIgnoresNan()
    {
        QLMSlider slider;
        slider.setRange(1.0, 100.0);
        slider.setSteps(1.0, 10.0);
        QSignalSpy changed(&slider, &QLMSlider::valueChanged);
        slider.setValue(45.5);
        QCOMPARE(slider.value(), 45.5);
        slider.setValue(1000.0);
        QCOMPARE(slider.value(), 100.0);
        slider.setValue(std::numeric_limits<double>::quiet_NaN());
        QCOMPARE(slider.value(), 1.0);
        QCOMPARE(changed.count(), 3);
    }

    void collapsingKeepsHiddenChildrenHidden()
    {
        QLMCollapsibleFrame frame;
        auto *layout = new QVBoxLayout(&frame);
        auto *shown = new QLabel("shown", &frame);
        auto *hidden = new QLabel("hidden", &frame);
        layout->addWidget(shown);
        layout->addWidget(hidden);
        hidden->hide();
        frame.show();
        frame.setCollapsed(true);
        QVERIFY(shown->isHidden());
        frame.setCollapsed(false);
        QVERIFY(!shown->isHidden());
        QVERIFY(hidden->isHidden());
    }

    // A page may show or hide a child (a warning label) while the body is
    // closed; opening the body then shows what the page asked for last.
    void childrenShownOrHiddenWhileCollapsedKeepThatWish()
    {
        QLMCollapsibleFrame frame;
        auto *layout = new QVBoxLayout(&frame);
        auto *toHide = new QLabel("to hide", &frame);
        auto *toShow = new QLabel("to show", &frame);
        auto *flicker = new QLabel("flicker", &frame);
        layout->addWidget(toHide);
        layout->addWidget(toShow);
        layout->addWidget(flicker);
        toShow->hide();
        frame.show();
        frame.setCollapsed(true);

        toHide->hide();
        toShow->show();
        flicker->hide();
        flicker->show();
        QVERIFY(toShow->isHidden());
        QVERIFY(flicker->isHidden());

        frame.setCollapsed(false);
        QVERIFY(toHide->isHidden());
        QVERIFY(!toShow->isHidden());
        QVERIFY(!flicker->isHidden());

        // The children are no longer watched once the body is open.
        frame.setCollapsed(true);
        frame.setCollapsed(false);
        toShow->hide();
        QVERIFY(toShow->isHidden());
        QVERIFY(!flicker->isHidden());
    }

    void dialogsAreAnsweredWithoutAPerson()
    {
        QTemporaryDir dir;
        lmDialogAnswerer answerer({lmDialogAnswerer::clickButton("OK"), lmDialogAnswerer::chooseDirectory(dir.path()),
                                   lmDialogAnswerer::reject()});
        QMessageBox::information(nullptr, "Title", "Text", QMessageBox::Ok);
        const QString chosen = QFileDialog::getExistingDirectory(nullptr, "Pick", QDir::currentPath());
        const QString cancelled = QFileDialog::getExistingDirectory(nullptr, "Pick again", QDir::currentPath());
        QCOMPARE(answerer.count(), 3);
        QCOMPARE(answerer.seen()[0].title, QStringLiteral("Title"));
        QCOMPARE(answerer.seen()[0].text, QStringLiteral("Text"));
        QCOMPARE(QDir(chosen).canonicalPath(), QDir(dir.path()).canonicalPath());
        QVERIFY(cancelled.isEmpty());
    }

    void fileHelpersAndSceneWriterSettings()
    {
        QCOMPARE(lmFile::convertSeparators("C:\\Kova\\bin/x"), std::string("C:/Kova/bin/x"));
        QCOMPARE(lmFile::convertSeparators("/opt/kova"), std::string("/opt/kova"));

        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString unicode = dir.filePath(QStringLiteral("t\u00ebmp"));
        QVERIFY(QDir().mkdir(unicode));
        QVERIFY(lmFile::exists(unicode.toUtf8().toStdString()));
        QVERIFY(!lmFile::exists(dir.filePath("missing").toUtf8().toStdString()));
        QVERIFY(!lmFile::exists(""));

        OpenSGFileIO::the().setCompressionType(4);
        OpenSGFileIO::the().setNewFormat(false);
        QCOMPARE(lmCallLog::lines(), QStringList({"OpenSGFileIO::setCompressionType(4)", "OpenSGFileIO::setNewFormat(false)"}));
        lmResetHost();
        QCOMPARE(OpenSGFileIO::the().getCompressionType(), 2);
        QVERIFY(OpenSGFileIO::the().getNewFormat());
    }
};

QTEST_MAIN(tst_Host)
#include "tst_host.moc"

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

    void argumentsUseShortestRoundTripText()
    {
        lmCallLog::record("X::ints", -1, 4294967295u, 0);
        lmCallLog::record("X::floats", 45.0f, 0.1f, 0.956f, 1e-7f, 100000.0f);
        lmCallLog::record("X::doubles", 0.1, 1.0 / 3.0, 1e300);
        lmCallLog::record("X::special", std::numeric_limits<float>::quiet_NaN(),
                          -std::numeric_limits<double>::infinity());
        lmCallLog::record("X::bools", true, false);
        lmCallLog::record("X::strings", "kbx", std::string("a\"b\\c"), QStringLiteral("ü"));
        lmCallLog::record("X::colors", osg::Color3f(0.1f, 0.3f, 0.9f), std::vector<float>{1.0f, 0.0f});
        lmCallLog::record("X::none");
        QCOMPARE(lmCallLog::lines(), QStringList({
                                         "X::ints(-1, 4294967295, 0)",
                                         "X::floats(45, 0.1, 0.956, 1e-07, 1e+05)",
                                         "X::doubles(0.1, 0.3333333333333333, 1e+300)",
                                         "X::special(nan, -inf)",
                                         "X::bools(true, false)",
                                         "X::strings(\"kbx\", \"a\\\"b\\\\c\", \"ü\")",
                                         "X::colors(Color3f(0.1, 0.3, 0.9), [1, 0])",
                                         "X::none()",
                                     }));
    }

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

    void listenersSeeEveryLine()
    {
        QStringList seen;
        const int id = lmCallLog::addListener([&seen](const QString &line) { seen << line; });
        osg::SceneFileHandler::the().setOptions("wrl", "inlineTextures=false");
        lmCallLog::removeListener(id);
        osg::SceneFileHandler::the().setOptions("vrml", "inlineTextures=false");
        QCOMPARE(seen, QStringList({"osg::SceneFileHandler::setOptions(\"wrl\", \"inlineTextures=false\")"}));
        QCOMPARE(QString::fromLatin1(osg::SceneFileHandler::the().getOptions("vrml")),
                 QStringLiteral("inlineTextures=false"));
        QVERIFY(osg::SceneFileHandler::the().getOptions("kb") == nullptr);
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

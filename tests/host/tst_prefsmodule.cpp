// The host application's session and dialog with the real plug-in module and
// all its categories, in every edition and display language.
#include "lmPreferencesDialog.h"
#include "lmPreferencesSession.h"
#include "lmStoreFile.h"

#include "lmCallLog.h"
#include "lmHostSettings.h"
#include "lmPreferences.h"
#include "lmPreferencesHost.h"
#include "lmTestSupport.h"

#include <QFile>
#include <QLibrary>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>
#include <set>

namespace {

QByteArray storeDocument() { return lmStoreDocument::write(lmPreferences::getData()); }

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<none>");
}

QStringList boldPages(const lmPreferencesDialog &dialog)
{
    QStringList bold;
    for (const lmPreferencesHost::Page &page : lmPreferencesHost::pages())
        if (dialog.isBold(page.widget))
            bold << page.path();
    return bold;
}

} // namespace

class tst_PrefsModule : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QLibrary m_library;
    std::unique_ptr<lmPreferencesSession> m_session;

    QString storePath() const { return m_dir.filePath(QStringLiteral("prefs.json")); }

    // As lmprefs-host starts: stored values, module, entry point, start-up.
    bool startHost()
    {
        m_session = std::make_unique<lmPreferencesSession>(storePath());
        m_session->loadStore();
        if (!lmRunPluginEntry(m_library, QStringLiteral(LM_PLUGIN_PATH)))
            return false;
        m_session->startUp();
        return true;
    }

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void init()
    {
        lmResetHost();
        QFile::remove(storePath());
        QFile::remove(storePath() + ".bak");
    }

    void cleanup()
    {
        m_session.reset();
        if (m_library.isLoaded())
            QVERIFY(m_library.unload());
    }

    // Every edition in English, every language in the professional edition:
    // an edition hides pages, a language raises notices.
    void freshStartAndRestoreThenCancel_data()
    {
        QTest::addColumn<int>("edition");
        QTest::addColumn<int>("language");
        const auto row = [](int edition, int language) {
            QTest::addRow("%s %s", qPrintable(lmHostSettings::editionName(lmHostSettings::Edition(edition))),
                          qPrintable(lmHostSettings::languageName(lmHostSettings::Language(language))))
                << edition << language;
        };
        for (int edition : {lmHostSettings::Professional, lmHostSettings::Design, lmHostSettings::Essentials,
                            lmHostSettings::Restricted})
            row(edition, lmHostSettings::English);
        for (int language : {lmHostSettings::Chinese, lmHostSettings::Japanese, lmHostSettings::Korean})
            row(lmHostSettings::Professional, language);
    }

    void freshStartAndRestoreThenCancel()
    {
        QFETCH(int, edition);
        QFETCH(int, language);
        lmHostSettings::setEdition(lmHostSettings::Edition(edition));
        lmHostSettings::setDisplayLanguage(lmHostSettings::Language(language));
        // Notices a page shows for real (the language restart notice) are the user's to answer.
        auto answerer = std::make_unique<lmDialogAnswerer>(std::vector<lmDialogAnswerer::Answer>(8, lmDialogAnswerer::accept()));
        QVERIFY2(startHost(), qPrintable(m_library.errorString()));

        // Learning the defaults again: no dialog, no host call, the store as
        // it was; and every key the store holds belongs to a category.
        lmCallLog::clear();
        const int dialogsSeen = answerer->count();
        const QByteArray started = storeDocument();
        m_session->learnDefaults();
        QCOMPARE(answerer->count(), dialogsSeen);
        QCOMPARE(lmCallLog::lines(), QStringList());
        QCOMPARE(storeDocument(), started);
        std::set<std::string> owned; // a few keys are written by every CAD page
        for (const lmPreferencesHost::Category &category : lmPreferencesHost::categories())
            for (const auto &entry : m_session->defaultsOf(category).values())
                owned.insert(entry.first);
        QCOMPARE(std::vector<std::string>(owned.begin(), owned.end()), lmPreferences::getData().keys());

        // The dialog (whose deferred refresh runs while dialogs are about)
        // shows no page in bold.
        lmPreferencesDialog dialog(*m_session);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog, 5000 * LM_TEST_SCALE));
        QCoreApplication::processEvents(); // the deferred refresh
        QCOMPARE(boldPages(dialog), QStringList());

        // Saved twice (a backup); then Restore Defaults on every page,
        // Restore All Defaults and Cancel leave the store, the file and its
        // backup as they were.
        dialog.applyChanges();
        dialog.applyChanges();
        const QByteArray store = storeDocument(), file = fileBytes(storePath()), backup = fileBytes(storePath() + ".bak");
        QCOMPARE(file, store);
        const QStringList boldAfterAccept = boldPages(dialog);
        for (const lmPreferencesHost::Page &page : lmPreferencesHost::pages()) {
            QVERIFY(dialog.showPage(page.widget));
            dialog.button(QDialogButtonBox::RestoreDefaults)->click();
            QVERIFY(!dialog.isBold(page.widget));
        }
        QVERIFY(m_session->differences().empty());
        dialog.restoreAllButton()->click();
        answerer = std::make_unique<lmDialogAnswerer>(std::vector<lmDialogAnswerer::Answer>{
            lmDialogAnswerer::clickButton(QStringLiteral("Discard"))});
        dialog.button(QDialogButtonBox::Cancel)->click();
        QCOMPARE(storeDocument(), store);
        QCOMPARE(fileBytes(storePath()), file);
        QCOMPARE(fileBytes(storePath() + ".bak"), backup);
        QCOMPARE(boldPages(dialog), boldAfterAccept);
    }

    // Another lmprefs-host saves the same file while the dialog is open:
    // OK keeps what it saved, except a key this instance changed as well,
    // where the later save wins.
    void secondProcessSavingBeforeOkIsKept()
    {
        QVERIFY2(startHost(), qPrintable(m_library.errorString()));
        lmPreferencesDialog dialog(*m_session);
        dialog.applyChanges();
        QProcess other;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        other.setProcessEnvironment(environment);
        other.start(QStringLiteral(LM_HOST_PATH), {"--headless", "--plugin", LM_PLUGIN_PATH, "--preferences", storePath(),
                                                   "--set", "Camera fov=33", "--set", "Navigator panning speed=7", "--accept"});
        QVERIFY(other.waitForFinished(-1));
        QVERIFY2(other.exitCode() == 0, other.readAllStandardError().constData());

        m_session->setValue("Navigator panning speed", 9.0f);
        lmPreferencesHost::updateGUIAll();
        dialog.accept();
        lmMessage saved;
        QVERIFY(lmStoreFile::readFile(storePath(), saved, nullptr));
        QCOMPARE(*boost::any_cast<float>(&saved.get("Camera fov")), 33.0f);
        QCOMPARE(*boost::any_cast<float>(&saved.get("Navigator panning speed")), 9.0f);
        QCOMPARE(storeDocument(), fileBytes(storePath()));
    }
};

QTEST_MAIN(tst_PrefsModule)
#include "tst_prefsmodule.moc"

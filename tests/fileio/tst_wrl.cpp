// The WRL page: its two keys and the option string both VRML suffixes get.
#include "fileio/lmWrlPreferencesGUI.h"
#include "lmCallLog.h"
#include "lmMessageHelpers.h"
#include "lmPreferencesHost.h"
#include "lmTestSupport.h"

#include <QtTest>

namespace {

QStringList lines(const QString &options)
{
    return {QStringLiteral("osg::SceneFileHandler::setOptions(\"wrl\", \"%1\")").arg(options),
            QStringLiteral("osg::SceneFileHandler::setOptions(\"vrml\", \"%1\")").arg(options)};
}

} // namespace

class tst_Wrl : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void optionStringForEveryChoice()
    {
        lmWrlPreferencesGUII wrl;
        wrl.setDefault(lmPreferences::getData(), false);
        QCOMPARE(lmPreferences::getData().keys(),
                 std::vector<std::string>({"WrlFileIO inline textures", "WrlFileIO reader optimization"}));
        wrl.apply();
        QCOMPARE(lmCallLog::lines(), lines("inlineTextures=false"));

        wrl.updateGUI();
        const struct
        {
            bool inlineTextures;
            int optimization;
            const char *options;
        } cases[] = {
            {true, 1, "inlineTextures=true,optimizationCatia=true"},
            {false, 2, "inlineTextures=false,optimizationProEngineer=true"},
            {true, 0, "inlineTextures=true"},
        };
        for (const auto &c : cases) {
            wrl.page()->_inline_textures->setChecked(c.inlineTextures);
            wrl.page()->_optimization->setCurrentIndex(c.optimization);
            lmPreferencesHost::resetUnchanged();
            wrl.storeGUI();
            lmCallLog::clear();
            wrl.apply();
            QCOMPARE(lmCallLog::lines(), lines(c.options));
        }

        // Nothing is change-tracked on apply: an untouched page pushes again.
        lmPreferencesHost::resetUnchanged();
        wrl.storeGUI();
        QCOMPARE(lmPreferencesHost::unchangedKeys(lmPreferencesHost::categories().front()).size(), std::size_t(2));
        lmCallLog::clear();
        wrl.apply();
        QCOMPARE(lmCallLog::lines(), lines("inlineTextures=true"));
    }

    void storedValuesOutsideTheCombo()
    {
        lmWrlPreferencesGUII wrl;
        wrl.setDefault(lmPreferences::getData(), false);
        lmMessage &store = lmPreferences::getData();
        store.set("WrlFileIO reader optimization", boost::any(2), true);
        store.set("WrlFileIO inline textures", boost::any(true), true);
        wrl.updateGUI();
        QCOMPARE(wrl.page()->_optimization->currentText(), QStringLiteral("Pro Engineer"));
        QVERIFY(wrl.page()->_inline_textures->isChecked());

        store.set("WrlFileIO reader optimization", boost::any(3), true);
        wrl.updateGUI();
        QCOMPARE(wrl.page()->_optimization->currentText(), QStringLiteral("Pro Engineer"));
        lmCallLog::clear();
        wrl.apply();
        QCOMPARE(lmCallLog::lines(), lines("inlineTextures=true"));

        store.set("WrlFileIO inline textures", boost::any(1), true);
        lmStderrCapture capture;
        lmCallLog::clear();
        wrl.apply();
        QCOMPARE(capture.text().count("Attribute 'WrlFileIO inline textures' has wrong type"), 1);
        QCOMPARE(lmCallLog::lines(), lines("inlineTextures=false"));
    }

    void formAndLifetime()
    {
        {
            lmWrlPreferencesGUII wrl;
            wrl.setDefault(lmPreferences::getData(), false);
            const auto pages = lmPreferencesHost::pages();
            QCOMPARE(pages.size(), std::size_t(1));
            QCOMPARE(pages[0].group + '/' + pages[0].page, QStringLiteral("FileIO/WRL"));
            QCOMPARE(pages[0].widget->objectName(), QStringLiteral("lmWrlPreferencesGUI"));
            QTabWidget *tabs = wrl.page()->m_tabWidget;
            QCOMPARE(tabs->count(), 2);
            QCOMPARE(tabs->tabText(0), QStringLiteral("Import"));
            QCOMPARE(tabs->tabText(1), QStringLiteral("Export"));
            QVERIFY(wrl.page()->m_importTab->isAncestorOf(wrl.page()->_optimization));
            QVERIFY(wrl.page()->m_exportTab->isAncestorOf(wrl.page()->_inline_textures));
        }
        QCOMPARE(lmPreferences::getData().size(), std::size_t(0));
        QVERIFY(lmPreferencesHost::pages().empty());
    }
};

QTEST_MAIN(tst_Wrl)
#include "tst_wrl.moc"

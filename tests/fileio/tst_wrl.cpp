// The WRL page: its two keys and the option string both VRML suffixes get.
#include "fileio/lmWrlPreferencesGUI.h"
#include "lmPageTestSupport.h"
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
            QCOMPARE(acceptLog(wrl), lines(c.options));
        }

        // Nothing is change-tracked on apply: an untouched page pushes again.
        lmPreferencesHost::resetUnchanged();
        wrl.storeGUI();
        QCOMPARE(unchangedKeys().size(), std::size_t(2));
        QCOMPARE(applyLog(wrl), lines("inlineTextures=true"));
    }

    void storedValuesOutsideTheCombo()
    {
        lmWrlPreferencesGUII wrl;
        wrl.setDefault(lmPreferences::getData(), false);
        setStored("WrlFileIO reader optimization", 2);
        setStored("WrlFileIO inline textures", true);
        wrl.updateGUI();
        QCOMPARE(wrl.page()->_optimization->currentText(), QStringLiteral("Pro Engineer"));
        QVERIFY(wrl.page()->_inline_textures->isChecked());

        setStored("WrlFileIO reader optimization", 3);
        wrl.updateGUI();
        QCOMPARE(wrl.page()->_optimization->currentText(), QStringLiteral("Pro Engineer"));
        QCOMPARE(applyLog(wrl), lines("inlineTextures=true"));

        setStored("WrlFileIO inline textures", 1);
        lmStderrCapture capture;
        lmCallLog::clear();
        wrl.apply();
        QCOMPARE(capture.text().count("Attribute 'WrlFileIO inline textures' has wrong type"), 1);
        QCOMPARE(lmCallLog::lines(), lines("inlineTextures=false"));
    }
};

QTEST_MAIN(tst_Wrl)
#include "tst_wrl.moc"

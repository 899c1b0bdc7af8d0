// Random stores of random types under every key the categories own or only
// read, driven through every hook in random order: nothing may crash, only
// wrong-typed keys may be reported, and restoring the defaults gives every key
// its documented type back.
//
// LM_FUZZ_ROUNDS sets the number of rounds (long runs); LM_FUZZ_SEED replays
// one round.
#include "lmPluginUnderTest.h"
#include "lmRandomValues.h"

#include "lmCallLog.h"
#include "lmMessage.h"
#include "lmMessageHelpers.h"
#include "lmPreferences.h"
#include "lmPreferencesHost.h"
#include "lmTestSupport.h"

#include <QRegularExpression>
#include <QtTest>

#include <cstdio>
#include <set>

namespace {

// Keys that categories read, migrate or remove without writing a default.
const char *const kKeysWithoutDefault[] = {
    "texture search paths",
    "FileIO create uber materials",
    "RenderOptions local lights",
    "RenderOptions use back buffer",
    "OsbFileIO compress textures",
    "OsbFileIO textures image type",
    "KovaFileIO kova bin path",
};

boost::any valueOfType(lmRandomValues &random, const std::string &typeName)
{
    if (typeName == typeid(int).name())
        return random.anyInt();
    if (typeName == typeid(unsigned int).name())
        return static_cast<unsigned int>(random.anyInt());
    if (typeName == typeid(float).name())
        return random.anyFloat();
    if (typeName == typeid(double).name())
        return random.anyDouble();
    if (typeName == typeid(bool).name())
        return random.chance(0.5);
    if (typeName == typeid(std::string).name())
        return random.anyString();
    if (typeName == typeid(QString).name())
        return QString::fromUtf8(random.anyString().c_str());
    if (typeName == typeid(osg::Color3f).name())
        return random.anyColor();
    if (typeName == typeid(std::vector<float>).name())
        return random.anyList<float>([&random] { return random.anyFloat(); });
    if (typeName == typeid(std::vector<osg::Color3f>).name())
        return random.anyList<osg::Color3f>([&random] { return random.anyColor(); });
    return random.anyList<std::string>([&random] { return random.anyString(); });
}

int envNumber(const char *name, int fallback)
{
    bool ok = false;
    const int value = qEnvironmentVariableIntValue(name, &ok);
    return ok ? value : fallback;
}

} // namespace

class tst_StoreFuzz : public QObject
{
    Q_OBJECT

private:
    lmPluginUnderTest m_plugin;

    // Fills the store; returns the keys that hold a type other than their own.
    std::set<std::string> fill(lmRandomValues &random)
    {
        lmMessage &store = lmPreferences::getData();
        store.clear();
        std::set<std::string> wrongTyped;
        for (const auto &entry : m_plugin.documentedTypes()) {
            if (random.chance(0.1))
                continue; // missing
            const boost::any value =
                random.chance(0.5) ? valueOfType(random, entry.second) : random.anyValue();
            store.set(entry.first, value, true);
            if (value.type().name() != entry.second)
                wrongTyped.insert(entry.first);
        }
        for (const char *key : kKeysWithoutDefault)
            if (random.chance(0.7)) {
                store.set(key, random.anyValue(), true);
                wrongTyped.insert(key); // their type is not documented here
            }
        return wrongTyped;
    }

    void runHooks(lmRandomValues &random)
    {
        const auto categories = lmPreferencesHost::categories();
        const int steps = 10 + random.pick(20);
        for (int step = 0; step < steps; ++step) {
            const lmPreferencesHost::Category &category = categories[std::size_t(random.pick(int(categories.size())))];
            switch (random.pick(6)) {
            case 0:
                lmPreferencesHost::setDefault(category, random.chance(0.5));
                break;
            case 1:
                lmPreferencesHost::updateGUI(category);
                break;
            case 2:
                lmPreferencesHost::storeGUI(category);
                break;
            case 3:
                lmPreferencesHost::apply(category);
                break;
            case 4:
                lmPreferencesHost::newScene(category);
                break;
            default:
                lmPreferencesHost::resetUnchanged();
                break;
            }
        }
    }

    void round(std::uint32_t seed)
    {
        std::printf("store fuzz round, seed %u (replay with LM_FUZZ_SEED=%u)\n", seed, seed);
        std::fflush(stdout);
        lmRandomValues random(seed);
        lmDialogAnswerer dialogs; // any dialog a hook opens is dismissed

        const std::set<std::string> wrongTyped = fill(random);
        QString printed;
        {
            lmStderrCapture capture;
            runHooks(random);
            printed = capture.text();
        }

        // Only keys that held a foreign type may be reported.
        static const QRegularExpression report(QStringLiteral("getFromMessage : Attribute '([^']*)' has wrong type"));
        auto it = report.globalMatch(printed);
        while (it.hasNext()) {
            const std::string key = it.next().captured(1).toStdString();
            QVERIFY2(wrongTyped.count(key), qPrintable(QStringLiteral("seed %1: '%2' reported although correctly typed")
                                                          .arg(seed)
                                                          .arg(QString::fromStdString(key))));
        }

        lmPreferencesHost::setDefaultAll(true);
        const lmMessage &store = lmPreferences::getData();
        for (const auto &entry : m_plugin.documentedTypes()) {
            const boost::any &value = store.get(entry.first);
            QVERIFY2(!value.empty() && value.type().name() == entry.second,
                     qPrintable(QStringLiteral("seed %1: '%2' lost its type after restoring the defaults")
                                    .arg(seed)
                                    .arg(QString::fromStdString(entry.first))));
        }
        lmPreferencesHost::resetUnchanged();
        lmCallLog::clear();
    }

private slots:
    void initTestCase()
    {
        QString error;
        QVERIFY2(m_plugin.load(&error), qPrintable(error));
        QVERIFY(m_plugin.documentedTypes().size() > 0);
    }

    void cleanupTestCase() { QVERIFY(m_plugin.unload()); }

    void randomStoresAndHookOrders()
    {
        const int replay = envNumber("LM_FUZZ_SEED", -1);
        if (replay >= 0) {
            round(std::uint32_t(replay));
            return;
        }
        const int rounds = envNumber("LM_FUZZ_ROUNDS", 12);
        for (int i = 0; i < rounds; ++i) {
            round(std::uint32_t(1000 + i));
            if (QTest::currentTestFailed())
                return;
        }
    }
};

QTEST_MAIN(tst_StoreFuzz)
#include "tst_storefuzz.moc"

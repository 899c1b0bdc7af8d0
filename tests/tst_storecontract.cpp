// The typed store helpers: reads that refuse other types, writes that report
// whether the stored value changed.
#include "lmMessage.h"
#include "lmMessageHelpers.h"
#include "lmTestSupport.h"

#include <QtTest>

#include <limits>

namespace {

// Written twice (a change, then none), read back, overwritten by the second
// value (a change): for every value type.
template <class T>
bool roundTrip(const T &first, const T &second)
{
    lmMessage store;
    T out = second;
    const bool firstWrite = setToMessage(store, "key", first, true) && !setToMessage(store, "key", first, true);
    const bool readFirst = getFromMessage(store, "key", out) && out == first;
    return firstWrite && readFirst && setToMessage(store, "key", second, true) && getFromMessage(store, "key", out)
           && out == second;
}

} // namespace

class tst_StoreContract : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    void everyValueTypeReadsBackExactly()
    {
        QVERIFY(roundTrip<int>(-7, 2147483647));
        QVERIFY(roundTrip<unsigned int>(5u, 4294967295u));
        QVERIFY(roundTrip<float>(45.0f, 0.1f));
        QVERIFY(roundTrip<double>(1.0, 1e-300));
        QVERIFY(roundTrip<bool>(true, false));
        QVERIFY(roundTrip<std::string>("millimeter", ""));
        QVERIFY(roundTrip<QString>(QStringLiteral("file:///data\\ToolClip\\Help"), QString()));
        QVERIFY(roundTrip<osg::Color3f>(osg::Color3f(0.1f, 0.3f, 0.9f), osg::Color3f(0.956f, 0.521f, 0.086f)));
        QVERIFY(roundTrip<std::vector<float>>({1.0f, 0.0f}, {}));
        QVERIFY(roundTrip<std::vector<osg::Color3f>>({osg::Color3f(0, 0, 0)}, {osg::Color3f(1, 1, 1), osg::Color3f()}));
        QVERIFY(roundTrip<std::vector<std::string>>({"/textures"}, {"/a", "/b"}));
    }

    // A missing key is silent; a key of another type (no conversion between
    // numbers) prints the message and a stack; both leave the output and
    // the store alone.
    void readsRefuseMissingAndOtherTypes()
    {
        lmMessage store;
        store.set("Camera fov", boost::any(int(3)), true);
        store.set("a", boost::any(1.0), true);
        float out = 12.5f;
        int i = 7;
        lmStderrCapture capture;
        QVERIFY(!getFromMessage(store, "missing", out));
        QVERIFY(!getFromMessage(store, "Camera fov", out));
        QVERIFY(!getFromMessage(store, "a", i));
        const QString printed = capture.text();
        QCOMPARE(out, 12.5f);
        QCOMPARE(i, 7);
        const QString message = QStringLiteral("getFromMessage : Attribute 'Camera fov' has wrong type (is:'%1' != req:'%2')!\n")
                                    .arg(QLatin1String(typeid(int).name()), QLatin1String(typeid(float).name()));
        QVERIFY2(printed.startsWith(message), qPrintable(printed));
        QVERIFY2(printed.mid(message.size()).contains(QLatin1String(" 0# ")), qPrintable(printed)); // the stack
        QCOMPARE(printed.count(QLatin1String("getFromMessage : Attribute")), 2);
        QVERIFY(store.get("Camera fov").type() == typeid(int));
    }

    // Absent keys are inserted whatever the flag; present ones replaced only
    // with it, and only by another value or type; NaN never equals itself.
    void writeReportsChangesAndRespectsOverwrite()
    {
        lmMessage store;
        const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
        QVERIFY(setToMessage(store, "k", 1.5f, false));
        QVERIFY(!setToMessage(store, "k", 2.5f, false));
        float out = 0.0f;
        QVERIFY(getFromMessage(store, "k", out) && out == 1.5f);
        QVERIFY(!setToMessage(store, "k", 1.5f, true));
        QVERIFY(setToMessage(store, "k", 1.5, true));
        QVERIFY(store.get("k").type() == typeid(double));
        for (int round = 0; round < 2; ++round) {
            QVERIFY(setToMessage(store, "nan", nan, true));
            QVERIFY(setToMessage(store, "list", std::vector<float>{1.0f, nan}, true));
            QCOMPARE(setToMessage(store, "inf", inf, true), round == 0);
        }
    }
};

QTEST_MAIN(tst_StoreContract)
#include "tst_storecontract.moc"

// The typed store helpers: reads that refuse other types, writes that report
// whether the stored value changed.
#include "lmMessage.h"
#include "lmMessageHelpers.h"
#include "lmKeyTable.h"
#include "lmTestSupport.h"

#include <QtTest>

#include <cmath>
#include <limits>

class tst_StoreContract : public QObject
{
    Q_OBJECT

private:
    template <class T>
    void roundTrip(const T &first, const T &second)
    {
        lmMessage store;
        QVERIFY(setToMessage(store, "key", first, true));
        QVERIFY(!setToMessage(store, "key", first, true));
        T out = second;
        QVERIFY(getFromMessage(store, "key", out));
        QVERIFY(out == first);
        QVERIFY(setToMessage(store, "key", second, true));
        QVERIFY(getFromMessage(store, "key", out));
        QVERIFY(out == second);
    }

private slots:
    void init() { lmResetHost(); }

    void everyValueTypeReadsBackExactly()
    {
        roundTrip<int>(-7, 2147483647);
        roundTrip<unsigned int>(5u, 4294967295u);
        roundTrip<float>(45.0f, 0.1f);
        roundTrip<double>(1.0, 1e-300);
        roundTrip<bool>(true, false);
        roundTrip<std::string>("millimeter", "");
        roundTrip<QString>(QStringLiteral("file:///data\\ToolClip\\Help"), QString());
        roundTrip<osg::Color3f>(osg::Color3f(0.1f, 0.3f, 0.9f), osg::Color3f(0.956f, 0.521f, 0.086f));
        roundTrip<std::vector<float>>({1.0f, 0.0f}, {});
        roundTrip<std::vector<osg::Color3f>>({osg::Color3f(0, 0, 0)}, {osg::Color3f(1, 1, 1), osg::Color3f()});
        roundTrip<std::vector<std::string>>({"/textures"}, {"/a", "/b"});
    }

    void missingKeyIsSilentAndLeavesOutAlone()
    {
        lmMessage store;
        float out = 12.5f;
        lmStderrCapture capture;
        QVERIFY(!getFromMessage(store, "Camera fov", out));
        QCOMPARE(capture.text(), QString());
        QCOMPARE(out, 12.5f);
    }

    void wrongTypePrintsMessageAndStackAndLeavesOutAlone()
    {
        lmMessage store;
        store.set("Camera fov", boost::any(int(3)), true);
        float out = 12.5f;
        lmStderrCapture capture;
        QVERIFY(!getFromMessage(store, "Camera fov", out));
        const QString printed = capture.text();
        QCOMPARE(out, 12.5f);
        const QString message = QStringLiteral("getFromMessage : Attribute 'Camera fov' has wrong type (is:'%1' != req:'%2')!\n")
                                    .arg(QLatin1String(typeid(int).name()), QLatin1String(typeid(float).name()));
        QVERIFY2(printed.startsWith(message), qPrintable(printed));
        // The stack print follows: numbered frames.
        QVERIFY2(printed.mid(message.size()).contains(QLatin1String(" 0# ")), qPrintable(printed));
        // Nothing is repaired in the store.
        QVERIFY(store.get("Camera fov").type() == typeid(int));
    }

    void noConversionBetweenNumericTypes()
    {
        lmMessage store;
        store.set("a", boost::any(1.0), true);
        store.set("b", boost::any(1u), true);
        float f = 0.0f;
        int i = 0;
        lmStderrCapture capture;
        QVERIFY(!getFromMessage(store, "a", f));
        QVERIFY(!getFromMessage(store, "b", i));
        QCOMPARE(capture.text().count(QLatin1String("getFromMessage : Attribute")), 2);
    }

    void writeReportsChangesAndRespectsOverwrite()
    {
        lmMessage store;
        QVERIFY(setToMessage(store, "k", 1.5f, false)); // absent: inserted whatever the flag
        QVERIFY(!setToMessage(store, "k", 2.5f, false));
        float out = 0.0f;
        QVERIFY(getFromMessage(store, "k", out));
        QCOMPARE(out, 1.5f);
        QVERIFY(!setToMessage(store, "k", 1.5f, true));
        QVERIFY(setToMessage(store, "k", 2.5f, true));

        // Same value of another type is a change, and the type is replaced.
        QVERIFY(setToMessage(store, "k", 2.5, true));
        QVERIFY(store.get("k").type() == typeid(double));
    }

    void nanNeverEqualsItself()
    {
        lmMessage store;
        const float nan = std::numeric_limits<float>::quiet_NaN();
        QVERIFY(setToMessage(store, "k", nan, true));
        QVERIFY(setToMessage(store, "k", nan, true));
        const std::vector<float> withNan{1.0f, nan};
        QVERIFY(setToMessage(store, "list", withNan, true));
        QVERIFY(setToMessage(store, "list", withNan, true));
        const float inf = std::numeric_limits<float>::infinity();
        QVERIFY(setToMessage(store, "inf", inf, true));
        QVERIFY(!setToMessage(store, "inf", inf, true));
    }

};

QTEST_MAIN(tst_StoreContract)
#include "tst_storecontract.moc"

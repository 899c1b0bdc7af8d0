// The typed store helpers: reads that refuse other types, writes that report
// whether the stored value changed. Every key's own type is read and written
// by the page invariants and the untouched OK; here are the edges.
#include "lmMessage.h"
#include "lmMessageHelpers.h"
#include "lmTestSupport.h"

#include <QtTest>

#include <limits>

class tst_StoreContract : public QObject
{
    Q_OBJECT

private slots:
    void init() { lmResetHost(); }

    // A missing key is silent; a key of another type prints the message and
    // a stack, once; both leave the output and the store alone.
    void readsRefuseMissingAndOtherTypes()
    {
        lmMessage store;
        store.set("Camera fov", boost::any(int(3)), true);
        float out = 12.5f;
        lmStderrCapture capture;
        QVERIFY(!getFromMessage(store, "missing", out));
        QVERIFY(!getFromMessage(store, "Camera fov", out));
        const QString printed = capture.text();
        QCOMPARE(out, 12.5f);
        const QString message = QStringLiteral("getFromMessage : Attribute 'Camera fov' has wrong type (is:'%1' != req:'%2')!\n")
                                    .arg(QLatin1String(typeid(int).name()), QLatin1String(typeid(float).name()));
        QVERIFY2(printed.startsWith(message), qPrintable(printed));
        QVERIFY2(printed.mid(message.size()).contains(QLatin1String(" 0# ")), qPrintable(printed)); // the stack
        QCOMPARE(printed.count(QLatin1String("getFromMessage")), 1);
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
            QCOMPARE(setToMessage(store, "colors", std::vector<osg::Color3f>{osg::Color3f(1, 0, 0)}, true), round == 0);
            QCOMPARE(setToMessage(store, "strings", std::vector<std::string>{"/a", ""}, true), round == 0);
        }
    }
};

QTEST_MAIN(tst_StoreContract)
#include "tst_storecontract.moc"

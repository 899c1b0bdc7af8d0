// The store file: every value type survives a save and a load bit for bit, a
// damaged file is reported and left alone, two instances' saves merge key by
// key, a failed save loses nothing, and a saver killed at any moment leaves a
// file that loads.
#include "lmStoreFile.h"
#include "lmValueParser.h"

#include "lmMessageHelpers.h"

#include <QCoreApplication>
#include <QFile>
#include <QLockFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <charconv>
#include <cmath>
#include <csignal>
#include <limits>
#include <sys/resource.h>

namespace {

using Strings = std::vector<std::string>;

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<none>");
}

void writeAll(const QString &path, const QByteArray &data)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(data) == data.size());
}

// "A1 B2": int values under one-letter keys.
lmMessage ints(const QString &text)
{
    lmMessage store;
    for (const QString &item : text.split(' ', Qt::SkipEmptyParts))
        store.set(item.left(1).toStdString(), item.mid(1).toInt(), true);
    return store;
}

// Values of several types under many keys, different for each seed.
lmMessage largeStore(int keys, int seed)
{
    lmMessage store;
    for (int i = 0; i < keys; ++i) {
        const std::string key = "Key " + std::to_string(i);
        const float f = float(i * seed) / 7.0f;
        const boost::any values[] = {i * seed, f, std::string(std::size_t(i % 40), char('a' + seed)),
                                     std::vector<float>{f, -f}, osg::Color3f(f, 0.5f, -0.0f)};
        store.set(key, values[i % 5], true);
    }
    return store;
}

// Run as a child by the kill test: saves two large stores in turn, forever,
// telling the parent after each save.
int saveForever(const QString &path)
{
    const lmMessage stores[2] = {largeStore(3000, 1), largeStore(3000, 2)};
    lmStoreFile file(path);
    for (int i = 0; file.save(stores[i % 2]); ++i) {
        std::printf("saved\n");
        std::fflush(stdout);
    }
    std::fprintf(stderr, "%s\n", qPrintable(file.errorString()));
    return 4;
}

} // namespace

Q_DECLARE_METATYPE(boost::any)

class tst_StoreFile : public QObject
{
    Q_OBJECT

private slots:
    // Each value as it is written; then read, it writes the same bytes again,
    // and, where it has an exact text (8-bit strings that are not UTF-8 have
    // none), --set reads that text back to the same value.
    void everyTypeRoundTripsBitForBit_data()
    {
        QTest::addColumn<boost::any>("value");
        QTest::addColumn<QString>("written");
        const float inf = std::numeric_limits<float>::infinity();
        float tiny = 0; // the one float whose shortest text, read as a double, rounds to its neighbour
        const char tinyText[] = "7.038531e-26";
        std::from_chars(tinyText, tinyText + sizeof tinyText - 1, tiny);
        QTest::newRow("float") << boost::any(0.1f) << "{\"type\": \"float\", \"value\": 0.1}";
        QTest::newRow("float rounding twice") << boost::any(tiny) << "{\"type\": \"float\", \"value\": 7.038531e-26}";
        QTest::newRow("float subnormal") << boost::any(1e-45f) << "{\"type\": \"float\", \"value\": 1e-45}";
        QTest::newRow("float nan") << boost::any(std::numeric_limits<float>::quiet_NaN()) << "{\"type\": \"float\", \"value\": \"nan\"}";
        QTest::newRow("float -0") << boost::any(-0.0f) << "{\"type\": \"float\", \"value\": \"-0\"}";
        QTest::newRow("float next to 1") << boost::any(std::nextafter(1.0f, 2.0f)) << "{\"type\": \"float\", \"value\": 1.0000001}";
        QTest::newRow("double") << boost::any(0.1 + 0.2) << "{\"type\": \"double\", \"value\": 0.30000000000000004}";
        QTest::newRow("double -inf") << boost::any(-double(inf)) << "{\"type\": \"double\", \"value\": \"-inf\"}";
        QTest::newRow("int") << boost::any(std::numeric_limits<int>::min()) << "{\"type\": \"int\", \"value\": -2147483648}";
        QTest::newRow("uint") << boost::any(4294967295u) << "{\"type\": \"uint\", \"value\": 4294967295}";
        QTest::newRow("bool") << boost::any(false) << "{\"type\": \"bool\", \"value\": false}";
        QTest::newRow("string") << boost::any(std::string("a\"\\\n\x01\xe2\x82\xac")) << "{\"type\": \"string\", \"value\": \"a\\\"\\\\\\n\\u0001\u20ac\"}";
        QTest::newRow("string not UTF-8") << boost::any(std::string("\xff\x00", 2)) << "{\"type\": \"string\", \"value\": {\"base64\": \"/wA=\"}}";
        QTest::newRow("qstring") << boost::any(QStringLiteral("\u00e4 \U0001F600")) << "{\"type\": \"qstring\", \"value\": \"\u00e4 \U0001F600\"}";
        QTest::newRow("qstring lone surrogate") << boost::any(QString(QChar(0xD800))) << "{\"type\": \"qstring\", \"value\": \"\\ud800\"}";
        QTest::newRow("color") << boost::any(osg::Color3f(1, 0.5f, inf)) << "{\"type\": \"color\", \"value\": [1, 0.5, \"inf\"]}";
        QTest::newRow("floats") << boost::any(std::vector<float>{0.25f, -0.0f}) << "{\"type\": \"floats\", \"value\": [0.25, \"-0\"]}";
        QTest::newRow("colors") << boost::any(std::vector<osg::Color3f>{osg::Color3f(), osg::Color3f(0, 0, 1)}) << "{\"type\": \"colors\", \"value\": [[0, 0, 0], [0, 0, 1]]}";
        QTest::newRow("strings") << boost::any(Strings{"", "b c"}) << "{\"type\": \"strings\", \"value\": [\"\", \"b c\"]}";
        QTest::newRow("strings empty") << boost::any(Strings{}) << "{\"type\": \"strings\", \"value\": []}";
    }

    void everyTypeRoundTripsBitForBit()
    {
        QFETCH(boost::any, value);
        QFETCH(QString, written);
        lmMessage store, loaded;
        store.set("Key", value, true);
        const QByteArray document = lmStoreDocument::write(store);
        QCOMPARE(document, "{\n    \"format\": \"lmKernelPreferences-store\",\n    \"version\": 1,\n    \"values\": {\n"
                           "        \"Key\": " + written.toUtf8() + "\n    }\n}\n");
        QString error;
        QVERIFY2(lmStoreDocument::read(document, loaded, &error), qPrintable(error));
        QVERIFY(lmStoreDocument::sameValue(loaded.get("Key"), value));
        QCOMPARE(lmStoreDocument::write(loaded), document);
        const QString tag = QTest::currentDataTag(), text = lmValueParser::text(value);
        if (tag == "string not UTF-8" || tag == "qstring lone surrogate")
            return;
        boost::any parsed;
        QVERIFY2(lmValueParser::parse(text, value, parsed, &error), qPrintable(text + ": " + error));
        store.set("Key", parsed, true);
        QCOMPARE(lmStoreDocument::write(store), document);
    }

    // One document per way the reader refuses it; the file is reported, left
    // as it is, and the backup (when there is one) loaded instead.
    void damagedFileIsReportedAndKept_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("reason");
        QTest::addColumn<bool>("withBackup");
        const QByteArray head = "{\"format\": \"lmKernelPreferences-store\", \"version\": 1, \"values\": {\"A\": ";
        QTest::newRow("empty") << QByteArray("\n") << "the file is empty" << true;
        QTest::newRow("truncated") << head + "{\"type\": \"int\"" << "not valid JSON: " << false;
        QTest::newRow("not an object") << QByteArray("[]") << "not a JSON object" << true;
        QTest::newRow("other format") << QByteArray("{\"format\": \"x\"}") << "not a preferences store" << false;
        QTest::newRow("newer version") << QByteArray("{\"format\": \"lmKernelPreferences-store\", \"version\": 2}")
                                       << "unsupported version 2" << true;
        QTest::newRow("fraction as int") << head + "{\"type\": \"int\", \"value\": 1.5}}}"
                                         << "\"A\" is not valid: expected an int, found 1.5" << false;
        QTest::newRow("float overflow") << head + "{\"type\": \"float\", \"value\": 1e39}}}" << "in the float range" << true;
        QTest::newRow("unknown type") << head + "{\"type\": \"long\", \"value\": 1}}}" << "unknown type \"long\"" << true;
        QTest::newRow("bad list item") << head + "{\"type\": \"strings\", \"value\": [\"a\", 2]}}}"
                                       << "item 1: expected a string" << false;
        QTest::newRow("bad base64") << head + "{\"type\": \"string\", \"value\": {\"base64\": \"*\"}}}}"
                                    << "expected a string" << true;
    }

    void damagedFileIsReportedAndKept()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, reason);
        QFETCH(bool, withBackup);
        QTemporaryDir dir;
        lmStoreFile file(dir.filePath("prefs.json"));
        if (withBackup)
            QVERIFY(lmStoreFile(file.backupPath()).save(ints("S2")));
        writeAll(file.path(), content);
        lmMessage store = ints("H1");
        QCOMPARE(file.load(store), withBackup ? lmStoreFile::LoadedFromBackup : lmStoreFile::Failed);
        const QString message = file.messages().value(0);
        QVERIFY2(message.startsWith("Cannot load the preferences " + file.path() + ": ") && message.contains(reason),
                 qPrintable(message));
        QCOMPARE(lmStoreDocument::write(store), lmStoreDocument::write(ints(withBackup ? "H1 S2" : "H1")));
        // Saving over a file that could not be read would lose it.
        QVERIFY(!file.save(store));
        QCOMPARE(readAll(file.path()), content);
    }

    // Every cut through a document is refused: nothing half-read is taken.
    void everyTruncationIsRefused()
    {
        const QByteArray document = lmStoreDocument::write(largeStore(10, 3));
        for (int cut = 0; cut < document.trimmed().size(); ++cut) {
            lmMessage store;
            QVERIFY2(!lmStoreDocument::read(document.left(cut), store, nullptr), qPrintable(QString::number(cut)));
            QCOMPARE(store.size(), std::size_t(0));
        }
    }

    // What this instance read (base) and holds now (store) against what
    // another instance saved meanwhile (disk): only this instance's changes
    // go onto the disk's file, and the later save wins a key both changed.
    void savesMergeKeyByKey_data()
    {
        QTest::addColumn<QString>("base");
        QTest::addColumn<QString>("store");
        QTest::addColumn<QString>("disk"); // empty: no file
        QTest::addColumn<QString>("merged");
        QTest::newRow("theirs kept") << "A1 B1" << "A1 B1" << "A2 B1" << "A2 B1";
        QTest::newRow("mine written") << "A1 B1" << "A3 B1" << "A1 B1" << "A3 B1";
        QTest::newRow("both: the later wins") << "A1 B1" << "A3 B1" << "A2 B2" << "A3 B2";
        QTest::newRow("a new key of mine") << "A1" << "A1 C1" << "A1 B2" << "A1 B2 C1";
        QTest::newRow("a key I dropped") << "A1 B1" << "A1" << "A1 B1" << "A1";
        QTest::newRow("dropped, but they changed it") << "A1 B1" << "A1" << "A1 B2" << "A1 B2";
        QTest::newRow("no file yet") << "A1" << "A2" << "" << "A2";
    }

    void savesMergeKeyByKey()
    {
        QFETCH(QString, base);
        QFETCH(QString, store);
        QFETCH(QString, disk);
        QFETCH(QString, merged);
        QTemporaryDir dir;
        lmStoreFile file(dir.filePath("prefs.json"));
        if (!disk.isEmpty())
            QVERIFY(lmStoreFile(file.path()).save(ints(disk)));
        lmMessage result;
        QVERIFY2(file.saveChanges(ints(store), ints(base), result), qPrintable(file.errorString()));
        QCOMPARE(lmStoreDocument::write(result), lmStoreDocument::write(ints(merged)));
        QCOMPARE(readAll(file.path()), lmStoreDocument::write(ints(merged)));
        QCOMPARE(readAll(file.backupPath()), disk.isEmpty() ? QByteArray("<none>") : lmStoreDocument::write(ints(disk)));
        QVERIFY(!QFile::exists(file.path() + ".lock"));
    }

    // Another instance's lock, then a full disk: the save fails, says why,
    // and the file stays as it was; with room again the same store is saved.
    void failedSaveLosesNothing()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("prefs.json");
        const lmMessage small = largeStore(5, 1), large = largeStore(400, 2);
        lmStoreFile file(path);
        QVERIFY(file.save(small));
        const QByteArray before = readAll(path);
        {
            QLockFile other(path + ".lock");
            QVERIFY(other.lock());
            file.setLockTimeout(50);
            QVERIFY(!file.save(large));
            QVERIFY2(file.errorString().contains("another instance"), qPrintable(file.errorString()));
            QCOMPARE(readAll(path), before);
        }
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit saved;
        getrlimit(RLIMIT_FSIZE, &saved);
        rlimit limited = saved;
        limited.rlim_cur = rlim_t(before.size() + 64);
        setrlimit(RLIMIT_FSIZE, &limited);
        const bool savedWhileFull = file.save(large);
        setrlimit(RLIMIT_FSIZE, &saved);
        QVERIFY(!savedWhileFull);
        QVERIFY2(file.errorString().startsWith("The preferences were not saved to " + path), qPrintable(file.errorString()));
        QCOMPARE(readAll(path), before);
        QVERIFY2(file.save(large), qPrintable(file.errorString()));
        QCOMPARE(readAll(path), lmStoreDocument::write(large));
    }

    void killedSaverLeavesALoadableFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("prefs.json");
        QRandomGenerator random(17);
        for (int round = 0; round < 10; ++round) {
            QProcess saver;
            saver.start(QCoreApplication::applicationFilePath(), {"--save-forever", path});
            // After a first save, so that every round also meets the lock a
            // killed saver left behind.
            QVERIFY2(saver.waitForReadyRead(-1), saver.readAllStandardError().constData());
            // A random number of event-loop turns, not a time, picks the moment of the kill.
            for (int turns = int(random.bounded(20000)); turns > 0; --turns)
                QCoreApplication::processEvents();
            saver.kill();
            QVERIFY(saver.waitForFinished(-1));
            QVERIFY2(saver.exitStatus() == QProcess::CrashExit, saver.readAllStandardError().constData());
            lmMessage store;
            QCOMPARE(lmStoreFile(path).load(store), lmStoreFile::Loaded);
            QCOMPARE(store.size(), std::size_t(3000));
            QVERIFY(!QFile::exists(path + ".bak") || lmStoreFile::readFile(path + ".bak", store, nullptr));
        }
    }

    // Command-line text: lenient where a person would be, strict where a
    // value would be guessed. An empty "like" is a key without a value, whose
    // text must say its type.
    void commandLineValues_data()
    {
        QTest::addColumn<boost::any>("like");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected"); // type and text, or "!reason"
        const boost::any none, i = 0, f = 0.0f, b = false, s = std::string(), c = osg::Color3f(), sl = Strings();
        QTest::newRow("int overflow") << i << "2147483648" << "!expected an int";
        QTest::newRow("float spaced") << f << " 0.1 " << "float 0.1";
        QTest::newRow("float overflow") << f << "1e39" << "!expected a float";
        QTest::newRow("bool") << b << "TRUE" << "bool true";
        QTest::newRow("bool word") << b << "yes" << "!expected true or false";
        QTest::newRow("string as is") << s << " a=b \"c\" " << "string  a=b \"c\" ";
        QTest::newRow("color short") << c << "[0.5, 0.25]" << "!a colour [r, g, b]";
        QTest::newRow("strings of numbers") << sl << "[1]" << "!item 0: expected a string";
        QTest::newRow("untyped strings") << none << "[\"/a\", \"b c\"]" << "strings [\"/a\", \"b c\"]";
        QTest::newRow("untyped colors") << none << "[[1, 0, 0]]" << "colors [[1, 0, 0]]";
        QTest::newRow("untyped bad colour") << none << "[[1, 0]]" << "!item 0: expected a colour";
        QTest::newRow("untyped number") << none << "12" << "!holds no value yet";
    }

    void commandLineValues()
    {
        QFETCH(boost::any, like);
        QFETCH(QString, text);
        QFETCH(QString, expected);
        boost::any value;
        QString error;
        const bool ok = like.empty() ? lmValueParser::parseUntyped(text, value, &error)
                                     : lmValueParser::parse(text, like, value, &error);
        QCOMPARE(ok, !expected.startsWith('!'));
        if (!ok)
            QVERIFY2(error.contains(expected.mid(1)), qPrintable(error));
        else
            QCOMPARE(lmStoreDocument::typeName(value) + ' ' + lmValueParser::text(value), expected);
    }
};

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--save-forever") == 0)
        return saveForever(QString::fromLocal8Bit(argv[2]));
    tst_StoreFile test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_storefile.moc"

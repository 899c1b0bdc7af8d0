// The store file: every value type survives a save and a load bit for bit, a
// damaged file is reported and left alone, a failed save loses nothing, and a
// saver killed at any moment leaves a file that loads.
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
#include <csignal>
#include <cstring>
#include <limits>
#include <sys/resource.h>

namespace {

using Floats = std::vector<float>;
using Colors = std::vector<osg::Color3f>;
using Strings = std::vector<std::string>;

// Random values of every preference type, biased towards the awkward ones:
// arbitrary float and double bit patterns (NaN, infinities, subnormals, -0),
// bytes that are not UTF-8, lone surrogates, control characters.
class Generator
{
public:
    explicit Generator(quint32 seed) : m_random(seed) {}

    quint32 bits() { return m_random.generate(); }
    int below(int n) { return int(m_random.bounded(n)); }

    float anyFloat()
    {
        switch (below(4)) {
        case 0: return float(m_random.generateDouble() * 2000 - 1000);
        case 1: return std::array<float, 5>{0.1f, -0.0f, 45.0f, 1e-45f, std::numeric_limits<float>::max()}[below(5)];
        default: {
            const quint32 b = bits();
            float f;
            std::memcpy(&f, &b, sizeof f);
            return f;
        }
        }
    }

    double anyDouble()
    {
        const quint64 b = m_random.generate64();
        double d;
        std::memcpy(&d, &b, sizeof d);
        return below(3) == 0 ? m_random.generateDouble() * 1e6 : d;
    }

    std::string bytes()
    {
        std::string text;
        const bool utf8 = below(2) == 0;
        for (int i = below(12); i > 0; --i)
            text += utf8 ? std::array<const char *, 6>{"a", "\xc3\xbc", "\xe2\x82\xac", "\xf0\x9f\x98\x80", "\"", "\n"}[below(6)]
                         : std::string(1, char(bits() & 0xFF));
        return text;
    }

    QString qstring()
    {
        QString text;
        for (int i = below(10); i > 0; --i)
            text += QChar(ushort(below(3) == 0 ? 0xD800 + below(0x800) : bits() & 0xFFFF));
        return text;
    }

    osg::Color3f color() { return osg::Color3f(anyFloat(), anyFloat(), anyFloat()); }

    boost::any value(int type)
    {
        switch (type) {
        case 0: return int(bits());
        case 1: return unsigned(bits());
        case 2: return anyFloat();
        case 3: return anyDouble();
        case 4: return below(2) == 0;
        case 5: return bytes();
        case 6: return qstring();
        case 7: return color();
        case 8: return list<float>([this] { return anyFloat(); });
        case 9: return list<osg::Color3f>([this] { return color(); });
        default: return list<std::string>([this] { return bytes(); });
        }
    }

    lmMessage store(int keys)
    {
        lmMessage store;
        for (int i = 0; i < keys; ++i)
            store.set("Key " + std::to_string(i), value(i % 11), true);
        return store;
    }

private:
    template <class T, class F>
    std::vector<T> list(F make)
    {
        std::vector<T> values(std::size_t(below(5)));
        std::generate(values.begin(), values.end(), make);
        return values;
    }

    QRandomGenerator m_random;
};

// Bitwise comparison written independently of the code under test.
template <class F>
bool sameBits(F a, F b)
{
    return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0;
}

bool sameColor(const osg::Color3f &a, const osg::Color3f &b)
{
    return sameBits(a.red(), b.red()) && sameBits(a.green(), b.green()) && sameBits(a.blue(), b.blue());
}

template <class T>
const T *as(const boost::any &v)
{
    return lmHoldsType(v, typeid(T)) ? boost::unsafe_any_cast<T>(&v) : nullptr;
}

bool identical(const boost::any &a, const boost::any &b)
{
    if (std::strcmp(a.type().name(), b.type().name()) != 0)
        return false;
    if (auto *x = as<float>(a)) return sameBits(*x, *as<float>(b));
    if (auto *x = as<double>(a)) return sameBits(*x, *as<double>(b));
    if (auto *x = as<osg::Color3f>(a)) return sameColor(*x, *as<osg::Color3f>(b));
    if (auto *x = as<Floats>(a))
        return std::equal(x->begin(), x->end(), as<Floats>(b)->begin(), as<Floats>(b)->end(), sameBits<float>);
    if (auto *x = as<Colors>(a))
        return std::equal(x->begin(), x->end(), as<Colors>(b)->begin(), as<Colors>(b)->end(), sameColor);
    if (auto *x = as<int>(a)) return *x == *as<int>(b);
    if (auto *x = as<unsigned>(a)) return *x == *as<unsigned>(b);
    if (auto *x = as<bool>(a)) return *x == *as<bool>(b);
    if (auto *x = as<std::string>(a)) return *x == *as<std::string>(b);
    if (auto *x = as<QString>(a)) return *x == *as<QString>(b);
    if (auto *x = as<Strings>(a)) return *x == *as<Strings>(b);
    return false;
}

QString firstDifference(const lmMessage &expected, const lmMessage &actual)
{
    if (expected.keys() != actual.keys())
        return QStringLiteral("different keys");
    for (const auto &entry : expected.values())
        if (!identical(entry.second, actual.get(entry.first)))
            return QStringLiteral("value of \"%1\" (%2)")
                .arg(QString::fromStdString(entry.first), lmStoreDocument::typeName(entry.second));
    return QString();
}

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeAll(const QString &path, const QByteArray &data)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(file.write(data), qint64(data.size()));
}

// Run as a child by the kill test: saves two large stores in turn, forever,
// telling the parent after each save.
int saveForever(const QString &path)
{
    Generator generator(7);
    const lmMessage stores[2] = {generator.store(3000), generator.store(3000)};
    lmStoreFile file(path);
    lmMessage ignored;
    if (file.load(ignored) == lmStoreFile::Failed)
        return 3;
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
    void everyTypeRoundTripsBitForBit()
    {
        for (quint32 seed = 1; seed <= 200; ++seed) {
            Generator generator(seed);
            const lmMessage original = generator.store(33);
            const QByteArray document = lmStoreDocument::write(original);
            lmMessage loaded;
            QString error;
            QVERIFY2(lmStoreDocument::read(document, loaded, &error), qPrintable(error + "\n" + document));
            const QString difference = firstDifference(original, loaded);
            QVERIFY2(difference.isEmpty(), qPrintable(QString("seed %1: %2").arg(seed).arg(difference)));
            // Writing what was read gives the same bytes again.
            QCOMPARE(lmStoreDocument::write(loaded), document);
        }
    }

    void documentReadsAsGiven()
    {
        lmMessage store;
        store.set("Ratio", 0.1f, true);
        const QByteArray document = lmStoreDocument::write(store);
        QVERIFY(document.startsWith("{\n    \"format\": \"lmKernelPreferences-store\",\n    \"version\": 1,"));
        QVERIFY(document.contains("\"Ratio\": {\"type\": \"float\", \"value\": 0.1}"));
        // A float written with more digits than it needs still reads as that float.
        QCOMPARE(lmStoreDocument::floatFromJsonNumber(double(0.1f)), 0.1f);
        // The only float magnitude whose shortest text, read as a double and
        // then rounded to float, lands on its neighbour.
        const char text[] = "7.038531e-26";
        float exact = 0;
        std::from_chars(text, text + sizeof text - 1, exact);
        QVERIFY(static_cast<float>(7.038531e-26) != exact);
        lmMessage tiny, loaded;
        tiny.set("Tiny", exact, true);
        QVERIFY(lmStoreDocument::write(tiny).contains("\"value\": 7.038531e-26}"));
        QVERIFY(lmStoreDocument::read(lmStoreDocument::write(tiny), loaded, nullptr));
        QCOMPARE(firstDifference(tiny, loaded), QString());
    }

    void savedFileLoadsTheSameAndKeepsTheBackup()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("sub/prefs.json");
        Generator generator(99);
        const lmMessage first = generator.store(50), second = generator.store(50);
        lmStoreFile file(path);
        lmMessage loaded;
        QCOMPARE(file.load(loaded), lmStoreFile::NoFile);
        QVERIFY2(file.save(first), qPrintable(file.errorString()));
        QVERIFY(!QFile::exists(file.backupPath()));
        QVERIFY2(file.save(second), qPrintable(file.errorString()));

        QCOMPARE(lmStoreFile(path).load(loaded), lmStoreFile::Loaded);
        QCOMPARE(firstDifference(second, loaded), QString());
        lmMessage backup;
        QString error;
        QVERIFY2(lmStoreFile::readFile(file.backupPath(), backup, &error), qPrintable(error));
        QCOMPARE(firstDifference(first, backup), QString());
        QVERIFY(!QFile::exists(path + ".lock"));
    }

    void damagedFileIsReportedAndLeftAlone()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("prefs.json");
        Generator generator(5);
        const lmMessage older = generator.store(22), newer = generator.store(22);
        lmStoreFile writer(path);
        QVERIFY(writer.save(older));
        QVERIFY(writer.save(newer));
        const QByteArray good = readAll(path);
        const QByteArray backup = readAll(writer.backupPath());
        const int contentEnd = good.trimmed().size();
        const int step = std::max(1, contentEnd / 100);

        int failures = 0;
        QRandomGenerator random(11);
        for (int round = 0; round < 160; ++round) {
            // A hundred cut points through the document, then random bytes.
            QByteArray damaged = good;
            const bool truncated = round < 100;
            if (truncated)
                damaged.truncate(round * step);
            else
                damaged[int(random.bounded(contentEnd))] = char(random.bounded(256));
            const bool withBackup = round % 3 != 0;
            writeAll(path, damaged);
            if (withBackup)
                writeAll(writer.backupPath(), backup);
            else
                QFile::remove(writer.backupPath());

            lmMessage store, expected;
            store.set("Host key", 1, true);
            expected.set("Host key", 1, true);
            lmStoreFile file(path);
            const lmStoreFile::LoadResult result = file.load(store);
            if (result == lmStoreFile::Loaded) {
                QVERIFY2(!truncated, "a truncated file loaded");
                continue;
            }
            ++failures;
            QVERIFY(file.messages().value(0).startsWith("Cannot load the preferences " + path + ": "));
            QCOMPARE(result, withBackup ? lmStoreFile::LoadedFromBackup : lmStoreFile::Failed);
            if (withBackup)
                for (const auto &entry : older.values())
                    expected.set(entry.first, entry.second, true);
            QCOMPARE(firstDifference(expected, store), QString());

            // Saving over a file that could not be read would lose it.
            QVERIFY(!file.save(store));
            QCOMPARE(readAll(path), damaged);
            if (withBackup)
                QCOMPARE(readAll(writer.backupPath()), backup);
        }
        QVERIFY(failures > 120);
    }

    // One document per way the reader can refuse it.
    void damageIsNamed_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("reason");
        const QByteArray head = "{\"format\": \"lmKernelPreferences-store\", \"version\": 1, \"values\": ";
        QTest::newRow("empty") << QByteArray("\n") << "the file is empty";
        QTest::newRow("not json") << QByteArray("{\"format\": ") << "not valid JSON: ";
        QTest::newRow("newer version") << QByteArray("{\"format\": \"lmKernelPreferences-store\", \"version\": 2}")
                                       << "unsupported version 2";
        QTest::newRow("fraction as int") << head + "{\"A\": {\"type\": \"int\", \"value\": 1.5}}}"
                                         << "\"A\" is not valid: expected an int, found 1.5";
        QTest::newRow("unknown type") << head + "{\"A\": {\"type\": \"long\", \"value\": 1}}}" << "unknown type \"long\"";
        QTest::newRow("bad list item") << head + "{\"A\": {\"type\": \"strings\", \"value\": [\"a\", 2]}}}"
                                       << "item 1: expected a string";
    }

    void damageIsNamed()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, reason);
        lmMessage store;
        QString error;
        QVERIFY(!lmStoreDocument::read(content, store, &error));
        QVERIFY2(error.contains(reason), qPrintable(error));
        QCOMPARE(store.size(), std::size_t(0));
    }

    void failedSaveLosesNothing()
    {
        QTemporaryDir dir;
        Generator generator(3);
        const lmMessage small = generator.store(5), large = generator.store(400);

        // A folder that cannot exist: its parent is a regular file.
        writeAll(dir.filePath("plain"), "x");
        lmStoreFile blocked(dir.filePath("plain/prefs.json"));
        QVERIFY(!blocked.save(small));
        QVERIFY2(blocked.errorString().contains("cannot create the folder"), qPrintable(blocked.errorString()));

        // Another instance holds the lock.
        const QString path = dir.filePath("prefs.json");
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

        // A full disk: the process may not write files beyond a few kilobytes.
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
        // Once there is room again the same values are saved.
        QVERIFY2(file.save(large), qPrintable(file.errorString()));
        lmMessage loaded;
        QCOMPARE(lmStoreFile(path).load(loaded), lmStoreFile::Loaded);
        QCOMPARE(firstDifference(large, loaded), QString());
    }

    void killedSaverLeavesALoadableFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("prefs.json");
        QRandomGenerator random(17);
        for (int round = 0; round < 10; ++round) {
            QProcess saver;
            saver.start(QCoreApplication::applicationFilePath(), {"--save-forever", path});
            QVERIFY(saver.waitForStarted(-1));
            // Wait for a save so that every round also meets the lock a
            // killed saver left behind.
            QVERIFY2(saver.waitForReadyRead(-1), saver.readAllStandardError().constData());
            // A random number of event-loop turns, not a time, picks the moment of the kill.
            for (int turns = int(random.bounded(20000)); turns > 0; --turns)
                QCoreApplication::processEvents();
            saver.kill();
            QVERIFY(saver.waitForFinished(-1));
            QVERIFY2(saver.exitStatus() == QProcess::CrashExit, saver.readAllStandardError().constData());

            lmMessage store;
            lmStoreFile file(path);
            QCOMPARE(file.load(store), lmStoreFile::Loaded);
            QCOMPARE(store.size(), std::size_t(3000));
            QString error;
            QVERIFY2(!QFile::exists(file.backupPath()) || lmStoreFile::readFile(file.backupPath(), store, &error),
                     qPrintable(error));
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
        const boost::any none, i = 0, u = 0u, f = 0.0f, b = false, s = std::string(), c = osg::Color3f(),
                               sl = Strings();
        QTest::newRow("int overflow") << i << "2147483648" << "!expected an int";
        QTest::newRow("uint negative") << u << "-1" << "!expected an unsigned int";
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
        if (expected.startsWith('!')) {
            QVERIFY(!ok);
            QVERIFY2(error.contains(expected.mid(1)), qPrintable(error));
            return;
        }
        QVERIFY2(ok, qPrintable(error));
        QCOMPARE(lmStoreDocument::typeName(value) + ' ' + lmValueParser::text(value), expected);
    }

    void valueTextReadsBack()
    {
        // Text is Unicode: 8-bit strings that are not UTF-8 have no exact text.
        const auto unicode = [](const std::string &s) { return QString::fromStdString(s).toStdString() == s; };
        Generator generator(23);
        for (int i = 0; i < 2000; ++i) {
            const boost::any original = generator.value(i % 11);
            if (auto *s = as<std::string>(original); s && !unicode(*s))
                continue;
            if (auto *s = as<QString>(original); s && QString::fromUtf8(s->toUtf8()) != *s)
                continue;
            if (auto *l = as<Strings>(original); l && !std::all_of(l->begin(), l->end(), unicode))
                continue;
            const QString text = lmValueParser::text(original);
            boost::any back;
            QString error;
            QVERIFY2(lmValueParser::parse(text, original, back, &error), qPrintable(text + ": " + error));
            QVERIFY2(identical(original, back), qPrintable(text));
        }
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

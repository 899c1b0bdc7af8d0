// lmprefs-host's command line, through the real executable and module.
#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr bool kSanitized = LM_TEST_SCALE > 1;

struct Run
{
    int status = -1;
    QString out;
    QString err;

    // The lines the host itself wrote to stderr (Qt may add its own).
    QStringList messages() const
    {
        QStringList lines;
        for (const QString &line : err.split('\n'))
            if (line.startsWith(QLatin1String("lmprefs-host: ")))
                lines << line.mid(14);
        return lines;
    }
};

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<none>");
}

void writeFile(const QString &path, const QByteArray &data)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(data);
}

QByteArray storeWithFov(int fov)
{
    return QStringLiteral("{\"format\": \"lmKernelPreferences-store\", \"version\": 1, \"values\": "
                          "{\"Camera fov\": {\"type\": \"float\", \"value\": %1}}}\n")
        .arg(fov)
        .toUtf8();
}

QJsonObject storedValues(const QString &document)
{
    return QJsonDocument::fromJson(document.toUtf8()).object().value("values").toObject();
}

} // namespace

class tst_PrefsCli : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;

    QString store() const { return m_dir.filePath(QStringLiteral("prefs.json")); }

    QProcessEnvironment environment() const
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), m_dir.filePath(QStringLiteral("config")));
        return env;
    }

    // No budget of our own: ctest's per-test timeout ends a hang.
    Run run(const QStringList &arguments, const QProcessEnvironment &env) const
    {
        QProcess process;
        process.setProcessEnvironment(env);
        process.start(QStringLiteral(LM_HOST_PATH), arguments);
        Run result;
        if (!process.waitForFinished(-1))
            return result;
        result.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        result.out = QString::fromUtf8(process.readAllStandardOutput());
        result.err = QString::fromUtf8(process.readAllStandardError());
        return result;
    }

    // Headless, with the module under test and the test's store file.
    Run host(const QStringList &arguments) const
    {
        return run(QStringList{"--headless", "--plugin", LM_PLUGIN_PATH, "--preferences", store()} + arguments,
                   environment());
    }

private slots:
    void init()
    {
        QFile::remove(store());
        QFile::remove(store() + ".bak");
    }

    // Arguments and the store file they meet: exit status, a line of the
    // output, a message on stderr, and whether the file stays as it was.
    void runsEndAsDocumented_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("file");   // the store file before the run; empty: none
        QTest::addColumn<QByteArray>("backup"); // its backup; empty: none
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("out");     // a line of standard output
        QTest::addColumn<QString>("message"); // the start of one of the host's messages
        const QByteArray fov50 = storeWithFov(50), none, damaged = storeWithFov(50).left(60);
        const auto row = [](const char *name, const QStringList &arguments, const QByteArray &file, int status,
                            const QString &message) {
            QTest::newRow(name) << arguments << file << QByteArray() << status << QString() << message;
        };
        row("unknown key", {"--set", "Camera fvo=1", "--accept"}, fov50, 2, "unknown preference key \"Camera fvo\"");
        row("bad value", {"--set", "Camera fov=wide", "--accept"}, fov50, 2,
            "bad value for \"Camera fov\": expected a float, found \"wide\"");
        row("later bad value", {"--set", "Camera fov=30", "--set", "Powerwall width=[1]", "--accept"}, fov50, 2,
            "bad value for \"Powerwall width\"");
        row("no value", {"--set", "Camera fov"}, fov50, 2, "--set expects KEY=VALUE");
        row("unknown edition", {"--edition", "ultimate"}, fov50, 2, "unknown edition \"ultimate\"");
        row("missing plug-in", {"--plugin", "/nonexistent/lmKernelPreferences.so"}, fov50, 2,
            "no plug-in module at /nonexistent/lmKernelPreferences.so");
        row("unknown option", {"--frobnicate"}, fov50, 2, "Unknown option 'frobnicate'.");
        row("stray argument", {"extra"}, fov50, 2, "unexpected argument \"extra\"");
        row("unwritable trace", {"--trace", "/nonexistent/trace.txt"}, fov50, 2, "cannot write the trace /nonexistent/trace.txt");
        row("unknown describe format", {"--describe=xml"}, fov50, 2, "unknown --describe format \"xml\"");
        row("preferences a folder", {"--preferences", "/"}, fov50, 2, "the preferences file / is a folder");
        row("untyped value for a key without one", {"--set", "texture search paths=/data"}, fov50, 2,
            "bad value for \"texture search paths\": the key holds no value yet");
        row("damaged file not replaced", {"--set", "Camera fov=70", "--accept"}, damaged, 1,
            "The preferences were not saved to ");
        QTest::newRow("damaged file, the backup loaded")
            << QStringList{"--diff-defaults"} << damaged << storeWithFov(55) << 0 << "Camera fov=55 (default: 45)"
            << "Starting from the backup ";
        QTest::newRow("host error log") << QStringList{"--set", "FileIO tmp path=/nonexistent/tmp", "--accept"} << none
                                        << none << 0 << QString()
                                        << "host error: FileIO preferences: tmp path doesn't exist!";
        QTest::newRow("help") << QStringList{"--help"} << fov50 << none << 0 << "  --diff-defaults" << QString();
    }

    void runsEndAsDocumented()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, file);
        QFETCH(QByteArray, backup);
        QFETCH(int, status);
        QFETCH(QString, out);
        QFETCH(QString, message);
        if (!file.isEmpty())
            writeFile(store(), file);
        if (!backup.isEmpty())
            writeFile(store() + ".bak", backup);
        const Run result = host(arguments);
        QVERIFY2(result.status == status, qPrintable(result.err));
        if (!out.isEmpty())
            QVERIFY2(result.out.split('\n').filter(out).size() == 1, qPrintable(result.out));
        const QStringList messages = result.messages();
        if (!message.isEmpty())
            QVERIFY2(std::any_of(messages.begin(), messages.end(), [&](const QString &m) { return m.startsWith(message); }),
                     qPrintable(result.err));
        // Bad arguments or input: the reason alone, in one line.
        if (status == 2)
            QCOMPARE(messages.size(), 1);
        if (status != 0 || !arguments.contains("--accept")) {
            QCOMPARE(fileBytes(store()), file.isEmpty() ? fileBytes("") : file);
            QCOMPARE(fileBytes(store() + ".bak"), backup.isEmpty() ? fileBytes("") : backup);
        }
    }

    // Values set and accepted are saved in their types, reach the host and
    // load in the next run; a key that a page reads but gives no default
    // takes its type from the value.
    void setAndAcceptPersistAcrossRuns()
    {
        const QString colors = "[[1, 0, 0], [0, 0.5, 1]]", paths = "[\"/data/textures\", \"/mnt/shared maps\"]";
        const Run first = host({"--set", "Camera fov=60", "--set", "Stereo eye separation=nan", "--set",
                                "RenderOptions background colors=" + colors, "--set", "texture search paths=" + paths,
                                "--set", "Help Path=http://intranet/help", "--accept", "--trace", "-"});
        QCOMPARE(first.status, 0);
        QCOMPARE(first.messages(), QStringList({"No preferences file " + store() + " yet: starting from the defaults."}));
        QVERIFY(first.out.split('\n').contains(
            "lmOSGWidget::setAllGradientBackgrounds([Color3f(1, 0, 0), Color3f(0, 0.5, 1)], [1, 0])"));
        QVERIFY(!QFile::exists(store() + ".bak"));
        const QByteArray saved = fileBytes(store());
        const Run dump = host({"--dump-store"});
        QCOMPARE(dump.out.toUtf8(), saved);
        const QJsonObject values = storedValues(dump.out);
        const auto json = [](const QString &text) { return QJsonDocument::fromJson(text.toUtf8()).array(); };
        QCOMPARE(values.value("Camera fov").toObject(), QJsonObject({{"type", "float"}, {"value", 60}}));
        QCOMPARE(values.value("Stereo eye separation").toObject(), QJsonObject({{"type", "float"}, {"value", "nan"}}));
        QCOMPARE(values.value("RenderOptions background colors").toObject(), QJsonObject({{"type", "colors"}, {"value", json(colors)}}));
        QCOMPARE(values.value("texture search paths").toObject(), QJsonObject({{"type", "strings"}, {"value", json(paths)}}));
        QCOMPARE(values.value("Help Path").toObject(), QJsonObject({{"type", "qstring"}, {"value", "http://intranet/help"}}));

        // Other pages may legitimately store values other than their defaults;
        // the ones set here must be listed.
        const QStringList lines = host({"--diff-defaults"}).out.split('\n');
        QVERIFY2(lines.contains("Camera fov=60 (default: 45)"), qPrintable(lines.join('\n')));
        QVERIFY2(lines.contains("Stereo eye separation=nan (default: 63)"), qPrintable(lines.join('\n')));

        // The key holds a list now: plain text is no longer guessed. Accepted
        // again, the previous file is kept; the stored value reaches the host
        // first, then the one set.
        QCOMPARE(host({"--set", "texture search paths=/data"}).messages().value(0),
                 QStringLiteral("bad value for \"texture search paths\": not valid JSON: illegal value"));
        const QString trace = m_dir.filePath("trace.txt");
        QCOMPARE(host({"--set", "Camera fov=20", "--accept", "--trace", trace}).status, 0);
        QCOMPARE(fileBytes(store() + ".bak"), saved);
        QCOMPARE(QString::fromUtf8(fileBytes(trace)).split('\n').filter("lmOSGWidget::setFov"),
                 QStringList({"lmOSGWidget::setFov(-1, 60) [undo blocked]", "lmOSGWidget::setFov(-1, 20) [undo blocked]"}));
    }

    // Every key of a fresh store once, with its stored type and default, on
    // the pages in dialog order; a few rows checked as a person sees them.
    void describeListsEveryKeyOnce()
    {
        const QJsonObject values = storedValues(host({"--dump-store"}).out);
        QVERIFY(values.size() > 600);
        const Run described = host({"--describe=json"});
        QCOMPARE(described.status, 0);
        const QJsonArray rows = QJsonDocument::fromJson(described.out.toUtf8()).array();
        QStringList pages;
        QMap<QString, QJsonObject> byKey;
        for (const QJsonValue &value : rows) {
            const QJsonObject row = value.toObject();
            const QString key = row.value("key").toString();
            QVERIFY2(!byKey.contains(key), qPrintable("listed twice: " + key));
            byKey.insert(key, row);
            if (!pages.contains(row.value("page").toString()))
                pages << row.value("page").toString();
            if (key == "texture search paths") { // held by a page, with no default
                QCOMPARE(row.value("type").toString() + row.value("default").toString(), QString());
                continue;
            }
            QVERIFY2(values.contains(key), qPrintable("not in a fresh store: " + key));
            const QJsonObject stored = values.value(key).toObject();
            QCOMPARE(row.value("type").toString(), stored.value("type").toString());
            // Shown as --set takes them: strings as they are, the rest as JSON.
            const QString shown = row.value("default").toString();
            QCOMPARE(stored.value("value").isString() ? QJsonValue(shown)
                                                      : QJsonDocument::fromJson(("[" + shown + "]").toUtf8()).array().first(),
                     stored.value("value"));
        }
        QCOMPARE(byKey.size(), values.size() + 1);
        const QStringList listed = host({"--list-pages"}).out.split('\n', Qt::SkipEmptyParts);
        QCOMPARE(pages.mid(0, listed.size()), listed);

        const QList<QStringList> expected = {
            {"Camera fov", "Camera", "Field of View", "1 100"},
            {"Devices spacemouse rotation pivot", "Devices/Devices", "Rotation Pivot",
             "Camera|Selected Object/Origin|Focus Distance|Standard"},
            {"MainWindow show tool buttons text", "MainWindow", "", ""},
            {"WebInterface white list", "WebInterface", "Allowed hosts", ""},
            {"RenderOptions background ints", "Render Options", "Background", ""},
            {"StepOptions import coord systems", "FileIO/Step", "", ""},
            {"PLMXML load referenced files", "FileIO/PLM XML", "Import Referenced Files", ""},
        };
        for (const QStringList &e : expected) {
            const QJsonObject row = byKey.value(e[0]);
            const QJsonObject range = row.value("range").toObject();
            const QString choices = row.contains("items") ? row.value("items").toVariant().toStringList().join('|')
                                    : range.isEmpty()     ? QString()
                                                          : QStringLiteral("%1 %2").arg(range.value("minimum").toDouble())
                                                                .arg(range.value("maximum").toDouble());
            QCOMPARE(QStringList({e[0], row.value("page").toString(), row.value("label").toString(), choices}), e);
        }
        // The table: a header, a rule and one line per key.
        const QStringList lines = host({"--describe"}).out.split('\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), rows.size() + 2);
        QVERIFY(lines.contains("| Camera | Field of View | Camera fov | float | 45 | 1 to 100 |"));
    }

    // Every page listed has its screenshot, in another display language; a
    // restricted edition has no camera page. Painting 32 pages is Qt's work,
    // which a sanitizer build does not check: there the pages are only listed.
    void screenshotsOfThePagesOfTheEdition()
    {
        const QString shots = m_dir.filePath("shots");
        QStringList arguments{"--list-pages", "--app-name", "Viewer", "--data-dir", m_dir.path(), "--language", "japanese"};
        if (!kSanitized)
            arguments << "--screenshots" << shots;
        const Run full = host(arguments);
        QCOMPARE(full.status, 0);
        const QStringList pages = full.out.split('\n', Qt::SkipEmptyParts);
        QVERIFY2(pages.contains("Camera") && pages.contains("FileIO/OSB / VPB"), qPrintable(full.out));
        if (!kSanitized) {
            QCOMPARE(QDir(shots).entryList({"*.png"}).size(), pages.size());
            const QImage camera(QDir(shots).filePath("Camera.png"));
            QVERIFY(camera.width() >= 400 && camera.height() >= 300);
            QVERIFY(QFile::exists(QDir(shots).filePath("FileIO_OSB - VPB.png")));
        }
        const Run restricted = host({"--list-pages", "--edition", "restricted"});
        QCOMPARE(restricted.status, 0);
        QVERIFY(!restricted.out.split('\n').contains("Camera"));
    }

    // A module of the other Qt major version would crash the host once loaded.
    void moduleOfTheOtherQtIsRefusedUnloaded()
    {
        const QString other = QStringLiteral(LM_OTHER_QT_PLUGIN_PATH);
        if (!QFile::exists(other))
            QSKIP("no module built against the other Qt major version (LM_OTHER_QT_PLUGIN)");
        writeFile(store(), storeWithFov(50));
        const Run refused = run({"--headless", "--plugin", other, "--preferences", store(), "--accept"}, environment());
        QCOMPARE(refused.status, 1);
        QCOMPARE(refused.messages().size(), 1);
        QVERIFY2(refused.messages().first().contains(" is built against Qt "), qPrintable(refused.err));
        QCOMPARE(fileBytes(store()), storeWithFov(50));
    }

    // Without the test's store file: the user's configuration folder; without
    // a display and not headless: refused.
    void storeLocationAndDisplay()
    {
        QProcessEnvironment env = environment();
        QCOMPARE(run({"--headless", "--plugin", LM_PLUGIN_PATH, "--set", "Camera fov=33", "--accept"}, env).status, 0);
        const QString path = env.value("XDG_CONFIG_HOME") + "/lmprefs-host/preferences.json";
        QVERIFY(fileBytes(path).contains("\"Camera fov\": {\"type\": \"float\", \"value\": 33}"));
        for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            env.remove(name);
        const Run refused = run({"--plugin", LM_PLUGIN_PATH, "--preferences", store()}, env);
        QCOMPARE(refused.status, 1);
        QVERIFY(refused.messages().value(0).startsWith("no display"));
    }
};

QTEST_GUILESS_MAIN(tst_PrefsCli)
#include "tst_prefscli.moc"

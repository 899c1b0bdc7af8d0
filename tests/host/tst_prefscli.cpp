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

    Run run(const QStringList &arguments, const QProcessEnvironment &env) const
    {
        QProcess process;
        process.setProcessEnvironment(env);
        process.start(QStringLiteral(LM_HOST_PATH), arguments);
        Run result;
        // No budget of our own: a sanitizer build on a busy machine is slow,
        // and ctest's per-test timeout (scaled by build type) ends a hang.
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

    void pagesFollowTheEdition()
    {
        const Run help = run({"--help"}, environment());
        QCOMPARE(help.status, 0);
        QVERIFY(help.out.contains("--diff-defaults"));

        // Every page listed has its screenshot. Painting 32 pages is Qt's
        // work, which a sanitizer build does not check: there the pages are
        // only listed.
        const QString shots = m_dir.filePath("shots");
        QStringList arguments{"--list-pages", "--app-name", "Viewer", "--data-dir", m_dir.path(), "--language",
                              "japanese"};
        if (!kSanitized)
            arguments << "--screenshots" << shots;
        const Run full = host(arguments);
        QCOMPARE(full.status, 0);
        QVERIFY2(full.out.split('\n').contains("Camera"), qPrintable(full.out));
        if (!kSanitized) {
            QCOMPARE(QDir(shots).entryList({"*.png"}).size(), full.out.split('\n', Qt::SkipEmptyParts).size());
            const QImage camera(QDir(shots).filePath("Camera.png"));
            QVERIFY(camera.width() >= 400 && camera.height() >= 300);
        }
        const Run restricted = host({"--list-pages", "--edition", "restricted"});
        QCOMPARE(restricted.status, 0);
        QVERIFY(!restricted.out.split('\n').contains("Camera"));
    }

    void setAndAcceptPersistAcrossRuns()
    {
        Run first = host({"--set", "Camera fov=60", "--set", "Stereo eye separation=nan", "--accept"});
        QCOMPARE(first.status, 0);
        QVERIFY(!QFile::exists(store() + ".bak"));
        const QByteArray saved = fileBytes(store());

        const Run dump = host({"--dump-store"});
        QCOMPARE(dump.status, 0);
        const QJsonObject values = QJsonDocument::fromJson(dump.out.toUtf8()).object().value("values").toObject();
        QCOMPARE(values.value("Camera fov").toObject(), QJsonObject({{"type", "float"}, {"value", 60}}));
        QCOMPARE(values.value("Stereo eye separation").toObject(), QJsonObject({{"type", "float"}, {"value", "nan"}}));

        const Run diff = host({"--diff-defaults", "--trace", "-"});
        QCOMPARE(diff.status, 0);
        // Other pages may legitimately store values other than their defaults;
        // the two set here must be listed.
        const QStringList differences = diff.out.split('\n');
        QVERIFY2(differences.contains(QStringLiteral("Camera fov=60 (default: 45)")), qPrintable(diff.out));
        QVERIFY2(differences.contains(QStringLiteral("Stereo eye separation=nan (default: 63)")), qPrintable(diff.out));
        QVERIFY(differences.contains("lmOSGWidget::setPowerwallWindow(-1, 1600, 1200, 1000)"));

        // Without --accept nothing is saved; with it the previous file is kept.
        QCOMPARE(host({"--set", "Camera fov=20"}).status, 0);
        QCOMPARE(fileBytes(store()), saved);
        const QString trace = m_dir.filePath("trace.txt");
        QCOMPARE(host({"--set", "Camera fov=20", "--accept", "--trace", trace}).status, 0);
        QCOMPARE(fileBytes(store() + ".bak"), saved);
        // The stored value reaches the host first, then the one set.
        QCOMPARE(QString::fromUtf8(fileBytes(trace)).split('\n').filter("lmOSGWidget::setFov"),
                 QStringList({"lmOSGWidget::setFov(-1, 60) [undo blocked]", "lmOSGWidget::setFov(-1, 20) [undo blocked]"}));
    }

    // A value of every type, and a key that a page reads but gives no
    // default (its type comes from the value), reach the store and the host.
    // The texts are chosen so that only the key's own type reads them as stored.
    void setTakesEveryValueType()
    {
        const QList<QStringList> rows = {
            {"RenderOptions background colors", "[[1, 0, 0], [0, 0.5, 1]]", "colors"},
            {"Optimizer Teselation Quality", "[0.25]", "floats"},
            {"texture search paths", "[\"/data/textures\", \"/mnt/shared maps\"]", "strings"},
            {"Help Path", "http://intranet/help", "qstring"},
            {"FileIO converter output format", "LUMO", "string"},
            {"VpbFileIO Maximal number of increments", "12", "uint"},
            {"MainWindow window opacity", "0.5", "double"},
            {"VR Teleport Range", "2500", "float"},
            {"VR Visualise Hands", "0", "int"},
            {"HMD Eye Tracking", "true", "bool"},
        };
        const QString trace = m_dir.filePath("set-trace.txt");
        QStringList arguments{"--trace", trace, "--accept", "--dump-store"};
        for (const QStringList &row : rows)
            arguments << "--set" << row[0] + '=' + row[1];
        const Run set = host(arguments);
        QCOMPARE(set.status, 0);
        QCOMPARE(set.messages(), QStringList({"No preferences file " + store() + " yet: starting from the defaults."}));
        const QJsonObject values = QJsonDocument::fromJson(set.out.toUtf8()).object().value("values").toObject();
        for (const QStringList &row : rows) {
            const QByteArray json = row[2].endsWith("string")
                                        ? QJsonDocument(QJsonArray{row[1]}).toJson(QJsonDocument::Compact).mid(1).chopped(1)
                                        : row[1].toUtf8();
            const QByteArray expected = "{\"type\": \"" + row[2].toUtf8() + "\", \"value\": " + json + "}";
            QVERIFY2(values.value(row[0]).toObject() == QJsonDocument::fromJson(expected).object(), qPrintable(row[0]));
        }
        QCOMPARE(fileBytes(store()), set.out.toUtf8());
        QVERIFY(QString::fromUtf8(fileBytes(trace)).split('\n').contains(
            "lmOSGWidget::setAllGradientBackgrounds([Color3f(1, 0, 0), Color3f(0, 0.5, 1)], [1, 0])"));

        // The key holds a list now; without one the value must say its type.
        QCOMPARE(host({"--set", "texture search paths=/data"}).messages().value(0),
                 QStringLiteral("bad value for \"texture search paths\": not valid JSON: illegal value"));
        QFile::remove(store());
        const Run untyped = host({"--set", "texture search paths=/data"});
        QCOMPARE(untyped.status, 2);
        QVERIFY2(untyped.messages().value(1).startsWith("bad value for \"texture search paths\": the key holds no value yet"),
                 qPrintable(untyped.err));
    }

    void badInputIsRefused_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("message");
        QTest::newRow("unknown key") << QStringList{"--set", "Camera fvo=1", "--accept"}
                                     << "unknown preference key \"Camera fvo\"";
        QTest::newRow("bad value") << QStringList{"--set", "Camera fov=wide", "--accept"}
                                   << "bad value for \"Camera fov\": expected a float, found \"wide\"";
        QTest::newRow("later bad value") << QStringList{"--set", "Camera fov=30", "--set", "Powerwall width=[1]", "--accept"}
                                         << "bad value for \"Powerwall width\"";
        QTest::newRow("no value") << QStringList{"--set", "Camera fov"} << "--set expects KEY=VALUE";
        QTest::newRow("unknown edition") << QStringList{"--edition", "ultimate"} << "unknown edition \"ultimate\"";
        QTest::newRow("missing plug-in") << QStringList{"--plugin", "/nonexistent/lmKernelPreferences.so"}
                                         << "no plug-in module at /nonexistent/lmKernelPreferences.so";
        QTest::newRow("unknown option") << QStringList{"--frobnicate"} << "Unknown option 'frobnicate'.";
        QTest::newRow("stray argument") << QStringList{"extra"} << "unexpected argument \"extra\"";
        QTest::newRow("unwritable trace") << QStringList{"--trace", "/nonexistent/trace.txt"}
                                          << "cannot write the trace /nonexistent/trace.txt";
        QTest::newRow("unknown describe format") << QStringList{"--describe=xml"} << "unknown --describe format \"xml\"";
    }

    void badInputIsRefused()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        writeFile(store(), storeWithFov(50));
        const Run refused = host(arguments);
        QCOMPARE(refused.status, 2);
        QCOMPARE(refused.messages().size(), 1);
        QVERIFY2(refused.messages().first().startsWith(message), qPrintable(refused.err));
        QCOMPARE(fileBytes(store()), storeWithFov(50));
        QVERIFY(!QFile::exists(store() + ".bak"));
    }

    // Every key of a fresh store once, with its stored type and default; a
    // few rows checked against the pages as a person sees them.
    void describeListsEveryKeyOnce()
    {
        const Run dump = host({"--dump-store"});
        QCOMPARE(dump.status, 0);
        const QJsonObject values = QJsonDocument::fromJson(dump.out.toUtf8()).object().value("values").toObject();
        QVERIFY(values.size() > 600);
        const Run described = host({"--describe=json"});
        QCOMPARE(described.status, 0);
        const QJsonArray rows = QJsonDocument::fromJson(described.out.toUtf8()).array();

        // Keys that a page holds but gives no default.
        const QStringList withoutDefault = {"texture search paths"};
        QStringList keys, pages;
        QMap<QString, QJsonObject> byKey;
        for (const QJsonValue &value : rows) {
            const QJsonObject row = value.toObject();
            const QString key = row.value("key").toString();
            QVERIFY2(!byKey.contains(key), qPrintable("listed twice: " + key));
            byKey.insert(key, row);
            if (!pages.contains(row.value("page").toString()))
                pages << row.value("page").toString();
            if (withoutDefault.contains(key)) {
                QCOMPARE(row.value("type").toString(), QString());
                QCOMPARE(row.value("default").toString(), QString());
                continue;
            }
            QVERIFY2(values.contains(key), qPrintable("not in a fresh store: " + key));
            const QJsonObject stored = values.value(key).toObject();
            QCOMPARE(row.value("type").toString(), stored.value("type").toString());
            // Defaults are shown as --set takes them: strings as they are,
            // everything else as JSON.
            const QJsonValue storedValue = stored.value("value");
            const QString shown = row.value("default").toString();
            if (storedValue.isString())
                QCOMPARE(shown, storedValue.toString());
            else
                QCOMPARE(QJsonDocument::fromJson(("[" + shown + "]").toUtf8()).array().first(), storedValue);
        }
        QCOMPARE(byKey.size(), values.size() + withoutDefault.size());

        // Pages in dialog order.
        const Run listed = host({"--list-pages"});
        QCOMPARE(pages.mid(0, listed.out.split('\n', Qt::SkipEmptyParts).size()),
                 listed.out.split('\n', Qt::SkipEmptyParts));

        struct Expected
        {
            const char *key, *page, *label, *choices;
        };
        const Expected expected[] = {
            {"Camera fov", "Camera", "Field of View", "1 100"},
            {"Devices spacemouse rotation pivot", "Devices/Devices", "Rotation Pivot",
             "Camera|Selected Object/Origin|Focus Distance|Standard"},
            {"Navigator orbit detection area", "Navigator", "Orbit Detection Area", "0 99999"},
            {"MainWindow show button text", "MainWindow", "Show Toolbutton Text", ""},
            {"MainWindow show tool buttons text", "MainWindow", "", ""},
            {"RenderOptions background ints", "Render Options", "Background", ""},
            {"WebInterface white list", "WebInterface", "Allowed hosts", ""},
            {"ProEngineerOptions stitching", "FileIO/ProE / Creo", "Stitching", ""},
            {"PLMXML load referenced files", "FileIO/PLM XML", "Import Referenced Files", ""},
            {"StepOptions import coord systems", "FileIO/Step", "", ""},
        };
        for (const Expected &e : expected) {
            const QJsonObject row = byKey.value(e.key);
            QCOMPARE(row.value("page").toString(), QString(e.page));
            QCOMPARE(row.value("label").toString(), QString(e.label));
            const QJsonObject range = row.value("range").toObject();
            const QString choices = row.contains("items")
                                        ? row.value("items").toVariant().toStringList().join('|')
                                        : range.isEmpty() ? QString()
                                                          : QStringLiteral("%1 %2").arg(range.value("minimum").toDouble())
                                                                .arg(range.value("maximum").toDouble());
            QCOMPARE(choices, QString(e.choices));
        }

        // The table: a header, a rule and one line per key.
        const Run table = host({"--describe"});
        QCOMPARE(table.status, 0);
        const QStringList lines = table.out.split('\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), rows.size() + 2);
        QVERIFY(lines.contains("| Camera | Field of View | Camera fov | float | 45 | 1 to 100 |"));
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

    void damagedFileIsReportedAndKept()
    {
        const QByteArray damaged = storeWithFov(50).left(60);
        writeFile(store(), damaged);
        const Run refused = host({"--set", "Camera fov=70", "--accept"});
        QCOMPARE(refused.status, 1);
        const QStringList messages = refused.messages();
        QVERIFY2(messages.value(0).startsWith("Cannot load the preferences " + store()), qPrintable(refused.err));
        QVERIFY(messages.value(2).startsWith("The preferences were not saved to " + store()));
        QCOMPARE(fileBytes(store()), damaged);

        writeFile(store() + ".bak", storeWithFov(55));
        const Run fromBackup = host({"--diff-defaults"});
        QCOMPARE(fromBackup.status, 0);
        QCOMPARE(fromBackup.messages().value(1), "Starting from the backup " + store() + ".bak.");
        QCOMPARE(fromBackup.out, QStringLiteral("Camera fov=55 (default: 45)\n"));
        QCOMPARE(fileBytes(store()), damaged);

        // The host's error log, one line each on stderr.
        QFile::remove(store());
        const Run logged = host({"--set", "FileIO tmp path=/nonexistent/tmp", "--accept"});
        QCOMPARE(logged.status, 0);
        QVERIFY2(logged.messages().contains("host error: FileIO preferences: tmp path doesn't exist!"),
                 qPrintable(logged.err));
    }

    // Runs without the test's store file or the offscreen platform.
    void storeLocationAndDisplay()
    {
        QProcessEnvironment env = environment();
        const Run saved = run({"--headless", "--plugin", LM_PLUGIN_PATH, "--set", "Camera fov=33", "--accept"}, env);
        QCOMPARE(saved.status, 0);
        const QString path = env.value("XDG_CONFIG_HOME") + "/lmprefs-host/preferences.json";
        QVERIFY(fileBytes(path).contains("\"Camera fov\": {\"type\": \"float\", \"value\": 33}"));

        const Run folder = run({"--headless", "--plugin", LM_PLUGIN_PATH, "--preferences", m_dir.path()}, env);
        QCOMPARE(folder.status, 2);
        QVERIFY(folder.messages().value(0).endsWith("is a folder"));

        for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            env.remove(name);
        const Run refused = run({"--plugin", LM_PLUGIN_PATH, "--preferences", store()}, env);
        QCOMPARE(refused.status, 1);
        QVERIFY(refused.messages().value(0).startsWith("no display"));
    }
};

QTEST_GUILESS_MAIN(tst_PrefsCli)
#include "tst_prefscli.moc"

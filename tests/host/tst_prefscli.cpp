// lmprefs-host's command line, through the real executable and module.
#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

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
        if (!process.waitForFinished(30000)) {
            process.kill();
            process.waitForFinished();
            return result;
        }
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

    void helpNamesEveryOption()
    {
        const Run help = run({"--help"}, environment());
        QCOMPARE(help.status, 0);
        for (const char *option : {"--preferences", "--plugin", "--edition", "--app-name", "--data-dir", "--language",
                                   "--headless", "--set", "--accept", "--dump-store", "--list-pages", "--trace",
                                   "--screenshots", "--diff-defaults"})
            QVERIFY2(help.out.contains(QLatin1String(option)), option);
    }

    void pagesFollowTheEdition()
    {
        const Run full = host({"--list-pages", "--app-name", "Viewer", "--data-dir", m_dir.path(), "--language",
                               "japanese"});
        QCOMPARE(full.status, 0);
        QVERIFY2(full.out.split('\n').contains("Camera"), qPrintable(full.out));
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

        const Run diff = host({"--diff-defaults"});
        QCOMPARE(diff.status, 0);
        // Other pages may legitimately store values other than their defaults;
        // the two set here must be listed.
        const QStringList differences = diff.out.split('\n');
        QVERIFY2(differences.contains(QStringLiteral("Camera fov=60 (default: 45)")), qPrintable(diff.out));
        QVERIFY2(differences.contains(QStringLiteral("Stereo eye separation=nan (default: 63)")), qPrintable(diff.out));

        // Without --accept nothing is saved; with it the previous file is kept.
        QCOMPARE(host({"--set", "Camera fov=20"}).status, 0);
        QCOMPARE(fileBytes(store()), saved);
        QCOMPARE(host({"--set", "Camera fov=20", "--accept"}).status, 0);
        QCOMPARE(fileBytes(store() + ".bak"), saved);
    }

    // A value of every type, and a key that a page reads but gives no
    // default (its type comes from the value), reach the store and the host.
    void setTakesEveryValueType()
    {
        const QString trace = m_dir.filePath("set-trace.txt");
        const Run set = host({"--set", "RenderOptions background colors=[[1, 0, 0], [0, 0.5, 1]]",
                              "--set", "Optimizer Teselation Quality=[0.25]",
                              "--set", "texture search paths=[\"/data/textures\", \"/mnt/shared maps\"]",
                              "--set", "Help Path=http://intranet/help",
                              "--set", "FileIO converter output format=LUMO",
                              "--set", "VpbFileIO Maximal number of increments=12",
                              "--set", "MainWindow window opacity=0.5",
                              "--set", "VR Teleport Range=2500",
                              "--set", "VR Visualise Hands=0",
                              "--set", "HMD Eye Tracking=true",
                              "--trace", trace, "--accept", "--dump-store"});
        QCOMPARE(set.status, 0);
        QCOMPARE(set.messages(), QStringList({"No preferences file " + store() + " yet: starting from the defaults."}));
        const QJsonObject values = QJsonDocument::fromJson(set.out.toUtf8()).object().value("values").toObject();
        const QList<QPair<QString, QByteArray>> expected = {
            {"RenderOptions background colors", "{\"type\": \"colors\", \"value\": [[1, 0, 0], [0, 0.5, 1]]}"},
            {"Optimizer Teselation Quality", "{\"type\": \"floats\", \"value\": [0.25]}"},
            {"texture search paths", "{\"type\": \"strings\", \"value\": [\"/data/textures\", \"/mnt/shared maps\"]}"},
            {"Help Path", "{\"type\": \"qstring\", \"value\": \"http://intranet/help\"}"},
            {"FileIO converter output format", "{\"type\": \"string\", \"value\": \"LUMO\"}"},
            {"VpbFileIO Maximal number of increments", "{\"type\": \"uint\", \"value\": 12}"},
            {"MainWindow window opacity", "{\"type\": \"double\", \"value\": 0.5}"},
            {"VR Teleport Range", "{\"type\": \"float\", \"value\": 2500}"},
            {"VR Visualise Hands", "{\"type\": \"int\", \"value\": 0}"},
            {"HMD Eye Tracking", "{\"type\": \"bool\", \"value\": true}"},
        };
        for (const auto &entry : expected)
            QVERIFY2(values.value(entry.first).toObject() == QJsonDocument::fromJson(entry.second).object(),
                     qPrintable(entry.first));
        QCOMPARE(fileBytes(store()), set.out.toUtf8());

        const QStringList calls = QString::fromUtf8(fileBytes(trace)).split('\n');
        for (const char *call : {"lmOSGWidget::setAllGradientBackgrounds([Color3f(1, 0, 0), Color3f(0, 0.5, 1)], [1, 0])",
                                 "lmFileIO::setIncrementalSaveLimit(12)",
                                 "lmImmersiveInteractionService::setTeleportRange(2500)"})
            QVERIFY2(calls.contains(QLatin1String(call)), call);

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
        QTest::newRow("unknown language") << QStringList{"--language", "klingon"} << "unknown language \"klingon\"";
        QTest::newRow("missing plug-in") << QStringList{"--plugin", "/nonexistent/lmKernelPreferences.so"}
                                         << "no plug-in module at /nonexistent/lmKernelPreferences.so";
        QTest::newRow("unknown option") << QStringList{"--frobnicate"} << "Unknown option 'frobnicate'.";
        QTest::newRow("option without value") << QStringList{"--trace"} << "Missing value after '--trace'.";
        QTest::newRow("stray argument") << QStringList{"extra"} << "unexpected argument \"extra\"";
        QTest::newRow("screenshots under a file") << QStringList{"--screenshots", "/dev/null/shots"}
                                                  << "cannot create the screenshot folder /dev/null/shots";
        QTest::newRow("unwritable trace") << QStringList{"--trace", "/nonexistent/trace.txt"}
                                          << "cannot write the trace /nonexistent/trace.txt";
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

    void preferencesThatAreAFolderAreRefused()
    {
        const Run refused = run({"--headless", "--plugin", LM_PLUGIN_PATH, "--preferences", m_dir.path()}, environment());
        QCOMPARE(refused.status, 2);
        QVERIFY(refused.messages().value(0).endsWith("is a folder"));
    }

    void traceFollowsTheHostCalls()
    {
        const Run toStdout = host({"--trace", "-"});
        QCOMPARE(toStdout.status, 0);
        QVERIFY(toStdout.out.split('\n').contains("lmOSGWidget::setPowerwallWindow(-1, 1600, 1200, 1000)"));

        const QString traceFile = m_dir.filePath("trace.txt");
        QCOMPARE(host({"--trace", traceFile, "--set", "Camera fov=30", "--accept"}).status, 0);
        const QStringList lines = QString::fromUtf8(fileBytes(traceFile)).split('\n');
        const QStringList fov = lines.filter("lmOSGWidget::setFov");
        QCOMPARE(fov, QStringList({"lmOSGWidget::setFov(-1, 45) [undo blocked]",
                                   "lmOSGWidget::setFov(-1, 30) [undo blocked]"}));
    }

    void screenshotsShowEveryPage()
    {
        const QString folder = m_dir.filePath("shots");
        const Run shots = host({"--screenshots", folder, "--list-pages"});
        QCOMPARE(shots.status, 0);
        const int pages = shots.out.split('\n', Qt::SkipEmptyParts).size();
        QCOMPARE(QDir(folder).entryList({"*.png"}).size(), pages);
        const QImage camera(QDir(folder).filePath("Camera.png"));
        QVERIFY(camera.width() >= 400 && camera.height() >= 300);
    }

    void damagedFileIsReportedAndKept()
    {
        const QByteArray damaged = storeWithFov(50).left(60);
        writeFile(store(), damaged);
        const Run refused = host({"--set", "Camera fov=70", "--accept"});
        QCOMPARE(refused.status, 1);
        const QStringList messages = refused.messages();
        QVERIFY2(messages.value(0).startsWith("Cannot load the preferences " + store() + ": not valid JSON"),
                 qPrintable(refused.err));
        QCOMPARE(messages.value(1), QStringLiteral("Starting from the defaults."));
        QVERIFY(messages.value(2).startsWith("The preferences were not saved to " + store()));
        QCOMPARE(fileBytes(store()), damaged);

        writeFile(store() + ".bak", storeWithFov(55));
        const Run fromBackup = host({"--diff-defaults"});
        QCOMPARE(fromBackup.status, 0);
        QCOMPARE(fromBackup.messages().value(1), "Starting from the backup " + store() + ".bak.");
        QCOMPARE(fromBackup.out, QStringLiteral("Camera fov=55 (default: 45)\n"));
        QCOMPARE(fileBytes(store()), damaged);
    }

    void defaultStoreIsInTheConfigurationFolder()
    {
        const QProcessEnvironment env = environment();
        const Run saved = run({"--headless", "--plugin", LM_PLUGIN_PATH, "--set", "Camera fov=33", "--accept"}, env);
        QCOMPARE(saved.status, 0);
        const QString path = env.value("XDG_CONFIG_HOME") + "/lmprefs-host/preferences.json";
        QVERIFY(fileBytes(path).contains("\"Camera fov\": {\"type\": \"float\", \"value\": 33}"));
    }

    void windowNeedsADisplay()
    {
        QProcessEnvironment env = environment();
        for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            env.remove(name);
        const Run refused = run({"--plugin", LM_PLUGIN_PATH, "--preferences", store()}, env);
        QCOMPARE(refused.status, 1);
        QVERIFY(refused.messages().value(0).startsWith("no display"));
    }
};

QTEST_GUILESS_MAIN(tst_PrefsCli)
#include "tst_prefscli.moc"

#include "lmHostApplication.h"

#include "lmCallLog.h"
#include "lmHostSettings.h"
#include "lmKeyDescription.h"
#include "lmModuleQtVersion.h"
#include "lmPreferences.h"
#include "lmPreferencesDialog.h"
#include "lmPreferencesHost.h"
#include "lmPreferencesSession.h"
#include "lmStoreFile.h"
#include "lmValueParser.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QStandardPaths>

#include <algorithm>
#include <cstdio>

namespace {

bool g_noDisplay = false;
QtMessageHandler g_qtMessages = nullptr;

// The offscreen platform warns each time a dismissed dialog sizes its
// window; that says nothing to the person reading the host's messages.
void dropPlatformNoise(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (type == QtWarningMsg && message == QLatin1String("This plugin does not support propagateSizeHints()"))
        return;
    g_qtMessages(type, context, message);
}

void printOut(const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    std::fwrite(utf8.constData(), 1, std::size_t(utf8.size()), stdout);
}

void printError(const QString &line)
{
    std::fprintf(stderr, "lmprefs-host: %s\n", qPrintable(line));
}

} // namespace

lmHostApplication::lmHostApplication() = default;

lmHostApplication::~lmHostApplication()
{
    shutDown();
}

void lmHostApplication::preparePlatform(int argc, char **argv)
{
    bool headless = false;
    for (int i = 1; i < argc; ++i)
        headless = headless || qstrcmp(argv[i], "--headless") == 0;
    const bool display = !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        g_noDisplay = !display;
        if (headless || !display)
            qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    if (qgetenv("QT_QPA_PLATFORM") == "offscreen")
        g_qtMessages = qInstallMessageHandler(dropPlatformNoise);
}

QStringList lmHostApplication::takeOwnArguments(int &argc, char **argv)
{
    QStringList taken;
    int kept = 1;
    for (int i = 1; i < argc; ++i) {
        if (qstrcmp(argv[i], "--plugin") == 0 && i + 1 < argc) {
            taken << QStringLiteral("--plugin") << QString::fromLocal8Bit(argv[++i]);
        } else if (qstrncmp(argv[i], "--plugin=", 9) == 0) {
            taken << QString::fromLocal8Bit(argv[i]);
        } else {
            argv[kept++] = argv[i];
        }
    }
    argc = kept;
    argv[argc] = nullptr;
    return taken;
}

QString lmHostApplication::defaultStorePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QStringLiteral("/preferences.json");
}

QString lmHostApplication::screenshotName(const QString &group, const QString &page)
{
    QString name = page.isEmpty() ? group : group + QLatin1Char('_') + page;
    for (QChar &c : name)
        if (c.unicode() < 0x20 || QStringLiteral("/\\:*?\"<>|").contains(c))
            c = QLatin1Char('-');
    name = name.trimmed();
    if (name.isEmpty() || name.startsWith(QLatin1Char('.')))
        name.prepend(QLatin1String("page"));
    return name;
}

int lmHostApplication::fail(int status, const QString &message)
{
    printError(message);
    return status;
}

int lmHostApplication::run(const QStringList &arguments)
{
    const int status = execute(arguments);
    shutDown();
    return status;
}

void lmHostApplication::shutDown()
{
    // Pages go back to their categories before the categories go, and the
    // session's copies of stored values go before the module whose code
    // made them.
    m_dialog.reset();
    m_session.reset();
    if (m_plugin.isLoaded())
        m_plugin.unload();
    if (m_errorListener) {
        lmHostSettings::removeErrorListener(m_errorListener);
        m_errorListener = 0;
    }
    if (m_traceListener) {
        lmCallLog::removeListener(m_traceListener);
        m_traceListener = 0;
    }
    m_trace.reset();
}

lmPreferencesDialog &lmHostApplication::dialog()
{
    if (!m_dialog)
        m_dialog = std::make_unique<lmPreferencesDialog>(*m_session);
    return *m_dialog;
}

int lmHostApplication::loadPlugin(const QString &path, bool given)
{
    if (!QFileInfo(path).isFile())
        return fail(given ? 2 : 1, QStringLiteral("no plug-in module at %1").arg(path));
    // Two Qt major versions in one process crash it: refuse before loading.
    const int moduleQt = lmModuleQtMajor(path);
    if (moduleQt && moduleQt != QT_VERSION_MAJOR)
        return fail(1, QStringLiteral("%1 is built against Qt %2, this host against Qt %3: not loading it")
                           .arg(path).arg(moduleQt).arg(QT_VERSION_MAJOR));
    m_plugin.setFileName(path);
    if (!m_plugin.load())
        return fail(1, QStringLiteral("cannot load the plug-in: %1").arg(m_plugin.errorString()));
    // The host finds the entry point by its exported name.
    auto initPreferencesPlugin = reinterpret_cast<void (*)()>(m_plugin.resolve("initPreferencesPlugin"));
    if (!initPreferencesPlugin)
        return fail(1, QStringLiteral("%1 does not export initPreferencesPlugin").arg(path));
    initPreferencesPlugin();
    return 0;
}

int lmHostApplication::writeScreenshots(const QString &folder)
{
    if (!QDir().mkpath(folder))
        return fail(1, QStringLiteral("cannot create the screenshot folder %1").arg(folder));
    QSet<QString> used;
    for (const lmPreferencesHost::Page &page : lmPreferencesHost::pages()) {
        QString name = screenshotName(page.group, page.page);
        for (int n = 2; used.contains(name); ++n)
            name = screenshotName(page.group, page.page) + QStringLiteral(" (%1)").arg(n);
        used.insert(name);
        const QString file = QDir(folder).filePath(name + QStringLiteral(".png"));
        if (!dialog().grabPage(page.widget).save(file, "PNG"))
            return fail(1, QStringLiteral("cannot write the screenshot %1").arg(file));
    }
    return 0;
}

namespace {

// A host setting chosen by name ("--edition design"); false for an unknown name.
template <class E>
bool chooseSetting(const QCommandLineParser &parser, const QString &option, bool (*fromName)(const QString &, E &),
                   void (*set)(E))
{
    if (!parser.isSet(option))
        return true;
    E value;
    if (!fromName(parser.value(option).toLower(), value))
        return false;
    set(value);
    return true;
}

} // namespace

int lmHostApplication::openTrace(const QString &path)
{
    m_trace = std::make_unique<QFile>();
    bool opened;
    if (path == QLatin1String("-")) {
        opened = m_trace->open(stdout, QIODevice::WriteOnly);
    } else {
        m_trace->setFileName(path);
        opened = m_trace->open(QIODevice::WriteOnly | QIODevice::Truncate);
    }
    if (!opened)
        return fail(2, QStringLiteral("cannot write the trace %1: %2").arg(path, m_trace->errorString()));
    QFile *file = m_trace.get();
    m_traceListener = lmCallLog::addListener([file](const QString &line) {
        file->write(line.toUtf8() + '\n');
        file->flush();
    });
    return 0;
}

int lmHostApplication::setValues(const QStringList &assignments)
{
    const lmMessage &store = lmPreferences::getData();
    const std::vector<std::string> readWithoutValue = lmPreferencesHost::keysReadWithoutValue();
    for (const QString &assignment : assignments) {
        const int equals = assignment.indexOf(QLatin1Char('='));
        const QString key = assignment.left(equals);
        const QString text = assignment.mid(equals + 1);
        const std::string stdKey = key.toStdString();
        boost::any value;
        QString reason;
        bool parsed;
        if (store.contains(stdKey))
            parsed = lmValueParser::parse(text, store.get(stdKey), value, &reason);
        else if (std::find(readWithoutValue.begin(), readWithoutValue.end(), stdKey) != readWithoutValue.end())
            parsed = lmValueParser::parseUntyped(text, value, &reason); // e.g. "texture search paths"
        else
            return fail(2, QStringLiteral("unknown preference key \"%1\"").arg(key));
        if (!parsed)
            return fail(2, QStringLiteral("bad value for \"%1\": %2").arg(key, reason));
        m_session->setValue(stdKey, value);
    }
    if (!assignments.isEmpty())
        lmPreferencesHost::updateGUIAll();
    return 0;
}

void lmHostApplication::printDifferences()
{
    for (const lmPreferencesSession::Difference &difference : m_session->differences()) {
        const QString key = QString::fromStdString(difference.key);
        const QString defaultText = lmValueParser::text(difference.defaultValue);
        printOut(difference.value.empty()
                     ? QStringLiteral("%1 is missing (default: %2)\n").arg(key, defaultText)
                     : QStringLiteral("%1=%2 (default: %3)\n").arg(key, lmValueParser::text(difference.value), defaultText));
    }
}

int lmHostApplication::execute(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("The stand-in host of the preferences plug-in: loads the plug-in, keeps the preferences "
                       "between runs and opens the preferences dialog. With --headless it runs start-up, then "
                       "--set, --accept, --dump-store, --list-pages, --screenshots, --diff-defaults and --describe in "
                       "this order, and exits."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    // Options are looked up by their names below.
    parser.addOptions({
        {"preferences", QStringLiteral("The store file to load and save (default: %1).").arg(defaultStorePath()), "file"},
        {"plugin", "The plug-in module to load (default: lmKernelPreferences.so beside this program).", "file"},
        {"edition", "The host's edition: professional (default), design, essentials or restricted.", "edition"},
        {"app-name", "The host's application name.", "name"},
        {"data-dir", "The host's data folder.", "dir"},
        {"language", "The host's display language: english (default), chinese, japanese or korean.", "language"},
        {"headless", "No window: run start-up and the actions below, then exit."},
        {"set",
         "Write a value under an existing key, typed as the key's current type (colours and lists as JSON, e.g. "
         "[0.5, 0.5, 1]; a key a page reads but that holds no value yet takes the type its JSON shows); "
         "repeatable. Then update the pages.",
         "key=value"},
        {"accept", "Do what OK does: store the pages, apply, save."},
        {"dump-store", "Print the store as its JSON document."},
        {"list-pages", "Print one line per page in dialog order: group/page."},
        {"trace", "Write every host call, one per line, as it happens from start-up on (- for standard output).",
         "file"},
        {"screenshots", "Save every page as a PNG named after its group and page.", "dir"},
        {"diff-defaults", "Print the keys whose stored values differ from their defaults: key=value (default: value)."},
        {"describe",
         "Print every key of every page in dialog order with the label of its control, its type, its default and "
         "its items or range: a Markdown table, or with --describe=json a JSON array.",
         "format"},
    });

    // "--describe" alone asks for the table.
    QStringList expanded = arguments;
    for (QString &argument : expanded)
        if (argument == QLatin1String("--describe"))
            argument = QStringLiteral("--describe=markdown");
    if (!parser.parse(expanded))
        return fail(2, parser.errorText());
    if (parser.isSet(help)) {
        printOut(parser.helpText());
        return 0;
    }
    if (parser.isSet(version)) {
        printOut(QStringLiteral("lmprefs-host %1\n").arg(QCoreApplication::applicationVersion()));
        return 0;
    }
    if (!parser.positionalArguments().isEmpty())
        return fail(2, QStringLiteral("unexpected argument \"%1\"").arg(parser.positionalArguments().first()));

    // Host settings.
    if (!chooseSetting(parser, QStringLiteral("edition"), lmHostSettings::editionFromName, lmHostSettings::setEdition))
        return fail(2, QStringLiteral("unknown edition \"%1\" (professional, design, essentials or restricted)")
                           .arg(parser.value(QStringLiteral("edition"))));
    if (!chooseSetting(parser, QStringLiteral("language"), lmHostSettings::languageFromName,
                       lmHostSettings::setDisplayLanguage))
        return fail(2, QStringLiteral("unknown language \"%1\" (english, chinese, japanese or korean)")
                           .arg(parser.value(QStringLiteral("language"))));
    if (parser.isSet(QStringLiteral("app-name")))
        lmHostSettings::setApplicationName(parser.value(QStringLiteral("app-name")));
    if (parser.isSet(QStringLiteral("data-dir")))
        lmHostSettings::setDataDir(parser.value(QStringLiteral("data-dir")));

    const QStringList assignments = parser.values(QStringLiteral("set"));
    for (const QString &assignment : assignments)
        if (assignment.indexOf(QLatin1Char('=')) <= 0)
            return fail(2, QStringLiteral("--set expects KEY=VALUE, not \"%1\"").arg(assignment));

    const QString describeFormat = parser.value(QStringLiteral("describe"));
    if (parser.isSet(QStringLiteral("describe")) && describeFormat != QLatin1String("markdown")
        && describeFormat != QLatin1String("json"))
        return fail(2, QStringLiteral("unknown --describe format \"%1\" (markdown or json)").arg(describeFormat));

    const bool isHeadless = parser.isSet(QStringLiteral("headless"));
    if (!isHeadless && g_noDisplay)
        return fail(1, QStringLiteral("no display to open the window on (DISPLAY is not set); use --headless"));

    const QString storePath = parser.isSet(QStringLiteral("preferences")) ? parser.value(QStringLiteral("preferences"))
                                                                          : defaultStorePath();
    if (QFileInfo(storePath).isDir())
        return fail(2, QStringLiteral("the preferences file %1 is a folder").arg(storePath));
    const QString screenshots = parser.value(QStringLiteral("screenshots"));
    if (parser.isSet(QStringLiteral("screenshots")) && !QDir().mkpath(screenshots))
        return fail(2, QStringLiteral("cannot create the screenshot folder %1").arg(screenshots));
    if (parser.isSet(QStringLiteral("trace")))
        if (const int status = openTrace(parser.value(QStringLiteral("trace"))))
            return status;

    // Nobody can answer a dialog in a headless run (a page may ask, e.g. the
    // language restart notice): dismiss each one and say so.
    if (isHeadless) {
        m_dialogSuppressor = std::make_unique<lmDialogSuppressor>(true);
        // The host's error log has no window to show it: one line each.
        m_errorListener = lmHostSettings::addErrorListener(
            [](const QString &message) { printError(QStringLiteral("host error: ") + message.trimmed()); });
    }

    // Start-up as the host does it: stored values first, so they win over
    // the defaults the categories then write.
    m_session = std::make_unique<lmPreferencesSession>(storePath);
    for (const QString &line : m_session->loadStore())
        printError(line);
    const bool pluginGiven = parser.isSet(QStringLiteral("plugin"));
    const QString pluginPath = pluginGiven ? parser.value(QStringLiteral("plugin"))
                                           : QCoreApplication::applicationDirPath() + QStringLiteral("/lmKernelPreferences.so");
    if (const int status = loadPlugin(pluginPath, pluginGiven))
        return status;
    m_session->startUp();

    // The actions, in the documented order.
    if (const int status = setValues(assignments))
        return status;
    if (parser.isSet(QStringLiteral("accept")) && !m_session->accept())
        return fail(1, m_session->errorString());
    if (parser.isSet(QStringLiteral("dump-store"))) {
        QStringList skipped;
        printOut(QString::fromUtf8(lmStoreDocument::write(lmPreferences::getData(), &skipped)));
        if (!skipped.isEmpty())
            printError(QStringLiteral("keys of no preference type left out: %1").arg(skipped.join(QStringLiteral(", "))));
    }
    if (parser.isSet(QStringLiteral("list-pages")))
        for (const lmPreferencesHost::Page &page : lmPreferencesHost::pages())
            printOut(page.path() + QLatin1Char('\n'));
    if (parser.isSet(QStringLiteral("screenshots")))
        if (const int status = writeScreenshots(screenshots))
            return status;
    if (parser.isSet(QStringLiteral("diff-defaults")))
        printDifferences();
    if (parser.isSet(QStringLiteral("describe"))) {
        const std::vector<lmKeyDescription::Row> rows = lmKeyDescription::describe(*m_session);
        printOut(describeFormat == QLatin1String("json") ? QString::fromUtf8(lmKeyDescription::json(rows))
                                                         : lmKeyDescription::markdown(rows));
    }
    std::fflush(stdout);

    if (isHeadless)
        return 0;
    // OK closes the dialog only once saved; a save that failed and was then
    // given up with Cancel leaves the file as it was.
    // Size, splitters and last page: the stand-in's own, beside the default
    // store, never in the preferences.
    dialog().setStateFile(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation)
                          + QStringLiteral("/dialog.ini"));
    dialog().exec();
    if (!m_session->errorString().isEmpty())
        return fail(1, QStringLiteral("the changes were not saved: %1").arg(m_session->errorString()));
    return 0;
}

// lmprefs-host: the stand-in host application. Loads the preferences plug-in
// as the host does, runs start-up and prints the pages, the store and the
// host calls that start-up made.
#include "lmCallLog.h"
#include "lmMessageHelpers.h"
#include "lmPreferences.h"
#include "lmPreferencesHost.h"

#include <QApplication>
#include <QLibrary>
#include <QTextStream>

#include <cstdio>

namespace {

template <class T>
bool printAs(QTextStream &out, const boost::any &value, const char *typeName)
{
    if (!lmHoldsType(value, typeid(T)))
        return false;
    out << typeName << ' ' << QString::fromStdString(lmLogText(*boost::unsafe_any_cast<T>(&value)));
    return true;
}

void printValue(QTextStream &out, const boost::any &value)
{
    printAs<int>(out, value, "int") || printAs<unsigned int>(out, value, "uint")
        || printAs<float>(out, value, "float") || printAs<double>(out, value, "double")
        || printAs<bool>(out, value, "bool") || printAs<std::string>(out, value, "string")
        || printAs<QString>(out, value, "qstring") || printAs<osg::Color3f>(out, value, "color")
        || printAs<std::vector<float>>(out, value, "floats")
        || printAs<std::vector<osg::Color3f>>(out, value, "colors")
        || printAs<std::vector<std::string>>(out, value, "strings");
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QTextStream out(stdout);

    QLibrary plugin(QCoreApplication::applicationDirPath() + QStringLiteral("/lmKernelPreferences.so"));
    auto initPreferencesPlugin = reinterpret_cast<void (*)()>(plugin.resolve("initPreferencesPlugin"));
    if (!initPreferencesPlugin) {
        std::fprintf(stderr, "lmprefs-host: %s\n", qPrintable(plugin.errorString()));
        return 1;
    }

    initPreferencesPlugin();
    lmPreferencesHost::setDefaultAll(false);
    lmPreferencesHost::applyAll();
    lmPreferencesHost::updateGUIAll();

    out << "Pages:\n";
    for (const lmPreferencesHost::Page &page : lmPreferencesHost::pages())
        out << "  " << (page.page.isEmpty() ? page.group : page.group + '/' + page.page) << '\n';
    out << "Store:\n";
    for (const auto &entry : lmPreferences::getData().values()) {
        out << "  " << QString::fromStdString(entry.first) << " = ";
        printValue(out, entry.second);
        out << '\n';
    }
    out << "Host calls:\n";
    for (const QString &line : lmCallLog::lines())
        out << "  " << line << '\n';
    out.flush();

    // Categories own widgets: unload while the application still exists.
    plugin.unload();
    return 0;
}

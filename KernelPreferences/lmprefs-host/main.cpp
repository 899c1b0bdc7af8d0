// lmprefs-host: the stand-in host application of the preferences plug-in.
#include "lmHostApplication.h"

#include <QApplication>

int main(int argc, char **argv)
{
    lmHostApplication::preparePlatform(argc, argv);
    const QStringList own = lmHostApplication::takeOwnArguments(argc, argv);
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("lmprefs-host"));
    QCoreApplication::setApplicationVersion(QStringLiteral("1.0"));
    // Declared after the QApplication: the plug-in (whose categories own
    // widgets) is unloaded before the application goes.
    lmHostApplication host;
    QStringList arguments = QCoreApplication::arguments();
    for (int i = 0; i < own.size(); ++i)
        arguments.insert(1 + i, own.at(i));
    return host.run(arguments);
}

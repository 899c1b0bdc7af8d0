// lmprefs-host: the stand-in host application of the preferences plug-in.
#include "lmHostApplication.h"

#include <QApplication>

int main(int argc, char **argv)
{
    lmHostApplication::preparePlatform(argc, argv);
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("lmprefs-host"));
    QCoreApplication::setApplicationVersion(QStringLiteral("1.0"));
    // Declared after the QApplication: the plug-in (whose categories own
    // widgets) is unloaded before the application goes.
    lmHostApplication host;
    return host.run(QCoreApplication::arguments());
}

#pragma once

#include "lmHostApi.h"

#include <QSize>
#include <QString>

// Platform queries of the host application.
class LM_HOST_API lmPlatform
{
public:
    enum IconSize { SmallIcon, MediumIcon, LargeIcon };

    static QString getApplicationName();
    static QString getVersionName();
    static QString getDataDir();
    static QSize getIconSize(IconSize size);
};

// The host's error log.
class LM_HOST_API lmLog
{
public:
    static void error(const QString &message);
};

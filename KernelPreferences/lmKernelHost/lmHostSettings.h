#pragma once

#include "lmHostApi.h"

#include <QString>
#include <QStringList>

#include <functional>

// Settings of the stand-in host that tests and users of lmprefs-host change.
class LM_HOST_API lmHostSettings
{
public:
    enum Edition { Professional, Design, Essentials, Restricted };
    // Same order as lmController::ELanguage.
    enum Language { English, Chinese, Japanese, Korean };

    static Edition edition();
    static void setEdition(Edition edition);
    static QString editionName(Edition edition);
    static bool editionFromName(const QString &name, Edition &edition);

    static QString applicationName();
    static void setApplicationName(const QString &name);
    static QString versionName();
    static void setVersionName(const QString &name);
    static QString dataDir();
    static void setDataDir(const QString &dir);

    static bool analysisMode();
    static void setAnalysisMode(bool on);

    static Language displayLanguage();
    static void setDisplayLanguage(Language language);
    static QString languageName(Language language);
    static bool languageFromName(const QString &name, Language &language);

    // Messages written to the host's error log (lmLog::error).
    static QStringList errorLog();
    // Told each message as it is written, until removed.
    static int addErrorListener(std::function<void(const QString &message)> listener);
    static void removeErrorListener(int id);

    // Back to a freshly started host: settings, store, call log, error log,
    // unchanged marks and every piece of host state registered below.
    static void resetHost();
    // Host modules register how their state returns to its start.
    static void addResetHook(std::function<void()> hook);
};

#include "lmHostSettings.h"

#include "lmCallLog.h"
#include "lmController.h"
#include "lmImportOptions.h"
#include "lmPlatform.h"
#include "lmPreferences.h"
#include "lmPreferencesHost.h"
#include "OpenSG/OSGSceneFileHandler.h"

#include <QStringList>

#include <map>
#include <vector>

namespace {

const char *const kEditionNames[] = {"professional", "design", "essentials", "restricted"};
const char *const kLanguageNames[] = {"english", "chinese", "japanese", "korean"};

struct Settings
{
    lmHostSettings::Edition edition = lmHostSettings::Professional;
    QString applicationName = QStringLiteral("LUMO");
    QString versionName = QStringLiteral("LUMO 2026");
    QString dataDir = QStringLiteral("/usr/share/lumo");
    lmHostSettings::Language language = lmHostSettings::English;
    bool analysisMode = false;
    QStringList errorLog;
    std::map<int, std::function<void(const QString &)>> errorListeners;
    int nextErrorListener = 1;
};

Settings &settings()
{
    static Settings s;
    return s;
}

// The enumerator whose name (its index in names) is name.
template <class E, std::size_t N>
bool fromName(const char *const (&names)[N], const QString &name, E &value)
{
    for (std::size_t i = 0; i < N; ++i)
        if (name == QLatin1String(names[i])) {
            value = static_cast<E>(i);
            return true;
        }
    return false;
}

std::vector<std::function<void()>> &resetHooks()
{
    static std::vector<std::function<void()>> hooks;
    return hooks;
}

} // namespace

lmHostSettings::Edition lmHostSettings::edition() { return settings().edition; }
void lmHostSettings::setEdition(Edition edition) { settings().edition = edition; }

QString lmHostSettings::editionName(Edition edition)
{
    return QString::fromLatin1(kEditionNames[edition]);
}

bool lmHostSettings::editionFromName(const QString &name, Edition &edition)
{
    return fromName(kEditionNames, name, edition);
}

QString lmHostSettings::applicationName() { return settings().applicationName; }
void lmHostSettings::setApplicationName(const QString &name) { settings().applicationName = name; }
QString lmHostSettings::versionName() { return settings().versionName; }
void lmHostSettings::setVersionName(const QString &name) { settings().versionName = name; }
QString lmHostSettings::dataDir() { return settings().dataDir; }
void lmHostSettings::setDataDir(const QString &dir) { settings().dataDir = dir; }

bool lmHostSettings::analysisMode() { return settings().analysisMode; }
void lmHostSettings::setAnalysisMode(bool on) { settings().analysisMode = on; }

lmHostSettings::Language lmHostSettings::displayLanguage() { return settings().language; }
void lmHostSettings::setDisplayLanguage(Language language) { settings().language = language; }

QString lmHostSettings::languageName(Language language)
{
    return QString::fromLatin1(kLanguageNames[language]);
}

bool lmHostSettings::languageFromName(const QString &name, Language &language)
{
    return fromName(kLanguageNames, name, language);
}

QStringList lmHostSettings::errorLog() { return settings().errorLog; }

void lmHostSettings::resetHost()
{
    settings() = Settings();
    lmPreferences::getData().clear();
    lmCallLog::clear();
    lmCallLog::setRecording(true);
    lmPreferencesHost::resetUnchanged();
    osg::SceneFileHandler::the().clearOptions();
    lmImportOptions::clearWritten();
    // By index and by copy: a hook may make state that registers a hook.
    for (std::size_t i = 0; i < resetHooks().size(); ++i) {
        const std::function<void()> hook = resetHooks()[i];
        hook();
    }
}

void lmHostSettings::addResetHook(std::function<void()> hook)
{
    resetHooks().push_back(std::move(hook));
}

// Platform queries answer from the settings.

QString lmPlatform::getApplicationName() { return settings().applicationName; }
QString lmPlatform::getVersionName() { return settings().versionName; }
QString lmPlatform::getDataDir() { return settings().dataDir; }

QSize lmPlatform::getIconSize(IconSize size)
{
    switch (size) {
    case SmallIcon:
        return QSize(16, 16);
    case MediumIcon:
        return QSize(24, 24);
    case LargeIcon:
        break;
    }
    return QSize(32, 32);
}

void lmLog::error(const QString &message)
{
    // A deep copy: a message built from a literal of the plug-in would point
    // into its memory, which is gone once the module is unloaded.
    const QString copy(message.unicode(), message.size());
    settings().errorLog.append(copy);
    // A copy of the listeners: one may remove itself while being told.
    const auto listeners = settings().errorListeners;
    for (const auto &listener : listeners)
        listener.second(copy);
}

int lmHostSettings::addErrorListener(std::function<void(const QString &)> listener)
{
    const int id = settings().nextErrorListener++;
    settings().errorListeners.emplace(id, std::move(listener));
    return id;
}

void lmHostSettings::removeErrorListener(int id) { settings().errorListeners.erase(id); }

bool lmController::isProfessionalEdition() { return settings().edition == lmHostSettings::Professional; }
bool lmController::isDesignEdition() { return settings().edition == lmHostSettings::Design; }
bool lmController::isEssentialsEdition() { return settings().edition == lmHostSettings::Essentials; }
bool lmController::isRestrictedEdition() { return settings().edition == lmHostSettings::Restricted; }
bool lmController::getAnalysisMode() { return settings().analysisMode; }

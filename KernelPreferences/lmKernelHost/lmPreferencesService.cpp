#include "lmPreferencesService.h"

#include "lmMessageHelpers.h"
#include "lmPreferences.h"

// The service is a typed front of the one store every category shares, so
// its keys persist and reset like every other key.

namespace {

template <class T>
T read(const QString &key, T defaultValue)
{
    T value = defaultValue;
    return getFromMessage(lmPreferences::getData(), key.toStdString(), value) ? value : defaultValue;
}

template <class T>
bool write(const QString &key, T value, bool overwrite)
{
    return setToMessage(lmPreferences::getData(), key.toStdString(), value, overwrite);
}

} // namespace

lmPreferencesService::lmPreferencesService(QObject *parent) : lmKernelService(parent) {}

lmPreferencesService::~lmPreferencesService() = default;

int lmPreferencesService::getInt(const QString &key, int defaultValue) const
{
    return read(key, defaultValue);
}

float lmPreferencesService::getFloat(const QString &key, float defaultValue) const
{
    return read(key, defaultValue);
}

bool lmPreferencesService::getBool(const QString &key, bool defaultValue) const
{
    return read(key, defaultValue);
}

bool lmPreferencesService::setInt(const QString &key, int value, bool overwrite)
{
    return write(key, value, overwrite);
}

bool lmPreferencesService::setFloat(const QString &key, float value, bool overwrite)
{
    return write(key, value, overwrite);
}

bool lmPreferencesService::setBool(const QString &key, bool value, bool overwrite)
{
    return write(key, value, overwrite);
}

void lmPreferencesService::remove(const QString &key)
{
    lmPreferences::getData().remove(key.toStdString());
}

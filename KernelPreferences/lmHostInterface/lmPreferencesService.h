#pragma once

#include "lmKernelServiceFactory.h"

#include <QString>

// The host's preference service: typed access to the preference store for
// categories that keep their values under Qt string keys.
class LM_HOST_API lmPreferencesService : public lmKernelService
{
    Q_OBJECT

public:
    explicit lmPreferencesService(QObject *parent = nullptr);
    ~lmPreferencesService() override;

    // Typed reads: defaultValue when the key is absent or holds another type
    // (the latter reported like any mistyped read of the store).
    int getInt(const QString &key, int defaultValue) const;
    float getFloat(const QString &key, float defaultValue) const;
    bool getBool(const QString &key, bool defaultValue) const;

    // Typed writes: an existing value is replaced only when overwrite is set.
    // True when the store now holds a different value than before.
    bool setInt(const QString &key, int value, bool overwrite);
    bool setFloat(const QString &key, float value, bool overwrite);
    bool setBool(const QString &key, bool value, bool overwrite);

    void remove(const QString &key);
};

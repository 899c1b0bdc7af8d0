#pragma once

#include "lmHostApi.h"

#include <QSet>
#include <QString>
#include <QWidget>

// Host base of categories that are their own page and keep their values
// through the preference service instead of the store helpers.
class LM_HOST_API lmPreferencesCategory : public QWidget
{
    Q_OBJECT

public:
    explicit lmPreferencesCategory(const QString &name);
    ~lmPreferencesCategory() override;

    const QString &name() const { return m_name; }

public Q_SLOTS:
    virtual void setDefault(bool overwrite) = 0;
    virtual void apply() = 0;
    virtual void updateGUI() = 0;
    virtual void storeGUI() = 0;
    virtual void newScene();

protected:
    // Adds this widget to the preferences dialog as a top-level page.
    void registerCategory();
    bool isChanged(const QString &key) const;
    void addUnchanged(const QString &key);

private:
    friend class lmPreferencesHost;

    QString m_name;
    QSet<QString> m_unchanged;
};

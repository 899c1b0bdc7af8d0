#pragma once

#include "lmFileTypePreferences.h"

#include <QObject>

// JT: the common import options plus the switch to the legacy JT loader and
// that loader's layer filter and B-rep handling.
class lmJtFilePreferencesGUII : public QObject, public lmFileTypePreferences
{
    Q_OBJECT

public:
    lmJtFilePreferencesGUII();
    ~lmJtFilePreferencesGUII() override;

    void setFormatDefault(bool overwrite) override;
    void applyFormat(lmMessage &message) override;
    void updateFormatGUI() override;
    void storeFormatGUI() override;

private Q_SLOTS:
    void toggledUseLegacyJtLoader(bool on);

private:
    lmPageBindings m_bindings;
};

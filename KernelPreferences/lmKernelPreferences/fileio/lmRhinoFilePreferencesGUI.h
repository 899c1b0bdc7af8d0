#pragma once

#include "lmFileTypePreferences.h"

#include <QObject>

// Rhino: the common import options plus the switch to the legacy 3dm loader
// and that loader's own merge and NURBS options.
class lmRhinoFilePreferencesGUII : public QObject, public lmFileTypePreferences
{
    Q_OBJECT

public:
    lmRhinoFilePreferencesGUII();
    ~lmRhinoFilePreferencesGUII() override;

    void setFormatDefault(bool overwrite) override;
    void applyFormat(lmMessage &message) override;
    void updateFormatGUI() override;
    void storeFormatGUI() override;

private Q_SLOTS:
    void stateChangedUseLegacyRhinoLoader(int state);

private:
    void enableLegacyOptions();
};

#pragma once

#include "lmFileTypePreferences.h"

#include <QObject>

// Import options of SolidWorks parts and assemblies: the common CAD options only.
class lmSolidWorksFilePreferencesGUII : public QObject, public lmFileTypePreferences
{
    Q_OBJECT

public:
    lmSolidWorksFilePreferencesGUII();
    ~lmSolidWorksFilePreferencesGUII() override;
};

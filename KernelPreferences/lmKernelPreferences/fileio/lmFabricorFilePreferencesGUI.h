#pragma once

#include "lmFileTypePreferences.h"

#include <QObject>

// Import options of Fabricor files: the common CAD options only.
class lmFabricorFilePreferencesGUII : public QObject, public lmFileTypePreferences
{
    Q_OBJECT

public:
    lmFabricorFilePreferencesGUII();
    ~lmFabricorFilePreferencesGUII() override;
};

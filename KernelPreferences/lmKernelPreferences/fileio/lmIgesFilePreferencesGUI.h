#pragma once

#include "lmFileTypePreferences.h"

#include <QObject>

// Import options of IGES files: the common CAD options only.
class lmIgesFilePreferencesGUII : public QObject, public lmFileTypePreferences
{
    Q_OBJECT

public:
    lmIgesFilePreferencesGUII();
    ~lmIgesFilePreferencesGUII() override;
};

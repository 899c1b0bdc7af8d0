#pragma once

#include "lmFileTypePreferences.h"

#include <QObject>

// Import options of Pro/ENGINEER and Creo parts: the common CAD options only.
class lmProEngineerFilePreferencesGUII : public QObject, public lmFileTypePreferences
{
    Q_OBJECT

public:
    lmProEngineerFilePreferencesGUII();
    ~lmProEngineerFilePreferencesGUII() override;
};

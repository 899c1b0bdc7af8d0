#pragma once

#include "lmFileTypePreferences.h"

#include <QObject>

// Import options of NX parts: the common CAD options only.
class lmNXFilePreferencesGUII : public QObject, public lmFileTypePreferences
{
    Q_OBJECT

public:
    lmNXFilePreferencesGUII();
    ~lmNXFilePreferencesGUII() override;
};

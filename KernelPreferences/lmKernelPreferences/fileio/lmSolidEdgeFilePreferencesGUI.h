#pragma once

#include "lmFileTypePreferences.h"

#include <QObject>

// Import options of Solid Edge parts and assemblies: the common CAD options only.
class lmSolidEdgeFilePreferencesGUII : public QObject, public lmFileTypePreferences
{
    Q_OBJECT

public:
    lmSolidEdgeFilePreferencesGUII();
    ~lmSolidEdgeFilePreferencesGUII() override;
};

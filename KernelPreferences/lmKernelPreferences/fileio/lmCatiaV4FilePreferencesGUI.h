#pragma once

#include "lmFileTypePreferences.h"

#include <QObject>

// Import options of Catia V4 parts and assemblies: the common CAD options only.
class lmCatiaV4FilePreferencesGUII : public QObject, public lmFileTypePreferences
{
    Q_OBJECT

public:
    lmCatiaV4FilePreferencesGUII();
    ~lmCatiaV4FilePreferencesGUII() override;
};

#pragma once

#include "lmFileTypePreferences.h"

#include <QObject>

// Import options of Catia V5 parts and products: the common CAD options only.
class lmCatiaV5FilePreferencesGUII : public QObject, public lmFileTypePreferences
{
    Q_OBJECT

public:
    lmCatiaV5FilePreferencesGUII();
    ~lmCatiaV5FilePreferencesGUII() override;
};

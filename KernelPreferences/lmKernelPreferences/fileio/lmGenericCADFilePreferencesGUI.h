#pragma once

#include "lmFileTypePreferences.h"

#include <QObject>

// Import options of the generic CAD readers: the common CAD options only.
// Offered even when the host lists no reader of its own for it.
class lmGenericCADFilePreferencesGUII : public QObject, public lmFileTypePreferences
{
    Q_OBJECT

public:
    lmGenericCADFilePreferencesGUII();
    ~lmGenericCADFilePreferencesGUII() override;
};

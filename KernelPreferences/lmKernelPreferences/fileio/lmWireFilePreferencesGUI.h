#pragma once

#include "lmFileTypePreferences.h"

#include <QObject>

// Import options of Ondra wire files: the common CAD options only.
// The one page that offers empty layers, template geometries, lights,
// cameras and variants.
class lmWireFilePreferencesGUII : public QObject, public lmFileTypePreferences
{
    Q_OBJECT

public:
    lmWireFilePreferencesGUII();
    ~lmWireFilePreferencesGUII() override;
};

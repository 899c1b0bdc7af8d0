#pragma once

#include "lmFileTypePreferences.h"

#include <QObject>

// Import options of PLM XML product structures: the common CAD options only.
// Its referenced files are kept under "PLMXML load referenced files".
class lmPLMXMLPreferencesGUII : public QObject, public lmFileTypePreferences
{
    Q_OBJECT

public:
    lmPLMXMLPreferencesGUII();
    ~lmPLMXMLPreferencesGUII() override;
};

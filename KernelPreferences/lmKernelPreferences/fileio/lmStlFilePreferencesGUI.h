#pragma once

#include "lmFileTypePreferences.h"

#include <QObject>

// STL: no import options of its own, the export format (text or binary),
// which the host's STL writer reads from the store, and the source-reference
// behaviour pinned to 1.
class lmStlFilePreferencesGUII : public QObject, public lmFileTypePreferences
{
    Q_OBJECT

public:
    lmStlFilePreferencesGUII();
    ~lmStlFilePreferencesGUII() override;

    void setFormatDefault(bool overwrite) override;
    // Stores the page's export choice, as storeFormatGUI() does.
    void applyFormat(lmMessage &message) override;
    void updateFormatGUI() override;
    void storeFormatGUI() override;

private:
    lmPageBindings m_bindings;
};

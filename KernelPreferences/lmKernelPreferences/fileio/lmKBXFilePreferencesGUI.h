#pragma once

#include "lmFileTypePreferences.h"

#include <QObject>

// KBX: the common import options plus the export version, format and vertex
// colours, handed to the KBX loader as its option string.
class lmKBXFilePreferencesGUII : public QObject, public lmFileTypePreferences
{
    Q_OBJECT

public:
    lmKBXFilePreferencesGUII();
    ~lmKBXFilePreferencesGUII() override;

    void setFormatDefault(bool overwrite) override;
    void applyFormat(lmMessage &message) override;
    void updateFormatGUI() override;
    void storeFormatGUI() override;

private:
    lmPageBindings m_bindings;
};

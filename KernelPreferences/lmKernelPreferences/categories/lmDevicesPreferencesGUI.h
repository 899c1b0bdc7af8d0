#pragma once

#include "lmLoadedValues.h"
#include "lmPreferences.h"
#include "ui_lmDevicesPreferencesGUI.h"

#include <QObject>
#include <QWidget>

class lmDevicesPreferencesGUIW : public QWidget, public Ui_lmDevicesPreferencesGUI
{
public:
    explicit lmDevicesPreferencesGUIW(QWidget *parent = nullptr) : QWidget(parent) { setupUi(this); }
};

// Space mouse and joystick navigation. Every apply pushes every readable key:
// the driver and the devices may have come and gone since the last one.
class lmDevicesPreferencesGUII : public QObject, public lmPreferences
{
    Q_OBJECT

public:
    lmDevicesPreferencesGUII();
    ~lmDevicesPreferencesGUII() override;

    void setDefault(lmMessage &hostData, bool overwrite) override;
    void apply() override;
    void updateGUI() override;
    void storeGUI() override;

    lmDevicesPreferencesGUIW *page() const { return m_page; }

private:
    lmDevicesPreferencesGUIW *m_page;
    lmLoadedValues m_loaded;
};

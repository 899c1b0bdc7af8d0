#pragma once

#include "lmPreferencesPage.h"
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
class lmDevicesPreferencesGUII : public QObject, public lmPreferencesPage<lmDevicesPreferencesGUIW>
{
    Q_OBJECT

public:
    lmDevicesPreferencesGUII();

    void apply() override;
    void updateGUI() override;
    void storeGUI() override;

};

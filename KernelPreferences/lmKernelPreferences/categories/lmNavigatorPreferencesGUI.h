#pragma once

#include "lmPreferencesPage.h"
#include "ui_lmNavigatorPreferencesGUI.h"

#include <QObject>
#include <QWidget>

class lmNavigatorPreferencesGUIW : public QWidget, public Ui_lmNavigatorPreferencesGUI
{
public:
    explicit lmNavigatorPreferencesGUIW(QWidget *parent = nullptr) : QWidget(parent) { setupUi(this); }
};

// Mouse navigation of the render view: mode, interaction presets, dolly,
// panning, animated camera changes and orbit detection.
class lmNavigatorPreferencesGUII : public QObject, public lmPreferencesPage<lmNavigatorPreferencesGUIW>
{
    Q_OBJECT

public:
    lmNavigatorPreferencesGUII();

    void apply() override;
    void updateGUI() override;
    void storeGUI() override;

private Q_SLOTS:
    void toggledAnimateCameraChange(bool on);
    void changedInteractionMode(int mode);
    void toggledPivotBasedPanning(bool on);
    void changedNavigationSpeedMode(int index);
    void toggledOrbitMode(bool on);

private:
    void updatePanningControls();

};

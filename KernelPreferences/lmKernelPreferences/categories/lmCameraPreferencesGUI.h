#pragma once

#include "lmPreferencesPage.h"
#include "ui_lmCameraPreferencesGUI.h"

#include <QObject>
#include <QWidget>

class lmCameraPreferencesGUIW : public QWidget, public Ui_lmCameraPreferencesGUI
{
public:
    explicit lmCameraPreferencesGUIW(QWidget *parent = nullptr) : QWidget(parent) { setupUi(this); }
};

// Field of view, stereo and powerwall geometry of the render view.
class lmCameraPreferencesGUII : public QObject, public lmPreferencesPage<lmCameraPreferencesGUIW>
{
    Q_OBJECT

public:
    lmCameraPreferencesGUII();

    void apply() override;
    void updateGUI() override;
    void storeGUI() override;
};

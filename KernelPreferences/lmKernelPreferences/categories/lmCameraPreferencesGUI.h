#pragma once

#include "lmPreferences.h"
#include "ui_lmCameraPreferencesGUI.h"

#include <QObject>
#include <QWidget>

class lmCameraPreferencesGUIW : public QWidget, public Ui_lmCameraPreferencesGUI
{
public:
    explicit lmCameraPreferencesGUIW(QWidget *parent = nullptr) : QWidget(parent) { setupUi(this); }
};

// Field of view, stereo and powerwall geometry of the render view.
class lmCameraPreferencesGUII : public QObject, public lmPreferences
{
    Q_OBJECT

public:
    lmCameraPreferencesGUII();
    ~lmCameraPreferencesGUII() override;

    void setDefault(lmMessage &hostData, bool overwrite) override;
    void apply() override;
    void updateGUI() override;
    void storeGUI() override;

    lmCameraPreferencesGUIW *page() const { return m_page; }

private:
    lmCameraPreferencesGUIW *m_page;
};

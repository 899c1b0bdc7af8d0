#pragma once

#include "lmPreferencesPage.h"
#include "ui_lmMainWindowPreferencesGUI.h"

#include <QObject>
#include <QWidget>

class lmMainWindowPreferencesGUIW : public QWidget, public Ui_lmMainWindowPreferencesGUI
{
public:
    explicit lmMainWindowPreferencesGUIW(QWidget *parent = nullptr) : QWidget(parent) { setupUi(this); }
};

// The main application window: docking, opacity, tool button texts, the
// frame-rate display, the renderer log and the user-interface language.
class lmMainWindowPreferencesGUII : public QObject, public lmPreferencesPage<lmMainWindowPreferencesGUIW>
{
    Q_OBJECT

public:
    lmMainWindowPreferencesGUII();

    void setDefault(lmMessage &hostData, bool overwrite) override;
    void apply() override;
    void updateGUI() override;
    void storeGUI() override;

private:
    void showRestartNotice();

};

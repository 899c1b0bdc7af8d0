#pragma once

#include "lmPreferencesPage.h"
#include "ui_lmKovaPreferencesGUI.h"

#include <QObject>
#include <QWidget>

class lmKovaPreferencesGUIW : public QWidget, public Ui_lmKovaPreferencesGUI
{
public:
    explicit lmKovaPreferencesGUIW(QWidget *parent = nullptr) : QWidget(parent) { setupUi(this); }
};

// Options of the Kova scene reader ("kb" files): installation folder,
// shadows, material library and units. Pushed on every apply.
class lmKovaPreferencesGUII : public QObject, public lmPreferencesPage<lmKovaPreferencesGUIW>
{
    Q_OBJECT

public:
    lmKovaPreferencesGUII();

    void apply() override;
    void updateGUI() override;
    void storeGUI() override;

public Q_SLOTS:
    void clickedSetKovaLocation();

};

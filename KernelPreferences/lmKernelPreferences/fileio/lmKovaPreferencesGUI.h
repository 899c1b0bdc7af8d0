#pragma once

#include "lmLoadedValues.h"
#include "lmPreferences.h"
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
class lmKovaPreferencesGUII : public QObject, public lmPreferences
{
    Q_OBJECT

public:
    lmKovaPreferencesGUII();
    ~lmKovaPreferencesGUII() override;

    void setDefault(lmMessage &hostData, bool overwrite) override;
    void apply() override;
    void updateGUI() override;
    void storeGUI() override;

    lmKovaPreferencesGUIW *page() const { return m_page; }

public Q_SLOTS:
    void clickedSetKovaLocation();

private:
    lmKovaPreferencesGUIW *m_page;
    lmLoadedValues m_loaded;
};

#pragma once

#include "lmLoadedValues.h"
#include "lmPreferences.h"
#include "ui_lmWrlPreferencesGUI.h"

#include <QObject>
#include <QWidget>

class lmWrlPreferencesGUIW : public QWidget, public Ui_lmWrlPreferencesGUI
{
public:
    explicit lmWrlPreferencesGUIW(QWidget *parent = nullptr) : QWidget(parent) { setupUi(this); }
};

// VRML reader and writer options, handed to the loaders of both suffixes.
class lmWrlPreferencesGUII : public QObject, public lmPreferences
{
    Q_OBJECT

public:
    lmWrlPreferencesGUII();
    ~lmWrlPreferencesGUII() override;

    void setDefault(lmMessage &hostData, bool overwrite) override;
    void apply() override;
    void updateGUI() override;
    void storeGUI() override;

    lmWrlPreferencesGUIW *page() const { return m_page; }

private:
    lmWrlPreferencesGUIW *m_page;
    lmLoadedValues m_loaded;
};

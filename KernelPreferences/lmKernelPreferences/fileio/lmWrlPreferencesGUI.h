#pragma once

#include "lmPreferencesPage.h"
#include "ui_lmWrlPreferencesGUI.h"

#include <QObject>
#include <QWidget>

class lmWrlPreferencesGUIW : public QWidget, public Ui_lmWrlPreferencesGUI
{
public:
    explicit lmWrlPreferencesGUIW(QWidget *parent = nullptr) : QWidget(parent) { setupUi(this); }
};

// VRML reader and writer options, handed to the loaders of both suffixes.
class lmWrlPreferencesGUII : public QObject, public lmPreferencesPage<lmWrlPreferencesGUIW>
{
    Q_OBJECT

public:
    lmWrlPreferencesGUII();

    void apply() override;
    void updateGUI() override;
    void storeGUI() override;

};

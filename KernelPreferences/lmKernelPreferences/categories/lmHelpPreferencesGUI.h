#pragma once

#include "lmPreferencesPage.h"
#include "ui_lmHelpPreferencesGUI.h"

#include <QObject>
#include <QWidget>

class lmHelpPreferencesGUIW : public QWidget, public Ui_lmHelpPreferencesGUI
{
public:
    explicit lmHelpPreferencesGUIW(QWidget *parent = nullptr) : QWidget(parent) { setupUi(this); }
};

// Where the help comes from and which tool-tip popups the host shows. Only the
// popup kind reaches the running host; the help source is read where needed.
class lmHelpPreferencesGUII : public QObject, public lmPreferencesPage<lmHelpPreferencesGUIW>
{
    Q_OBJECT

public:
    lmHelpPreferencesGUII();

    void apply() override;
    void updateGUI() override;
    void storeGUI() override;

private slots:
    void indexChangedLocation(int index);
    void clickedGetHelpPath();
    void indexChangedPopup(int index);

};

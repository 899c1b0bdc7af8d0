#pragma once

#include "lmPreferencesPage.h"
#include "ui_lmMarkerPreferencesGUI.h"

#include <QObject>
#include <QWidget>

class lmMarkerPreferencesGUIW : public QWidget, public Ui_lmMarkerPreferencesGUI
{
public:
    explicit lmMarkerPreferencesGUIW(QWidget *parent = nullptr) : QWidget(parent) { setupUi(this); }
};

// How selected and pre-selected nodes are marked in the render view.
class lmMarkerPreferencesGUII : public QObject, public lmPreferencesPage<lmMarkerPreferencesGUIW>
{
    Q_OBJECT

public:
    lmMarkerPreferencesGUII();

    void apply() override;
    void updateGUI() override;
    void storeGUI() override;

private Q_SLOTS:
    void changedSelectionColor(float r, float g, float b);

};

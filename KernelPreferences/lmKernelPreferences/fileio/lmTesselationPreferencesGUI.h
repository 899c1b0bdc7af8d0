#pragma once

#include "lmPreferencesPage.h"
#include "ui_lmTesselationPreferencesGUI.h"

#include <QObject>
#include <QWidget>

class lmTesselationPreferencesGUIW : public QWidget, public Ui_lmTesselationPreferencesGUI
{
public:
    explicit lmTesselationPreferencesGUIW(QWidget *parent = nullptr) : QWidget(parent) { setupUi(this); }
};

// Defaults of the optimiser that tessellates imported CAD data: quality
// levels and topology. The host's import reads the keys from the store, so
// nothing is pushed on apply.
class lmTesselationPreferencesGUII : public QObject, public lmPreferencesPage<lmTesselationPreferencesGUIW>
{
    Q_OBJECT

public:
    lmTesselationPreferencesGUII();

    void apply() override;
    void updateGUI() override;
    void storeGUI() override;

public Q_SLOTS:
    void clickedAdd();
    void clickedRemove();
    void selectionChanged();
    void changedItem(QTreeWidgetItem *item, int column);

};

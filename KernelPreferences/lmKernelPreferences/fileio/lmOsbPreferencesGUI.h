#pragma once

#include "lmPreferencesPage.h"
#include "ui_lmOsbPreferencesGUI.h"

#include <QObject>
#include <QWidget>

class lmOsbPreferencesGUIW : public QWidget, public Ui_lmOsbPreferencesGUI
{
public:
    explicit lmOsbPreferencesGUIW(QWidget *parent = nullptr) : QWidget(parent) { setupUi(this); }
};

// Reader and writer options of the native scene formats (scene-graph binary
// and project file). Every readable key is pushed on apply.
class lmOsbPreferencesGUII : public QObject, public lmPreferencesPage<lmOsbPreferencesGUIW>
{
    Q_OBJECT

public:
    lmOsbPreferencesGUII();

    void apply() override;
    void updateGUI() override;
    void storeGUI() override;

public Q_SLOTS:
    void changedTextureCompression(int index);
    void toggledIncrementalSave(bool on);

};

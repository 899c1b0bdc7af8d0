#pragma once

#include "lmLoadedValues.h"
#include "lmPreferences.h"
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
class lmOsbPreferencesGUII : public QObject, public lmPreferences
{
    Q_OBJECT

public:
    lmOsbPreferencesGUII();
    ~lmOsbPreferencesGUII() override;

    void setDefault(lmMessage &hostData, bool overwrite) override;
    void apply() override;
    void updateGUI() override;
    void storeGUI() override;

    lmOsbPreferencesGUIW *page() const { return m_page; }

public Q_SLOTS:
    void changedTextureCompression(int index);
    void toggledIncrementalSave(bool on);

private:
    lmOsbPreferencesGUIW *m_page;
    lmLoadedValues m_loaded;
};

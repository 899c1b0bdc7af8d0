#pragma once

#include "lmPreferences.h"
#include "ui_lmMarkerPreferencesGUI.h"

#include <QObject>
#include <QWidget>

class lmMarkerPreferencesGUIW : public QWidget, public Ui_lmMarkerPreferencesGUI
{
public:
    explicit lmMarkerPreferencesGUIW(QWidget *parent = nullptr) : QWidget(parent) { setupUi(this); }
};

// How selected and pre-selected nodes are marked in the render view.
class lmMarkerPreferencesGUII : public QObject, public lmPreferences
{
    Q_OBJECT

public:
    lmMarkerPreferencesGUII();
    ~lmMarkerPreferencesGUII() override;

    void setDefault(lmMessage &hostData, bool overwrite) override;
    void apply() override;
    void updateGUI() override;
    void storeGUI() override;

    lmMarkerPreferencesGUIW *page() const { return m_page; }

private Q_SLOTS:
    void changedSelectionColor(float r, float g, float b);

private:
    lmMarkerPreferencesGUIW *m_page;
};

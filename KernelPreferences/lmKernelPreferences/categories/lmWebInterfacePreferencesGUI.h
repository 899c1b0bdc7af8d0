#pragma once

#include "lmPreferencesPage.h"
#include "ui_lmWebInterfacePreferencesGUI.h"

#include <QObject>
#include <QWidget>

class lmWebInterfacePreferencesGUIW : public QWidget, public Ui_lmWebInterfacePreferencesGUI
{
public:
    explicit lmWebInterfacePreferencesGUIW(QWidget *parent = nullptr) : QWidget(parent) { setupUi(this); }
};

// The host's web server, which runs Python commands for remote clients. It can
// be forbidden for the whole process; enabling it asks the user first.
class lmWebInterfacePreferencesGUII : public QObject, public lmPreferencesPage<lmWebInterfacePreferencesGUIW>
{
    Q_OBJECT

public:
    lmWebInterfacePreferencesGUII();

    void apply() override;
    void updateGUI() override;
    void storeGUI() override;
    // Forbidden by the environment or the edition: no page, never restarted.
    bool isDisabled() const { return m_disabled; }

private slots:
    void toggledEnable(bool checked);
    void toggledLocalhostOnly(bool checked);
    void toggledWhiteList(bool checked);

private:
    bool m_disabled = false;
    // Set while the page is filled from the store: no confirmation then.
    bool m_suppressConfirmation = false;
};

#pragma once

#include "lmPreferencesPage.h"
#include "ui_lmFileIOPreferencesGUI.h"

#include <QObject>
#include <QWidget>

class lmFileIOPreferencesGUIW : public QWidget, public Ui_lmFileIOPreferencesGUI
{
public:
    explicit lmFileIOPreferencesGUIW(QWidget *parent = nullptr) : QWidget(parent) { setupUi(this); }
};

// General loader settings: geometry checks, texture compression and search
// paths, the conversion folder, the import dialog and the converter format.
// Every readable key is pushed on apply; nothing is change-tracked.
class lmFileIOPreferencesGUII : public QObject, public lmPreferencesPage<lmFileIOPreferencesGUIW>
{
    Q_OBJECT

public:
    lmFileIOPreferencesGUII();

    void apply() override;
    void updateGUI() override;
    void storeGUI() override;

public Q_SLOTS:
    void clickedAdd();
    void clickedSub();
    void clickedGetTmpPath();

private:
    void addTexturePathRow(const QString &path);
};

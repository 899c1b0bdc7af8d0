#pragma once

#include "lmPreferencesPage.h"
#include "ui_lmRenderOptionsPreferencesGUI.h"

#include <QObject>
#include <QWidget>

#include <initializer_list>
#include <string>

class lmRenderOptionsPreferencesGUIW : public QWidget, public Ui_lmRenderOptionsPreferencesGUI
{
public:
    explicit lmRenderOptionsPreferencesGUIW(QWidget *parent = nullptr) : QWidget(parent) { setupUi(this); }
};

// Renderer settings of the render view: antialiasing and its presets,
// background, transparency, headlight, navigation aids, clipping, raytracing,
// display buffers, frame pacing, fixed resolution and the progress cursor.
class lmRenderOptionsPreferencesGUII : public QObject, public lmPreferencesPage<lmRenderOptionsPreferencesGUIW>
{
    Q_OBJECT

public:
    lmRenderOptionsPreferencesGUII();

    void apply() override;
    void updateGUI() override;
    void storeGUI() override;

    // A new scene brings its own headlight.
    void preferencesNewScene(lmMessage &message) override;

    // GPU list text as pushed to the host: bit n of the mask selects GPU n + 1.
    static unsigned int parseGpuMask(const std::string &text);

private slots:
    void clickedAdd();
    void clickedChooseColor();
    void clickedDelete();

private:
    bool anyChanged(std::initializer_list<const char *> keys) const;
    void applyHeadlightType();
    void applyHeadlightMode();
};

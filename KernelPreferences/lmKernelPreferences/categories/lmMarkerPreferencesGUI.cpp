#include "lmMarkerPreferencesGUI.h"

#include "lmController.h"
#include "lmOSGWidget.h"
#include "lmScenegraph.h"
#include "OpenSG/OSGSelection.h"

#include <QDoubleValidator>

namespace {

const lmTypedKey<float> kMarkerSize{"Marker size", 1.0f};
// The essentials edition's default is off; the table asks the edition.
const lmTypedKey<bool> kLODSelection{"LOD selection", true};
const lmTypedKey<bool> kAutoScroll{"Selection auto scroll", true};
const lmTypedKey<bool> kTransparentSelection{"Transparent Object Selection", false};
const lmTypedKey<bool> kPreselectionEnabled{"Selection preselection enabled", true};
const lmTypedKey<osg::Color3f> kPreselectionColor{"Selection preselection color", osg::Color3f(0.1f, 0.3f, 0.9f)};
// Shared with the render options; change-tracked so they are not re-pushed.
const lmTypedKey<bool> kWireframeSelection{"RenderOptions wireframe selection", false};
const lmTypedKey<bool> kSelectionInFront{"RenderOptions selection in front", false};
const lmTypedKey<osg::Color3f> kSelectionColor{"RenderOptions selection color", osg::Color3f(0.956f, 0.521f, 0.086f)};

const lmKeyTable kKeys{
    kMarkerSize,
    lmKeyComputed<bool>(kLODSelection, [] { return !lmController::isEssentialsEdition(); }),
    kAutoScroll,
    kTransparentSelection,
    kPreselectionEnabled,
    kPreselectionColor,
    kWireframeSelection,
    kSelectionInFront,
    kSelectionColor,
};

osg::Color3f colorOf(const QLMColorManipulator *picker)
{
    float r = 0.0f, g = 0.0f, b = 0.0f;
    picker->getColor(r, g, b);
    return osg::Color3f(r, g, b);
}

void showColor(QLMColorManipulator *picker, const osg::Color3f &color)
{
    picker->setColor(color.red(), color.green(), color.blue());
}

} // namespace

lmMarkerPreferencesGUII::lmMarkerPreferencesGUII()
    : QObject(nullptr), lmPreferencesPage(this, tr("Selection"), QString(), kKeys)
{
    page()->_marker_size->setValidator(new QDoubleValidator(page()->_marker_size));

    // Re-pushed on every apply anyway: plain writes.
    bindings.writeFromHere(lmPageBindings::Plain);
    bindings.bind(kMarkerSize, page()->_marker_size);
    bindings.bind(kLODSelection, page()->_lod_selection);
    bindings.bind(kAutoScroll, page()->_auto_scroll);
    bindings.bind(kTransparentSelection, page()->_transparent_object_selection);
    bindings.bind(kPreselectionEnabled, page()->_preselection_enabled);
    bindings.bind(kPreselectionColor, page()->_preselection_color, showColor, colorOf);
    bindings.writeFromHere(lmPageBindings::Tracked);
    bindings.bind(kWireframeSelection, page()->_wireframe_selection);
    bindings.bind(kSelectionInFront, page()->_selection_in_front);
    bindings.bind(kSelectionColor, page()->_scolor, showColor, colorOf);

    addPreferencesGUI(page());

    if (lmController::isEssentialsEdition()) {
        page()->_lod_selection->hide();
        page()->_selection_in_front->hide();
    }

    connect(page()->_scolor, &QLMColorManipulator::colorChanged, this,
            &lmMarkerPreferencesGUII::changedSelectionColor);
}

void lmMarkerPreferencesGUII::apply()
{
    const lmMessage &store = getData();
    bool flag = false;
    float size = 0.0f;
    osg::Color3f color;

    // Pushed whenever readable.
    if (kMarkerSize.read(store, size))
        lmScenegraph::setMarkerSize(size);
    if (kLODSelection.read(store, flag))
        lmScenegraph::setLODSelection(flag);
    if (kAutoScroll.read(store, flag))
        lmScenegraph::setAutoScroll(flag);
    if (kTransparentSelection.read(store, flag))
        osg::Selection::setForceTransparentObjectSelection(flag);
    if (kPreselectionEnabled.read(store, flag))
        lmScenegraph::setPreselectionEnabled(flag);
    if (kPreselectionColor.read(store, color))
        lmScenegraph::setPreselectionColor(color);

    // Pushed only when changed.
    if (isChanged(kWireframeSelection) && kWireframeSelection.read(store, flag))
        lmOSGWidget::setWireframeSelection(flag);
    if (isChanged(kSelectionInFront) && kSelectionInFront.read(store, flag)) {
        lmScenegraph::setWireframeOverride(flag);
        lmOSGWidget::setWireframeAlwaysInFront(flag);
    }
    if (isChanged(kSelectionColor) && kSelectionColor.read(store, color))
        lmScenegraph::setSelectionColor(color);
}

void lmMarkerPreferencesGUII::updateGUI()
{
    loadBound();
}

void lmMarkerPreferencesGUII::storeGUI()
{
    storeBound();
}

// Echoes a colour chosen in the wireframe picker back into it; it reaches
// the store when the page is stored.
void lmMarkerPreferencesGUII::changedSelectionColor(float r, float g, float b)
{
    page()->_scolor->setColor(r, g, b);
}

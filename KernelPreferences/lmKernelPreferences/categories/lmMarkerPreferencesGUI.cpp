#include "lmMarkerPreferencesGUI.h"

#include "lmController.h"
#include "lmKeyTable.h"
#include "lmMessageHelpers.h"
#include "lmOSGWidget.h"
#include "lmScenegraph.h"
#include "OpenSG/OSGSelection.h"

#include <QDoubleValidator>

namespace {

const char *const kMarkerSize = "Marker size";
const char *const kLODSelection = "LOD selection";
const char *const kAutoScroll = "Selection auto scroll";
const char *const kTransparentSelection = "Transparent Object Selection";
const char *const kPreselectionEnabled = "Selection preselection enabled";
const char *const kPreselectionColor = "Selection preselection color";
// Shared with the render options; change-tracked so they are not re-pushed.
const char *const kWireframeSelection = "RenderOptions wireframe selection";
const char *const kSelectionInFront = "RenderOptions selection in front";
const char *const kSelectionColor = "RenderOptions selection color";

const lmKeyTable kKeys{
    lmKey<float>(kMarkerSize, 1.0f),
    lmKeyComputed<bool>(kLODSelection, [] { return !lmController::isEssentialsEdition(); }),
    lmKey<bool>(kAutoScroll, true),
    lmKey<bool>(kTransparentSelection, false),
    lmKey<bool>(kPreselectionEnabled, true),
    lmKey<osg::Color3f>(kPreselectionColor, osg::Color3f(0.1f, 0.3f, 0.9f)),
    lmKey<bool>(kWireframeSelection, false),
    lmKey<bool>(kSelectionInFront, false),
    lmKey<osg::Color3f>(kSelectionColor, osg::Color3f(0.956f, 0.521f, 0.086f)),
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
    : QObject(nullptr), lmPreferences(tr("Selection"), QString()), m_page(new lmMarkerPreferencesGUIW)
{
    m_page->_marker_size->setValidator(new QDoubleValidator(m_page->_marker_size));

    addPreferencesGUI(m_page);

    if (lmController::isEssentialsEdition()) {
        m_page->_lod_selection->hide();
        m_page->_selection_in_front->hide();
    }

    connect(m_page->_scolor, &QLMColorManipulator::colorChanged, this,
            &lmMarkerPreferencesGUII::changedSelectionColor);
}

lmMarkerPreferencesGUII::~lmMarkerPreferencesGUII()
{
    kKeys.removeFrom(getData());
    subPreferencesGUI(m_page);
    delete m_page;
}

void lmMarkerPreferencesGUII::setDefault(lmMessage &, bool overwrite)
{
    kKeys.writeDefaults(getData(), overwrite);
}

void lmMarkerPreferencesGUII::apply()
{
    const lmMessage &store = getData();
    bool flag = false;
    float size = 0.0f;
    osg::Color3f color;

    // Pushed whenever readable.
    if (getFromMessage(store, kMarkerSize, size))
        lmScenegraph::setMarkerSize(size);
    if (getFromMessage(store, kLODSelection, flag))
        lmScenegraph::setLODSelection(flag);
    if (getFromMessage(store, kAutoScroll, flag))
        lmScenegraph::setAutoScroll(flag);
    if (getFromMessage(store, kTransparentSelection, flag))
        osg::Selection::setForceTransparentObjectSelection(flag);
    if (getFromMessage(store, kPreselectionEnabled, flag))
        lmScenegraph::setPreselectionEnabled(flag);
    if (getFromMessage(store, kPreselectionColor, color))
        lmScenegraph::setPreselectionColor(color);

    // Pushed only when changed.
    if (isChanged(kWireframeSelection) && getFromMessage(store, kWireframeSelection, flag))
        lmOSGWidget::setWireframeSelection(flag);
    if (isChanged(kSelectionInFront) && getFromMessage(store, kSelectionInFront, flag)) {
        lmScenegraph::setWireframeOverride(flag);
        lmOSGWidget::setWireframeAlwaysInFront(flag);
    }
    if (isChanged(kSelectionColor) && getFromMessage(store, kSelectionColor, color))
        lmScenegraph::setSelectionColor(color);
}

void lmMarkerPreferencesGUII::updateGUI()
{
    const lmMessage &store = getData();
    bool flag = false;
    float size = 0.0f;
    osg::Color3f color;

    if (getFromMessage(store, kMarkerSize, size))
        m_page->_marker_size->setText(QString::number(size, 'g', 6));
    if (getFromMessage(store, kLODSelection, flag))
        m_page->_lod_selection->setChecked(flag);
    if (getFromMessage(store, kAutoScroll, flag))
        m_page->_auto_scroll->setChecked(flag);
    if (getFromMessage(store, kTransparentSelection, flag))
        m_page->_transparent_object_selection->setChecked(flag);
    if (getFromMessage(store, kPreselectionEnabled, flag))
        m_page->_preselection_enabled->setChecked(flag);
    if (getFromMessage(store, kPreselectionColor, color))
        showColor(m_page->_preselection_color, color);
    if (getFromMessage(store, kWireframeSelection, flag))
        m_page->_wireframe_selection->setChecked(flag);
    if (getFromMessage(store, kSelectionInFront, flag))
        m_page->_selection_in_front->setChecked(flag);
    if (getFromMessage(store, kSelectionColor, color))
        showColor(m_page->_scolor, color);
}

void lmMarkerPreferencesGUII::storeGUI()
{
    lmMessage &store = getData();

    // Re-pushed on every apply anyway: plain writes. Text that is no number
    // (an empty field) stores 0.
    store.set(kMarkerSize, m_page->_marker_size->text().toFloat(), true);
    store.set(kLODSelection, m_page->_lod_selection->isChecked(), true);
    store.set(kAutoScroll, m_page->_auto_scroll->isChecked(), true);
    store.set(kTransparentSelection, m_page->_transparent_object_selection->isChecked(), true);
    store.set(kPreselectionEnabled, m_page->_preselection_enabled->isChecked(), true);
    store.set(kPreselectionColor, colorOf(m_page->_preselection_color), true);

    if (!setToMessage(store, kWireframeSelection, m_page->_wireframe_selection->isChecked(), true))
        addUnchanged(kWireframeSelection);
    if (!setToMessage(store, kSelectionInFront, m_page->_selection_in_front->isChecked(), true))
        addUnchanged(kSelectionInFront);
    if (!setToMessage(store, kSelectionColor, colorOf(m_page->_scolor), true))
        addUnchanged(kSelectionColor);
}

// Echoes a colour chosen in the wireframe picker back into it; it reaches
// the store when the page is stored.
void lmMarkerPreferencesGUII::changedSelectionColor(float r, float g, float b)
{
    m_page->_scolor->setColor(r, g, b);
}

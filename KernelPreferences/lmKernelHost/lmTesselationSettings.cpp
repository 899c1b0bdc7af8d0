#include "lmTesselationSettings.h"

#include "QLMWheelPrec.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace {

struct Preset
{
    const char *name;
    double chordDeviation;
    double normalTolerance;
    double maxChordLength;
};

// The medium preset equals the readers' defaults.
const Preset kPresets[] = {
    {QT_TRANSLATE_NOOP("lmTesselationSettings", "Low"), 0.2, 20.0, 500.0},
    {QT_TRANSLATE_NOOP("lmTesselationSettings", "Medium"), 0.075, 10.0, 200.0},
    {QT_TRANSLATE_NOOP("lmTesselationSettings", "High"), 0.02, 5.0, 100.0},
};

QLMWheelPrec *field(double minimum, double maximum, int decimals, double value, QWidget *parent)
{
    auto *wheel = new QLMWheelPrec(parent);
    wheel->setDecimals(decimals);
    wheel->setRange(minimum, maximum);
    wheel->setValue(value);
    return wheel;
}

QCheckBox *box(const QString &text, bool checked, QWidget *parent)
{
    auto *check = new QCheckBox(text, parent);
    check->setChecked(checked);
    return check;
}

} // namespace

lmTesselationSettings::lmTesselationSettings(QWidget *parent) : QWidget(parent)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);

    // Scene graph clean-up, used by every reader.
    auto *sceneGraph = new QGroupBox(tr("Scene Graph"), this);
    sceneGraph->setObjectName(QStringLiteral("_scene_graph_group"));
    auto *sceneLayout = new QVBoxLayout(sceneGraph);
    m_mergeGeometries = box(tr("Merge Geometries"), true, sceneGraph);
    m_createGroupsForLayers = box(tr("Create Groups for Layers"), true, sceneGraph);
    m_removeEmptyGroups = box(tr("Remove Empty Groups"), true, sceneGraph);
    m_unshareNodes = box(tr("Unshare Nodes"), false, sceneGraph);
    m_flushTransformations = box(tr("Flush Transformations"), false, sceneGraph);
    for (QCheckBox *check : {m_mergeGeometries, m_createGroupsForLayers, m_removeEmptyGroups, m_unshareNodes,
                             m_flushTransformations})
        sceneLayout->addWidget(check);

    // Tessellation of surfaces.
    auto *tessellation = new QGroupBox(tr("Tessellation"), this);
    tessellation->setObjectName(QStringLiteral("_tessellation_group"));
    auto *tessellationLayout = new QFormLayout(tessellation);
    m_preset = new QComboBox(tessellation);
    for (const Preset &preset : kPresets)
        m_preset->addItem(tr(preset.name));
    m_preset->addItem(tr("Custom"));
    m_chordDeviation = field(0.0001, 1000.0, 4, kPresets[MediumQuality].chordDeviation, tessellation);
    m_normalTolerance = field(0.01, 90.0, 2, kPresets[MediumQuality].normalTolerance, tessellation);
    m_maxChordLength = field(0.0, 1.0e6, 2, kPresets[MediumQuality].maxChordLength, tessellation);
    m_keepSurfaceData = box(tr("Keep Surface Data"), true, tessellation);
    m_unifySurfaceNormals = box(tr("Unify Surface Normals"), true, tessellation);
    tessellationLayout->addRow(tr("Quality"), m_preset);
    tessellationLayout->addRow(tr("Chord Deviation"), m_chordDeviation);
    tessellationLayout->addRow(tr("Normal Tolerance"), m_normalTolerance);
    tessellationLayout->addRow(tr("Max Chord Length"), m_maxChordLength);
    tessellationLayout->addRow(m_keepSurfaceData);
    tessellationLayout->addRow(m_unifySurfaceNormals);

    // Stitching of surface edges into a closed topology.
    auto *stitching = new QGroupBox(tr("Stitching"), this);
    stitching->setObjectName(QStringLiteral("_stitching_group"));
    auto *stitchingLayout = new QFormLayout(stitching);
    m_stitching = box(tr("Stitching"), true, stitching);
    m_stitchingTolerance = field(0.0001, 1000.0, 4, 0.1, stitching);
    stitchingLayout->addRow(m_stitching);
    stitchingLayout->addRow(tr("Stitching Tolerance"), m_stitchingTolerance);

    layout->addWidget(tessellation);
    layout->addWidget(stitching);
    layout->addWidget(sceneGraph);
    m_groups[SceneGraphGroup] = sceneGraph;
    m_groups[TessellationGroup] = tessellation;
    m_groups[StitchingGroup] = stitching;

    updateQualityPreset();
    updateStitchingTolerance();
}

lmTesselationSettings::~lmTesselationSettings() = default;

void lmTesselationSettings::setConnections()
{
    if (m_connected)
        return;
    m_connected = true;
    connect(m_preset, QOverload<int>::of(&QComboBox::activated), this, &lmTesselationSettings::choosePreset);
    for (QLMWheelPrec *wheel : {m_chordDeviation, m_normalTolerance, m_maxChordLength})
        connect(wheel, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
                &lmTesselationSettings::updateQualityPreset);
    connect(m_stitching, &QCheckBox::toggled, this, &lmTesselationSettings::updateStitchingTolerance);
}

void lmTesselationSettings::enableGroups(unsigned lastGroup)
{
    for (unsigned group = SceneGraphGroup; group <= StitchingGroup; ++group)
        m_groups[group]->setEnabled(group <= lastGroup);
}

bool lmTesselationSettings::isGroupEnabled(Group group) const
{
    return m_groups[group]->isEnabled();
}

void lmTesselationSettings::setChordDeviation(double value) { m_chordDeviation->setValue(value); }
double lmTesselationSettings::chordDeviation() const { return m_chordDeviation->value(); }
void lmTesselationSettings::setNormalTolerance(double degrees) { m_normalTolerance->setValue(degrees); }
double lmTesselationSettings::normalTolerance() const { return m_normalTolerance->value(); }
void lmTesselationSettings::setMaxChordLength(double value) { m_maxChordLength->setValue(value); }
double lmTesselationSettings::maxChordLength() const { return m_maxChordLength->value(); }

void lmTesselationSettings::setStitchingEnabled(bool on)
{
    m_stitching->setChecked(on);
    updateStitchingTolerance();
}

bool lmTesselationSettings::stitchingEnabled() const { return m_stitching->isChecked(); }
void lmTesselationSettings::setStitchingTolerance(double value) { m_stitchingTolerance->setValue(value); }
double lmTesselationSettings::stitchingTolerance() const { return m_stitchingTolerance->value(); }

void lmTesselationSettings::updateQualityPreset()
{
    int index = CustomQuality;
    for (int i = LowQuality; i < CustomQuality; ++i) {
        const Preset &preset = kPresets[i];
        if (chordDeviation() == preset.chordDeviation && normalTolerance() == preset.normalTolerance
            && maxChordLength() == preset.maxChordLength) {
            index = i;
            break;
        }
    }
    const QSignalBlocker blocker(m_preset);
    m_preset->setCurrentIndex(index);
}

lmTesselationSettings::QualityPreset lmTesselationSettings::qualityPreset() const
{
    return static_cast<QualityPreset>(m_preset->currentIndex());
}

void lmTesselationSettings::choosePreset(int index)
{
    if (index < LowQuality || index >= CustomQuality)
        return; // Custom keeps the values as they are
    const Preset &preset = kPresets[index];
    {
        const QSignalBlocker chord(m_chordDeviation), normal(m_normalTolerance), length(m_maxChordLength);
        m_chordDeviation->setValue(preset.chordDeviation);
        m_normalTolerance->setValue(preset.normalTolerance);
        m_maxChordLength->setValue(preset.maxChordLength);
    }
    updateQualityPreset();
}

void lmTesselationSettings::updateStitchingTolerance()
{
    m_stitchingTolerance->setEnabled(m_stitching->isChecked());
}

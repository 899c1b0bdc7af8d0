#pragma once

#include "QLMWheelPrec.h"
#include "lmHostApi.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QGroupBox;

// Host widget with the tessellation, stitching and scene-graph clean-up
// options of the CAD readers. Usable as a Designer custom widget; it stays
// inert until its owner calls setConnections().
class LM_HOST_API lmTesselationSettings : public QWidget
{
    Q_OBJECT

public:
    // Groups in the order enableGroups() counts them.
    enum Group { SceneGraphGroup = 0, TessellationGroup = 1, StitchingGroup = 2 };
    // Quality presets; Custom stands for values that match no preset.
    enum QualityPreset { LowQuality = 0, MediumQuality = 1, HighQuality = 2, CustomQuality = 3 };

    explicit lmTesselationSettings(QWidget *parent = nullptr);
    ~lmTesselationSettings() override;

    // Wires the preset choice, the value fields and the stitching switch.
    // Calling it again changes nothing.
    void setConnections();
    // Enables the groups up to and including lastGroup and disables the rest:
    // 0 leaves only the scene-graph options of a mesh format.
    void enableGroups(unsigned lastGroup);
    bool isGroupEnabled(Group group) const;

    void setChordDeviation(double value);
    double chordDeviation() const;
    void setNormalTolerance(double degrees);
    double normalTolerance() const;
    void setMaxChordLength(double value);
    double maxChordLength() const;
    void setStitchingEnabled(bool on);
    bool stitchingEnabled() const;
    void setStitchingTolerance(double value);
    double stitchingTolerance() const;

    // Shows the preset whose values equal the three tessellation values.
    void updateQualityPreset();
    QualityPreset qualityPreset() const;

    QComboBox *qualityPresets() const { return m_preset; }
    QLMWheelPrec *chordDeviationField() const { return m_chordDeviation; }
    QLMWheelPrec *normalToleranceField() const { return m_normalTolerance; }
    QLMWheelPrec *maxChordLengthField() const { return m_maxChordLength; }
    QCheckBox *stitchingSwitch() const { return m_stitching; }
    QLMWheelPrec *stitchingToleranceField() const { return m_stitchingTolerance; }

    QCheckBox *keepSurfaceData() const { return m_keepSurfaceData; }
    QCheckBox *unifySurfaceNormals() const { return m_unifySurfaceNormals; }
    QCheckBox *mergeGeometries() const { return m_mergeGeometries; }
    QCheckBox *createGroupsForLayers() const { return m_createGroupsForLayers; }
    QCheckBox *removeEmptyGroups() const { return m_removeEmptyGroups; }
    QCheckBox *unshareNodes() const { return m_unshareNodes; }
    QCheckBox *flushTransformations() const { return m_flushTransformations; }

private:
    void choosePreset(int index);
    void updateStitchingTolerance();

    QGroupBox *m_groups[3];
    QComboBox *m_preset;
    QLMWheelPrec *m_chordDeviation;
    QLMWheelPrec *m_normalTolerance;
    QLMWheelPrec *m_maxChordLength;
    QCheckBox *m_stitching;
    QLMWheelPrec *m_stitchingTolerance;
    QCheckBox *m_keepSurfaceData;
    QCheckBox *m_unifySurfaceNormals;
    QCheckBox *m_mergeGeometries;
    QCheckBox *m_createGroupsForLayers;
    QCheckBox *m_removeEmptyGroups;
    QCheckBox *m_unshareNodes;
    QCheckBox *m_flushTransformations;
    bool m_connected = false;
};

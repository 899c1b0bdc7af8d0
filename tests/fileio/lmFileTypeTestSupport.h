#pragma once

// Helpers shared by the CAD page tests: the exact call-log line of a committed
// import options record, a lenient store read, and whether a control of the
// shared form would be shown.
#include "fileio/lmFileTypePreferences.h"
#include "lmPageTestSupport.h"
#include "lmImportOptions.h"

#include <QMap>
#include <QStringList>
#include <QtTest>

#include <utility>
#include <vector>

// The record line with every field at its default except the given ones
// (field name to logged text).
inline QString recordLine(const QString &typeName, const QMap<QString, QString> &changes = {})
{
    static const std::vector<std::pair<QString, QString>> kFields = {
        {"mergeGeometries", "true"},         {"keepSurfaceData", "true"},
        {"createGroupsForLayers", "true"},   {"removeEmptyGroups", "true"},
        {"unshareNodes", "false"},           {"chordDeviation", "0.075"},
        {"normalTolerance", "10"},           {"maxChordLength", "200"},
        {"stitching", "true"},               {"stitchingTolerance", "0.1"},
        {"importSurfaces", "true"},          {"importInvisibleSurfaces", "false"},
        {"unifySurfaceNormals", "true"},     {"importCurves", "false"},
        {"importInvisibleCurves", "false"},  {"importMeshes", "true"},
        {"importInvisibleMeshes", "false"},  {"importAssociativeMeshes", "false"},
        {"importInvisibleInstances", "false"}, {"importTemplateGeometries", "false"},
        {"importLights", "false"},           {"importCameras", "false"},
        {"importVariants", "false"},         {"importReferencedFiles", "true"},
        {"importMeshLODs", "2"},             {"jtToolkit", "0"},
        {"importEmptyLayers", "false"},      {"importCoordSystems", "false"},
        {"optimizeMaterials", "true"},       {"smartReferenceBehavior", "2"},
        {"importAsSmartReference", "false"}, {"useLegacyRhinoLoader", "false"},
        {"importNurbs", "true"},             {"jtUsePlugin", "false"},
        {"jtActiveLayerFilter", "true"},     {"jtLoadBreps", "0"},
    };
    QString line = QStringLiteral("lmImportOptions::write(\"%1\"").arg(typeName);
    int used = 0;
    for (const auto &field : kFields) {
        const bool changed = changes.contains(field.first);
        used += changed;
        line += QStringLiteral(", %1=%2").arg(field.first, changed ? changes.value(field.first) : field.second);
    }
    if (used != changes.size())
        qFatal("recordLine: unknown field in %s", qPrintable(QStringList(changes.keys()).join(' ')));
    return line + ')';
}

template <class T>
T stored(const std::string &key, T fallback)
{
    getFromMessage(lmPreferences::getData(), key, fallback);
    return fallback;
}

// Shown when the page is shown and the control's tab is selected: no widget
// up to its tab is hidden, and the tab is still in the tab widget.
inline bool shown(lmFileTypePreferencesGUIW *page, const QWidget *widget)
{
    for (const QWidget *w = widget; w && w != page; w = w->parentWidget()) {
        if (w == page->m_importTab || w == page->m_exportTab)
            return page->m_tabWidget->indexOf(const_cast<QWidget *>(w)) >= 0;
        if (w->isHidden())
            return false;
    }
    return true;
}

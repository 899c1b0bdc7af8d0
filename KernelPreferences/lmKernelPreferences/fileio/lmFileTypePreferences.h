#pragma once

#include "lmCADFileTypes.h"
#include "lmPageBindings.h"
#include "lmPreferences.h"
#include "ui_lmFileTypePreferencesGUI.h"

#include <QString>
#include <QWidget>

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

class lmFileTypePreferencesGUIW : public QWidget, public Ui_lmFileTypePreferencesGUI
{
public:
    explicit lmFileTypePreferencesGUIW(QWidget *parent = nullptr) : QWidget(parent) { setupUi(this); }
};

// The page behind every CAD format under "FileIO": the reader options that
// all CAD formats share, stored under keys that start with the format's type
// name, shown on one common form whose controls depend on the file type, and
// committed as the format's import options record on every apply. A format
// page adds its own options through the four format hooks.
class lmFileTypePreferences : public lmPreferences
{
public:
    // One member per common key; the constructor sets each to its key's
    // default.
    struct Options
    {
        bool stitching;
        double stitchingTolerance;
        bool tessellation;
        bool keepSurfaceData;
        bool createGroupsForLayers;
        double chordDeviation;
        double normalTolerance;
        double maxChordLength;
        bool mergeGeometries;
        bool removeEmptyGroups;
        bool unshareNodes;
        bool flushTransformations;
        bool importSurfaces;
        bool importInvisibleSurfaces;
        bool unifySurfaceNormals;
        bool importMeshes;
        bool importInvisibleMeshes;
        bool importCurves;
        bool importInvisibleCurves;
        bool importInvisibleInstances;
        bool importAssociativeMeshes;
        bool importEmptyLayers;
        bool importTemplateGeometries;
        bool importLights;
        bool importCameras;
        bool importVariants;
        std::int32_t importMeshLODs;
        std::int32_t jtToolkit;
        bool importCoordSystems;
        bool importReferencedFiles;
        std::int32_t smartReferenceBehavior;
        bool importCreateAsSmart;
        bool optimizeMaterials;
    };

    // type must lie in 3..30; parentName is the dialog group ("FileIO").
    lmFileTypePreferences(lmCADFileTypes::FileType type, const QString &pageName, const QString &parentName);
    ~lmFileTypePreferences() override;

    void setDefault(lmMessage &hostData, bool overwrite) override;
    void apply() override;
    void updateGUI() override;
    void storeGUI() override;

    // Format hooks, run after the common part of the matching operation.
    virtual void setFormatDefault(bool overwrite);
    virtual void applyFormat(lmMessage &message);
    virtual void updateFormatGUI();
    virtual void storeFormatGUI();

    lmCADFileTypes::FileType fileType() const { return m_fileType; }
    // The key prefix and record name of this page's type.
    std::string typeName() const;
    // "undefined" for values outside the enumeration.
    static std::string typeName(int type);

    // The smart-reference keys of a native scene format ("OpenSG", "LUMO").
    static std::string smartReferenceBehaviorKey(lmCADFileTypes::FileType type);
    static std::string createAsSmartKey(lmCADFileTypes::FileType type);

    lmFileTypePreferencesGUIW *page() const { return m_page; }
    const Options &options() const { return m_options; }

protected:
    // The type name followed by the option suffix, without a separator.
    std::string key(const char *suffix) const;
    // The source-reference key of this type, which only a format page writes.
    std::string sourceReferenceKey() const;

private:
    struct Row
    {
        const char *name;
        std::function<void(lmMessage &, bool)> writeDefault; // empty: never defaulted
        std::function<void(const lmMessage &)> read;         // empty: never read
    };
    enum Use { Defaulted = 1, Read = 2 };
    template <class T>
    void declare(const char *prefix, const lmTypedKey<T> &option, T *member, int use = Defaulted | Read);
    // The page's copy of a declared key name, which outlives its bindings.
    const char *declaredName(const std::string &name) const;
    template <class T>
    lmTypedKey<T> prefixed(const lmTypedKey<T> &option) const;
    void declareKeys();
    bool has(unsigned capability) const;

    void readOptions(const lmMessage &store);
    void updateCommonControls();
    void storeCommonControls();
    void bindCommonControls();

    lmCADFileTypes::FileType m_fileType;
    Options m_options{};
    std::deque<std::string> m_keyNames; // stable names for the rows and bindings
    std::vector<Row> m_rows;            // in the order of their defaults
    lmPageBindings m_bindings;
    lmFileTypePreferencesGUIW *m_page;
};

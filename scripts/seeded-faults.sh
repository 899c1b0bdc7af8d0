#!/usr/bin/env bash
# How many deliberate faults the test suite catches: applies each fault below
# to the sources on its own, rebuilds, runs ctest, puts the source back, and
# reports the faults that no test caught. The sources are left as they were,
# also when interrupted.
#   scripts/seeded-faults.sh            every fault
#   scripts/seeded-faults.sh 3 7        faults 3 and 7 only
# BUILD_DIR (default build-faults) holds the build it uses.
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir=${BUILD_DIR:-build-faults}
jobs=$(nproc)

# One fault per entry: file, the text it replaces (once), its replacement,
# and what kind of fault it is.
faults=(
    "KernelPreferences/lmKernelPreferences/categories/lmCameraPreferencesGUI.cpp"
    "{\"Camera fov\", 45.0f}" "{\"Camera fov\", 46.0f}" "a changed default"

    "KernelPreferences/lmKernelPreferences/categories/lmWebInterfacePreferencesGUI.cpp"
    "{\"WebInterface port\", 8888}" "{\"WebInterface port\", 8889}" "a changed default"

    "KernelPreferences/lmKernelPreferences/categories/lmCameraPreferencesGUI.cpp"
    "setPowerwallWindow(-1, width, height, distance)" "setPowerwallWindow(-1, height, width, distance)"
    "a swapped argument"

    "KernelPreferences/lmKernelPreferences/categories/lmNavigatorPreferencesGUI.cpp"
    "setNavAutoCenter(flag)" "setNavAutoCenter(!flag)" "a negated argument"

    "KernelPreferences/lmKernelPreferences/categories/lmMarkerPreferencesGUI.cpp"
    "lmScenegraph::setAutoScroll(flag);" "(void)flag;" "a dropped host call"

    "KernelPreferences/lmKernelPreferences/categories/lmCameraPreferencesGUI.cpp"
    "if (readWidth && readHeight && readDistance)" "if (readWidth && readHeight)"
    "a combined host call made although one read failed"

    "KernelPreferences/lmKernelPreferences/categories/lmMarkerPreferencesGUI.cpp"
    "page()->_marker_size->setValidator(new QDoubleValidator(page()->_marker_size));" ""
    "a validator removed from a line edit"

    "KernelPreferences/lmKernelPreferences/categories/lmHelpPreferencesGUI.ui"
    "<string>Installed Help</string>" "<string>Installed help</string>" "a changed label"

    "KernelPreferences/lmKernelPreferences/categories/lmMainWindowPreferencesGUI.ui"
    "<string>Disable Docking</string>" "<string>Disable Dock</string>" "a changed check-box text"

    "KernelPreferences/lmKernelPreferences/frame/lmPreferencesPage.h"
    "        subPreferencesGUI(m_page.get());" "" "a page that does not withdraw itself"

    "KernelPreferences/lmKernelPreferences/fileio/lmStlFilePreferencesGUI.cpp"
    "    store.remove(sourceReferenceKey());" "" "a key left behind on destruction"

    "KernelPreferences/lmKernelPreferences/categories/lmWebInterfacePreferencesGUI.cpp"
    "kLocalhostOnly, kDebugMode, kUseWhiteList" "kLocalhostOnly, kUseWhiteList" "a removed key"

    "KernelPreferences/lmKernelPreferences/fileio/lmKBXFilePreferencesGUI.cpp"
    "\",kbx_export_vertex_colors=\"" "\",kbx_export_vertexcolors=\"" "a changed option string"

    "KernelPreferences/lmprefs-host/lmPreferencesSession.cpp"
    "    lmPreferencesHost::updateGUIAll();
    lmPreferencesHost::resetUnchanged();
    lmPreferencesHost::applyAll();" "    lmPreferencesHost::resetUnchanged();
    lmPreferencesHost::applyAll();
    lmPreferencesHost::updateGUIAll();" "a start-up that applies before the pages show the loaded values"

    "KernelPreferences/lmprefs-host/lmStoreFile.cpp"
    "!lmStoreDocument::sameValue(entry.second, base.get(entry.first))" "true"
    "a save that writes back what another instance changed"

    "KernelPreferences/lmKernelPreferences/categories/lmDevicesPreferencesGUI.ui"
    "<string>Selected Object/Origin</string>" "<string>Selected Object</string>" "a changed combo item"

    "KernelPreferences/lmKernelPreferences/categories/lmNavigatorPreferencesGUI.ui"
    "<string>Inverts dolly direction when using the scroll wheel</string>"
    "<string>Inverts the dolly direction of the scroll wheel</string>" "a changed tool tip"

    "KernelPreferences/lmKernelPreferences/categories/lmNavigatorPreferencesGUI.cpp"
    "page()->_orbit_detection_area->setRange(0, 99999);" "page()->_orbit_detection_area->setRange(0, 9999);"
    "a changed spin-box range"

    "KernelPreferences/lmKernelPreferences/categories/lmNavigatorPreferencesGUI.cpp"
    "        wheel->setDecimals(2);" "        wheel->setDecimals(1);" "changed decimals of a wheel"

    "KernelPreferences/lmKernelPreferences/categories/lmHelpPreferencesGUI.cpp"
    "int popup = Toolclips;" "int popup = SimpleToolclips;" "a fallback that differs from the default"

    "KernelPreferences/lmKernelPreferences/categories/lmRenderOptionsPreferencesGUI.cpp"
    "    lmKeyWithoutDefault<bool>(kLocalLights)," "" "a page that removes one key less on destruction"

    "KernelPreferences/lmKernelPreferences/categories/lmCameraPreferencesGUI.cpp"
    "    float eyeSeparation = 0.0f;
    if (isChanged(kEyeSeparation) && kEyeSeparation.read(store, eyeSeparation))
        lmOSGWidget::setGlobalEyeSeparation(eyeSeparation);

    float zeroParallax = 0.0f;
    if (isChanged(kZeroParallax) && kZeroParallax.read(store, zeroParallax))
        lmOSGWidget::setGlobalZeroParallaxDistance(zeroParallax);" "    float zeroParallax = 0.0f;
    if (isChanged(kZeroParallax) && kZeroParallax.read(store, zeroParallax))
        lmOSGWidget::setGlobalZeroParallaxDistance(zeroParallax);

    float eyeSeparation = 0.0f;
    if (isChanged(kEyeSeparation) && kEyeSeparation.read(store, eyeSeparation))
        lmOSGWidget::setGlobalEyeSeparation(eyeSeparation);" "two host calls of apply swapped"

    "KernelPreferences/lmKernelPreferences/categories/lmCameraPreferencesGUI.cpp"
    "if (isChanged(kEyeSeparation) && kEyeSeparation.read(store, eyeSeparation))"
    "if (kEyeSeparation.read(store, eyeSeparation))" "a missing change gate"

    "KernelPreferences/lmKernelPreferences/categories/lmNavigatorPreferencesGUI.cpp"
    "lmTypedKey<int> kOrbitDetectionArea{\"Navigator orbit detection area\", 40};" "lmTypedKey<unsigned int> kOrbitDetectionArea{\"Navigator orbit detection area\", 40u};"
    "a default of another type"

    "KernelPreferences/lmKernelPreferences/fileio/lmTesselationPreferencesGUI.cpp"
    "    page()->_offset_factor->setValidator(new QDoubleValidator(page()->_offset_factor));" ""
    "another validator removed from a line edit"

    "KernelPreferences/lmKernelPreferences/frame/lmPreferencesPage.h"
    "        keys.removeFrom(getData());" "" "pages that leave their keys behind"

    "KernelPreferences/lmKernelPreferences/categories/lmCameraPreferencesGUI.ui"
    "<string>Zero Parallax Distance</string>" "<string>Zero Parallax</string>" "another changed label"

    "KernelPreferences/lmKernelPreferences/fileio/lmFileIOPreferencesGUI.cpp"
    "    lmFileIO::enableOptimizeTransparencies(false);
    lmFileIO::setShowFileIOProgress(true);" "    lmFileIO::setShowFileIOProgress(true);
    lmFileIO::enableOptimizeTransparencies(false);" "two fixed host calls of apply swapped"

    "KernelPreferences/lmKernelPreferences/fileio/lmOsbPreferencesGUI.cpp"
    "    case 4:
        return 5;" "    case 4:
        return 4;" "a changed compression mapping"

    "KernelPreferences/lmKernelPreferences/fileio/lmKovaPreferencesGUI.cpp"
    "options += \",importunits=\" + importUnits;" "options += \",importunits=\" + units;"
    "an option string item taken from the wrong key"

    "KernelPreferences/lmprefs-host/lmStoreFile.cpp"
    "std::is_same<T, unsigned int>::value) return \"uint\";" "std::is_same<T, unsigned int>::value) return \"unit\";"
    "a type tag misspelled when writing"

    "KernelPreferences/lmprefs-host/lmStoreFile.cpp"
    "    if (!m_loadError.isEmpty())
        return fail(" "    if (false)
        return fail(" "a file that could not be loaded overwritten without consent"

    "KernelPreferences/lmprefs-host/lmStoreFile.cpp"
    "bool locked = lock.tryLock(m_lockTimeout);" "bool locked = true;" "a save that skips the lock"

    "KernelPreferences/lmprefs-host/lmStoreFile.cpp"
    "mergedOnto(disk, store, *base)" "mergedOnto(store, disk, *base)"
    "a merge in which the file on disk wins over this instance's later change"

    "KernelPreferences/lmprefs-host/lmHostApplication.cpp"
    "return fail(2, QStringLiteral(\"unknown preference key" "return fail(1, QStringLiteral(\"unknown preference key"
    "a wrong exit status for an unknown key"

    "KernelPreferences/lmprefs-host/lmKeyDescription.cpp"
    "            if (home.at(key) == i && std::none_of(" "            if (false && std::none_of("
    "a key description that leaves out keys without a control"

    "KernelPreferences/lmprefs-host/lmPreferencesDialog.cpp"
    "button(QDialogButtonBox::Apply)->setEnabled(isPending());" "button(QDialogButtonBox::Apply)->setEnabled(true);"
    "Apply enabled without pending edits"

    "KernelPreferences/lmprefs-host/lmPreferencesDialog.cpp"
    "    if (!isPending())
        return true;
    QMessageBox box(QMessageBox::Question" "    if (true)
        return true;
    QMessageBox box(QMessageBox::Question" "pending edits discarded without asking"

    "KernelPreferences/lmprefs-host/lmSettingSearch.cpp"
    "result += c.toLower();" "result += c;" "a search that does not ignore case"

    "KernelPreferences/lmprefs-host/lmPreferencesSession.cpp"
    "    lmPreferencesHost::applyAll();
    lmPreferencesHost::resetUnchanged();
    m_pushInFull.clear();" "    lmPreferencesHost::applyAll();
    m_pushInFull.clear();" "unchanged marks kept after an accepted apply"

    "KernelPreferences/lmKernelPreferences/categories/lmRenderOptionsPreferencesGUI.cpp"
    "    if (isChanged(kSortTrans))
        lmOSGWidget::setSortTrans(readOr(kSortTrans, true) ? 1 : 0);
    if (isChanged(kZWriteTrans))
        lmOSGWidget::setZWriteTrans(readOr(kZWriteTrans, true) ? 1 : 0);" "    if (isChanged(kZWriteTrans))
        lmOSGWidget::setZWriteTrans(readOr(kZWriteTrans, true) ? 1 : 0);
    if (isChanged(kSortTrans))
        lmOSGWidget::setSortTrans(readOr(kSortTrans, true) ? 1 : 0);" "two host calls of render options' apply swapped"

    "KernelPreferences/lmKernelPreferences/categories/lmVirtualRealityPreferencesGUI.cpp"
    "lmdFoveatedQuality(readRing(*prefs, kInnerQuality)," "lmdFoveatedQuality(readRing(*prefs, kMiddleQuality),"
    "a wrong argument in a headset call"

    "KernelPreferences/lmKernelPreferences/categories/lmVirtualRealityPreferencesGUI.cpp"
    "        widget->setEnabled(on);" "        widget->setEnabled(true);" "a changed enabling rule"

    "KernelPreferences/lmKernelPreferences/fileio/lmFileTypePreferences.cpp"
    "{Step, \"Step\", kCADFile | AssociativeMeshes}," "{Step, \"Step\", kCADFile},"
    "a capability of one file type dropped"

    "KernelPreferences/lmKernelPreferences/fileio/lmFileTypePreferences.cpp"
    "{LUMO, \"LUMO\"," "{LUMO, \"Lumo\"," "a changed LUMO prefix"

    "KernelPreferences/lmKernelPreferences/fileio/lmJtFilePreferencesGUI.cpp"
    "record.m_jtActiveLayerFilter = activeLayerFilter;" "record.m_jtActiveLayerFilter = usePlugin;"
    "a JT record field taken from the wrong key"

    "KernelPreferences/lmKernelPreferences/fileio/lmRhinoFilePreferencesGUI.cpp"
    "record.m_importNurbs = importNurbs;" "record.m_importNurbs = mergeGeometries;"
    "a Rhino record field taken from the wrong key"

    "KernelPreferences/lmKernelPreferences/fileio/lmFileTypePreferences.cpp"
    "return !import ? 0 : (!invisible ? 1 : 2);" "return !import && !invisible ? 0 : (!invisible ? 1 : 2);"
    "invisible geometry shown as imported although import is off"
)

cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DLM_BENCHMARKS=OFF >/dev/null
# Twice: a changed form only regenerates its header in the first pass, and
# the page that includes it is compiled in the second.
build() {
    cmake --build "$build_dir" -j "$jobs" >/dev/null 2>&1 && cmake --build "$build_dir" -j "$jobs" >/dev/null 2>&1
}
suite() { (cd "$build_dir" && QT_QPA_PLATFORM=offscreen ctest -j "$jobs" --stop-on-failure >/dev/null 2>&1); }

echo "baseline: building and running the suite"
build
suite || { echo "the suite fails without any fault: fix that first" >&2; exit 1; }

saved=$(mktemp)
current=""
restore() { [[ -n $current ]] && cp "$saved" "$current"; current=""; }
trap 'restore; rm -f "$saved"' EXIT

count=$((${#faults[@]} / 4))
chosen=("$@")
((${#chosen[@]})) || chosen=($(seq 1 "$count"))
caught=0 tried=0 survivors=() stale=()
for n in "${chosen[@]}"; do
    i=$(((n - 1) * 4))
    file=${faults[i]} from=${faults[i + 1]} to=${faults[i + 2]} kind=${faults[i + 3]}
    content=$(<"$file")
    if [[ $content != *"$from"* ]]; then
        echo "fault $n ($kind): its text is no longer in $file, skipped"
        stale+=("$n")
        continue
    fi
    cp "$file" "$saved"
    current=$file
    printf '%s\n' "${content/"$from"/"$to"}" >"$file"
    tried=$((tried + 1))
    if ! build; then
        verdict="caught by the build"
        caught=$((caught + 1))
    elif ! suite; then
        verdict="caught"
        caught=$((caught + 1))
    else
        verdict="NOT CAUGHT"
        survivors+=("$n: $kind ($file)")
    fi
    restore
    echo "fault $n ($kind): $verdict"
done
build

echo "seeded faults caught: $caught of $tried"
((${#survivors[@]} == 0)) || printf '  survived %s\n' "${survivors[@]}"
# A fault whose text the sources no longer hold measures nothing: its entry
# must follow the code.
((${#stale[@]} == 0)) || { echo "stale fault entries: ${stale[*]}" >&2; exit 1; }

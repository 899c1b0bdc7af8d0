<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1">
<context>
    <name>lmCameraPreferencesGUI</name>
    <message>
        <location filename="../categories/lmCameraPreferencesGUI.ui" line="+14"/>
        <source>Camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Base</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Field of View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Stereo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Eye Separation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Zero Parallax Distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Powerwall</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Projection Width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Projection Height</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Projection Distance</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmCameraPreferencesGUII</name>
    <message>
        <location filename="../categories/lmCameraPreferencesGUI.cpp" line="+37"/>
        <source>Camera</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmDevicesPreferencesGUI</name>
    <message>
        <location filename="../categories/lmDevicesPreferencesGUI.ui" line="+14"/>
        <source>Form1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Joystick</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Use Joystick</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Joystick ID</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+20"/>
        <source>Don&apos;t forget to enable the analog mode!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Space Mouse</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Enable 3D Mouse</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>View Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <location line="+21"/>
        <source>Camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-16"/>
        <source>Object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Rotation Pivot</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Selected Object/Origin</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Focus Distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Standard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Enable Two-Axis Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Helicopter Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Use Fixed Height</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Height</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmFileIOPreferencesGUI</name>
    <message>
        <location filename="../fileio/lmFileIOPreferencesGUI.ui" line="+14"/>
        <source>FileIO</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Loader</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Verify Geometry</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Optimize Geometry</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Max Parallel Processes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Sets the maximum number of import tasks. Changing this value increases memory usage.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Temporary Path</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>This is used for file conversions, should be writable. If you leave this empty a system tmp path will be used.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Texture Compression</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+11"/>
        <source>None</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Auto</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Always</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Video Memory Limit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+49"/>
        <source>Megabyte</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Texture Search Paths</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+29"/>
        <source>Add</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+23"/>
        <source>Import Dialog</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Show Dialog</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Close Dialog on Successful Import</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Reference Behavior</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Import Content Only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Create References</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Merge Materials</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Center in Origin</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Put onto the Ground</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Converter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Converter Output Format</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmFileIOPreferencesGUII</name>
    <message>
        <location filename="../fileio/lmFileIOPreferencesGUI.cpp" line="+87"/>
        <source>Path</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+174"/>
        <source>Select Texture Search Directory</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Path already inserted!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+22"/>
        <source>Select Temporary File Path</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmFileTypePreferencesGUI</name>
    <message>
        <location filename="../fileio/lmFileTypePreferencesGUI.ui" line="+14"/>
        <source>File Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Import</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>General Options</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Import Options</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Surfaces</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <location line="+26"/>
        <location line="+26"/>
        <source>None</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-47"/>
        <location line="+26"/>
        <location line="+26"/>
        <source>Visible Only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-47"/>
        <location line="+26"/>
        <location line="+26"/>
        <source>Visible and Invisible</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-44"/>
        <source>Meshes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+26"/>
        <source>Curves</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+26"/>
        <source>Import Invisible Instances</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Import Referenced Files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Optimize Materials</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>File Specific Options</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Import Associative Meshes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Import coordinate systems from Catia files.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Import Coordinate Systems</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Import empty layers instead of excluding them. (Only Ondra wire files)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Import Empty Layers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Import template geometries instead of excluding them. (Only Ondra wire files)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Import Template Geometries</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Import lights instead of excluding them. (Only Ondra wire files)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Import Lights</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Import cameras instead of excluding them. (Only Ondra wire files)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Import Cameras</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Import variants instead of excluding them. (Only Ondra wire files)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Import Variants</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Mesh LODs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Lowest</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Highest</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>JT Toolkit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Parasolid</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Jt Open (Experimental)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Scene</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Project</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Create as Smart Reference</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Smart References</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Keep References</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Remove References</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+11"/>
        <location line="+57"/>
        <source>Legacy Loader</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-51"/>
        <source>If enabled the legacy JT loader is used for importing JT files.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Use legacy JT loader</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Use Active Layerfilter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Breps Handling</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Tesselate All Breps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Load JT Breps Only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Load XT Breps Only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Load All Breps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+17"/>
        <source>If enabled the legacy rhino loader is used for importing 3dm files.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Use legacy Rhino loader</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Merge Geometries</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Import Nurbs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Advanced Options</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+30"/>
        <source>Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Export Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>STL Export Format</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <location line="+44"/>
        <source>Format</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-36"/>
        <source>Ascii</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <location line="+39"/>
        <source>Binary</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-28"/>
        <source>KBX Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Version</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Sets the KBX version to export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+20"/>
        <source>ASCII</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Exports LUMO´s ambient occlusion calculations as vertex colors. WARNING: This results in unmerged triangle vertices!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Export Vertex Colors</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmHelpPreferencesGUI</name>
    <message>
        <location filename="../categories/lmHelpPreferencesGUI.ui" line="+14"/>
        <source>Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Help Location</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Zephcorp Knowledge Network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Installed Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Path to Installed Help. If help is installed on intranet, change file:// for http://</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Popup Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Toolclips</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Simple Toolclips</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmHelpPreferencesGUII</name>
    <message>
        <location filename="../categories/lmHelpPreferencesGUI.cpp" line="+35"/>
        <source>Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+83"/>
        <source>Help Path</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmKBXFilePreferencesGUII</name>
    <message>
        <location filename="../fileio/lmKBXFilePreferencesGUI.cpp" line="+52"/>
        <source>KBX 2016/2017</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>KBX 2014/2015</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>KBX 2013</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>KBX 2012</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>KBX 2011</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmKovaPreferencesGUI</name>
    <message>
        <location filename="../fileio/lmKovaPreferencesGUI.ui" line="+6"/>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Import</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Base</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Kova Directory</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Loader</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Multitexturing via Env Combiner</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Force Grayscale Shadow Texture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Auto Load Shadow Geometry</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Auto loads a extra kova shadow file with the name &lt;basefilename&gt;_shadow.mb</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Import Shadow Geometry</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Create Single Pass Shadow Merge Material</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Use Local Material Library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <location line="+27"/>
        <source>Units</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-8"/>
        <source>Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Writer</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmKovaPreferencesGUII</name>
    <message>
        <location filename="../fileio/lmKovaPreferencesGUI.cpp" line="+53"/>
        <source>Ignore</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>KovaUnits</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Millimeter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Centimeter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Meter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Kilometer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Inch</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Foot</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Yard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Mile</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+136"/>
        <source>Set Kova Location</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmMainWindowPreferencesGUI</name>
    <message>
        <location filename="../categories/lmMainWindowPreferencesGUI.ui" line="+13"/>
        <source>Form1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Base</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Disable Docking</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Window Opacity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Show Toolbutton Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>To see any effect while changing this option you need to restart the app!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Show Rendering Log Messages in Terminal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Changing this setting requires a restart of LUMO.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Show FPS in Statusbar</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <location line="+4"/>
        <source>User Language</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>English</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Chinese</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Japanese</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Korean</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmMainWindowPreferencesGUII</name>
    <message>
        <location filename="../categories/lmMainWindowPreferencesGUI.cpp" line="+49"/>
        <source>MainWindow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+108"/>
        <source>Language Preferences Change</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Please restart LUMO so that your language changes can take effect.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmMarkerPreferencesGUI</name>
    <message>
        <location filename="../categories/lmMarkerPreferencesGUI.ui" line="+13"/>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Selection Modes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Preselection Color</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Show Preselection Highlight</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Shows a wireframe on the nodes that would be selected when hovering over the render window.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Base</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Bounding Box Visual Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>LOD Selection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Auto Scroll to Selected Node</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Select 100% Transparent Objects</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Enables the selection of objects with a 100% transparent material in the render window.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Wireframe</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Enable Wireframe</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Always in Front</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Wireframe Color</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmMarkerPreferencesGUII</name>
    <message>
        <location filename="../categories/lmMarkerPreferencesGUI.cpp" line="+52"/>
        <source>Selection</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmNavigatorPreferencesGUI</name>
    <message>
        <location filename="../categories/lmNavigatorPreferencesGUI.ui" line="+13"/>
        <source>Form1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Friendship Bridge</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Interaction Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Base</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Navigation Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Invert Dolly Axis</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Inverts the Y-Axis for the dolly operations. The X-Axis remains unchanged</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Auto Center</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Dolly Axis</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+5"/>
        <source>Sets the mouse move direction for dolly operations</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Vertical Only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Horizontal Only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Horizontal and Vertical</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Speed Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+5"/>
        <source>Set the navigation speed mode for Two-Axis and Trackball navigation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Unconstrained</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Limited</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Linear</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Dolly To Pivot</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Sets the dolly operation to dolly towards the pivot instead of the screen center.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Dolly Speed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+5"/>
        <source>Sets a scale factor for the dolly speed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Pivot Based Panning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Bases the panning speed on the distance to the pivot instead of using the click position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Panning Speed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Animate camera change</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Animates the camera change when using Zoom To and Show All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Duration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <location line="+5"/>
        <source>Length of the animated camera change</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Invert Wheel Dolly</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Inverts dolly direction when using the scroll wheel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Orbit Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Orbit Detection Area</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Orbit Detection Time</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmNavigatorPreferencesGUII</name>
    <message>
        <location filename="../categories/lmNavigatorPreferencesGUI.cpp" line="+79"/>
        <source>Navigator</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Trackball</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>TwoAxis</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Fly</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Orientation</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmOsbPreferencesGUI</name>
    <message>
        <location filename="../fileio/lmOsbPreferencesGUI.ui" line="+6"/>
        <source>Form</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Import</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Loader</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Checksum Test</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>This can be quite slow on network drives</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Calculate Missing Variant Set Previews</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Execute Embedded Script</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>If a script has been saved within the VPB it is executed when the file is loaded.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Smart Reference</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Import as Smart Reference</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Import native LUMO file as Smart Reference.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Import Behavior</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Keep References</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Remove References</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+15"/>
        <source>Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Writer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>File Compression</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Fast</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Best</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Texture Compression</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>None</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Lossless</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Lossy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Quality</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+21"/>
        <source>Use Inline Textures</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Show thumbnail preview in explorer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Positions Precision</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <location line="+14"/>
        <location line="+14"/>
        <source>100% (32bit)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-27"/>
        <location line="+14"/>
        <location line="+14"/>
        <source>75% (24bit)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-27"/>
        <location line="+14"/>
        <location line="+14"/>
        <source>50% (16bit)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-27"/>
        <location line="+14"/>
        <location line="+14"/>
        <source>25% (8bit)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-23"/>
        <source>Normals Precision</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Tex Coordinate Precision</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+14"/>
        <source>Write Compatible (&lt; 6.0) Format</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>New file format with much improved reading and writing speed. Not compatible to lumo version &lt; 6.0</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Validate Written File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Validates the written file on disk via checksum. To speed up saving disable it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Incremental Save</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Enable Incremental Save</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>If enabled, consecutively numbered file versions (&apos;increments&apos;) are saved along with the file that is saved by the user.
Note that this is not an auto-save.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Number of Increments</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Sets the maximal number of incremental saved files.
A value of x means that the x newest increments are kept, older increments are deleted when the limit is reached.
&apos;Unlimited&apos; (0) means that all files are kept.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Unlimited</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmOsbPreferencesGUII</name>
    <message>
        <location filename="../fileio/lmOsbPreferencesGUI.cpp" line="+284"/>
        <source>Keep References</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+0"/>
        <source>Remove References</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmPreferences</name>
    <message>
        <location filename="../categories/lmDevicesPreferencesGUI.cpp" line="+45"/>
        <location line="+1"/>
        <source>Devices</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../fileio/lmFileIOPreferencesGUI.cpp" line="-209"/>
        <location line="+1"/>
        <location filename="../fileio/lmOsbPreferencesGUI.cpp" line="-127"/>
        <location filename="../fileio/lmKovaPreferencesGUI.cpp" line="-88"/>
        <location filename="../fileio/lmWrlPreferencesGUI.cpp" line="+29"/>
        <location filename="../fileio/lmCatiaV4FilePreferencesGUI.cpp" line="+8"/>
        <location filename="../fileio/lmCatiaV5FilePreferencesGUI.cpp" line="+8"/>
        <location filename="../fileio/lmWireFilePreferencesGUI.cpp" line="+8"/>
        <location filename="../fileio/lmIgesFilePreferencesGUI.cpp" line="+8"/>
        <location filename="../fileio/lmNXFilePreferencesGUI.cpp" line="+8"/>
        <location filename="../fileio/lmStepFilePreferencesGUI.cpp" line="+8"/>
        <location filename="../fileio/lmDraftexFilePreferencesGUI.cpp" line="+8"/>
        <location filename="../fileio/lmFabricorFilePreferencesGUI.cpp" line="+8"/>
        <location filename="../fileio/lmSolidWorksFilePreferencesGUI.cpp" line="+8"/>
        <location filename="../fileio/lmSolidEdgeFilePreferencesGUI.cpp" line="+8"/>
        <location filename="../fileio/lmStlFilePreferencesGUI.cpp" line="+18"/>
        <location filename="../fileio/lmProEngineerFilePreferencesGUI.cpp" line="+8"/>
        <location filename="../fileio/lmJtFilePreferencesGUI.cpp" line="+29"/>
        <location filename="../fileio/lmRhinoFilePreferencesGUI.cpp" line="+28"/>
        <location filename="../fileio/lmGenericCADFilePreferencesGUI.cpp" line="+8"/>
        <location filename="../fileio/lmKBXFilePreferencesGUI.cpp" line="-7"/>
        <location filename="../fileio/lmDGNFilePreferencesGUI.cpp" line="+8"/>
        <location filename="../fileio/lmPLMXMLPreferencesGUI.cpp" line="+8"/>
        <source>FileIO</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../fileio/lmTesselationPreferencesGUI.cpp" line="+43"/>
        <source>Import</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Tesselation</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmRenderOptionsPreferencesGUI</name>
    <message>
        <location filename="../categories/lmRenderOptionsPreferencesGUI.ui" line="+14"/>
        <source>Render Options</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+28"/>
        <source>Transparency</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Transparent Sorting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Z Write Transparency</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Progress Cursor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Show Progress</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Shows the progress wheel during anti-aliasing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <location line="+22"/>
        <source>Size of the progress wheel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Static Position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>If enabled, the progress wheel is placed in the lower left corner of the render view. Otherwise it is attached to the cursor.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Lighting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Use Point Headlight</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Headlight Behaviour</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Auto</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Always On</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Always Off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Ignore</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Navigation Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Show Coordinate System</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Show Navigation Cube</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Use Z-Up Coordinate System</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Render Window</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Antialiasing Quality</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <location line="+7"/>
        <source>Sets the realtime antialiasing quality</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <location line="+198"/>
        <source>Low</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-193"/>
        <location line="+198"/>
        <source>Medium</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-193"/>
        <location line="+198"/>
        <source>High</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-193"/>
        <source>Ultra High</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Disable Realtime Antialiasing on Camera movement</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Interactive Material Preview</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Enable Stillframe Antialiasing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Stillframe AA After</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Seconds</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Enable Postprocess Antialiasing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Show Auxiliary Nodes during antialiasing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Shows clipping plane and transform handles during interactive stillframe antialiasing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Use Fixed Resolution</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>If activated LUMO uses a fixed rendering windows resolution</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Pixel Resolution</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+43"/>
        <source>Limit Near and Far Clipping Plane</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Near Clipping Plane</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Far Clipping Plane</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+17"/>
        <source>Enable Downscale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Downscale Quality</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+29"/>
        <source>Use OpenGL for Interactive Rendering</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Visualization</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Show Camera Visualizations</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Show Light Visualizations</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Show Joint Visualizations</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Advanced Rendering</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Use 10 Bit RGB</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Enables rendering to a 10bit buffer.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Use Wide Gamut Display</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Enables rendering to a 16bit float buffer to support wide gamut and hdr displays</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source> HDR Reference White</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <location line="+26"/>
        <source>Luminance in nits at which white is shown on an HDR display.
Used together with a wide gamut display.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Force GLFinish</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Waits after every frame until the graphics card has finished it.
Can reduce the input lag but lowers the frame rate.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Occlusion Culling</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Occlusion Culling Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <location line="+11"/>
        <source>Accurate: only objects known to be hidden are skipped.
Fast: skips more objects; hidden parts may show up late while the camera moves.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Accurate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Fast</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Cache Geometry</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Renders the whole scene once with all LOD&apos;s and disabled frustum culling to get rid of jerky rendering.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Single Pass Stereo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Renders both eyes of a stereo view in a single pass.
Needs a graphics card that supports it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Disable Main Thread Sleep</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>The main thread sleeps briefly between frames to leave time to other applications.
Disable the sleep for the highest frame rate.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>SLI</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>SLI Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <location line="+8"/>
        <source>Alternate Frame: the GPUs render every other frame.
Multicast Stereo: each GPU renders one eye of a stereo view.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Alternate Frame</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Multicast Stereo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Background</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+25"/>
        <source>Color</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Add</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Choose Color</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+25"/>
        <source>Realtime Antialiasing Presets</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Low Quality Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <location line="+93"/>
        <location line="+93"/>
        <location line="+93"/>
        <source>Multisampling</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-276"/>
        <location line="+7"/>
        <location line="+86"/>
        <location line="+7"/>
        <location line="+86"/>
        <location line="+7"/>
        <location line="+86"/>
        <location line="+7"/>
        <source>Number of OpenGL multisamples per pixel.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-272"/>
        <location line="+93"/>
        <location line="+93"/>
        <location line="+93"/>
        <source>Enable Pixelfilter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-276"/>
        <location line="+93"/>
        <location line="+93"/>
        <location line="+93"/>
        <source>Filters every pixel with the samples of its neighbours for smoother edges.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-272"/>
        <location line="+93"/>
        <location line="+93"/>
        <location line="+93"/>
        <source>Enable Supersampling</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-276"/>
        <location line="+93"/>
        <location line="+93"/>
        <location line="+93"/>
        <source>Renders with twice the resolution in each direction and scales the image down.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-272"/>
        <location line="+93"/>
        <location line="+93"/>
        <location line="+93"/>
        <source>Raytracing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-269"/>
        <location line="+93"/>
        <location line="+93"/>
        <location line="+93"/>
        <source>Variable Rate Shading</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-276"/>
        <location line="+17"/>
        <location line="+76"/>
        <location line="+17"/>
        <location line="+76"/>
        <location line="+17"/>
        <location line="+76"/>
        <location line="+17"/>
        <source>This setting is used for supersampling the whole screen via Variable Rate Shading(VRS) in OpenGL.
To use it, VRS needs to be set to &quot;Screen and Materials&quot; while using Realtime Antialiasing :
menu Visualization - Realtime Antialiasing - Variable Rate Shading - Screen and Materials.

Please note, the Multisampling sample number must be at least the same or higher than the VRS sample number.

1 Sample : Native pixel shading.
2 Samples : Supersampled shading with 2 samples per pixel.
4 Samples : Supersampled shading with 4 samples per pixel.
8 Samples : Supersampled shading with 8 samples per pixel.
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-259"/>
        <source>Medium Quality Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+93"/>
        <source>High Quality Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+93"/>
        <source>Ultra Quality Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+96"/>
        <source>GPU Raytracing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Active GPUs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <location line="+10"/>
        <source>List of GPU IDs to use for raytracing e.g. 1,2. If empty, all GPUs are used.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-3"/>
        <source>All available</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+16"/>
        <source>Visualization Advanced</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmRenderOptionsPreferencesGUII</name>
    <message>
        <location filename="../categories/lmRenderOptionsPreferencesGUI.cpp" line="+272"/>
        <source>1 Sample</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>%1 Samples</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Render Options</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+449"/>
        <source>Choose Color</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmTesselationPreferencesGUI</name>
    <message>
        <location filename="../fileio/lmTesselationPreferencesGUI.ui" line="+14"/>
        <source>Tesselation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Tesselation Quality</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+19"/>
        <location line="+76"/>
        <source>Tolerance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="-68"/>
        <source>Add</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+23"/>
        <source>Tesselation Topology</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Topology</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+11"/>
        <source>Create New</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Reuse Existing (If Any)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>No Topology</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+21"/>
        <source>Offset Factor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Check Orientation</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmTesselationPreferencesGUII</name>
    <message>
        <location filename="../fileio/lmTesselationPreferencesGUI.cpp" line="+118"/>
        <source>Only positive non zero values are allowed!</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmVirtualRealityPreferencesGUI</name>
    <message>
        <location filename="../categories/lmVirtualRealityPreferencesGUI.ui" line="+14"/>
        <source>Virtual Reality</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>General</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Teleport</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Ground Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>On Geometry</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>On Ground Plane</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Range</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Interaction</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Default Visualization</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Sets how to render controllers when starting a session</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Controllers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Hands</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Create Collision Objects</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Creates collision objects for touch sensors and WebEngines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Show Tooltips</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+24"/>
        <source>StarVR</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Native Foveated Rendering</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Native foveated rendering requires eye tracking. </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Foveated FOV Factor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Foveated Resolution Scale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Non-Foveated Resolution Scale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Front View Resolution Scale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Side View Resolution Scale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Single Texture per Eye</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+21"/>
        <source>HMD</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <location line="+6"/>
        <source>Eye Tracking</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Enable eye tracking for dynamic foveated rendering.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <location line="+6"/>
        <source>Foveated Rendering</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Required OpenGL Shading Rate Image extension is not supported. Check Graphics card and driver.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Foveal Region Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Shading Quality</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Requires Multisampling (2 Samples)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Custom Quality</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Inner</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Defines the quality for the inner ring:

1 Sample: Native pixel shading.
1 Sample per 4 pixel: Coarse 2x2 shading.
1 Sample per 16 pixel: Coarse 4x4 shading.
2 Samples: Supersampled shading with 2 samples per pixel.
4 Samples: Supersampled shading with 4 samples per pixel.
8 Samples: Supersampled shading with 8 samples per pixel.

The Supersampling modes require enabled Realtime-Antialiasing (see Visualization menu)
with a minimum corresponding Multisampling sample amount.

</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Middle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Defines the quality for the middle ring:

1 Sample: Native pixel shading.
1 Sample per 4 pixel: Coarse 2x2 shading.
1 Sample per 16 pixel: Coarse 4x4 shading.
2 Samples: Supersampled shading with 2 samples per pixel.
4 Samples: Supersampled shading with 4 samples per pixel.
8 Samples: Supersampled shading with 8 samples per pixel.

The Supersampling modes require enabled Realtime-Antialiasing (see Visualization menu)
with a minimum corresponding Multisampling sample amount.

</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Periphery</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Defines the quality for the peripheral ring:

1 Sample: Native pixel shading.
1 Sample per 4 pixel: Coarse 2x2 shading.
1 Sample per 16 pixel: Coarse 4x4 shading.
2 Samples: Supersampled shading with 2 samples per pixel.
4 Samples: Supersampled shading with 4 samples per pixel.
8 Samples: Supersampled shading with 8 samples per pixel.

The Supersampling modes require enabled Realtime-Antialiasing (see Visualization menu)
with a minimum corresponding Multisampling sample amount.

</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmVirtualRealityPreferencesGUII</name>
    <message>
        <location filename="../categories/lmVirtualRealityPreferencesGUI.cpp" line="+158"/>
        <source>Virtual Reality</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+13"/>
        <source>Highest Performance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Balanced</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Highest Quality</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Custom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>1 Sample</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>1 Sample per 4 pixel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>1 Sample per 16 pixel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>2 Samples</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>4 Samples</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>8 Samples</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+248"/>
        <source>Requires RT-AA with %1x Multisampling</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+2"/>
        <source>The selected shading quality requires Realtime Antialiasing with at least %1 Multisampling samples.
Check the number of samples used by the Realtime Antialising levels in 
Preferences &gt; Render Options &gt; Visualization Advanced &gt; Realtime Antialiasing Presets.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmWebInterfacePreferencesGUI</name>
    <message>
        <location filename="../categories/lmWebInterfacePreferencesGUI.ui" line="+14"/>
        <source>Web Interface</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Enable Web Server</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+9"/>
        <source>Port</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+17"/>
        <source>SSL Port</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+19"/>
        <source>Allow request from localhost only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Restarting the application is mandatory after modifying the localhost only option!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+10"/>
        <source>Enable Debug Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+7"/>
        <source>Allowed hosts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+18"/>
        <source>Restricted python functionality</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Secure Python</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmWebInterfacePreferencesGUII</name>
    <message>
        <location filename="../categories/lmWebInterfacePreferencesGUI.cpp" line="+53"/>
        <source>WebInterface</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+108"/>
        <source>Enable Web Server</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Do you really want to enable the Web Server?
The Web Server allows the execution of Python commands from remote locations!</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+3"/>
        <source>Choosing &quot;Enable&quot; enables the Web Server.
You are advised to set up a local firewall to protect yourself from unauthorized access.

Choosing &quot;Do Not Enable&quot; leaves the Web Server disabled.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Enable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Do Not Enable</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>lmWrlPreferencesGUI</name>
    <message>
        <location filename="../fileio/lmWrlPreferencesGUI.ui" line="+6"/>
        <source>WRL</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Import</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Loader</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Optimization</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+6"/>
        <source>Auto</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Catia</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Pro Engineer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+20"/>
        <source>Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+12"/>
        <source>Writer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location line="+4"/>
        <source>Inline Textures</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>

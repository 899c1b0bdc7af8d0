#pragma once

// The host's numbering of scene and CAD file types.
namespace lmCADFileTypes {

enum FileType : int {
    Cinema4D = 0,
    Cosmo = 1,
    PlanetWeb = 2,
    KBX = 3,
    Kova = 4,
    Obj = 5,
    OpenSG = 6,
    PLMXML = 7,
    Python = 8,
    Krafta3D = 9,
    LUMO = 10,
    VRML = 11,
    ACIS = 12,
    Ondra = 13,
    Draftex = 14,
    CatiaV4 = 15,
    CatiaV5 = 16,
    DGN = 17,
    Fabricor = 18,
    JT = 19,
    NX = 20,
    Iges = 21,
    Parasolid = 22,
    ProEngineer = 23,
    Rhino = 24,
    SketchUp = 25,
    SolidEdge = 26,
    SolidWorks = 27,
    Step = 28,
    STL = 29,
    BCAD = 30,
    Undefined = 31,
    Unsupported = 32
};

} // namespace lmCADFileTypes

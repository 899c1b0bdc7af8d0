#include "lmCADFileTypeRegistry.h"

#include "lmHostState.h"

#include <unordered_set>

using namespace lmCADFileTypes;

namespace {

struct Extension
{
    const char *extension;
    FileType type;
};

// The base CAD type has no extension of its own: its page is offered anyway.
const Extension kExtensions[] = {
    {"dwg", Draftex},      {"dxf", Draftex},      {"dgn", DGN},          {"fam", Fabricor},
    {"fpt", Fabricor},     {"prt", NX},           {"prt", ProEngineer},  {"asm", ProEngineer},
    {"neu", ProEngineer},  {"3dm", Rhino},        {"asm", SolidEdge},    {"par", SolidEdge},
    {"pwd", SolidEdge},    {"psm", SolidEdge},    {"wire", Ondra},       {"iges", Iges},
    {"igs", Iges},         {"jt", JT},            {"x_t", Parasolid},    {"x_b", Parasolid},
    {"stp", Step},         {"step", Step},        {"stl", STL},          {"stla", STL},
    {"stlb", STL},         {"sat", ACIS},         {"cgr", CatiaV5},      {"obj", Obj},
    {"3dk", Krafta3D},     {"vrml", VRML},        {"wrl", VRML},         {"c4d", Cinema4D},
    {"csb", Cosmo},        {"pwf", PlanetWeb},    {"skp", SketchUp},     {"skb", SketchUp},
    {"model", CatiaV4},    {"exp", CatiaV4},      {"catpart", CatiaV5},  {"catproduct", CatiaV5},
    {"sldprt", SolidWorks}, {"sldasm", SolidWorks}, {"plmxml", PLMXML}, {"kbx", KBX},
    {"kb", Kova},          {"osb", OpenSG},       {"vpb", LUMO},
};

std::unordered_set<int> allTypes()
{
    std::unordered_set<int> types;
    for (const Extension &row : kExtensions)
        types.insert(row.type);
    return types;
}

struct Supported
{
    std::unordered_set<int> types = allTypes();
};

std::unordered_set<int> &supported()
{
    return lmHostState<Supported>().types;
}

} // namespace

bool lmCADFileTypeRegistry::isSupported(FileType type)
{
    return supported().count(type) != 0;
}

std::vector<FileType> lmCADFileTypeRegistry::typesOf(const std::string &extension)
{
    std::vector<FileType> types;
    for (const Extension &row : kExtensions)
        if (extension == row.extension)
            types.push_back(row.type);
    return types;
}

void lmCADFileTypeRegistry::removeType(FileType type)
{
    supported().erase(type);
}

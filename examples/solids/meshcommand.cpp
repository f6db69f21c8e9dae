#include "solidcommands.h"

#include "acdocman.h"
#include "aced.h"
#include "cvxlogentry.h"
#include "meshtext.h"
#include "modulecommand.h"

#include <optional>

namespace {

std::optional<MeshForm> formOf(const std::wstring& file) {
    const CString name(file.c_str());
    const CString ending = name.Mid(name.ReverseFind(L'.') + 1);
    if (ending.CompareNoCase(L"stl") == 0) return MeshForm::stl;
    if (ending.CompareNoCase(L"obj") == 0) return MeshForm::obj;
    if (ending.CompareNoCase(L"dxf") == 0) return MeshForm::dxf;
    return std::nullopt;
}

bool refuse(const wchar_t* reason) {
    hostkit::failCommand(Acad::eInvalidInput, reason);
    return false;
}

bool readRequest(hostkit::OutputFile& file, SolidChoice& choice) {
    CString name;
    if (acedGetString(0, L"File of triangles: ", name) != RTNORM) return false;
    file.name = name.GetString();
    if (!formOf(file.name)) return refuse(L"a file that ends in .stl, .obj or .dxf is needed");
    for (;;) {
        CString option;
        acedInitGet(0, L"NAme OVERWRITE");
        const int answer = acedGetKword(L"Option [NAme/OVERWRITE] <done>: ", option);
        if (answer == RTNONE) return hostkit::acceptOutputFile(file);
        if (answer == RTREJ) return refuse(L"the options are NAME and a solid, and OVERWRITE");
        if (answer != RTNORM) return false;
        if (option == L"OVERWRITE")
            file.mayReplace = true;
        else if (!readSolidName(choice))
            return false;
    }
}

} // namespace

void meshCommand() {
    CVxLogEntry entry(L"SOLIDS::mesh");
    AcApDocument* document = acDocManagerPtr()->curDocument();
    if (!document) return hostkit::failCommand(Acad::eNoDocument, L"no drawing is open");
    hostkit::OutputFile file;
    SolidChoice choice;
    if (!readRequest(file, choice) || !findSolids(*document->database(), choice)) return;
    std::size_t triangles = 0;
    const std::string text = meshText(choice.solids, *formOf(file.name), triangles);
    if (!hostkit::writeOutputFile(file, std::string_view(text))) return;
    acutPrintf(L"%s: %d triangles of %d solids\n", file.name.c_str(), static_cast<int>(triangles),
               static_cast<int>(choice.solids.size()));
    tellFaults(choice);
}

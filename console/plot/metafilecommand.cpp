#include "metafilecommand.h"

#include "acdocman.h"
#include "aced.h"
#include "casefold.h"
#include "commandoutput.h"
#include "consoletext.h"
#include "dbblocktablerecord.h"
#include "dbdatabase.h"
#include "dbobjptr.h"
#include "host.h"
#include "librarywork.h"
#include "modulecommand.h"
#include "picturecopies.h"
#include "selectioninput.h"
#include "systempath.h"

#include <cmath>
#include <cstdint>
#include <filesystem>

namespace {

constexpr double usualDiagonal = 4000.0; // pixels, where neither a scale nor an aspect is given
constexpr double aspectDiagonal = 100.0; // what the library's picture by an aspect has

struct Request {
    hostkit::OutputFile file;
    std::optional<double> aspect;
    std::optional<double> scale;
    bool isOfSelection = false;
};

bool refuse(Acad::ErrorStatus status, const std::wstring& reason) {
    hostkit::failCommand(status, reason);
    return false;
}

bool readNumber(const wchar_t* prompt, std::optional<double>& number) {
    double value = 0.0;
    acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
    const int answer = acedGetReal(prompt, &value);
    if (answer == RTCAN) return false;
    if (answer != RTNORM)
        return refuse(Acad::eInvalidInput, L"behind ASPECT and SCALE stands a number above 0");
    number = value;
    return true;
}

bool isMetafileName(const std::wstring& file) {
    const std::wstring_view name = hostkit::fileNameOfPath(file);
    const std::size_t point = name.rfind(L'.');
    return point == std::wstring_view::npos || hostkit::equalFolded(name.substr(point), L".emf");
}

bool isSound(const Request& request) {
    if (request.aspect && request.scale)
        return refuse(Acad::eInvalidInput, L"a picture has ASPECT or SCALE, not both");
    if (!hostkit::acceptOutputFile(request.file)) return false;
    return isMetafileName(request.file.name) ||
           refuse(Acad::eInvalidInput, request.file.name + L": metafiles are written as .emf alone");
}

bool readRequest(Request& request) {
    CString name;
    if (acedGetString(0, L"Metafile: ", name) != RTNORM) return false;
    if (name.IsEmpty()) return refuse(Acad::eInvalidInput, L"a file for the picture is needed");
    request.file.name = name.GetString();
    while (!request.isOfSelection) {
        CString word;
        acedInitGet(0, L"Aspect SCale SElected OVERWRITE");
        const int answer = acedGetKword(L"[Aspect/SCale/SElected/OVERWRITE] <all of the space>: ", word);
        if (answer == RTNONE) break;
        if (answer == RTREJ)
            return refuse(Acad::eInvalidInput,
                          L"behind the file stand OVERWRITE, ASPECT or SCALE with a number, and SELECTED");
        if (answer != RTNORM) return false;
        if (word == L"OVERWRITE") request.file.mayReplace = true;
        if (word == L"SElected") request.isOfSelection = true;
        if (word == L"Aspect" && !readNumber(L"Width by height: ", request.aspect)) return false;
        if (word == L"SCale" && !readNumber(L"Pixels to a drawing unit: ", request.scale)) return false;
    }
    return isSound(request);
}

std::vector<AcDbObjectId> shownEntities(AcDbDatabase& database) {
    std::vector<AcDbObjectId> ids;
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database.currentSpaceId(), AcDb::kForRead);
    for (std::size_t i = 0; space.object() && i < space->entities().size(); ++i)
        if (!space->entities()[i].isErased()) ids.push_back(space->entities()[i]);
    return ids;
}

AcDbExtents boxOf(const AcArray<void*>& entities) {
    AcDbExtents all;
    for (void* entity : entities) {
        AcDbExtents own;
        if (static_cast<AcDbEntity*>(entity)->getGeomExtents(own) == Acad::eOk) all.addExt(own);
    }
    return all;
}

/// How large the picture becomes, and where the copies are moved for it: its lower left corner comes to stand
/// near the origin, so that a drawing far out has its place in the file too.
struct Placing {
    double scale = 1.0;
    double width = 0.0; ///< of the picture
    double height = 0.0;
    AcGeMatrix3d motion;
    bool isPoint = false;
};

Placing placingOf(const AcDbExtents& box, const Request& request) {
    const AcGeVector3d size = box.maxPoint() - box.minPoint();
    const double diagonal = std::hypot(size.x, size.y);
    Placing placing;
    placing.isPoint = !(diagonal > 0.0);
    const double wanted = request.aspect ? aspectDiagonal : usualDiagonal;
    if (!placing.isPoint) placing.scale = request.scale.value_or(wanted / diagonal);
    placing.width = size.x * placing.scale;
    placing.height = size.y * placing.scale;
    const AcGePoint3d middle = box.minPoint() + size / 2.0;
    placing.motion.setToTranslation(AcGePoint3d(placing.width / 2.0, placing.height / 2.0, middle.z) -
                                    middle);
    return placing;
}

std::wstring fromRoot(const std::wstring& name) {
    return hostkit::pathFromSystem(std::filesystem::absolute(hostkit::mapPath(name)).string());
}

std::wstring missingKinds(const PictureCopies& copies) {
    std::wstring kinds;
    for (const auto& [name, count] : copies.missing())
        kinds += (kinds.empty() ? L"" : L", ") + name + L" " + std::to_wstring(count);
    return kinds;
}

bool exportCopies(const LibraryWork& work, const PictureCopies& copies, const Request& request) {
    const AcArray<void*> list = copies.list();
    const AcDbExtents box = boxOf(list);
    const std::wstring missing = missingKinds(copies);
    if (box.isEmpty())
        return refuse(Acad::eInvalidExtents,
                      L"there is nothing to be drawn" + (missing.empty() ? missing : L"; not " + missing));
    const Placing placing = placingOf(box, request);
    if (placing.isPoint && request.aspect)
        return refuse(Acad::eInvalidExtents,
                      L"all is one point; a picture by its aspect needs a width or a height");
    for (void* entity : list) (void)static_cast<AcDbEntity*>(entity)->transformBy(placing.motion);
    const std::wstring file = fromRoot(request.file.name);
    hostkit::HostPort& port = hostkit::Host::current()->port();
    port.flush();
    const bool isMade = request.aspect ? work.exportWithAspect(list, file.c_str(), *request.aspect)
                                       : work.exportScaled(list, file.c_str(), placing.scale);
    if (!isMade)
        return refuse(Acad::eFileAccessErr, request.file.name + L": the metafile could not be written");
    port.outputs().noteWritten(request.file.name);
    if (std::max(placing.width, placing.height) > INT32_MAX)
        port.reportProblem(L"vexohost: " + request.file.name +
                           L": coordinates beyond 32 bits are cut to their range");
    return true;
}

} // namespace

void metafileCommand() {
    AcApDocument* document = documentOrFail();
    Request request;
    if (!document || !readRequest(request)) return;
    const LibraryWork* const work = libraryWorkOrFail();
    if (!work) return;
    const std::vector<AcDbObjectId> ids =
        request.isOfSelection ? selectionOrFail() : shownEntities(*document->database());
    if (request.isOfSelection && ids.empty()) return;
    PictureCopies copies(*document->database(), *work);
    if (!copies.add(ids) && !copies.isCut())
        return hostkit::failCommand(Acad::eUserBreak, L"stopped; no metafile was written");
    if (!exportCopies(*work, copies, request) || hostkit::isStandardOutput(request.file.name)) return;
    acutPrintf(L"Metafile %s: %s\n", request.file.name.c_str(),
               counted(copies.count(), L"entity", L"entities").c_str());
    const std::wstring kinds = missingKinds(copies);
    if (!kinds.empty()) acutPrintf(L"Not in the picture: %s\n", kinds.c_str());
    if (copies.isCut())
        acutPrintf(L"The drawing repeats more than a picture can hold; the rest is left out.\n");
}

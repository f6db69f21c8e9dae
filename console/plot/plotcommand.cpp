#include "plotcommand.h"

#include "acdocman.h"
#include "aced.h"
#include "casefold.h"
#include "commandoutput.h"
#include "dbdatabase.h"
#include "dblayertable.h"
#include "dbobjptr.h"
#include "host.h"
#include "modulecommand.h"
#include "plotdrawing.h"
#include "selectioninput.h"
#include "svgpicture.h"
#include "systempath.h"

namespace {

// A sheet as it is pinned to the wall; the picture takes what it needs of it.
constexpr double sheetWidth = 420.0;
constexpr double sheetHeight = 297.0;
constexpr double smallestPage = 20.0;
constexpr double largestPage = 5000.0;

struct Request {
    hostkit::OutputFile file;
    double width = sheetWidth;
    double height = sheetHeight;
    bool isExactSize = false;
    std::vector<AcDbObjectId> filledLayers;
    std::vector<AcDbObjectId> marked;
};

bool refuse(Acad::ErrorStatus status, const std::wstring& reason) {
    hostkit::failCommand(status, reason);
    return false;
}

bool readFilledLayer(AcDbDatabase& database, Request& request) {
    CString name;
    if (acedGetString(0, L"Layer whose closed curves are filled: ", name) != RTNORM) return false;
    if (name.IsEmpty()) return refuse(Acad::eInvalidInput, L"FILL needs the name of a layer behind it");
    const AcDbSymbolTablePointer<AcDbLayerTable> layers(&database, AcDb::kForRead);
    AcDbObjectId id;
    if (!layers.object() || layers->getAt(name.GetString(), id) != Acad::eOk)
        return refuse(Acad::eKeyNotFound,
                      L"there is no layer \"" + std::wstring(name.GetString()) + L"\"; LAYERS lists them");
    request.filledLayers.push_back(id);
    return true;
}

bool readWord(const AcApDocument& document, Request& request) {
    CString word;
    acedGetInput(word);
    if (word == L"Selected") {
        request.marked = impliedSelectionOrFail(document);
        return !request.marked.empty();
    }
    if (word != L"OVERWRITE") return readFilledLayer(*document.database(), request);
    return request.file.mayReplace = true;
}

bool isPageMeasure(double measure) { return measure >= smallestPage && measure <= largestPage; }

// The width and, behind it, the height.
bool readSize(double width, Request& request) {
    acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
    const int answer = acedGetReal(L"Height of the page in millimetres: ", &request.height);
    if (answer == RTNONE) return refuse(Acad::eInvalidInput, L"the page needs a height beside its width");
    request.width = width;
    request.isExactSize = true;
    const bool isSound = answer == RTNORM && isPageMeasure(width) && isPageMeasure(request.height);
    return isSound || refuse(Acad::eOutOfRange, L"the page is 20 to 5000 millimetres wide and high");
}

// A name without an ending, and a stream, may be anything.
bool isPictureName(const std::wstring& file) {
    const std::wstring_view name = hostkit::fileNameOfPath(file);
    const std::size_t point = name.rfind(L'.');
    return point == std::wstring_view::npos || hostkit::equalFolded(name.substr(point), L".svg");
}

bool mayBeWritten(const hostkit::OutputFile& file) {
    if (!hostkit::acceptOutputFile(file)) return false;
    return isPictureName(file.name) ||
           refuse(Acad::eInvalidInput, file.name + L": pictures are written as .svg alone");
}

bool readRequest(const AcApDocument& document, Request& request) {
    CString name;
    if (acedGetString(0, L"Picture file: ", name) != RTNORM) return false;
    if (name.IsEmpty()) return refuse(Acad::eInvalidInput, L"a file for the picture is needed");
    request.file.name = name.GetString();
    for (;;) {
        double width = 0.0;
        acedInitGet(RSG_NOZERO | RSG_NONEG, L"Fill Selected OVERWRITE");
        const int answer = acedGetReal(
            L"Width of the page in millimetres, or Fill, Selected or OVERWRITE <fitted>: ", &width);
        if (answer == RTNONE) return mayBeWritten(request.file);
        if (answer != RTNORM && answer != RTKWORD)
            return refuse(Acad::eOutOfRange, L"the page is 20 to 5000 millimetres wide and high; FILL and a "
                                             L"layer fill its curves, OVERWRITE replaces the file");
        if (!(answer == RTKWORD ? readWord(document, request) : readSize(width, request))) return false;
    }
}

void tellWhatIsMissing(const PlotReport& report) {
    std::wstring kinds;
    for (const auto& [name, count] : report.notDrawn)
        kinds += (kinds.empty() ? L"" : L", ") + name + L" " + std::to_wstring(count);
    if (!kinds.empty()) acutPrintf(L"Not in the picture: %s\n", kinds.c_str());
    if (report.isCut)
        acutPrintf(L"The drawing repeats more than a picture can hold; the rest is left out.\n");
}

} // namespace

void plotCommand() {
    AcApDocument* document = documentOrFail();
    if (!document) return;
    Request request;
    if (!readRequest(*document, request)) return;

    PictureExtents extents;
    plotDrawing(*document->database(), extents);
    SvgPicture picture(PictureFrame::fitted(extents, request.width, request.height, request.isExactSize),
                       std::wstring(hostkit::fileNameOfPath(document->fileName())));
    const PlotReport report =
        plotDrawing(*document->database(), picture, request.filledLayers, request.marked);
    if (acedUsrBrk()) return hostkit::failCommand(Acad::eUserBreak, L"stopped; no picture was written");

    if (!hostkit::writeOutputFile(request.file, picture.finish())) return;
    if (hostkit::isStandardOutput(request.file.name)) return;
    acutPrintf(L"Picture %s: %d entities\n", request.file.name.c_str(), static_cast<int>(report.drawn));
    tellWhatIsMissing(report);
}

#include "plotrequest.h"

#include "acdocman.h"
#include "aced.h"
#include "casefold.h"
#include "currentview.h"
#include "dbdatabase.h"
#include "dblayertable.h"
#include "dbobjptr.h"
#include "host.h"
#include "modulecommand.h"
#include "numbertext.h"
#include "selectioninput.h"
#include "systempath.h"

#include <algorithm>
#include <cmath>

namespace {

// A sheet as it is pinned to the wall; the picture takes what it needs of it.
constexpr double sheetWidth = 420.0;
constexpr double sheetHeight = 297.0;
constexpr double smallestPage = 20.0;
constexpr double largestPage = 5000.0;

bool refuse(Acad::ErrorStatus status, const std::wstring& reason) {
    hostkit::failCommand(status, reason);
    return false;
}

bool readText(const wchar_t* prompt, std::wstring& text, const wchar_t* reason) {
    CString read;
    if (acedGetString(0, prompt, read) != RTNORM) return false;
    text = read.GetString();
    return !text.empty() || refuse(Acad::eInvalidInput, reason);
}

bool readFilledLayer(AcDbDatabase& database, PlotRequest& request) {
    std::wstring name;
    if (!readText(L"Layer whose closed curves are filled: ", name,
                  L"FILL needs the name of a layer behind it"))
        return false;
    const AcDbSymbolTablePointer<AcDbLayerTable> layers(&database, AcDb::kForRead);
    AcDbObjectId id;
    if (!layers.object() || layers->getAt(name.c_str(), id) != Acad::eOk)
        return refuse(Acad::eKeyNotFound, L"there is no layer \"" + name + L"\"; LAYERS lists them");
    request.choice.filledLayers.push_back(id);
    return true;
}

bool readWindow(const AcApDocument& document, PlotRequest& request) {
    ads_point first, second;
    if (acedGetPoint(nullptr, L"First corner: ", first) != RTNORM ||
        acedGetPoint(nullptr, L"Opposite corner: ", second) != RTNORM)
        return refuse(Acad::eInvalidInput, L"WINDOW needs two corners: x,y x,y");
    const AcGeMatrix3d toWorld = hostkit::ucsToWorld(document);
    const AcGePoint3d a = toWorld * AcGePoint3d(first[0], first[1], first[2]);
    const AcGePoint3d b = toWorld * AcGePoint3d(second[0], second[1], second[2]);
    request.window.emplace(AcGePoint2d(std::min(a.x, b.x), std::min(a.y, b.y)),
                           AcGePoint2d(std::max(a.x, b.x), std::max(a.y, b.y)));
    const bool hasRoom = a.x != b.x && a.y != b.y;
    return hasRoom || refuse(Acad::eInvalidInput, L"the corners of the window are on one line");
}

// "1:50", "2:1", or "50" for 1:50.
bool readScale(PlotRequest& request) {
    std::wstring text;
    if (!readText(L"Scale, paper to drawing: ", text, L"SCALE needs one behind it: 1:50")) return false;
    const std::size_t colon = text.find(L':');
    double paper = 1.0, drawing = 0.0;
    const bool isRead = hostkit::parseReal(text.substr(colon == text.npos ? 0 : colon + 1), drawing) &&
                        (colon == text.npos || hostkit::parseReal(text.substr(0, colon), paper));
    if (!isRead || !(paper > 0.0) || !(drawing > 0.0))
        return refuse(Acad::eInvalidInput, L"\"" + text + L"\" is no scale such as 1:50");
    request.scale = paper / drawing;
    return true;
}

bool readSheet(AcDbDatabase& database, PlotRequest& request) {
    std::wstring name;
    if (!readText(L"Layout: ", name, L"LAYOUT needs the name of a sheet behind it")) return false;
    request.sheet = sheetOfName(database, name);
    if (request.sheet) {
        request.choice.block = request.sheet->block;
        return true;
    }
    std::wstring known;
    for (const std::wstring& each : sheetNames(database)) known += (known.empty() ? L"" : L", ") + each;
    return refuse(Acad::eKeyNotFound,
                  L"there is no layout \"" + name +
                      (known.empty() ? L"\"; the drawing has none" : L"\", but: " + known));
}

bool readBackground(Paper& paper) {
    std::wstring text;
    if (!readText(L"Background: ", text, L"BACKGROUND needs WHITE, BLACK, NONE or #RRGGBB behind it"))
        return false;
    const std::wstring name = hostkit::foldCase(text);
    wchar_t* end = nullptr;
    const bool isHex = name.size() == 7 && name.front() == L'#';
    const unsigned long rgb = isHex ? std::wcstoul(name.c_str() + 1, &end, 16) : 0;
    paper.isShown = name != hostkit::foldCase(L"none");
    if (name == hostkit::foldCase(L"black"))
        paper.ground = 0;
    else if (isHex && end && *end == 0)
        paper.ground = static_cast<std::uint32_t>(rgb);
    else if (paper.isShown && name != hostkit::foldCase(L"white"))
        return refuse(Acad::eInvalidInput, L"the background is WHITE, BLACK, NONE or #RRGGBB");
    return true;
}

// "ISO", from the south-west and above, or a direction.
bool readView(PlotRequest& request) {
    ads_point point;
    acedInitGet(0, L"Iso");
    const int answer = acedGetPoint(nullptr, L"Towards the viewer as a vector, or Iso: ", point);
    if (answer != RTNORM && answer != RTKWORD)
        return refuse(Acad::eInvalidInput, L"VIEW needs ISO or a vector towards the viewer: x,y,z");
    const AcGeVector3d towards =
        answer == RTKWORD ? AcGeVector3d(-1, -1, 1) : AcGeVector3d(point[0], point[1], point[2]);
    request.choice.towardsViewer = towards;
    const bool isDirection = std::isfinite(towards.length()) && !towards.isZeroLength();
    return isDirection || refuse(Acad::eInvalidInput, L"the vector towards the viewer has no length");
}

bool readWord(const AcApDocument& document, PlotRequest& request) {
    CString word;
    acedGetInput(word);
    AcDbDatabase& database = *document.database();
    if (word == L"Fill") return readFilledLayer(database, request);
    if (word == L"Window") return readWindow(document, request);
    if (word == L"SCale") return readScale(request);
    if (word == L"View") return readView(request);
    if (word == L"LAYOut") return readSheet(database, request);
    if (word == L"Background") return readBackground(request.choice.paper);
    if (word == L"LAYErs")
        return readText(L"Layers, with * and ? and commas: ", request.choice.layerPattern,
                        L"LAYERS needs names behind it");
    if (word == L"Selected") {
        request.choice.marked = impliedSelectionOrFail(document);
        return !request.choice.marked.empty();
    }
    (word == L"WEights" ? request.hasWeights : request.file.mayReplace) = true;
    return true;
}

bool isPageMeasure(double measure) { return measure >= smallestPage && measure <= largestPage; }

// The width and, behind it, the height.
bool readSize(double width, PlotRequest& request) {
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

bool mayBePlotted(const PlotRequest& request) {
    if (request.choice.towardsViewer &&
        (request.window || request.sheet || !request.choice.filledLayers.empty()))
        return refuse(Acad::eInvalidInput,
                      L"a view shows lines of all of the model: no WINDOW, LAYOUT or FILL beside it");
    if (request.sheet && (request.window || request.scale > 0.0))
        return refuse(Acad::eInvalidInput,
                      L"a layout has its own paper and scale: no WINDOW or SCALE beside it");
    if (!hostkit::acceptOutputFile(request.file)) return false;
    return isPictureName(request.file.name) ||
           refuse(Acad::eInvalidInput, request.file.name + L": pictures are written as .svg alone");
}

} // namespace

bool readPlotRequest(const AcApDocument& document, PlotRequest& request) {
    request.width = sheetWidth;
    request.height = sheetHeight;
    if (!readText(L"Picture file: ", request.file.name, L"a file for the picture is needed")) return false;
    for (;;) {
        double width = 0.0;
        acedInitGet(RSG_NOZERO | RSG_NONEG,
                    L"Fill Selected Window SCale View LAYErs LAYOut WEights Background OVERWRITE");
        const int answer = acedGetReal(L"Width of the page in millimetres, or "
                                       L"Fill, Selected, Window, SCale, View, LAYErs, LAYOut, WEights, "
                                       L"Background or OVERWRITE <fitted>: ",
                                       &width);
        if (answer == RTNONE) return mayBePlotted(request);
        if (answer != RTNORM && answer != RTKWORD)
            return refuse(Acad::eOutOfRange, L"the page is 20 to 5000 millimetres wide and high; FILL and a "
                                             L"layer fill its curves, OVERWRITE replaces the file; HELP PLOT "
                                             L"tells all");
        if (!(answer == RTKWORD ? readWord(document, request) : readSize(width, request))) return false;
    }
}

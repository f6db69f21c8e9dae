#include "plotcommand.h"

#include "acdocman.h"
#include "aced.h"
#include "atomicfile.h"
#include "host.h"
#include "plotdrawing.h"
#include "svgpicture.h"
#include "systempath.h"
#include "textencoding.h"

namespace {

// A sheet as it is pinned to the wall; the picture takes what it needs of it.
constexpr double sheetWidth = 420.0;
constexpr double sheetHeight = 297.0;
constexpr double smallestPage = 20.0;
constexpr double largestPage = 5000.0;

struct Request {
    CString file;
    double width = sheetWidth;
    double height = sheetHeight;
    bool isExactSize = false;
};

// One measure of the page: RTNORM, RTNONE where none is given, else the command has failed.
int readMeasure(const wchar_t* prompt, double& measure) {
    acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
    const int answer = acedGetReal(prompt, &measure);
    if (answer == RTNONE || (answer == RTNORM && measure >= smallestPage && measure <= largestPage))
        return answer;
    hostkit::failCommand(Acad::eOutOfRange, L"the page is 20 to 5000 millimetres wide and high");
    return RTREJ;
}

bool readRequest(Request& request) {
    if (acedGetString(0, L"Picture file: ", request.file) != RTNORM) return false;
    if (request.file.IsEmpty()) {
        hostkit::failCommand(Acad::eInvalidInput, L"a file for the picture is needed");
        return false;
    }
    const int width = readMeasure(L"Width of the page in millimetres <fitted>: ", request.width);
    if (width != RTNORM) return width == RTNONE;
    const int height = readMeasure(L"Height of the page in millimetres: ", request.height);
    if (height == RTNONE)
        hostkit::failCommand(Acad::eInvalidInput, L"the page needs a height beside its width");
    request.isExactSize = true;
    return height == RTNORM;
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
    AcApDocument* document = acDocManagerPtr()->curDocument();
    if (!document) return hostkit::failCommand(Acad::eNoDocument, L"no drawing is open");
    Request request;
    if (!readRequest(request)) return;

    PictureExtents extents;
    plotDrawing(*document->database(), extents);
    SvgPicture picture(PictureFrame::fitted(extents, request.width, request.height, request.isExactSize),
                       std::wstring(hostkit::fileNameOfPath(document->fileName())));
    const PlotReport report = plotDrawing(*document->database(), picture);
    if (acedUsrBrk()) return hostkit::failCommand(Acad::eUserBreak, L"stopped; no picture was written");

    hostkit::AtomicFile file(hostkit::mapPath(request.file.GetString()));
    file.write(picture.finish());
    if (!file.commit())
        return hostkit::failCommand(Acad::eFileAccessErr, std::wstring(request.file.GetString()) + L": " +
                                                              hostkit::wideFromUtf8(file.errorText()));
    acutPrintf(L"Picture %s: %d entities\n", request.file.GetString(), static_cast<int>(report.drawn));
    tellWhatIsMissing(report);
}

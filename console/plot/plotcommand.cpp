#include "plotcommand.h"

#include "acdocman.h"
#include "aced.h"
#include "commandoutput.h"
#include "dbdatabase.h"
#include "host.h"
#include "modulecommand.h"
#include "plotdrawing.h"
#include "plotrequest.h"
#include "svgpicture.h"
#include "systempath.h"

namespace {

constexpr double largestPage = 5000.0; // millimetres

// Millimetres in a unit of lengths by its number in a drawing's header; a drawing without a unit is in
// millimetres. 0: no such unit.
double millimetresInUnit(int unit) {
    constexpr double table[] = {1.0,     25.4,  304.8, 1609344.0, 1.0,  10.0,  1000.0, 1e6, 25.4e-6,
                                25.4e-3, 914.4, 1e-7,  1e-6,      1e-3, 100.0, 1e4,    1e5, 1e12};
    return unit >= 0 && unit < static_cast<int>(std::size(table)) ? table[unit] : 0.0;
}

hostkit::PicturePath boxPath(const AcGePoint2d& low, const AcGePoint2d& high) {
    hostkit::PicturePath path;
    for (const auto& [x, y] : {std::pair(low.x, low.y), std::pair(high.x, low.y), std::pair(high.x, high.y),
                               std::pair(low.x, high.y)})
        path.lineTo(AcGePoint3d(x, y, 0.0));
    path.close();
    return path;
}

// As large as its paper, or fitted into the size that was asked for.
PictureFrame frameOfSheet(const Sheet& sheet, const PlotRequest& request) {
    PictureFrame frame;
    const double share =
        request.isExactSize ? std::min(request.width / sheet.width, request.height / sheet.height) : 1.0;
    frame.width = sheet.width * share;
    frame.height = sheet.height * share;
    frame.scale = sheet.scale * share;
    frame.originX = -sheet.originX / sheet.scale;
    frame.originY = -sheet.originY / sheet.scale;
    return frame;
}

bool findFrame(AcDbDatabase& database, const PlotRequest& request, PictureFrame& frame) {
    if (request.sheet && request.sheet->width > 0.0 && request.sheet->height > 0.0) {
        frame = frameOfSheet(*request.sheet, request);
        return true;
    }
    PictureExtents extents;
    if (request.window) {
        const auto& [low, high] = *request.window;
        extents.stroke(boxPath(low, high), StrokeStyle());
    } else {
        plotDrawing(database, extents, request.choice);
    }
    if (request.scale == 0.0) {
        frame = PictureFrame::fitted(extents, request.width, request.height, request.isExactSize);
        return true;
    }
    const double unit = millimetresInUnit(database.insunits());
    frame = PictureFrame::scaled(extents, request.scale * unit);
    if (request.isExactSize) {
        frame.originX += (frame.width - request.width) / 2.0 / frame.scale;
        frame.originY += (frame.height - request.height) / 2.0 / frame.scale;
        frame.width = request.width;
        frame.height = request.height;
    }
    if (unit > 0.0 && frame.width <= largestPage && frame.height <= largestPage) return true;
    hostkit::failCommand(Acad::eOutOfRange, unit > 0.0
                                                ? L"at that scale the page is wider or higher than 5000 mm"
                                                : L"lengths of this drawing have no scale (INSUNITS)");
    return false;
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
    PlotRequest request;
    if (!readPlotRequest(*document, request)) return;
    AcDbDatabase& database = *document->database();
    PictureFrame frame;
    if (!findFrame(database, request, frame)) return;

    SvgPicture picture(frame, std::wstring(hostkit::fileNameOfPath(document->fileName())),
                       request.choice.paper, request.hasWeights);
    if (request.window) picture.beginClip(boxPath(request.window->first, request.window->second));
    const PlotReport report = plotDrawing(database, picture, request.choice);
    if (request.window) picture.endClip();
    if (acedUsrBrk()) return hostkit::failCommand(Acad::eUserBreak, L"stopped; no picture was written");

    if (!hostkit::writeOutputFile(request.file, picture.finish())) return;
    if (hostkit::isStandardOutput(request.file.name)) return;
    acutPrintf(L"Picture %s: %d entities\n", request.file.name.c_str(), static_cast<int>(report.drawn));
    tellWhatIsMissing(report);
}

#include "variabletable.h"

#include "adscodes.h"
#include "casefold.h"
#include "currentview.h"
#include "dbdatabase.h"
#include "desktop.h"
#include "headervariables.h"
#include "host.h"

#include <cwchar>
#include <iterator>

namespace hostkit {
namespace {

const AcDbDatabase& drawingOf(const VariableSource& source) { return *source.document->database(); }

void setReals(SystemValue& value, double x, double y, double z) {
    value.reals[0] = x;
    value.reals[1] = y;
    value.reals[2] = z;
}

// Commands that run within one another are joined by an apostrophe.
void commandNames(const VariableSource& source, SystemValue& value) {
    for (const std::wstring& name : source.host->runningNames()) {
        if (!value.text.empty()) value.text += L'\'';
        value.text += name;
    }
}

// Bits: 1 a command, 2 a transparent one within it, 8 a modal window.
void commandActive(const VariableSource& source, SystemValue& value) {
    value.integer = source.host->runningState();
    if (Desktop::of(source.host->port()).modalWindow()) value.integer |= 8;
}

void viewportNumber(const VariableSource& source, SystemValue& value) {
    constexpr int modelViewport = 2;
    value.integer = drawingOf(source).tilemode() ? modelViewport : source.document->sheetViewport();
}

// In model space there is one viewport.
VariableResult setViewportNumber(const VariableSource& source, const SystemValue& value) {
    SystemValue now;
    viewportNumber(source, now);
    if (value.integer == now.integer) return VariableResult::ok;
    if (value.integer < 1 || drawingOf(source).tilemode()) return VariableResult::outOfRange;
    source.document->setSheetViewport(value.integer);
    return VariableResult::ok;
}

void tileMode(const VariableSource& source, SystemValue& value) {
    value.integer = drawingOf(source).tilemode();
}

// One comes to the sheet itself, whatever was current there before.
VariableResult setTileMode(const VariableSource& source, const SystemValue& value) {
    if (value.integer != 0 && value.integer != 1) return VariableResult::outOfRange;
    if (drawingOf(source).tilemode() == (value.integer == 1)) return VariableResult::ok;
    source.document->setSheetViewport(1);
    source.document->database()->header().setInteger(L"TILEMODE", value.integer);
    return VariableResult::ok;
}

void viewMode(const VariableSource& source, SystemValue& value) {
    value.integer = currentView(*source.document).mode;
}
void backClip(const VariableSource& source, SystemValue& value) {
    value.reals[0] = currentView(*source.document).backClip;
}
void frontClip(const VariableSource& source, SystemValue& value) {
    value.reals[0] = currentView(*source.document).frontClip;
}
void lensLength(const VariableSource& source, SystemValue& value) {
    value.reals[0] = currentView(*source.document).lensLength;
}
void viewHeight(const VariableSource& source, SystemValue& value) {
    value.reals[0] = currentView(*source.document).height;
}
void viewTwist(const VariableSource& source, SystemValue& value) {
    value.reals[0] = currentView(*source.document).twist;
}

void viewMiddle(const VariableSource& source, SystemValue& value) {
    const CurrentView view = currentView(*source.document);
    const AcGePoint3d middle =
        intoSystem(ucsToWorld(*source.document),
                   displayToWorld(view) * AcGePoint3d(view.middle[0], view.middle[1], 0.0));
    setReals(value, middle.x, middle.y, middle.z);
}

void viewTarget(const VariableSource& source, SystemValue& value) {
    const AcGePoint3d target = intoSystem(ucsToWorld(*source.document), currentView(*source.document).target);
    setReals(value, target.x, target.y, target.z);
}

void viewDirection(const VariableSource& source, SystemValue& value) {
    const AcGeVector3d direction =
        intoSystem(ucsToWorld(*source.document), currentView(*source.document).direction);
    setReals(value, direction.x, direction.y, direction.z);
}

void worldUcs(const VariableSource& source, SystemValue& value) {
    value.integer = ucsToWorld(*source.document) == AcGeMatrix3d::kIdentity;
}

std::size_t startOfName(std::wstring_view file) {
    const std::size_t separator = file.find_last_of(L"/\\");
    return separator == std::wstring_view::npos ? 0 : separator + 1;
}

void drawingName(const VariableSource& source, SystemValue& value) {
    const std::wstring_view file = source.document->fileName();
    value.text = file.empty() ? L"Drawing1.dxf" : file.substr(startOfName(file));
}

void drawingFolder(const VariableSource& source, SystemValue& value) {
    const std::wstring_view file = source.document->fileName();
    value.text = file.substr(0, startOfName(file));
}

void isDrawingTitled(const VariableSource& source, SystemValue& value) {
    value.integer = *source.document->fileName() != 0;
}

void currentColor(const VariableSource& source, SystemValue& value) {
    const int index = source.document->database()->cecolor().colorIndex();
    value.text = index == AcCmColor::kACIbyLayer   ? L"BYLAYER"
                 : index == AcCmColor::kACIbyBlock ? L"BYBLOCK"
                                                   : std::to_wstring(index);
}

VariableResult setCurrentColor(const VariableSource& source, const SystemValue& value) {
    SystemValue number;
    if (equalFolded(value.text, L"BYLAYER"))
        number.integer = AcCmColor::kACIbyLayer;
    else if (equalFolded(value.text, L"BYBLOCK"))
        number.integer = AcCmColor::kACIbyBlock;
    else if (!parseValue(value.text, RTSHORT, number) || number.integer < 1 || number.integer > 255)
        return VariableResult::outOfRange;
    AcCmColor color;
    color.setColorIndex(static_cast<Adesk::UInt16>(number.integer));
    source.document->database()->setCecolor(color);
    return VariableResult::ok;
}

} // namespace

const ComputedRow computedRows[] = {
    {L"BACKZ", RTREAL, true, backClip, nullptr},
    {L"CECOLOR", RTSTR, true, currentColor, setCurrentColor},
    {L"CMDACTIVE", RTSHORT, false, commandActive, nullptr},
    {L"CMDNAMES", RTSTR, false, commandNames, nullptr},
    {L"CVPORT", RTSHORT, true, viewportNumber, setViewportNumber},
    {L"DWGNAME", RTSTR, true, drawingName, nullptr},
    {L"DWGPREFIX", RTSTR, true, drawingFolder, nullptr},
    {L"DWGTITLED", RTSHORT, true, isDrawingTitled, nullptr},
    {L"FRONTZ", RTREAL, true, frontClip, nullptr},
    {L"LENSLENGTH", RTREAL, true, lensLength, nullptr},
    {L"TARGET", RT3DPOINT, true, viewTarget, nullptr},
    {L"TILEMODE", RTSHORT, true, tileMode, setTileMode},
    {L"VIEWCTR", RT3DPOINT, true, viewMiddle, nullptr},
    {L"VIEWDIR", RT3DPOINT, true, viewDirection, nullptr},
    {L"VIEWMODE", RTSHORT, true, viewMode, nullptr},
    {L"VIEWSIZE", RTREAL, true, viewHeight, nullptr},
    {L"VIEWTWIST", RTREAL, true, viewTwist, nullptr},
    {L"WORLDUCS", RTSHORT, true, worldUcs, nullptr},
};
const std::size_t computedRowCount = std::size(computedRows);

} // namespace hostkit

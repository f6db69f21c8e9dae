#include "acedads.h"

#include "acdocman.h"
#include "dbdatabase.h"
#include "documentselection.h"
#include "host.h"
#include "selectionprompt.h"
#include "selectionsets.h"

#include <optional>

namespace {

using hostkit::Found;
using hostkit::PickMode;
using hostkit::SelectionMethod;
using hostkit::SelectionMode;
using hostkit::SelectionPicks;
using hostkit::SelectionSet;

// What acedSSGet was called with, in a document.
struct Call {
    AcApDocument& document;
    const SelectionMode& mode;
    const void* first;
    const void* second;
    const hostkit::SelectionFilter& filter;
};

std::vector<AcGePoint3d> worldPoints(const Call& call) {
    std::vector<AcGePoint3d> points;
    for (auto record = static_cast<const resbuf*>(call.first); record; record = record->rbnext)
        if (record->restype == RTPOINT || record->restype == RT3DPOINT) {
            const ads_real* typed = record->resval.rpoint;
            const ads_point flat = {typed[0], typed[1], record->restype == RT3DPOINT ? typed[2] : 0.0};
            points.push_back(hostkit::fromUser(call.document, flat));
        }
    return points;
}

// False for a method that lacks its points or its name.
bool findByCorners(const Call& call, const SelectionPicks& picks, Found& found) {
    if (!call.first || !call.second) return false;
    const AcGePoint3d one = hostkit::fromUser(call.document, static_cast<const ads_real*>(call.first));
    const AcGePoint3d other = hostkit::fromUser(call.document, static_cast<const ads_real*>(call.second));
    if (call.mode.method == SelectionMethod::box)
        found = picks.box(one, other);
    else
        found = picks.window(
            one, other, call.mode.method == SelectionMethod::window ? PickMode::inside : PickMode::touching);
    return true;
}

bool findByPlace(const Call& call, const SelectionPicks& picks, Found& found) {
    if (!call.first) return false;
    switch (call.mode.method) {
    case SelectionMethod::point:
        found = picks.at(hostkit::fromUser(call.document, static_cast<const ads_real*>(call.first)));
        return true;
    case SelectionMethod::fence:
        found = picks.fence(worldPoints(call));
        return true;
    case SelectionMethod::windowPolygon:
        found = picks.polygon(worldPoints(call), PickMode::inside);
        return true;
    case SelectionMethod::crossingPolygon:
        found = picks.polygon(worldPoints(call), PickMode::touching);
        return true;
    case SelectionMethod::group:
        return picks.group(static_cast<const wchar_t*>(call.first), found);
    default:
        return findByCorners(call, picks, found);
    }
}

bool find(const Call& call, Found& found) {
    const SelectionPicks picks(call.document, call.mode, call.filter);
    switch (call.mode.method) {
    case SelectionMethod::implied:
        found = picks.ofList(call.document.selection().implied, false);
        return true;
    case SelectionMethod::previous:
        found = picks.ofList(call.document.selection().previous, true);
        return true;
    case SelectionMethod::last:
        found = picks.last();
        return true;
    case SelectionMethod::wholeDrawing:
        found = picks.wholeDrawing();
        return true;
    case SelectionMethod::currentSpace:
        found = picks.currentSpaceWhole();
        return true;
    default:
        return findByPlace(call, picks, found);
    }
}

int ask(const Call& call, SelectionSet& selection) {
    SelectionMode mode = call.mode;
    mode.isNested |= call.document.selection().inputPoints.isSubentitySelectionOn();
    hostkit::SelectionPrompt prompt(call.document, mode, call.filter);
    if (mode.hasPrompts && call.first) {
        const auto prompts = static_cast<const wchar_t* const*>(call.first);
        prompt.setPrompts(prompts[0] ? prompts[0] : L"", prompts[1] ? prompts[1] : L"");
    }
    if (mode.hasKeywords && call.second) prompt.setKeywords(static_cast<const wchar_t*>(call.second));
    return prompt.run(selection);
}

bool takesImplied(const AcApDocument& document) {
    constexpr int on = 1;
    return !document.selection().implied.empty() &&
           hostkit::Host::current()->variables().integer(L"PICKFIRST", on) != 0;
}

int select(const Call& call, SelectionSet& selection) {
    if (call.mode.method == SelectionMethod::ask) return ask(call, selection);
    Found found;
    if (!find(call, found) || found.ids.empty()) return RTERROR;
    selection = SelectionSet(std::move(found.ids), found.way);
    return RTNORM;
}

// Without a mode the method is the first that there is something for.
void chooseMethod(SelectionMode& mode, bool isPlain, const void* first, const AcApDocument& document) {
    if (!isPlain) return;
    if (first)
        mode.method = SelectionMethod::point;
    else if (takesImplied(document))
        mode.method = SelectionMethod::implied;
}

} // namespace

int acedSSGet(const wchar_t* mode, const void* first, const void* second, const resbuf* filter,
              ads_name set) {
    AcApDocument* document = hostkit::currentDocument();
    std::optional<SelectionMode> parsed = hostkit::parseSelectionMode(mode ? mode : L"");
    if (!document || !parsed || !set) return RTERROR;
    const auto compiled = hostkit::SelectionFilter::compile(filter, *document->database());
    if (!compiled) return RTERROR;
    const bool isPlain = !mode || !*mode;
    chooseMethod(*parsed, isPlain, first, *document);
    hostkit::DocumentSelection& remembered = document->selection();
    const bool usesUp = isPlain && parsed->method == SelectionMethod::implied;
    SelectionSet selection;
    const int result = select({*document, *parsed, first, second, *compiled}, selection);
    if (usesUp) remembered.implied.clear();
    if (result != RTNORM) return result;
    if (parsed->method != SelectionMethod::implied || usesUp) remembered.previous = selection.ids();
    hostkit::Host::current()->selections().make(std::move(selection), set);
    return RTNORM;
}

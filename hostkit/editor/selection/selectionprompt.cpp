#include "selectionprompt.h"

#include "acdocman.h"
#include "aced.h"
#include "answerreading.h"
#include "dbaccess.h"
#include "dbdatabase.h"
#include "documentselection.h"
#include "handletext.h"
#include "host.h"

#include <algorithm>

namespace hostkit {
namespace {

constexpr wchar_t waysOfSelecting[] = L"Window Last Crossing BOX ALL Fence WPolygon CPolygon Group Add "
                                      L"Remove Multiple Previous Undo AUto SIngle";

bool beginsWindows() {
    constexpr int on = 1;
    Host* const host = Host::current();
    return !host || host->variables().integer(L"PICKAUTO", on) != 0;
}

} // namespace

// One answer: a point, an entity by its handle, or one of the words.
struct SelectionPrompt::Step {
    std::wstring word{};
    AcDbObjectId entity{};
    AcGePoint3d point{};
    bool isPoint = false;
};

SelectionPrompt::SelectionPrompt(AcApDocument& document, const SelectionMode& mode,
                                 const SelectionFilter& filter)
    : m_document(document)
    , m_mode(mode)
    , m_picks(document, m_mode, filter)
    , m_allowsRepeats(mode.allowsRepeats || document.selection().allowsDuplicates) {}

void SelectionPrompt::setPrompts(std::wstring adding, std::wstring removing) {
    m_adding = std::move(adding);
    m_removing = std::move(removing);
}

int SelectionPrompt::run(SelectionSet& selection) {
    for (bool isDone = false; !isDone;) {
        Step step;
        const int answer = readStep(step);
        if (answer == RTNONE) break;
        if (answer != RTNORM) return answer;
        const int result = perform(step);
        if (result != RTNORM && result != RTNONE) return result;
        isDone = isLast(step);
    }
    if (m_selection.isEmpty()) return RTERROR;
    selection = std::move(m_selection);
    return RTNORM;
}

bool SelectionPrompt::isLast(const Step& step) const {
    return m_mode.isSingle && (m_hasFound || (step.isPoint && m_mode.picksOnly));
}

int SelectionPrompt::readStep(Step& step) {
    RunningCommand* command = commandThatReads();
    if (command && !m_keywords.empty()) command->keywords += L' ' + m_keywords;
    return readAnswer((m_removes ? m_removing : m_adding).c_str(), false, L"way to select objects",
                      [&](const std::wstring& text, const AnswerRequest& request, RunningCommand& running) {
                          if (takeKeyword(text, request, running) == RTKWORD) return RTKWORD;
                          return parseStep(text, step);
                      });
}

int SelectionPrompt::parseStep(const std::wstring& text, Step& step) const {
    ads_point typed;
    if (parseAnsweredPoint(text, nullptr, typed)) {
        step.point = fromUser(m_document, typed);
        step.isPoint = true;
        return RTNORM;
    }
    if (text == L"?") {
        step.word = text;
        return RTNORM;
    }
    if (findKeyword(waysOfSelecting, text, step.word)) return RTNORM;
    step.entity = entityOfHandleText(*m_document.database(), text);
    return step.entity.isNull() ? RTREJ : RTNORM;
}

int SelectionPrompt::perform(const Step& step) {
    m_hasFound = false;
    if (step.isPoint) return pickAt(step.point);
    if (step.entity.isNull()) return performWord(step.word);
    take(m_picks.ofList({step.entity}, true));
    return RTNORM;
}

int SelectionPrompt::performWord(const std::wstring& word) {
    if (word == L"Window" || word == L"Crossing" || word == L"BOX") return windowByCorners(word);
    if (word == L"WPolygon" || word == L"CPolygon" || word == L"Fence") return polygon(word);
    if (word == L"Multiple") return multiple();
    if (word == L"Group") return readGroup();
    if (word == L"?") acutPrintf(L"\nA point, a handle, or %s\n", waysOfSelecting);
    if (word == L"ALL") take(m_picks.currentSpaceWhole());
    if (word == L"Last") take(m_picks.last());
    if (word == L"Previous") take(m_picks.ofList(m_document.selection().previous, true));
    if (word == L"Undo") undo();
    if (word == L"Remove") m_removes = true;
    if (word == L"Add" || word == L"AUto") m_removes = false;
    if (word == L"SIngle") m_mode.isSingle = true;
    return RTNORM;
}

int SelectionPrompt::readPoint(const wchar_t* prompt, AcGePoint3d& point) const {
    ads_point typed;
    const int answer = acedGetPoint(nullptr, prompt, typed);
    if (answer == RTNORM) point = fromUser(m_document, typed);
    return answer;
}

int SelectionPrompt::windowByCorners(const std::wstring& word) {
    AcGePoint3d first, second;
    int answer = readPoint(L"First corner: ", first);
    if (answer == RTNORM) answer = readPoint(L"Opposite corner: ", second);
    if (answer != RTNORM) return answer;
    if (word == L"BOX")
        take(m_picks.box(first, second));
    else
        take(m_picks.window(first, second, word == L"Window" ? PickMode::inside : PickMode::touching));
    return RTNORM;
}

int SelectionPrompt::pickAt(const AcGePoint3d& point) {
    const Found found = m_picks.at(point);
    const bool hasMet = !found.ids.empty() || found.filteredOut + found.onLockedLayers > 0;
    if (hasMet || m_mode.picksOnly || m_mode.isNested || !beginsWindows()) {
        take(found);
        return RTNORM;
    }
    return boxFrom(point);
}

int SelectionPrompt::boxFrom(const AcGePoint3d& first) {
    AcGePoint3d second;
    const int answer = readPoint(L"Opposite corner: ", second);
    take(answer == RTNORM ? m_picks.box(first, second) : Found());
    return answer;
}

// RTNONE when Enter has ended the list.
int SelectionPrompt::readPoints(const wchar_t* prompt, std::vector<AcGePoint3d>& points) const {
    for (;;) {
        acedInitGet(0, L"Undo");
        AcGePoint3d point;
        const int answer = readPoint(prompt, point);
        if (answer == RTNORM)
            points.push_back(point);
        else if (answer != RTKWORD)
            return answer;
        else if (!points.empty())
            points.pop_back();
        prompt = L"Next point [Undo]: ";
    }
}

int SelectionPrompt::polygon(const std::wstring& word) {
    std::vector<AcGePoint3d> points;
    const int answer = readPoints(L"First point: ", points);
    if (answer != RTNONE) return answer;
    if (word == L"Fence")
        take(m_picks.fence(points));
    else
        take(m_picks.polygon(points, word == L"WPolygon" ? PickMode::inside : PickMode::touching));
    return RTNORM;
}

int SelectionPrompt::multiple() {
    std::vector<AcGePoint3d> points;
    const int answer = readPoints(L"Point: ", points);
    if (answer != RTNONE) return answer;
    for (const AcGePoint3d& point : points) take(m_picks.at(point));
    return RTNORM;
}

int SelectionPrompt::readGroup() {
    CString name;
    const int answer = acedGetString(0, L"Group: ", name);
    if (answer != RTNORM || name.IsEmpty()) return answer;
    Found found;
    if (m_picks.group(name.view(), found))
        take(found);
    else
        acutPrintf(L"\nThere is no group \"%s\".\n", name);
    return RTNORM;
}

void SelectionPrompt::undo() {
    if (m_earlier.empty()) {
        acutPrintf(L"\nThere is nothing to take back.\n");
        return;
    }
    Earlier& earlier = m_earlier.back();
    if (earlier.whole)
        m_selection = std::move(*earlier.whole);
    else
        m_selection.shrinkTo(earlier.size);
    m_earlier.pop_back();
    acutPrintf(L"\n%d in all\n", static_cast<int>(m_selection.size()));
}

void SelectionPrompt::take(const Found& found) {
    m_earlier.push_back({m_selection.size(), {}});
    if (m_removes) m_earlier.back().whole = m_selection;
    std::size_t changed = 0;
    for (const AcDbObjectId id : found.ids) {
        if (m_removes)
            changed += m_selection.remove(id);
        else if (m_allowsRepeats)
            m_selection.addAgain(id, found.way), ++changed;
        else
            changed += m_selection.add(id, found.way);
    }
    m_hasFound = !found.ids.empty();
    tell(found, changed);
}

void SelectionPrompt::tell(const Found& found, std::size_t changed) const {
    const std::size_t count = found.ids.size();
    std::wstring text = L"\n" + std::to_wstring(count) + L" found";
    const auto add = [&text](std::size_t number, const wchar_t* what) {
        if (number > 0) text += L", " + std::to_wstring(number) + what;
    };
    add(m_removes ? 0 : count - changed, L" selected before");
    add(found.filteredOut, L" not of the kind that is asked for");
    add(found.onLockedLayers, L" on locked layers");
    add(found.inOtherSpaces, L" not in the current space");
    if (m_removes) text += L", " + std::to_wstring(changed) + L" removed";
    if (m_selection.size() != count || m_removes)
        text += L"; " + std::to_wstring(m_selection.size()) + L" in all";
    acutPrintf(L"%s\n", text.c_str());
}

} // namespace hostkit

#include "deferredinput.h"

#include "caughtresult.h"
#include "desktop.h"
#include "expressionevaluator.h"
#include "host.h"

#include <utility>

namespace hostkit {

DeferredItem DeferredInput::take() {
    DeferredItem item = std::move(m_items.front());
    m_items.pop_front();
    return item;
}

std::size_t DeferredInput::drop() {
    const std::size_t count = m_items.size();
    m_items.clear();
    m_line.clear();
    return count;
}

bool DeferredInput::takeLine(std::wstring& text, std::wstring& line) {
    const std::size_t end = text.find_first_of(L"\r\n");
    m_line += text.substr(0, end);
    if (end == std::wstring::npos) {
        text.clear();
        return false;
    }
    text.erase(0, end + (text.compare(end, 2, L"\r\n") == 0 ? 2 : 1));
    line = std::exchange(m_line, {});
    return true;
}

namespace {

// Messages that were posted to windows while no modal window took them.
void dispatchPosted(Desktop& desktop) {
    MSG message;
    while (!desktop.modalWindow() && desktop.take(message)) desktop.dispatch(message);
}

CommandResult named(CommandResult result, const std::wstring& what) {
    if (result.status != Acad::eOk)
        result.reason = what + L": " + (result.reason.empty() ? L"the command failed" : result.reason);
    return result;
}

// The first failure is kept, the others are told.
void keepFirst(HostPort& port, CommandResult& first, CommandResult result) {
    if (result.status == Acad::eOk) return;
    if (first.status == Acad::eOk)
        first = std::move(result);
    else
        port.reportProblem(result.reason + L" (" + acadErrorStatusText(result.status) + L")");
}

} // namespace

CommandResult Host::runText(DeferredItem item, MoreInput more) {
    AcApDocument* const earlier = documents().curDocument();
    AcApDocument* document = item.database ? documents().document(item.database) : earlier;
    if (item.database && !document)
        return {Acad::eNoDocument, L"a queued text: its drawing was closed meanwhile"};
    if (item.activates)
        documents().activateDocument(document);
    else if (document != earlier)
        documents().setCurDocument(document);
    const CommandResult result = caught([&] {
        if (item.echoes) port().print(item.text);
        CommandResult first;
        for (std::wstring line; deferred().takeLine(item.text, line);)
            keepFirst(port(), first, named(runWholeLine(line, more), L"\"" + line + L"\""));
        return first;
    });
    const bool isEarlierThere = earlier && documents().document(earlier->database()) == earlier;
    if (!item.activates && isEarlierThere && documents().curDocument() == document)
        documents().setCurDocument(earlier);
    return result;
}

CommandResult Host::runItem(DeferredItem item, MoreInput more) {
    switch (item.kind) {
    case DeferredItem::Kind::text:
        return runText(std::move(item), more);
    case DeferredItem::Kind::cancel:
        deferred().dropLine();
        return {};
    case DeferredItem::Kind::expression:
        break;
    }
    std::wstring problem;
    if (evaluateExpression(*this, item.text, problem)) return {};
    return {Acad::eInvalidInput, problem};
}

CommandResult Host::runQueue(MoreInput more) {
    CommandResult first;
    for (;;) {
        dispatchPosted(Desktop::of(port()));
        if (deferred().isEmpty()) return first;
        if (port().interruptRequested()) {
            const std::size_t count = deferred().drop();
            port().reportProblem(L"stopped; of what was queued is not done: " + std::to_wstring(count));
            return first;
        }
        keepFirst(port(), first, caught([&] { return runItem(deferred().take(), more); }));
    }
}

CommandResult Host::runDeferred(MoreInput more) {
    if (runningCommand() || isRunningDeferred()) return {};
    setRunningDeferred(true);
    CommandResult result = caught([&] { return runQueue(more); });
    setRunningDeferred(false);
    return result;
}

bool Host::endInput() {
    const std::wstring line = deferred().begunLine();
    if (line.empty()) return true;
    deferred().dropLine();
    port().reportProblem(L"the input ends within a line, which is not run: " + line);
    return false;
}

} // namespace hostkit

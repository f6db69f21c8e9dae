#include "boxasker.h"

#include "boxtext.h"
#include "consoleport.h"
#include "options.h"
#include "outputfiles.h"

namespace {

std::wstring nameOf(const hostkit::ShownWindow& window) {
    return window.caption.empty() ? L"a box" : L"\"" + window.caption + L"\"";
}

} // namespace

void BoxAsker::setAnswers(std::wstring file, std::vector<ScriptLine> answers) {
    m_file = std::move(file);
    m_answers.assign(std::make_move_iterator(answers.begin()), std::make_move_iterator(answers.end()));
}

BoxAnswer BoxAsker::refusal(const hostkit::ShownWindow& window, const std::wstring& reason) {
    const hostkit::ShownControl* button = refusingControl(window);
    m_port.reportProblem(L"vexohost: " + nameOf(window) + L" is answered " +
                         (button ? L"\"" + button->text + L"\"" : L"by closing it") + L": " + reason);
    BoxAnswer answer;
    answer.steps.push_back({hostkit::WindowAction::refuse()});
    return answer;
}

BoxAnswer BoxAsker::answerOfPerson(const hostkit::ShownWindow& window) {
    for (;;) {
        std::wstring line;
        const Typed typed = m_port.readTyped(buttonTexts(window) + L" <Enter>: ", line);
        if (typed == Typed::cancelled) return refusal(window, L"stopped by Ctrl-C");
        if (typed == Typed::end) return refusal(window, L"the input has ended");
        if (typed == Typed::escape) line = L"Esc";
        BoxAnswer answer = parseBoxAnswer(line, window);
        if (answer.problem.empty()) return answer;
        m_port.reportProblem(answer.problem);
    }
}

BoxAnswer BoxAsker::nextAnswer(const hostkit::ShownWindow& window) {
    if (!m_answers.empty()) {
        const ScriptLine line = std::move(m_answers.front());
        m_answers.pop_front();
        BoxAnswer answer = parseBoxAnswer(line.text, window);
        if (answer.problem.empty()) return answer;
        return refusal(window, m_file + L":" + std::to_wstring(line.number) + L": " + answer.problem);
    }
    if (ConsolePort::isInteractive()) return answerOfPerson(window);
    return refusal(window, m_file.empty() ? L"nobody is there to answer (--answers FILE answers boxes)"
                                          : m_file + L" has no answer left");
}

// Pictures are written on the way to the next action.
bool BoxAsker::takeStep(const hostkit::ShownWindow& window, hostkit::WindowAction& action) {
    while (!m_steps.empty()) {
        const BoxStep step = std::move(m_steps.front());
        m_steps.pop_front();
        if (step.picture.empty()) {
            action = step.action;
            return true;
        }
        const std::wstring problem =
            m_port.outputs().write({step.picture}, hostkit::paintingAsSvg(window.painting), overwriteOption);
        if (problem.empty()) continue;
        m_port.reportProblem(L"vexohost: " + problem);
        m_hasLostPicture = true;
    }
    return false;
}

hostkit::WindowAction BoxAsker::ask(const hostkit::ShownWindow& window) {
    if (m_port.interruptRequested()) return hostkit::WindowAction::refuse();
    if (m_window != window.window) m_steps.clear();
    m_window = window.window;
    hostkit::WindowAction action;
    if (takeStep(window, action)) return action;
    m_port.show(boxAsText(window));
    // An answer of pictures alone leaves the box to the next one.
    while (!takeStep(window, action)) {
        const BoxAnswer answer = nextAnswer(window);
        m_steps.assign(answer.steps.begin(), answer.steps.end());
    }
    return action;
}

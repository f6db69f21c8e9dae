#include "scriptedport.h"

#include "casefold.h"

namespace hostkit {

void ScriptedPort::print(std::wstring_view text) { printed += text; }

Input ScriptedPort::readLine(std::wstring_view prompt, std::wstring& line) {
    prompts.emplace_back(prompt);
    if (lines.empty()) return Input::end;
    line = lines.front();
    lines.pop_front();
    return Input::line;
}

void ScriptedPort::meterStart(std::wstring_view caption, int minimum, int maximum) {
    meters.push_back({std::wstring(caption), minimum, maximum, {}, false});
}

void ScriptedPort::meterStep(int position) {
    if (!meters.empty()) meters.back().positions.push_back(position);
}

void ScriptedPort::meterStop() {
    if (!meters.empty()) meters.back().stopped = true;
}

int ScriptedPort::messageBox(std::wstring_view text, std::wstring_view caption, unsigned flags) {
    boxes.push_back({std::wstring(text), std::wstring(caption), flags});
    if (buttons.empty()) return refusingButton(flags);
    const int button = buttons.front();
    buttons.pop_front();
    return button;
}

WindowAction ScriptedPort::askWindow(const ShownWindow& window) {
    windows.push_back(window);
    if (actions.empty()) return WindowAction::refuse();
    WindowAction action = std::move(actions.front());
    actions.pop_front();
    return action;
}

int ScriptedPort::systemMetric(int number) const {
    const auto found = metrics.find(number);
    return found == metrics.end() ? HostPort::systemMetric(number) : found->second;
}

void ScriptedPort::debugOutput(std::wstring_view text) { debug.emplace_back(text); }
void ScriptedPort::reportProblem(std::wstring_view text) { problems.emplace_back(text); }

std::int64_t ScriptedPort::now() const { return time; }
std::int64_t ScriptedPort::monotonicNanoseconds() const { return nanoseconds; }

bool ScriptedPort::getEnvironment(std::wstring_view name, std::wstring& value) const {
    const auto found = environment.find(name);
    if (found == environment.end()) return false;
    value = found->second;
    return true;
}

void ScriptedPort::setEnvironment(std::wstring_view name, std::wstring_view value) {
    environment[std::wstring(name)] = value;
}

std::string ScriptedPort::driveRoot(wchar_t letter) const {
    const auto found = drives.find(upperCase(letter));
    return found == drives.end() ? std::string() : found->second;
}

} // namespace hostkit

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

bool ScriptedPort::askWindow(const ShownWindow& window, WindowAction& action) {
    const bool isNew = windows.empty() || windows.back().window != window.window;
    if (window.box && isNew) boxes.push_back({window.box->text, window.caption, window.box->flags});
    windows.push_back(window);
    if (!actions.empty()) {
        action = std::move(actions.front());
        actions.pop_front();
        return true;
    }
    if (!window.box || buttons.empty()) return false;
    action = WindowAction::click(buttons.front());
    buttons.pop_front();
    return true;
}

std::optional<int> ScriptedPort::systemMetric(int number) const {
    const auto found = metrics.find(number);
    return found == metrics.end() ? std::nullopt : std::optional(found->second);
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

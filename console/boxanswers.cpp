#include "boxanswers.h"

#include "casefold.h"
#include "commandinput.h"
#include "winuser.h"

namespace {

using hostkit::ShownControl;
using hostkit::ShownWindow;
using hostkit::WindowAction;
using Kind = ShownControl::Kind;

struct NamedKey {
    const wchar_t* name;
    unsigned key;
};

constexpr NamedKey namedKeys[] = {
    {L"Enter", VK_RETURN}, {L"Esc", VK_ESCAPE},    {L"Escape", VK_ESCAPE},  {L"Tab", VK_TAB},
    {L"Space", VK_SPACE},  {L"Up", VK_UP},         {L"Down", VK_DOWN},      {L"Home", VK_HOME},
    {L"End", VK_END},      {L"Delete", VK_DELETE}, {L"Backspace", VK_BACK},
};

bool isPressed(const ShownControl& control) {
    return control.kind == Kind::button || control.kind == Kind::check || control.kind == Kind::radio;
}

bool hasItems(const ShownControl& control) {
    return control.kind == Kind::list || control.kind == Kind::checkList || control.kind == Kind::combo;
}

const ShownControl* pressedControl(const ShownWindow& window, const std::wstring& word) {
    for (const ShownControl& each : window.controls)
        if (isPressed(each) && hostkit::equalFolded(each.text, word)) return &each;
    for (const ShownControl& each : window.controls)
        if (isPressed(each) && word.size() == 1 && each.mnemonic == hostkit::foldCase(word[0])) return &each;
    return nullptr;
}

// The one with the focus, else the first.
template <class Test>
const ShownControl* focusedOrFirst(const ShownWindow& window, Test isWanted) {
    const ShownControl* found = window.focused();
    if (found && isWanted(*found)) return found;
    for (const ShownControl& each : window.controls)
        if (isWanted(each)) return &each;
    return nullptr;
}

std::wstring addItem(BoxAnswer& answer, const ShownWindow& window, const std::wstring& number) {
    const ShownControl* list = focusedOrFirst(window, hasItems);
    if (!list) return L"the box has no list";
    std::size_t item = 0;
    for (const wchar_t digit : number) {
        if (digit < L'0' || digit > L'9' || item > list->items.size())
            return L"#" + number + L" is no item of the list";
        item = item * 10 + static_cast<std::size_t>(digit - L'0');
    }
    if (item < 1 || item > list->items.size()) return L"#" + number + L" is no item of the list";
    answer.steps.push_back({WindowAction::choose(list->id, static_cast<int>(item) - 1)});
    return {};
}

std::wstring addText(BoxAnswer& answer, const ShownWindow& window, const std::wstring& text) {
    const ShownControl* edit =
        focusedOrFirst(window, [](const ShownControl& each) { return each.kind == Kind::edit; });
    if (!edit) return L"the box has no field to write in";
    answer.steps.push_back({WindowAction::write(edit->id, text)});
    return {};
}

std::wstring addWord(BoxAnswer& answer, const ShownWindow& window, const std::wstring& word) {
    if (word.size() > 1 && word[0] == L'#') return addItem(answer, window, word.substr(1));
    if (!word.empty() && word[0] == L'=') return addText(answer, window, word.substr(1));
    if (word.size() > 1 && word[0] == L'>') {
        answer.steps.emplace_back().picture = word.substr(1);
        return {};
    }
    if (const ShownControl* control = pressedControl(window, word)) {
        answer.steps.push_back({WindowAction::click(control->id)});
        return {};
    }
    for (const NamedKey& each : namedKeys)
        if (hostkit::equalFolded(each.name, word)) {
            answer.steps.push_back({WindowAction::press(each.key)});
            return {};
        }
    return L"\"" + word + L"\" is no answer to this box (" + buttonTexts(window) + L", or a key)";
}

} // namespace

BoxAnswer parseBoxAnswer(const std::wstring& line, const ShownWindow& window) {
    BoxAnswer answer;
    hostkit::CommandInput words(line, hostkit::MoreInput::none);
    std::wstring word;
    while (answer.problem.empty() && words.nextWord(word))
        answer.problem = words.isUnclosed() ? hostkit::unclosedMark(word) : addWord(answer, window, word);
    if (answer.problem.empty() && answer.steps.empty())
        answer.steps.push_back({WindowAction::press(VK_RETURN)});
    if (!answer.problem.empty()) answer.steps.clear();
    return answer;
}

std::wstring buttonTexts(const ShownWindow& window) {
    std::wstring texts;
    for (const ShownControl& each : window.controls)
        if (each.kind == Kind::button) texts += (texts.empty() ? L"" : L"/") + each.text;
    return texts;
}

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
    {L"End", VK_END},      {L"Delete", VK_DELETE}, {L"Backspace", VK_BACK}, {L"F1", VK_F1},
    {L"F4", VK_F4},
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

// The field that a label stands before, or a combo box by what it shows.
const ShownControl* namedField(const ShownWindow& window, const std::wstring& word) {
    const auto isField = [](const ShownControl& each) { return each.kind == Kind::edit || hasItems(each); };
    for (std::size_t i = 0; i + 1 < window.controls.size(); ++i) {
        const ShownControl& label = window.controls[i];
        const std::wstring text = label.text.substr(0, label.text.find_last_not_of(L" :") + 1);
        const bool isNamed = hostkit::equalFolded(text, word) || hostkit::equalFolded(label.text, word);
        if (label.kind == Kind::label && isNamed && isField(window.controls[i + 1]))
            return &window.controls[i + 1];
    }
    for (const ShownControl& each : window.controls)
        if (each.kind == Kind::combo && hostkit::equalFolded(each.text, word)) return &each;
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

// The one that an earlier word went to, else the one with the focus, else the first.
template <class Test>
const ShownControl* chosenField(const BoxAnswer& answer, const ShownWindow& window, Test isWanted) {
    return answer.field && isWanted(*answer.field) ? answer.field : focusedOrFirst(window, isWanted);
}

// By its text, which may be a number, or by its number from 1; -1 where there is none.
int itemOf(const ShownControl& list, const std::wstring& wanted) {
    for (std::size_t i = 0; i < list.items.size(); ++i)
        if (hostkit::equalFolded(list.items[i].text, wanted)) return static_cast<int>(i);
    std::size_t number = 0;
    for (const wchar_t digit : wanted) {
        if (digit < L'0' || digit > L'9' || number > list.items.size()) return -1;
        number = number * 10 + static_cast<std::size_t>(digit - L'0');
    }
    return number <= list.items.size() ? static_cast<int>(number) - 1 : -1;
}

std::wstring addItem(BoxAnswer& answer, const ShownWindow& window, const std::wstring& number) {
    const ShownControl* list = chosenField(answer, window, hasItems);
    if (!list) return L"the box has no list";
    int item = itemOf(*list, number);
    for (const ShownControl& each : window.controls)
        if (item < 0 && hasItems(each) && (item = itemOf(each, number)) >= 0) list = &each;
    if (item < 0) return L"#" + number + L" is no item of the list";
    answer.steps.push_back({WindowAction::choose(list->id, item).at(list->window)});
    return {};
}

std::wstring addText(BoxAnswer& answer, const ShownWindow& window, const std::wstring& text) {
    const ShownControl* edit =
        chosenField(answer, window, [](const ShownControl& each) { return each.kind == Kind::edit; });
    if (!edit) return L"the box has no field to write in";
    answer.steps.push_back({WindowAction::write(edit->id, text).at(edit->window)});
    return {};
}

std::wstring addWord(BoxAnswer& answer, const ShownWindow& window, const std::wstring& word) {
    if (word.size() > 1 && word[0] == L'#') return addItem(answer, window, word.substr(1));
    if (!word.empty() && word[0] == L'=') return addText(answer, window, word.substr(1));
    if (word.size() > 1 && word[0] == L'>') {
        answer.steps.emplace_back().picture = word.substr(1);
        return {};
    }
    const ShownControl* control = pressedControl(window, word);
    for (const NamedKey& each : namedKeys)
        if (!control && hostkit::equalFolded(each.name, word)) {
            answer.steps.push_back({WindowAction::press(each.key)});
            return {};
        }
    if (!control) control = namedField(window, word);
    if (control) {
        answer.field = control->kind == Kind::button ? answer.field : control;
        answer.steps.push_back({WindowAction::click(control->id).at(control->window)});
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
    answer.field = nullptr;
    return answer;
}

std::wstring buttonTexts(const ShownWindow& window) {
    std::wstring texts;
    for (const ShownControl& each : window.controls)
        if (each.kind == Kind::button) texts += (texts.empty() ? L"" : L"/") + each.text;
    return texts;
}

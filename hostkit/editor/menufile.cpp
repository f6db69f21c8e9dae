#include "menufile.h"

#include "menugroup.h"

#include "atomicfile.h"
#include "casefold.h"
#include "systempath.h"
#include "textencoding.h"

#include <cerrno>
#include <optional>
#include <vector>

namespace hostkit {
namespace {

constexpr std::wstring_view blanks = L" \t\r\f\v";

std::wstring_view trim(std::wstring_view text) {
    const std::size_t start = text.find_first_not_of(blanks);
    if (start == std::wstring_view::npos) return {};
    return text.substr(start, text.find_last_not_of(blanks) - start + 1);
}

std::wstring decode(std::string_view bytes) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (bytes.starts_with(mark)) bytes.remove_prefix(mark.size());
    return isValidUtf8(bytes) ? wideFromUtf8(bytes) : wideFromAnsi(bytes);
}

/// An item of a toolbar: ID [label]macro, the label as it stands or as name(argument, ...).
struct Item {
    std::wstring_view id;
    std::wstring_view label;
    std::wstring_view macro;
};

struct Call {
    std::wstring_view name;
    std::vector<std::wstring> arguments;
};

// Where the text first has the character outside of quotation marks; npos where it has not.
std::size_t findPlain(std::wstring_view text, wchar_t wanted) {
    bool isQuoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'"') isQuoted = !isQuoted;
        if (!isQuoted && text[i] == wanted) return i;
    }
    return std::wstring_view::npos;
}

bool splitItem(std::wstring_view line, Item& item) {
    const std::size_t open = line.find(L'[');
    if (open == std::wstring_view::npos) return false;
    const std::size_t length = findPlain(line.substr(open), L']');
    if (length == std::wstring_view::npos) return false;
    item.id = trim(line.substr(0, open));
    item.label = trim(line.substr(open + 1, length - 1));
    item.macro = trim(line.substr(open + length + 1));
    return true;
}

std::wstring unquoted(std::wstring_view text) {
    text = trim(text);
    if (text.size() < 2 || text.front() != L'"' || text.back() != L'"') return std::wstring(text);
    return std::wstring(text.substr(1, text.size() - 2));
}

bool splitCall(std::wstring_view label, Call& call) {
    const std::size_t open = label.find(L'(');
    if (open == std::wstring_view::npos || label.back() != L')') return false;
    call.name = trim(label.substr(0, open));
    std::wstring_view rest = label.substr(open + 1, label.size() - open - 2);
    for (;;) {
        const std::size_t comma = findPlain(rest, L',');
        call.arguments.push_back(unquoted(rest.substr(0, comma)));
        if (comma == std::wstring_view::npos) return true;
        rest.remove_prefix(comma + 1);
    }
}

/// Reads the lines of one menu; the first fault ends it.
class MenuReader {
public:
    MenuReader(std::wstring text, MenuGroup& group)
        : m_text(std::move(text))
        , m_group(group) {}

    bool read() {
        for (std::wstring_view line; nextLine(line);)
            if (!readLine(trim(line))) return false;
        if (!endToolbar()) return false;
        if (!m_group.name.empty()) return true;
        m_line = 1;
        return fail(L"the file names no menu group: a line ***MENUGROUP=NAME is missing");
    }
    std::size_t line() const { return m_line; }
    const std::wstring& problem() const { return m_problem; }

private:
    enum class Section { none, toolbars, other };

    bool fail(std::wstring problem) {
        m_problem = std::move(problem);
        return false;
    }
    bool nextLine(std::wstring_view& line) {
        if (m_position >= m_text.size()) return false;
        const std::size_t end = std::min(m_text.find(L'\n', m_position), m_text.size());
        line = std::wstring_view(m_text).substr(m_position, end - m_position);
        m_position = end + 1;
        ++m_line;
        return true;
    }
    bool readLine(std::wstring_view line) {
        if (line.empty() || line.starts_with(L"//")) return true;
        if (line.starts_with(L"***")) return readSection(line.substr(3));
        if (m_section == Section::none) return fail(L"this is no menu: a section *** comes first");
        if (m_section == Section::other) return true;
        return line.starts_with(L"**") ? beginToolbar(trim(line.substr(2))) : readItem(line);
    }
    bool readSection(std::wstring_view head) {
        constexpr std::wstring_view groupWord = L"MENUGROUP=";
        if (!endToolbar()) return false;
        m_section = equalFolded(trim(head), L"TOOLBARS") ? Section::toolbars : Section::other;
        if (!equalFolded(head.substr(0, groupWord.size()), groupWord)) return true;
        if (!m_group.name.empty()) return fail(L"the menu group is named a second time");
        m_group.name = trim(head.substr(groupWord.size()));
        return m_group.name.empty() ? fail(L"the menu group has no name") : true;
    }
    bool beginToolbar(std::wstring_view id) {
        if (!endToolbar()) return false;
        if (id.empty()) return fail(L"a toolbar has no id behind **");
        m_toolbar = std::make_shared<Toolbar>();
        m_toolbar->id = id;
        m_toolbarLine = m_line;
        return true;
    }
    bool endToolbar() {
        if (!m_toolbar) return true;
        if (m_toolbar->name.empty()) {
            m_line = m_toolbarLine;
            return fail(L"the toolbar " + m_toolbar->id + L" has no item [_Toolbar(\"Name\", ...)]");
        }
        m_group.toolbars.push_back(std::move(m_toolbar));
        m_toolbar = nullptr;
        return true;
    }
    bool readItem(std::wstring_view line) {
        Item item;
        Call call;
        if (!m_toolbar) return fail(L"an item stands before the first toolbar; ** begins one");
        if (!splitItem(line, item)) return fail(L"an item has its label in brackets: [...]");
        std::wstring macro(item.macro);
        while (macro.ends_with(L'+')) {
            macro.pop_back();
            if (std::wstring_view more; nextLine(more)) macro += trim(more);
        }
        if (item.label == L"--") return true;
        if (!splitCall(item.label, call))
            return fail(L"an item is [--] or [_Name(...)], not [" + std::wstring(item.label) + L"]");
        if (equalFolded(call.name, L"_Toolbar")) return readHead(item, call);
        if (m_toolbar->name.empty()) return fail(L"a toolbar begins with [_Toolbar(\"Name\", ...)]");
        if (equalFolded(call.name, L"_Control") || equalFolded(call.name, L"_Flyout")) return true;
        if (!equalFolded(call.name, L"_Button"))
            return fail(L"there is no kind of item " + std::wstring(call.name));
        if (call.arguments[0].empty()) return fail(L"a button has no name");
        m_toolbar->buttons.push_back({std::wstring(item.id), call.arguments[0], std::move(macro)});
        return true;
    }
    bool readHead(const Item& item, const Call& call) {
        if (!m_toolbar->name.empty()) return fail(L"the toolbar is named a second time");
        if (call.arguments[0].empty()) return fail(L"a toolbar has no name");
        m_toolbar->name = call.arguments[0];
        if (!item.id.empty()) m_toolbar->id = item.id;
        m_toolbar->isVisible = true;
        for (const std::wstring& each : call.arguments)
            if (equalFolded(each, L"_Hide")) m_toolbar->isVisible = false;
        return true;
    }

    std::wstring m_text;
    MenuGroup& m_group;
    std::size_t m_position = 0;
    std::size_t m_line = 0;
    std::size_t m_toolbarLine = 0;
    Section m_section = Section::none;
    std::shared_ptr<Toolbar> m_toolbar; ///< that is being read
    std::wstring m_problem;
};

} // namespace

Acad::ErrorStatus readMenuText(std::string_view bytes, std::wstring_view file, MenuGroup& group,
                               std::wstring& problem) {
    MenuReader reader(decode(bytes), group);
    if (reader.read()) return Acad::eOk;
    problem = std::wstring(file) + L":" + std::to_wstring(reader.line()) + L": " + reader.problem();
    return Acad::eInvalidInput;
}

Acad::ErrorStatus readMenuFile(const std::wstring& file, MenuGroup& group, std::wstring& problem) {
    std::string bytes;
    if (readWholeFile(mapPath(file), bytes, largestMenuFile)) {
        group.file = file;
        return readMenuText(bytes, file, group, problem);
    }
    const int error = errno;
    const bool isMissing = error == ENOENT || error == ENOTDIR;
    problem = file + (isMissing        ? L": there is no such menu file"
                      : error == EFBIG ? L": the file is too large for a menu"
                                       : L": the menu file cannot be read");
    return isMissing ? Acad::eFileNotFound : Acad::eFileAccessErr;
}

} // namespace hostkit

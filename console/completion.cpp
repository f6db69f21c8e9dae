#include "completion.h"

#include "accmd.h"
#include "builtincommands.h"
#include "casefold.h"
#include "host.h"
#include "systempath.h"

#include <algorithm>
#include <filesystem>

namespace {

struct Word {
    std::size_t start = 0; ///< its quotation mark, where it has one
    bool isQuoted = false; ///< and the mark is open
    std::wstring text{};   ///< without the mark
};

constexpr std::wstring_view blanks = L" \t";

// The word that the line ends in; an empty one behind a blank.
Word lastWord(std::wstring_view line) {
    Word word;
    for (std::size_t at = 0;;) {
        at = line.find_first_not_of(blanks, at);
        if (at == std::wstring_view::npos) return {line.size()};
        word = {at, line[at] == L'"', L""};
        std::size_t end = word.isQuoted ? line.find(L'"', at + 1) : line.find_first_of(blanks, at);
        if (end == std::wstring_view::npos) {
            word.text = line.substr(at + (word.isQuoted ? 1 : 0));
            return word;
        }
        at = end + (word.isQuoted ? 1 : 0);
        if (at == line.size() && word.isQuoted) return {line.size()};
    }
}

bool beginsWith(std::wstring_view name, std::wstring_view start) {
    return name.size() >= start.size() && hostkit::equalFolded(name.substr(0, start.size()), start);
}

Completion ordered(std::size_t start, std::vector<std::wstring> words) {
    std::sort(words.begin(), words.end());
    words.erase(std::unique(words.begin(), words.end()), words.end());
    return {start, std::move(words)};
}

Completion commandNames(const Word& word) {
    std::vector<std::wstring> names;
    const bool isGlobal = word.text.starts_with(L'_');
    for (const AcEdCommand* command : acedRegCmds->commands()) {
        const std::wstring name =
            isGlobal ? std::wstring(L"_") + command->globalName() : command->localName();
        if (beginsWith(name, word.text)) names.push_back(name);
    }
    return ordered(word.start, std::move(names));
}

Completion variableNames(const Word& word) {
    std::vector<std::wstring> names;
    for (const std::wstring& name : hostkit::Host::current()->variables().names())
        if (beginsWith(name, word.text)) names.push_back(name);
    return ordered(word.start, std::move(names));
}

Completion fileNames(const Word& word) {
    const std::size_t separator = word.text.find_last_of(L"/\\");
    const std::wstring folder =
        separator == std::wstring::npos ? std::wstring() : word.text.substr(0, separator + 1);
    const std::wstring start = word.text.substr(folder.size());
    std::vector<std::wstring> words;
    std::error_code problem;
    const std::string place = folder.empty() ? "." : hostkit::mapPath(folder);
    for (std::filesystem::directory_iterator each(place, problem), end; !problem && each != end;
         each.increment(problem)) {
        const std::wstring name = hostkit::pathFromSystem(each->path().filename().string());
        if (!name.starts_with(start) || name.starts_with(L'.') != start.starts_with(L'.')) continue;
        std::error_code ignored;
        const bool isFolder = each->is_directory(ignored);
        std::wstring path = folder + name + (isFolder ? L"/" : L"");
        const bool needsMarks = word.isQuoted || path.find_first_of(blanks) != std::wstring::npos;
        if (needsMarks) path = isFolder ? L'"' + path : L'"' + path + L'"';
        words.push_back(std::move(path));
    }
    return ordered(word.start, std::move(words));
}

// What is known of a module's command is its name alone: a file may be meant.
bool takesFile(const AcEdCommand* command) {
    const CommandDescription* known = command ? descriptionOf(command->globalName()) : nullptr;
    return !known || std::wstring_view(known->arguments).find(L"FILE") != std::wstring_view::npos;
}

} // namespace

Completion completeCommand(std::wstring_view line) {
    const Word word = lastWord(line);
    hostkit::CommandInput words(line, hostkit::MoreInput::none);
    std::wstring name;
    const std::size_t first = line.find_first_not_of(blanks);
    if (word.start <= std::min(first, line.size()) || !words.nextWord(name)) return commandNames(word);
    const AcEdCommand* const command = acedRegCmds->lookupTyped(name.c_str());
    if (command && hostkit::equalFolded(command->globalName(), L"HELP")) return commandNames(word);
    if (command && hostkit::equalFolded(command->globalName(), L"SETVAR")) return variableNames(word);
    return takesFile(command) ? fileNames(word) : Completion{word.start};
}

Completion completeFile(std::wstring_view line) { return fileNames(lastWord(line)); }

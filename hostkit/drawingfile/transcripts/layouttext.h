// Lines of layouts and transcripts: their indents, names and forms.
#pragma once

#include <charconv>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit::layouttext {

struct Line {
    std::size_t indent;
    std::string_view text;
};

struct Source {
    std::string_view code, kind;
    std::vector<Line> lines;
};

inline std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(' ');
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(' ') + 1 - begin);
}

/// The part before the mark, which is taken off the text together with the mark.
inline std::string_view takeUntil(std::string_view& text, std::string_view mark) {
    const std::size_t at = text.find(mark);
    const std::string_view before = text.substr(0, at);
    text = at == std::string_view::npos ? std::string_view() : text.substr(at + mark.size());
    return before;
}

inline int numberOf(std::string_view digits, int otherwise) {
    int value = otherwise;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

/// "[18+] " and its like are taken off; false for lines of other forms.
inline bool belongsTo(int form, std::string_view& text) {
    if (!text.starts_with('[')) return true;
    text.remove_prefix(1);
    std::string_view forms = takeUntil(text, "] ");
    text = trimmed(text);
    if (forms.ends_with('+')) return form >= numberOf(forms, 0);
    const std::string_view first = takeUntil(forms, "-");
    if (forms.empty()) return form == numberOf(first, 0);
    return form >= numberOf(first, 0) && form <= numberOf(forms, 0);
}

inline std::string withoutBlanks(std::string_view text) {
    std::string result;
    for (const char character : text)
        if (character != ' ') result += character;
    return result;
}

using Sources = std::map<std::string, Source, std::less<>>;

inline void addSources(std::string_view text, Sources& sources) {
    Source* current = nullptr;
    while (!text.empty()) {
        const std::string_view line = takeUntil(text, "\n");
        if (line.starts_with("@ ")) {
            std::string_view head = line.substr(2);
            const std::string name(takeUntil(head, " "));
            const std::string_view code = takeUntil(head, " ");
            current = &sources[name];
            *current = {code, trimmed(head), {}};
        } else if (current && !trimmed(line).empty()) {
            current->lines.push_back({line.find_first_not_of(' '), trimmed(line)});
        }
    }
}

} // namespace hostkit::layouttext

#include "faulttexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

namespace drawingtest {

std::string contentOf(const std::string& name) {
    std::ifstream file(VEXO_SOURCE_DIR "/tests/hostkit/drawingfile/audit/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string drawingOf(const std::string& text) {
    std::istringstream groups(text);
    std::string bytes;
    for (std::string group; groups >> group;) {
        const std::size_t equals = group.find('=');
        std::replace(group.begin(), group.end(), '~', ' ');
        bytes += group.substr(0, equals) + "\r\n" +
                 (equals == std::string::npos ? "" : group.substr(equals + 1) + "\r\n");
    }
    return bytes;
}

std::size_t placeOf(const std::string& text, const std::string& groups, std::size_t from) {
    for (std::size_t at = text.find(groups, from); at != std::string::npos; at = text.find(groups, at + 1)) {
        const char before = at == 0 ? '\n' : text[at - 1];
        const char behind = at + groups.size() < text.size() ? text[at + groups.size()] : '\n';
        if ((before == ' ' || before == '\n') && (behind == ' ' || behind == '\n')) return at;
    }
    ADD_FAILURE() << groups << " is not in the text";
    return 0;
}

std::size_t beginOf(const std::string& text, const std::string& record) {
    return record == "." ? 0 : text.rfind('\n', placeOf(text, record)) + 1;
}

std::string joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& each : texts) all += each + "\n";
    return all;
}

std::vector<std::string> split(const std::string& text, const std::string& separator) {
    std::vector<std::string> parts;
    std::size_t at = 0;
    for (std::size_t end; (end = text.find(separator, at)) != std::string::npos; at = end + separator.size())
        parts.push_back(text.substr(at, end - at));
    parts.push_back(text.substr(at));
    return parts;
}

std::string inLines(const std::string& groups) {
    const std::string lines = joined(split(groups, " // "));
    return lines.substr(0, lines.size() - 1);
}

std::string changedText(const std::string& sound, const std::string& record, const std::string& change) {
    const std::vector<std::string> sides = split(change, " ->");
    const std::string from = inLines(sides.at(0));
    const std::string to = inLines(sides.at(1).empty() ? "" : sides[1].substr(1));
    std::string text = sound;
    text.replace(placeOf(text, from, beginOf(text, record)), from.size(), to);
    return text;
}

std::size_t
forEachFault(const std::function<void(const std::string& sound, const std::string& fault)>& check) {
    std::istringstream lines(contentOf("faults.txt"));
    std::string sound;
    std::size_t count = 0;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("@@")) sound = contentOf(line.substr(2, line.find(' ') - 2));
        if (line.empty() || line[0] == ';' || line[0] == '@') continue;
        check(sound, line);
        ++count;
    }
    return count;
}

} // namespace drawingtest

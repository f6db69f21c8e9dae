#pragma once

#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

// What tests read of the example module's JSON reports: one name, one value behind it.

/// What stands behind "name": up to the next comma, or all of a text or list; "missing" without that name.
inline std::string field(const std::string& text, const std::string& name) {
    const std::size_t at = text.find("\"" + name + "\": ");
    if (at == std::string::npos) return "missing";
    const std::size_t start = at + name.size() + 4;
    const char opening = text[start];
    const std::size_t end = opening == '['   ? text.find(']', start) + 1
                            : opening == '"' ? text.find('"', start + 1) + 1
                                             : text.find_first_of(",}\n", start);
    return text.substr(start, end - start);
}

/// Not a number for null and for what is missing.
inline double value(const std::string& text, const std::string& name) {
    const std::string number = field(text, name);
    return number == "null" || number == "missing" ? NAN : std::strtod(number.c_str(), nullptr);
}

/// From each place where `opening` stands to the next one.
inline std::vector<std::string> parts(const std::string& text, const std::string& opening) {
    std::vector<std::string> found;
    for (std::size_t at = text.find(opening); at != std::string::npos;) {
        const std::size_t next = text.find(opening, at + 1);
        found.push_back(text.substr(at, next - at));
        at = next;
    }
    return found;
}

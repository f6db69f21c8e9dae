#include "meterline.h"

#include "consoletext.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t longestBar = 30;
constexpr std::size_t shortestBar = 5;

std::wstring twoDigits(std::int64_t number) { return (number < 10 ? L"0" : L"") + std::to_wstring(number); }

std::wstring durationText(std::int64_t seconds) {
    constexpr std::int64_t minute = 60;
    constexpr std::int64_t hour = 60 * minute;
    if (seconds < hour) return std::to_wstring(seconds / minute) + L":" + twoDigits(seconds % minute);
    return std::to_wstring(seconds / hour) + L":" + twoDigits(seconds % hour / minute) + L":" +
           twoDigits(seconds % minute);
}

std::wstring withoutEnd(std::wstring_view text, std::size_t columns) {
    std::size_t length = text.size();
    while (length > 0 && columnsOf(text.substr(0, length)) > columns) --length;
    return std::wstring(text.substr(0, length));
}

} // namespace

std::int64_t secondsLeft(std::int64_t nanosecondsSoFar, double shareDone) {
    constexpr double second = 1e9;
    const double seconds = static_cast<double>(nanosecondsSoFar) / second;
    if (seconds < 1.0 || !(shareDone > 0.0)) return -1;
    return static_cast<std::int64_t>(std::ceil(seconds * (1.0 - std::min(shareDone, 1.0)) / shareDone));
}

std::wstring meterLine(std::wstring_view caption, int percent, std::int64_t secondsLeft,
                       std::size_t columns) {
    const int shown = std::clamp(percent, 0, 100);
    std::wstring end = padLeft(std::to_wstring(shown), 4) + L" %";
    if (secondsLeft >= 0) end += L"  " + durationText(secondsLeft) + L" left";
    const std::size_t room = columns > end.size() ? columns - end.size() : 0;
    std::wstring line = withoutEnd(caption, room);
    constexpr std::size_t frame = 3; // a blank and the brackets
    const std::size_t used = columnsOf(line) + frame;
    if (room >= used + shortestBar) {
        const std::size_t length = std::min(room - used, longestBar);
        const std::size_t filled = length * static_cast<std::size_t>(shown) / 100;
        line += L" [" + std::wstring(filled, L'#') + std::wstring(length - filled, L'.') + L"]";
    }
    return line + end;
}

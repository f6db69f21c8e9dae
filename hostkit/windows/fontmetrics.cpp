#include "fontmetrics.h"

#include <algorithm>
#include <cmath>

namespace hostkit {
namespace {

struct WidthClass {
    double width; ///< in em
    std::wstring_view characters;
};

// Our own classes, rounded from what is common among sans-serif faces.
constexpr WidthClass widthClasses[] = {
    {0.29, L"ijlIJ'|\u00A6\u2018\u2019\u201A\u00EC\u00ED\u00EE\u00EF\u00CC\u00CD\u00CE\u00CF"},
    {0.33, L" .,:;!/\\\u00A0\u00B7\u00A1"},
    {0.41, L"frt()[]-`\u00AD\u00B0\u00B4\u00A8\u00B2\u00B3\u00B9"},
    {0.48, L"\"*^\u201C\u201D\u201E"},
    {0.54, L"sz_?\u00BF\u0161\u017E\u00AA\u00BA\u2013"},
    {0.57, L"ckF\u00E7"},
    {0.60, L"vxyLo\u00FD\u00FF\u00F2\u00F3\u00F4\u00F5\u00F6\u00F8"},
    {0.62, L"aePTY\u00DD\u0178\u00E0\u00E1\u00E2\u00E3\u00E4\u00E5\u00E8\u00E9\u00EA\u00EB"},
    {0.64, L"0123456789bdghnpqu$\u00A3\u00A5\u00A7\u20AC{}"
           L"\u00AB\u00BB\u00DF\u00F1\u00F9\u00FA\u00FB\u00FCES\u0160\u00C8"
           L"\u00C9\u00CA\u00CB"},
    {0.69, L"KXZBVA\u017D\u00C0\u00C1\u00C2\u00C3\u00C4\u00C5"},
    {0.70, L"CR\u00C7"},
    {0.75, L"UHN\u00D9\u00DA\u00DB\u00DC\u00D1"},
    {0.79, L"DGOQ&\u00D0\u00D2\u00D3\u00D4\u00D5\u00D6\u00D8"},
    {0.84, L"w+=<>~#\u00B1\u00D7\u00F7\u00AC\u2030"},
    {0.87, L"M\u00B6"},
    {0.99, L"mW%@\u00E6\u0153\u00C6\u0152\u2014\u2026\u00A9\u00AE\u2122\u00BC\u00BD\u00BE"},
};

// What is in no class: letters of other alphabets.
constexpr double otherWidth = 0.70;
constexpr double boldFactor = 1.10;
constexpr std::size_t tableSize = 0x180;

struct WidthTable {
    double widths[tableSize];
    WidthTable() {
        std::fill(std::begin(widths), std::end(widths), otherWidth);
        std::fill(widths, widths + 0x20, 0.0);
        std::fill(widths + 0x7F, widths + 0xA0, 0.0);
        for (const WidthClass& each : widthClasses)
            for (const wchar_t character : each.characters)
                if (static_cast<std::size_t>(character) < tableSize) widths[character] = each.width;
    }
};

double widthBeyondTable(wchar_t character) {
    const auto code = static_cast<std::uint32_t>(character);
    if ((code >= 0x300 && code < 0x370) || (code >= 0x200B && code < 0x2010) || code == 0xFEFF) return 0.0;
    for (const WidthClass& each : widthClasses)
        if (each.characters.find(character) != std::wstring_view::npos) return each.width;
    const bool isIdeograph = (code >= 0x1100 && code < 0x1200) || (code >= 0x2E80 && code < 0xD800) ||
                             (code >= 0xF900 && code < 0xFB00) || (code >= 0xFF00 && code < 0xFF61) ||
                             code >= 0x1F000;
    return isIdeograph ? 1.0 : otherWidth;
}

double widthInPixels(const FontFace& face, wchar_t character) {
    return characterWidth(character) * face.em * (face.isBold ? boldFactor : 1.0);
}

} // namespace

double characterWidth(wchar_t character) {
    static const WidthTable table;
    const auto code = static_cast<std::size_t>(character);
    return code < tableSize ? table.widths[code] : widthBeyondTable(character);
}

int FontFace::emOfHeight(int height) {
    constexpr int largest = 1'000'000;
    if (height == 0) return FontFace{}.em;
    if (height < 0) return -std::max(height, -largest);
    FontFace face;
    face.em = std::min(height, largest);
    while (face.em > 1 && face.height() > height) face.em -= std::max((face.height() - height) / 2, 1);
    return face.em;
}

int characterAdvance(const FontFace& face, wchar_t character) {
    return static_cast<int>(std::lround(widthInPixels(face, character)));
}

int textWidth(const FontFace& face, std::wstring_view text) {
    double width = 0.0;
    for (const wchar_t character : text) width += widthInPixels(face, character);
    return static_cast<int>(std::ceil(std::min(width, 1e9)));
}

std::size_t fittingLength(const FontFace& face, std::wstring_view text, int width) {
    double taken = 0.0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        taken += widthInPixels(face, text[i]);
        if (taken > width) return i;
    }
    return text.size();
}

} // namespace hostkit

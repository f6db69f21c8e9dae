#include "letterface.h"

#include "casefold.h"

#include <string>

namespace hostkit {
namespace {

constexpr double kSansCapitals = 1466.0;
constexpr double kStrokeCapitals = 6.0;

short strokeAdvance(wchar_t letter) {
    switch (letter) {
    case L'.':
    case L':':
    case L'!':
    case L'\'':
        return 2;
    case L',':
    case L';':
    case L'l':
    case L'i':
    case L'|':
        return 3;
    case L'1':
    case L'(':
    case L')':
    case L'[':
    case L']':
    case L'"':
        return 4;
    case L'0':
        return 5;
    default:
        return 6;
    }
}

bool isOneOf(wchar_t letter, std::wstring_view letters) { return letters.find(letter) != letters.npos; }

// Letters of strokes begin at their place and end with two empty units.
LetterUnits strokeLetter(wchar_t letter) {
    constexpr short gap = 2;
    const bool isLow = isOneOf(letter, L"acegmnopqrsuvwxyz.,:;-_");
    const short bottom = isOneOf(letter, L"gjpqy") ? -2 : isOneOf(letter, L",;") ? -1 : 0;
    return {strokeAdvance(letter), 0, gap, static_cast<short>(isLow ? 4 : 6), bottom};
}

} // namespace

const LetterFace& LetterFace::sans() {
    static const LetterFace face(sansLetter, kSansCapitals, true);
    return face;
}

const LetterFace& LetterFace::strokes() {
    static const LetterFace face(strokeLetter, kStrokeCapitals, false);
    return face;
}

const LetterFace& LetterFace::ofFile(std::wstring_view fontFile) {
    const std::size_t point = fontFile.rfind(L'.');
    const bool isShapes = point == fontFile.npos || equalFolded(fontFile.substr(point), L".shx");
    return isShapes ? strokes() : sans();
}

LetterSize LetterFace::letter(wchar_t letter) const {
    const LetterUnits units = m_units(letter);
    return {units.advance * m_unit, units.left * m_unit, units.right * m_unit, units.top * m_unit,
            units.bottom * m_unit};
}

double lineWidth(std::wstring_view letters, const LetterFace& face) {
    double width = 0.0;
    double lastBlank = 0.0;
    for (const wchar_t each : letters) {
        if (each < L' ') continue;
        const LetterSize size = face.letter(each);
        width += size.advance;
        lastBlank = size.right;
    }
    return face.countsLastBlank() ? width : width - lastBlank;
}

} // namespace hostkit

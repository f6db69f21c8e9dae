#include "paragraphlines.h"

#include "markupreader.h"
#include "paragraphstack.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace hostkit {
namespace {

using PieceKind = ParagraphPiece::Kind;

constexpr std::size_t kDeepestGroup = 200;
constexpr wchar_t kTabAsBlanks[] = L"    ";
constexpr double kWidthSlack = 1e-9; // of the frame's width

bool isBlankLetter(wchar_t letter) { return letter == L' ' || letter == L'\u00A0' || letter < L' '; }

double bearing(const ParagraphPiece& piece, bool isLeft) {
    if (piece.kind != PieceKind::letters || piece.text.empty()) return 0.0;
    const LetterSize size = piece.look.face->letter(isLeft ? piece.text.front() : piece.text.back());
    return (isLeft ? size.left : size.right) * piece.look.height * piece.look.widthFactor;
}

// What is seen of a line that grows piece by piece.
struct Seen {
    double left = std::numeric_limits<double>::infinity();
    double right = -left;
    double top = 0.0;
    double bottom = 0.0;

    void add(double from, double to, double low, double high) {
        left = std::min(left, from);
        right = std::max(right, to);
        top = std::max(top, high);
        bottom = std::min(bottom, low);
    }

    void addLetters(const ParagraphPiece& piece) {
        const ParagraphLook& look = piece.look;
        const double across = look.height * look.widthFactor;
        double x = piece.x;
        for (const wchar_t each : piece.text) {
            const LetterSize size = look.face->letter(each);
            if (!isBlankLetter(each))
                add(x + size.left * across, x + (size.advance - size.right) * across,
                    piece.rise + std::min(size.bottom, 0.0) * look.height,
                    piece.rise + std::max(size.top, 1.0) * look.height);
            if (each >= L' ') x += size.advance * across * look.tracking;
        }
    }

    void add(const ParagraphPiece& piece) {
        if (piece.kind == PieceKind::letters) return addLetters(piece);
        const double up = piece.kind == PieceKind::slash ? piece.look.height : 0.0;
        add(piece.x, piece.x + piece.width, piece.rise, piece.rise + up);
    }
};

// Of the letters beside stacks, or of the stacks where there is nothing else.
double letterHeight(const std::vector<ParagraphPiece>& pieces, double otherwise) {
    double ofLetters = 0.0;
    double ofStacks = 0.0;
    for (const ParagraphPiece& piece : pieces) {
        double& height = piece.isStacked() ? ofStacks : ofLetters;
        height = std::max(height, piece.fullHeight);
    }
    return ofLetters > 0.0 ? ofLetters : ofStacks > 0.0 ? ofStacks : otherwise;
}

double riseOf(const ParagraphPiece& piece, double lineHeight) {
    return (lineHeight - piece.fullHeight) * piece.look.verticalPlace / 2.0;
}

// Runs of one look become one piece.
std::vector<ParagraphPiece> joined(std::vector<ParagraphPiece> pieces) {
    std::vector<ParagraphPiece> runs;
    for (ParagraphPiece& piece : pieces) {
        const bool goesOn =
            !runs.empty() && !piece.isStacked() && !runs.back().isStacked() && runs.back().look == piece.look;
        if (goesOn) {
            runs.back().text += piece.text;
            runs.back().width += piece.width;
        } else {
            runs.push_back(std::move(piece));
        }
    }
    return runs;
}

} // namespace

ParagraphLineMaker::ParagraphLineMaker(const ParagraphFrame& frame)
    : m_frame(frame)
    , m_look(ParagraphLook::ofStyle(frame.textStyle, frame.height)) {}

void ParagraphLineMaker::take(const MarkupPiece& piece) {
    switch (piece.kind) {
    case MarkupPiece::Kind::letters:
        return addLetters(piece.text);
    case MarkupPiece::Kind::lineEnd:
        return endLine();
    case MarkupPiece::Kind::groupBegin:
        return openGroup();
    case MarkupPiece::Kind::groupEnd:
        return closeGroup();
    case MarkupPiece::Kind::stack:
        return addStack(piece.text);
    default:
        break;
    }
    const wchar_t alignment = piece.code == L'p' ? alignmentAskedBy(piece.text) : L'\0';
    if (alignment) m_line.alignment = alignment;
    m_look.take(piece, m_frame.height);
}

void ParagraphLineMaker::openGroup() {
    if (m_saved.size() < kDeepestGroup)
        m_saved.push_back(m_look);
    else
        ++m_groupsBeyond;
}

void ParagraphLineMaker::closeGroup() {
    if (m_groupsBeyond > 0) {
        --m_groupsBeyond;
    } else if (!m_saved.empty()) {
        m_look = std::move(m_saved.back());
        m_saved.pop_back();
    }
}

void ParagraphLineMaker::addLetters(std::wstring_view letters) {
    const auto isBreak = [](wchar_t letter) { return letter == L' ' || letter == L'\t'; };
    while (!letters.empty()) {
        const bool isBlank = isBreak(letters.front());
        const auto end = std::find_if(letters.begin(), letters.end(),
                                      [&](wchar_t each) { return isBreak(each) != isBlank; });
        const auto length = static_cast<std::size_t>(end - letters.begin());
        ParagraphPiece piece{.look = m_look, .fullHeight = m_look.height};
        for (const wchar_t each : letters.substr(0, length)) {
            if (each == L'\t')
                piece.text += kTabAsBlanks;
            else
                piece.text += each;
        }
        piece.width = advanceOf(piece.text, piece.look);
        addWord(std::move(piece), isBlank);
        letters.remove_prefix(length);
    }
}

void ParagraphLineMaker::addStack(std::wstring_view stack) {
    StackPieces parts = stackPieces(stack, m_look);
    addWhole(std::move(parts.pieces), parts.width);
}

bool ParagraphLineMaker::isTooWide(const ParagraphPiece& last) const {
    const double seen = m_x - bearing(last, false) - m_firstLeft;
    return m_frame.width > 0.0 && seen > m_frame.width * (1.0 + kWidthSlack);
}

void ParagraphLineMaker::addWord(ParagraphPiece piece, bool isBlank) {
    const double width = piece.width;
    if (!isBlank) return addWhole({std::move(piece)}, width);
    piece.x = m_x;
    m_x += width;
    m_line.pieces.push_back(std::move(piece));
    if (m_hasLetters) m_break = m_line.pieces.size();
}

// Pieces that no line end may part.
void ParagraphLineMaker::addWhole(std::vector<ParagraphPiece> pieces, double width) {
    if (!m_hasLetters) m_firstLeft = bearing(pieces.front(), true);
    for (ParagraphPiece& piece : pieces) {
        piece.x += m_x;
        m_line.pieces.push_back(std::move(piece));
    }
    m_x += width;
    m_hasLetters = true;
    if (m_break > 0 && isTooWide(m_line.pieces.back())) breakLine();
}

// What stands behind the last blank goes on in a line of the same alignment.
void ParagraphLineMaker::breakLine() {
    const auto cut = m_line.pieces.begin() + static_cast<std::ptrdiff_t>(m_break);
    std::vector<ParagraphPiece> rest(std::make_move_iterator(cut),
                                     std::make_move_iterator(m_line.pieces.end()));
    m_line.pieces.erase(cut, m_line.pieces.end());
    const double end = m_x;
    endLine();
    const double start = rest.front().x;
    for (ParagraphPiece& piece : rest) piece.x -= start;
    m_firstLeft = bearing(rest.front(), true);
    m_line.pieces = std::move(rest);
    m_x = end - start;
    m_hasLetters = true;
}

void ParagraphLineMaker::endLine() {
    const double height = letterHeight(m_line.pieces, m_look.height);
    Seen seen;
    for (ParagraphPiece& piece : m_line.pieces) {
        piece.rise += riseOf(piece, height);
        seen.add(piece);
    }
    const wchar_t alignment = m_line.alignment;
    const bool isSeen = seen.right > seen.left;
    m_line.left = isSeen ? seen.left : 0.0;
    m_line.right = isSeen ? seen.right : 0.0;
    m_line.top = isSeen ? seen.top : height;
    m_line.bottom = seen.bottom;
    m_line.pieces = joined(std::move(m_line.pieces));
    m_lines.push_back(std::move(m_line));
    m_heights.push_back(height);
    m_line = {.alignment = alignment};
    m_x = m_firstLeft = 0.0;
    m_hasLetters = false;
    m_break = 0;
}

void ParagraphLineMaker::finish(std::vector<ParagraphLine>& lines, std::vector<double>& heights) {
    endLine();
    lines = std::move(m_lines);
    heights = std::move(m_heights);
}

} // namespace hostkit

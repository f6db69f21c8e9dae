// The lines of a paragraph, made from the pieces of its markup and broken at the width of its frame.
#pragma once

#include "paragraphlayout.h"

namespace hostkit {

struct MarkupPiece;

/// Takes the pieces of the markup one after the other. Lines begin at 0; where they stand is the caller's.
class ParagraphLineMaker {
public:
    /// The frame must outlive it.
    explicit ParagraphLineMaker(const ParagraphFrame& frame);

    void take(const MarkupPiece& piece);
    /// The lines, at least one, and the height of the letters of each. Of no use afterwards.
    void finish(std::vector<ParagraphLine>& lines, std::vector<double>& heights);

private:
    void addLetters(std::wstring_view letters);
    void addWord(ParagraphPiece piece, bool isBlank);
    void addWhole(std::vector<ParagraphPiece> pieces, double width);
    void addStack(std::wstring_view stack);
    void breakLine();
    void endLine();
    void openGroup();
    void closeGroup();
    [[nodiscard]] bool isTooWide(const ParagraphPiece& last) const;

    const ParagraphFrame& m_frame;
    ParagraphLook m_look;
    std::vector<ParagraphLook> m_saved;
    std::size_t m_groupsBeyond = 0; ///< open ones that are too deep to be remembered
    std::vector<ParagraphLine> m_lines;
    std::vector<double> m_heights;
    ParagraphLine m_line;
    double m_x = 0.0;
    double m_firstLeft = 0.0; ///< bearing of the line's first letter
    bool m_hasLetters = false;
    std::size_t m_break = 0; ///< how many pieces stand before where the line may be broken; 0: nowhere
};

} // namespace hostkit

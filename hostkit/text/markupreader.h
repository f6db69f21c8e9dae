// The codes within texts, read one piece after the other. What a code does to the picture of a text, and what
// stands for a fraction, is its reader's caller's.
#pragma once

#include <optional>
#include <string_view>

namespace hostkit {

/// A run of letters as they are seen, or one code.
struct MarkupPiece {
    enum class Kind {
        letters,    ///< `text` is seen; empty where a code or a control character is seen as nothing
        lineEnd,    ///< \P, \N, \X, ^J or a line feed
        groupBegin, ///< a brace: forms that are set within end with the group
        groupEnd,
        toggle, ///< `code` is L, O or K: a line below, above or through begins, or ends where there is one
        form,   ///< `code` is the letter behind the backslash, `text` what follows up to the semicolon
        stack   ///< `text` is to be read by takeStackCharacter()
    };
    Kind kind = Kind::letters;
    wchar_t code = 0;
    std::wstring_view text{};
    std::wstring_view source{}; ///< what was read; the sources of all pieces are the whole text
};

/// Reads a text of one line or of several. In both %%c, %%d and %%p are the diameter, degree and plus-minus
/// signs, %%% a per cent sign, %%nnn and \U+hhhh a character by its number, %%u, %%o and %%k switch lines
/// below, above and through. Only texts of several lines have groups and the other codes behind backslashes
/// and carets. A code that is none is letters; an argument that is not closed takes the rest of the text.
class MarkupReader {
public:
    enum class Extent { line, paragraphs };

    /// Reads where the text stands: it must outlive the reader.
    MarkupReader(std::wstring_view text, Extent extent)
        : m_rest(text)
        , m_extent(extent) {}
    MarkupReader(const MarkupReader&) = delete;
    MarkupReader& operator=(const MarkupReader&) = delete;

    /// Nothing at the text's end. The text of a piece is good until the next call.
    std::optional<MarkupPiece> next();

private:
    [[nodiscard]] MarkupPiece letters(std::size_t length, std::wstring_view seen) const;
    [[nodiscard]] MarkupPiece character(std::size_t length, wchar_t seen);
    [[nodiscard]] MarkupPiece code(std::size_t length, MarkupPiece::Kind kind, wchar_t letter = 0) const;
    [[nodiscard]] MarkupPiece codeWithArgument(std::size_t end, MarkupPiece::Kind kind) const;
    [[nodiscard]] MarkupPiece characterByNumber();
    [[nodiscard]] std::optional<MarkupPiece> plainLetters() const;
    [[nodiscard]] std::optional<MarkupPiece> percentCode();
    [[nodiscard]] std::optional<MarkupPiece> hexadecimalCharacter();
    [[nodiscard]] MarkupPiece paragraphPiece();
    [[nodiscard]] MarkupPiece backslashCode(wchar_t letter);
    [[nodiscard]] MarkupPiece caretCode(wchar_t letter) const;
    [[nodiscard]] std::size_t endOfStack() const;

    std::wstring_view m_rest;
    Extent m_extent;
    wchar_t m_character = 0;
};

/// A character of a stacked fraction; `/`, `#` and `^` divide the upper from the lower part.
struct StackCharacter {
    wchar_t character;
    bool isDivider;
};

/// Takes the first character off the text of a stack, which must have one; behind a backslash it divides
/// nothing.
StackCharacter takeStackCharacter(std::wstring_view& stack);

/// The letter behind the q in the argument of \p, which asks for an alignment: l, c, r, j or d; 0 for none.
wchar_t alignmentAskedBy(std::wstring_view paragraphForm);

} // namespace hostkit

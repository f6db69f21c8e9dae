// Command input: the words of a command's line, quotes, and asking the user for more; leaves out picking.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

/// Where a command's answers come from when the words of its line are used up.
enum class MoreInput {
    none, ///< a line that stands by itself, of a script or a pipe: every further answer is Enter
    ask,  ///< a person sits there: the port asks
};

/// One answer to a question of a command.
struct Answer {
    enum class Kind { word, enter, cancelled, end };
    Kind kind = Kind::end;
    std::wstring text{};
};

/// The line that a running command reads from, word by word. Words stand between blanks and tabs; a word in
/// quotation marks may hold blanks, and a quotation mark written twice within it stands for one. A mark that
/// is never closed takes all to the end of the line, and isUnclosed() tells.
class CommandInput {
public:
    CommandInput(std::wstring_view line, MoreInput more)
        : m_line(line)
        , m_more(more) {}

    /// The next word, else what MoreInput says. wholeLine takes all that is left of the line as one answer,
    /// for texts with blanks, unless it begins with a quotation mark.
    Answer next(std::wstring_view prompt, bool wholeLine);
    /// The same without asking: the next word, or nothing left.
    bool nextWord(std::wstring& word, bool wholeLine = false);
    /// The latest word began with a quotation mark that was not closed: nobody can tell where it should end.
    bool isUnclosed() const { return m_isUnclosed; }
    /// What is left of the line, without the blanks in front.
    std::wstring_view rest() const;
    /// Takes so many characters of what is left as read.
    void skip(std::size_t characters);
    MoreInput more() const { return m_more; }

private:
    void skipBlanks();

    std::wstring m_line;
    std::size_t m_position = 0;
    MoreInput m_more;
    bool m_isUnclosed = false;
    int m_enters = 0; // answered since the line was used up
};

/// The sentence about a word that isUnclosed() told of.
std::wstring unclosedMark(std::wstring_view word);

/// A word as it has to be written in a line to be read back as one.
std::wstring quotedWord(std::wstring_view word);

} // namespace hostkit

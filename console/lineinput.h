#pragma once

#include <string>

/// How a request for a typed line ended: escape is a line that is the Escape key alone, cancelled is Ctrl-C
/// or the system's request to end.
enum class Typed { line, escape, cancelled, end };

/// Waits until standard input has a byte or is at its end. False when a wish to stop comes first.
bool waitForInput();

/// Standard input line by line, as bytes.
class LineInput {
public:
    /// The next line, without its end. A line of a megabyte or more comes in pieces. Only a terminal has an
    /// Escape key, and only there may more follow behind an end (Ctrl-D).
    Typed read(std::string& line);

private:
    bool fill();

    std::string m_held;
    bool m_isAtEnd = false;
};

// Group reader: splitting a text drawing into groups of code and value; leaves out what the groups mean.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace hostkit {

/// One group as it stands in the file: the code, and the value's bytes without the line end.
struct RawGroup {
    std::string_view value;
    const char* start = nullptr; ///< of the line with the code
    int code = 0;

    /// Also with blanks around, as some writers leave them behind keywords.
    bool is(int wantedCode, std::string_view wantedValue) const;
};

enum class ScanResult : unsigned char {
    kGroup,
    kEnd,          ///< nothing but blanks is left
    kBadCode,      ///< the line is not a group code
    kMissingValue, ///< the file ends behind a group code
};

/// Walks the groups of a drawing in memory. Both line ends, blanks around codes, and a last line without an
/// end are accepted. Never allocates; the groups refer to the bytes, which must outlive them.
class GroupScanner {
public:
    /// From an offset on, where a group begins.
    explicit GroupScanner(std::string_view bytes, std::size_t offset = 0)
        : m_begin(bytes.data())
        , m_position(bytes.data() + offset)
        , m_end(bytes.data() + bytes.size()) {}

    ScanResult next(RawGroup& group);
    /// Goes back to a group that next() gave.
    void returnTo(const RawGroup& group) { m_position = group.start; }
    const char* position() const { return m_position; }
    std::size_t offset() const { return static_cast<std::size_t>(m_position - m_begin); }
    std::size_t offsetOf(const char* place) const { return static_cast<std::size_t>(place - m_begin); }

private:
    std::string_view nextLine();
    bool takeUsualCode(int& code);

    const char* m_begin;
    const char* m_position;
    const char* m_end;
};

/// Where the first group begins: behind a byte order mark and blank lines, if there are such.
std::size_t startOfGroups(std::string_view bytes);

/// The number of the line that holds the byte, counted from 1. Walks the bytes before it: for messages only.
std::size_t lineNumberAt(std::string_view bytes, std::size_t offset);

// Values. Blanks around a number are allowed, anything else beside it is not: the result is then nothing.

/// Finite numbers only.
std::optional<double> realFromText(std::string_view text);
/// A real without fraction, as some writers put it ("1.0"), is accepted too.
std::optional<std::int64_t> integerFromText(std::string_view text);
/// Up to 16 hexadecimal digits; "0" is the null handle.
std::optional<std::uint64_t> handleFromText(std::string_view text);
std::string_view withoutBlanks(std::string_view text);

} // namespace hostkit

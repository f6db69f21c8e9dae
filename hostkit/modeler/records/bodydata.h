// Body data of drawings as a list of records, text and binary twin alike; leaves out what the records mean.
#pragma once

#include "gepnt3d.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit::modeler {

/// The two codings of one list of records.
enum class BodyForm : std::uint8_t { text, binary };

struct BodyRecord {
    std::string name;        ///< "plane-surface"
    std::string_view fields; ///< all behind the name, without the end sign
};

/// Records in the order of the data: a pointer counts them from 0. The views point into the bytes that were
/// read.
struct BodyRecords {
    BodyForm form = BodyForm::text;
    int version = 0;
    std::vector<BodyRecord> records;
    std::size_t end = 0;     ///< where the last record ends in the bytes
    bool hasHistory = false; ///< states before the present one follow
    std::string fault;       ///< why there are no records, in words
};

/// Reads the records of text (lines as they stand when their scrambling is undone) or of the binary twin,
/// whichever it is. Nothing of the data is believed further than bytes follow. Reads as far as the end words,
/// as the counted records or as the data go. On a fault `fault` says which, and the list is empty.
[[nodiscard]] BodyRecords readBodyRecords(std::string_view bytes);

/// The map of the characters 0x21 to 0x7E that text data in drawings are written with; it is its own inverse.
void scramble(std::string& line);

/// The fields of one record, in order. A field that is not of the kind asked for makes the list not good; it
/// then gives zeros.
class BodyFields {
public:
    /// Stands behind the attribute pointer, the id, and with `hasPattern` the pattern pointer that the
    /// version has.
    BodyFields(const BodyRecords& records, const BodyRecord& record, bool hasPattern);

    [[nodiscard]] bool isGood() const { return m_isGood; }
    [[nodiscard]] bool isAtEnd();
    [[nodiscard]] bool isAtPointer();
    [[nodiscard]] bool isAtNumber();

    std::int64_t pointer(); ///< -1 for null
    double real();
    /// One of a pair of words, or a digit; the second one is true.
    bool logical();
    AcGePoint3d point();
    AcGeVector3d vector();
    /// Two ends, each infinite or a number, which nobody asks for.
    void skipInterval();
    /// Some writers put a whole transform into one string: its words are the fields from here on.
    void enterLongString();
    /// The text of a string as it stands; empty where there is none.
    std::string_view string();

private:
    bool next();
    double fail() {
        m_isGood = false;
        return 0.0;
    }

    std::string_view m_rest;
    BodyForm m_form;
    bool m_isGood = true;
    bool m_isPeeked = false;
    // The token at hand: of text its word, of the binary twin its tag and bytes.
    std::string_view m_token;
    std::uint8_t m_tag = 0;
    int m_coordinate = 0; // of a binary point, those that were given
};

} // namespace hostkit::modeler

// Transcripts of one form's records, made ready for use in both directions.
#pragma once

#include "layoutexpression.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

struct RecordLayout;

/// How a value is held, by the code of its field.
enum class ValueKind : std::uint8_t {
    none, ///< no field: a name of the transcript's own, a number
    whole,
    real,
    text,
    bytes,
    color,
    reference,
};

/// One line of a transcript, without those of other forms; parts stand where they are used.
struct TranscriptLine {
    enum class Kind : std::uint8_t {
        mark,
        fixed,
        field,
        bits,
        computed,
        read,
        write,
        condition,
        otherwise,
        loop
    };
    enum class Conversion : std::uint8_t {
        none,
        degrees,
        name,
        arrow,
        color,
        indexColor,
        layerColor,
        longColor,
        weight,
        pieces,
        digits,
        julian,
        native
    };
    enum class Presence : std::uint8_t { asItIs, unlessStandard, always };

    struct Part {
        std::uint16_t slot = 0;
        ValueKind kind = ValueKind::none;
        std::uint8_t ordinates = 1;
        bool isElement = false;     ///< of an array, at INDEX
        bool isAll = false;         ///< of an array
        std::uint16_t loopSlot = 0; ///< of a field in the pass at INDEX of that loop; 0: of none
        std::int64_t mask = 1;      ///< among bits
        bool isInverted = false;    ///< among bits
    };

    Kind kind = Kind::field;
    Conversion conversion = Conversion::none;
    Presence presence = Presence::asItIs;
    bool isForwardsAlone = false;  ///< its condition; of a block, all that is in it
    bool isForNew = false;         ///< written where no record is changed
    bool isStrict = false;         ///< of a loop: a pass begins only at the next group
    bool repeatsFirstCode = false; ///< a loop whose passes have more than one group of its first code
    short code = 0;
    short otherCode = 0;         ///< of pieces; of a loop, its first code, of which `text` is the value
    std::uint16_t slot = 0;      ///< of a computed, read or written name; of a loop, of the layout's loop
    std::uint16_t countSlot = 0; ///< of a loop that is counted by a field
    bool hasLayoutLoop = false;
    std::uint16_t end = 0; ///< of a block: the line behind it
    std::vector<Part> parts;
    LayoutExpression condition, expression;
    std::vector<double> standard;
    std::string text;  ///< a mark, a fixed value, a native word, a standard text
    std::string table; ///< the kind of names
    bool hasStandardText = false;
};

struct Transcript {
    /// A group that a new record must have, or must not have, of that value or of any.
    struct Need {
        short code = 0;
        bool isBarred = false;
        std::string value;
    };

    std::string recordName; ///< in the exchange form
    std::vector<TranscriptLine> lines;
    std::vector<Need> needs;
    bool canBeNew = true; ///< the groups tell enough for a record where none is changed
};

/// False where the layout's kind has none. Adds the names of the transcript to the layout's slots.
[[nodiscard]] bool compileTranscript(int form, RecordLayout& layout, Transcript& transcript);

[[nodiscard]] ValueKind valueKindOf(std::uint8_t fieldCode);

} // namespace hostkit

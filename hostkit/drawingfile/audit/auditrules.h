// Check of a drawing, what it knows of records: the class marks and groups of the published kinds; leaves out
// kinds that have no entry, of which only what all records share is checked. Written for the check alone,
// apart from the tables by which drawings are read and written.
#pragma once

#include <array>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace hostkit {

enum class AuditTable : unsigned char {
    kNone,
    kLayer,
    kLinetype,
    kStyle,
    kDimStyle,
    kBlock,
    kApplication,
    kUcs,
    kView,
    kOther
};

/// What a value has to be beside its syntax.
enum class AuditLimit : unsigned char {
    kNone,
    kColor,         ///< 0 to 256
    kLayerColor,    ///< -255 to 255, not 0
    kTrueColor,     ///< 24 bits
    kLineweight,    ///< of the list
    kPositive,      ///< above 0
    kNotNegative,   ///< 0 or above
    kNotZero,       ///< a scale factor
    kRatio,         ///< of an ellipse's axes: 0 to 1, without 0
    kNotZeroVector, ///< a direction
};

struct AuditGroupRule {
    short code = 0;
    short counted = 0; ///< the group tells how often this code stands in the part; 0 where it tells nothing
    bool isPoint = false;
    bool isFlat = false; ///< a point without a third coordinate
    bool mayRepeat = false;
    bool isRequired = false;
    AuditLimit limit = AuditLimit::kNone;
    AuditTable table = AuditTable::kNone; ///< the value is the name of a record there
    std::string_view target;              ///< the value is the handle of a record of this type; empty for any
};

/// The groups that may follow a class mark.
struct AuditPart {
    static constexpr int codeLimit = 512;

    std::string_view mark;
    std::vector<AuditGroupRule> rules;
    std::array<unsigned char, codeLimit> places{}; ///< by code: one more than the rule's place, 0 for none

    const AuditGroupRule* find(int code) const {
        if (code < 0 || code >= codeLimit) return nullptr;
        const unsigned char place = places[static_cast<std::size_t>(code)];
        return place == 0 ? nullptr : &rules[place - 1U];
    }
};

struct AuditMark {
    std::string_view name;
    const AuditPart* part = nullptr; ///< null where any group may follow
    bool isOptional = false;
};

struct AuditKind {
    std::string_view name;
    int since = 0; ///< the number of the first form that has the kind
    bool isEntity = false;
    /// The sequences of marks that a record may have, the shared ones in front among them.
    std::vector<std::vector<AuditMark>> variants;
    /// For records of forms without marks: all groups of all variants; null where any may stand.
    AuditPart unmarked;
    bool isAnyAllowed = false; ///< unmarked says nothing
};

/// Null for a kind without an entry. What is returned lives as long as the program.
const AuditKind* findAuditKind(std::string_view type);
/// The part that all entities begin with.
const AuditPart& auditEntityPart();

} // namespace hostkit

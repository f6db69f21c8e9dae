// The layouts of one form's records, made ready for reading.
#pragma once

#include "drawingversion.h"
#include "layoutexpression.h"
#include "transcript.h"

#include <map>
#include <memory>
#include <string>

namespace hostkit {

enum class FieldCode : std::uint8_t {
    bit,
    twoBits,
    rawByte,
    rawShort,
    rawLong,
    rawLongLong,
    rawDouble,
    bitShort,
    bitLong,
    bitLongLong,
    bitDouble,
    thickness,
    direction,
    bitPoint2,
    bitPoint3,
    rawPoint2,
    rawPoint3,
    standardDouble,
    standardPoint2,
    standardPoint3,
    standardChain,
    text,
    color,
    longColor,
    entityColor,
    reference,
    ownHandle,
    extendedData,
    bytes,
    zeroEnded,
    bodyData,
    references,
    opaque,
    tooDeep ///< a part within itself, deeper than any drawing has it
};

/// One line of a layout, without those of other forms; parts stand where they are used.
struct LayoutStep {
    enum class Kind : std::uint8_t { field, let, condition, otherwise, loop, whilst };

    Kind kind = Kind::field;
    FieldCode code = FieldCode::bit;
    std::uint8_t referenceCode =
        0; ///< of a reference: 2 soft owner, 3 hard owner, 4 soft pointer, 5 hard pointer
    bool mayBeRelative = false; ///< a reference told by its distance where that is the smaller number
    std::uint16_t slot = 0;     ///< the place of its value; of a point the first of three
    std::uint16_t end = 0;      ///< of a block: the step behind it
    LayoutExpression condition; ///< of a field that may be missing, of a block, of a let: its value
    LayoutExpression count;     ///< of a field that repeats
    std::vector<LayoutExpression> standard; ///< of fields that are told by what they differ in
    std::string name;

    /// Its values are elements of an array: it repeats, or is a list of another kind.
    [[nodiscard]] bool isArray() const {
        return (!count.empty() && code != FieldCode::bytes) || code == FieldCode::references ||
               code == FieldCode::extendedData;
    }
};

/// The layout of one kind of record.
struct RecordLayout {
    std::string name;
    unsigned number = 0; ///< 0 where the drawing's classes number it
    bool isEntity = false;
    std::vector<LayoutStep> steps;
    std::uint16_t slots = 0; ///< how many values there are
    std::uint16_t loopSlot = 0,
                  colorReferenceSlot = 0; ///< INDEX, and color_ref which an entity's colour sets
    struct NameHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view name) const { return std::hash<std::string_view>()(name); }
    };
    std::unordered_map<std::string, std::uint16_t, NameHash, std::equal_to<>>
        slotNames; ///< of fields; a loop's is "for " and its count

    /// By slot: what a field of that name is, and which field counts it.
    struct SlotField {
        bool isField = false;
        FieldCode code = FieldCode::bit;
        std::uint16_t countSlot = 0; ///< 0: none, or more than a name
    };
    std::vector<SlotField> slotFields;
    /// Of the fields that every record has, so that nobody looks for them record by record.
    struct CommonSlots {
        std::uint16_t handle = 0, reactorCount = 0, noExtension = 0, extensionDictionary = 0, reactors = 0,
                      owner = 0, extendedData = 0;
        std::uint16_t mode = 0, noLinks = 0, previous = 0, next = 0, materialRule = 0, plotStyleRule = 0,
                      hasStyle = 0, hasPicture = 0, pictureSize = 0, hasAttributes = 0;
        std::uint16_t layer = 0, linetypeRule = 0, linetype = 0, material = 0, color = 0, colorBook = 0;
        std::uint16_t weight = 0, scale = 0, hidden = 0, picture = 0, plotStyle = 0, shadow = 0, style = 0;
    };
    CommonSlots common; ///< 0 where the record has no such field
    bool hasTranscript = false;
    Transcript transcript;

    void findCommonSlots();
    std::uint16_t addSlot(std::string_view field);
    SlotField& fieldAt(std::uint16_t slot);
    [[nodiscard]] bool findSlot(std::string_view field, std::uint16_t& slot) const;
};

/// All layouts of one form. They are made once for each form and live as long as the program.
class RecordLayouts {
public:
    [[nodiscard]] static const RecordLayouts& of(DrawingVersion version);

    /// Null where the number, or the class name, has none. Class names that stand for a fixed number find its
    /// layout.
    [[nodiscard]] const RecordLayout* byNumber(unsigned number) const;
    [[nodiscard]] const RecordLayout* byName(std::string_view name) const;
    /// The common fields alone, for records that have no layout: their handle, extended data and references
    /// to owner and reactors.
    [[nodiscard]] const RecordLayout& commonEntity() const { return *m_commonEntity; }
    [[nodiscard]] const RecordLayout& commonObject() const { return *m_commonObject; }

private:
    explicit RecordLayouts(DrawingVersion version);

    std::map<std::string, std::unique_ptr<RecordLayout>, std::less<>> m_byName;
    std::map<unsigned, const RecordLayout*> m_byNumber;
    const RecordLayout *m_commonEntity = nullptr, *m_commonObject = nullptr;
};

} // namespace hostkit

// The values of one record of a binary drawing, by the names of its layout.
#pragma once

#include "bitreader.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace hostkit {

/// A text or a run of bytes: as bits of the record that was read, or as bytes elsewhere, that must outlive
/// it.
struct ValueRun {
    const char* bytes = nullptr; ///< null: the bits
    std::uint64_t firstBit = 0;
    std::uint64_t count = 0; ///< characters as they are coded, or bytes
};

struct ValueColor {
    std::int32_t index = 256; ///< 0 by block, 256 by layer
    std::uint32_t value = 0;  ///< of the long form: its method in the highest byte
    bool hasValue = false;    ///< the long form
    bool isOfBook = false;    ///< of an entity: a reference tells the colour
    bool hasTransparency = false;
    std::uint32_t transparency = 0;
};

/// One value. Which member counts is told by the code of its field.
union RecordValue {
    std::int64_t whole;
    double real[3];
    ValueRun run;
    ValueColor color;
    BinaryHandle reference;

    RecordValue()
        : real{} {}
};

/// The values of a record, or of one pass of a loop in it. Their places in a record are slots, which the
/// record's layout names; names of a colour are at the two slots behind its own. Used again from one record
/// to the next without giving its memory back.
class RecordScope {
public:
    struct Loop {
        std::uint16_t slot = 0; ///< of its count's text
        std::uint32_t count = 0;
        std::vector<std::unique_ptr<RecordScope>> passes; ///< the first `count` of them
    };
    struct Array {
        std::uint16_t slot = 0;
        std::vector<RecordValue> values;
    };

    void clear();
    /// The value of that slot, nothing in it any more.
    RecordValue& set(std::uint16_t slot);
    void set(std::uint16_t slot, const RecordValue& value) { set(slot) = value; }
    /// Behind all that are there: for what is known to be new.
    RecordValue& add(std::uint16_t slot);
    [[nodiscard]] const RecordValue* find(std::uint16_t slot) const;
    /// The array of that slot; made where there is none.
    std::vector<RecordValue>& array(std::uint16_t slot);
    [[nodiscard]] const std::vector<RecordValue>* findArray(std::uint16_t slot) const;
    /// The loop of that slot; made where there is none.
    Loop& loop(std::uint16_t slot);
    [[nodiscard]] const Loop* findLoop(std::uint16_t slot) const;
    /// A new last pass.
    static RecordScope& addPass(Loop& loop);

    struct Item {
        std::uint16_t slot = 0;
        RecordValue value;
    };
    [[nodiscard]] const std::vector<Item>& items() const { return m_items; }

private:
    [[nodiscard]] bool mayHave(std::uint16_t slot) const {
        return slot >= 64 * m_slots.size() || (m_slots[slot / 64] >> (slot % 64) & 1);
    }

    std::vector<Item> m_items;
    std::array<std::uint64_t, 8> m_slots{};       ///< one bit for each of the first that has a value
    std::vector<std::unique_ptr<Array>> m_arrays; // the first m_arrayCount of them
    std::vector<std::unique_ptr<Loop>> m_loops;   // the first m_loopCount of them
    std::size_t m_arrayCount = 0, m_loopCount = 0;
};

} // namespace hostkit

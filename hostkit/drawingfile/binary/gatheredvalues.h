// The groups of one record that are taken one by one, and the values that they become.
#pragma once

#include "groupcodes.h"
#include "recordgathering.h"
#include "transcriptnatives.h"

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

/// What all that gathers works on. It gives native words what they read.
class GatheredValues : public NativeInput {
public:
    int form() const override { return m_form; }
    unsigned codePage() const override { return m_codePage; }
    const RecordNames& names() const override { return m_names; }
    const RecordGroup* take(int code) override { return takeGroup(code); }
    std::string takePieces(int code, int pieceCode) override;
    std::vector<const RecordGroup*> takeAll() override;
    void setBytes(std::string_view name, std::string bytes) override;
    void setNumber(std::string_view name, double number) override;
    void setPoint(std::string_view name, const double (&ordinates)[3]) override;
    void addReference(std::string_view name, std::uint64_t handle, unsigned code) override;
    RecordScope& scope() override { return *m_scope; }
    RecordScope& recordScope() override { return *m_outermost; }
    const RecordScope* original() const override { return m_original ? &m_original->values : nullptr; }
    const RecordReading* originalReading() const override { return m_originalReading; }
    std::uint16_t slotOf(std::string_view name) const override;
    ValueRun kept(std::string bytes) override;

    /// The record that is changed; null for a new one.
    void setOriginal(const RecordReading* reading, const RecordFields* record) {
        m_originalReading = reading;
        m_original = record;
    }

protected:
    struct Region {
        std::size_t begin = 0, end = 0;
    };

    GatheredValues(DrawingVersion version, unsigned codePage, const RecordNames& names)
        : m_form(static_cast<int>(version) % 100)
        , m_codePage(codePage)
        , m_names(names) {}
    ~GatheredValues() = default;

    void begin(DrawingRecord& record, const RecordLayout& layout, RecordScope& values);

    // Values

    [[nodiscard]] const RecordLayout::SlotField& fieldOf(std::uint16_t slot) const;
    [[nodiscard]] ValueKind kindOf(std::uint16_t slot) const;
    /// Numbers of the present pass as they were, for expressions.
    void loadBefore();
    /// The value of a slot in the present pass; what stood there goes.
    RecordValue& set(std::uint16_t slot);
    void setValue(std::uint16_t slot, ValueKind kind, double number);
    /// Where the value of a part of a line goes: a field, an element of an array, a field of another loop.
    RecordValue& place(const TranscriptLine::Part& part);
    void put(const TranscriptLine::Part& part, const double* values, std::size_t count);
    [[nodiscard]] std::size_t currentIndex() const {
        return static_cast<std::size_t>(m_values[m_layout->loopSlot]);
    }

    // Groups, those of the present region that nothing has taken

    RecordGroup* takeGroup(int code);
    /// The region's end where there is none. Of any value where none is told.
    [[nodiscard]] std::size_t findGroup(int code, std::size_t from, std::string_view value = {}) const;
    [[nodiscard]] std::size_t firstLeft(std::size_t from) const;
    /// By the kind of its code; 0 where it is none.
    [[nodiscard]] static double numberOf(const RecordGroup& group);
    ValueRun textRun(std::string_view value);

    int m_form;
    unsigned m_codePage;
    const RecordNames& m_names;
    const RecordFields* m_original = nullptr;
    const RecordReading* m_originalReading = nullptr;
    const RecordScope* m_before = nullptr; ///< the present pass in the original
    DrawingRecord* m_record = nullptr;
    const RecordLayout* m_layout = nullptr;
    Region m_region;
    RecordScope* m_outermost = nullptr;
    RecordScope* m_scope = nullptr;  ///< of the present pass
    RecordScope* m_arrays = nullptr; ///< outside of the innermost loop: its arrays have an element for a pass
    std::vector<double> m_values;
    std::vector<char> m_isSet;   ///< by slot: a group or a line has told it
    std::vector<char> m_isTaken; ///< by group

private:
    std::deque<std::string> m_texts;
};

} // namespace hostkit

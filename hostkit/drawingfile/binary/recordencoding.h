// Records of binary drawings from their values.
#pragma once

#include "bitwriter.h"
#include "recordfields.h"

#include <cstdint>
#include <unordered_set>
#include <vector>

namespace hostkit {

/// Writes records of one form; used again from one record to the next.
class RecordEncoding {
public:
    explicit RecordEncoding(DrawingVersion version);

    /// A record that is changed: what `values` lack is as it was, references that still lead where they led
    /// keep their codes, and a record without layout keeps its bits behind the common fields. Null: a new
    /// one. Both must outlive what is written.
    void setOriginal(const RecordReading* reading, const RecordFields* record);
    /// Appends the record, from its size to its checksum, to `bytes`. False, with none appended, where the
    /// values cannot be a record: a loop has other passes than its count says.
    [[nodiscard]] bool append(const RecordLayout& layout, unsigned type, std::uint64_t handle,
                              const RecordScope& values, std::vector<std::uint8_t>& bytes);
    /// References to these records, which the drawing will not have, lead nowhere. The set must outlive what
    /// is written.
    void leadNowhere(const std::unordered_set<std::uint64_t>& gone) { m_gone = &gone; }
    /// From now on references are written among the data, as in the header of the first forms.
    void putReferencesAmongData() { m_hasOneStream = true; }
    /// Runs the layout alone, for what is no record: the three streams as bits.
    [[nodiscard]] bool run(const RecordLayout& layout, std::uint64_t handle, const RecordScope& values);
    /// The last record has less of a text than the values: a text has room for 65535 characters.
    [[nodiscard]] bool hasShortened() const { return m_hasShortened; }
    [[nodiscard]] const BitWriter& data() const { return m_data; }
    [[nodiscard]] const BitWriter& text() const { return m_text; }
    [[nodiscard]] const BitWriter& references() const { return m_references; }

private:
    friend class FieldWriting;

    void appendOpaque();
    void finish(std::vector<std::uint8_t>& bytes);

    int m_form;
    bool m_hasOneStream = false;
    bool m_hasShortened = false;
    const RecordReading* m_reading = nullptr;
    const RecordFields* m_original = nullptr;
    const std::unordered_set<std::uint64_t>* m_gone = nullptr;
    BitWriter m_data, m_text, m_references;
    std::size_t m_sizeAt = 0; ///< of the size of the data in bits, up to 2007
    std::vector<double> m_values;
};

} // namespace hostkit

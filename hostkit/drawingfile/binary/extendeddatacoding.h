// Extended data of binary records as groups, and groups as its bytes.
#pragma once

#include "drawingrecord.h"
#include "recordtranscription.h"
#include "transcriptnatives.h"

#include <span>
#include <string>
#include <vector>

namespace hostkit {

/// Writes the items of one application, which the run holds as bits, as groups; up to the first that is none.
void writeExtendedItems(const ValueRun& items, NativeOutput& output);

/// Makes the bytes of one form; used again from one record to the next.
class ExtendedDataBytes {
public:
    /// `codePage` is the number of the binary form, which texts up to 2004 tell.
    ExtendedDataBytes(int form, unsigned codePage, const RecordNames& names)
        : m_form(form)
        , m_codePage(codePage)
        , m_names(names) {}

    /// Appends the item at the place, which moves to its last group: points have three.
    void append(std::span<const RecordGroup> groups, std::size_t& at, std::string& bytes);

private:
    void appendText(std::string_view value, std::string& bytes);

    int m_form;
    unsigned m_codePage;
    const RecordNames& m_names;
    std::vector<std::uint16_t> m_units;
};

} // namespace hostkit

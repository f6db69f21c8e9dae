// What holds of a filter's text whatever stands in it; asked by the fuzz target and, of its corpus, by the
// tests.
#pragma once

#include "filtertext.h"
#include "selectionfilter.h"
#include "textencoding.h"

#include "dbdatabase.h"

#include <string>
#include <string_view>

namespace filterinvariants {

/// Empty, or what does not hold: a text is read into a list that is written and read again as the same one,
/// and that compiles or is refused with a reason, or it gives a problem within the text.
inline std::string faultOf(std::string_view bytes, AcDbDatabase& drawing) {
    const std::wstring text = hostkit::wideFromUtf8(bytes);
    const hostkit::FilterReading reading = hostkit::readFilterText(text);
    if (!reading.isRead())
        return reading.list || reading.position > text.size() ? "a problem beside the text" : "";
    const std::wstring written = hostkit::writeFilterText(reading.list.get());
    const hostkit::FilterReading again = hostkit::readFilterText(written);
    if (!again.isRead() || hostkit::writeFilterText(again.list.get()) != written)
        return "what is written reads as another list";
    std::wstring reason;
    const auto filter = hostkit::SelectionFilter::compile(reading.list.get(), drawing, &reason);
    return filter.has_value() == reason.empty() ? "" : "a refusal without a reason";
}

} // namespace filterinvariants

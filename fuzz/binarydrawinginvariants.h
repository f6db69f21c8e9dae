// What holds of binary drawings whatever stands in them; asked by the fuzz target and by the tests.
#pragma once

#include "binarytranscription.h"
#include "drawingreader.h"

#include "dbmain.h"

#include <algorithm>
#include <span>
#include <string>
#include <string_view>

namespace binarydrawinginvariants {

/// Sections without a container around them: "SECTIONS", the number of the form as two digits, then each
/// section's name up to a zero, its size in four bytes, and its bytes. So the sections can be changed without
/// packing them again. False for bytes that do not begin so.
inline bool takeSections(std::span<const std::uint8_t> data, hostkit::BinaryContainer& container) {
    constexpr std::string_view mark = "SECTIONS";
    if (data.size() < mark.size() + 2 || !std::equal(mark.begin(), mark.end(), data.begin())) return false;
    const int form = (data[mark.size()] - '0') * 10 + data[mark.size() + 1] - '0';
    for (const int known : {15, 18, 21, 24, 27, 32})
        if (form >= known) container.version = static_cast<hostkit::DrawingVersion>(1000 + known);
    data = data.subspan(mark.size() + 2);
    while (!data.empty()) {
        const auto nameEnd = static_cast<std::size_t>(std::find(data.begin(), data.end(), 0) - data.begin());
        if (nameEnd + 5 > data.size()) break;
        const std::string name(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(nameEnd));
        const std::size_t size = hostkit::longAt(data, nameEnd + 1);
        const auto part = hostkit::partOf(data, nameEnd + 5, size);
        container.sections[name].assign(part.begin(), part.end());
        data = data.subspan(std::min(data.size(), nameEnd + 5 + part.size()));
    }
    return true;
}

/// As takeSections takes them.
inline std::string sectionsText(const hostkit::BinaryContainer& container) {
    std::string text = "SECTIONS" + std::to_string(static_cast<int>(container.version) % 100);
    for (const auto& [name, bytes] : container.sections) {
        text += name + '\0';
        for (int i = 0; i < 4; ++i) text += static_cast<char>(bytes.size() >> (8 * i));
        text.append(bytes.begin(), bytes.end());
    }
    return text;
}

/// Empty, or what does not hold: a drawing that opens is a text that is read to its end, of a size in
/// proportion; two threads make the same text as one; each record's part of the text begins with its group 0
/// and parts do not overlap. What is no drawing has a reason. `hasOpened` tells which it was.
inline std::string faultOf(std::span<const std::uint8_t> data, bool* hasOpened = nullptr) {
    using namespace hostkit;
    std::string text, again;
    TranscribedDrawing drawing, second;
    const bool isSections = takeSections(data, drawing.container);
    if (isSections) {
        takeSections(data, second.container);
        textFromSections(text, drawing, 1);
        textFromSections(again, second, 2);
    } else {
        const bool isOpen = textFromDrawing(data, text, drawing, 1);
        if (hasOpened) *hasOpened = isOpen;
        if (!isOpen) return drawing.container.faults.empty() ? "neither a drawing nor a reason" : "";
        if (!textFromDrawing(data, again, second, 2)) return "two threads open what one does not";
    }
    if (hasOpened) *hasOpened = true;
    if (text != again) return "two threads make another text";
    std::size_t told = 0;
    for (const TranscribedRecord& record : drawing.records) {
        if (record.length == 0) continue;
        told += record.length;
        if (text.compare(record.text, 3, "  0") != 0)
            return "a record's text does not begin with its group 0";
        if (record.text + record.length > text.size()) return "a record's text lies past the end";
    }
    if (told > text.size()) return "records' texts overlap";
    ReadReport report;
    ReadOptions options;
    options.tellPort = false;
    AcDbDatabase database(false, true);
    const Acad::ErrorStatus status = readDrawingFromMemory(database, text, L"drawing", &report, options);
    // A block may be damaged so that it contains itself.
    if (status == Acad::eOk || status == Acad::eCyclicReference) return {};
    const std::wstring message = report.fatalMessage();
    return "the text cannot be read: " + std::string(message.begin(), message.end());
}

} // namespace binarydrawinginvariants

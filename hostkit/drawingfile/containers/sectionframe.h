// The frame of the sections for header variables and classes: marks, size, checksum, and streams within.
#pragma once

#include "binarycontainer.h"
#include "bitwriter.h"

#include <array>

namespace hostkit {

using SectionMark = std::array<std::uint8_t, 16>; ///< its end is marked by the complement

constexpr SectionMark headerMark{0xCF, 0x7B, 0x1F, 0x23, 0xFD, 0xDE, 0x38, 0xA9,
                                 0x5F, 0x7C, 0x68, 0xB8, 0x4E, 0x6D, 0x33, 0x5F},
    classesMark{0x8D, 0xA1, 0xC4, 0xB8, 0xC4, 0xA9, 0xF8, 0xC5,
                0xC0, 0xDC, 0xF4, 0x5F, 0xE7, 0xCF, 0xB6, 0x8A},
    previewMark{0x1F, 0x25, 0x6D, 0x07, 0xD4, 0x36, 0x28, 0x28,
                0x9D, 0x57, 0xCA, 0x3F, 0x9D, 0x44, 0x10, 0x2B},
    secondHeaderMark{0xD4, 0x7B, 0x21, 0xCE, 0x28, 0x93, 0x9F, 0xBF,
                     0x53, 0x24, 0x40, 0x09, 0x12, 0x3C, 0xAA, 0x01};

void appendMark(std::vector<std::uint8_t>& bytes, const SectionMark& mark);
void appendEndMark(std::vector<std::uint8_t>& bytes, const SectionMark& mark);

/// Places of a framed section's streams, in bits. Up to 2004 there is one stream: texts and references are
/// empty, and stand where the data end.
struct FramedStreams {
    std::size_t dataBegin = 0, dataEnd = 0, textBegin = 0, textEnd = 0, referencesBegin = 0, end = 0;
    [[nodiscard]] bool found() const { return end > 0; }
};

/// Nothing found where the section is missing or its sizes lead out of it; that, and a wrong mark or
/// checksum, is told in the container.
[[nodiscard]] FramedStreams findStreams(BinaryContainer& container, std::string_view section,
                                        const SectionMark& mark);

/// The section's bytes, from its mark to its end mark. `data`, `text` and `references` become one after the
/// other; `behind` follows, and 1-bits up to a full byte.
[[nodiscard]] std::vector<std::uint8_t> framedSection(const BinaryContainer& form, const SectionMark& mark,
                                                      const BitWriter& data, const BitWriter& text,
                                                      const BitWriter& references, const BitWriter& behind);

} // namespace hostkit

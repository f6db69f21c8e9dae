// Records of enhanced metafiles: their numbers, their sizes and the layout of the header; leaves out what is
// only read.
#pragma once

#include <cstddef>
#include <cstdint>

namespace hostkit {

/// A record is its number, its size in bytes (a multiple of 4, these eight included) and its data, all of it
/// little-endian.
enum class MetafileRecord : std::uint32_t {
    header = 1,
    polygon = 3,
    polyline = 4,
    endOfFile = 14,
    setBackMode = 18,
    setTextAlign = 22,
    setTextColor = 24,
    setBackColor = 25,
    moveTo = 27,
    selectObject = 37,
    createPen = 38,
    createBrush = 39,
    deleteObject = 40,
    ellipse = 42,
    rectangle = 43,
    arc = 45,
    lineTo = 54,
    createFont = 82,
    textOut = 84,
    polygon16 = 86,
    polyline16 = 87,
};

namespace metafile {

inline constexpr std::uint32_t signature = 0x464D4520;
inline constexpr std::uint32_t version = 0x00010000;
/// A description, where there is one, stands behind these.
inline constexpr std::uint32_t headerSize = 108;
inline constexpr std::uint32_t endSize = 20;
inline constexpr std::uint32_t pointSize = 16; ///< of moveTo and lineTo
inline constexpr std::uint32_t valueSize = 12; ///< of a record of one number
inline constexpr std::uint32_t boxSize = 24;
inline constexpr std::uint32_t arcSize = 40;
inline constexpr std::uint32_t polygonStart = 28; ///< the points follow, of 8 bytes or 4
inline constexpr std::uint32_t penSize = 28;
inline constexpr std::uint32_t brushSize = 24;
inline constexpr std::uint32_t textStart = 76; ///< the characters follow, then their advances
inline constexpr std::uint32_t faceNameLength = 32;
/// The platform's form: behind the logical font three names, each as long as here, and the two numbers.
inline constexpr std::uint32_t fontSize = 368;
inline constexpr std::uint32_t fontNamesSize = 2 * (64 + 32 + 32);
inline constexpr std::uint32_t fontMark = 0x08007664;

/// Set in the number of an object of the platform's stock; others count from 1, 0 is the metafile itself.
inline constexpr std::uint32_t stockBit = 0x80000000;
/// The header has 16 bits for their number.
inline constexpr std::uint32_t lastObject = 0xFFFE;
/// The header has 32 bits for the file's size.
inline constexpr std::uint64_t largestFile = 0xFFFFFFFF;

} // namespace metafile
} // namespace hostkit

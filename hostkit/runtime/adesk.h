// Stand-in for the host's basic types. Covers the fixed-width integers and the truth value; leaves out the rest.
#pragma once

#include <cstddef>
#include <cstdint>

class Adesk {
public:
    using Int8 = std::int8_t;
    using Int16 = std::int16_t;
    using Int32 = std::int32_t;
    using Int64 = std::int64_t;
    using UInt8 = std::uint8_t;
    using UInt16 = std::uint16_t;
    using UInt32 = std::uint32_t;
    using UInt64 = std::uint64_t;
    using IntPtr = std::intptr_t;
    using UIntPtr = std::uintptr_t;
    using ULongPtr = std::uintptr_t;
    using LongPtr = std::intptr_t;
    using Boolean = bool;
    static constexpr Boolean kFalse = false;
    static constexpr Boolean kTrue = true;
};

using ACHAR = wchar_t;
using AcDbHandleValue = std::uint64_t;
using ads_real = double;
using ads_point = ads_real[3];
/// Rows of a matrix of the host.
using ads_matrix = ads_real[4][4];
/// Two words that name an entity or a selection set; what they hold is the editor's own affair.
using ads_name = std::intptr_t[2];

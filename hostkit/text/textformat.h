// Formatted wide output: flags, widths, precisions, length prefixes and all value conversions, without %n and
// positions.
#pragma once

#include <concepts>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>

namespace hostkit {

/// One argument of a formatted text with the type that its caller gave it, so that a wrong conversion never
/// reads what is not there.
struct FormatArgument {
    enum class Kind : unsigned char { none, integer, real, wide, narrow, pointer };

    FormatArgument()
        : kind(Kind::none)
        , size(0)
        , integer(0) {}
    template <class Value>
    requires std::is_integral_v<Value> || std::is_enum_v<Value> FormatArgument(Value value)
        : kind(Kind::integer)
        , size(sizeof(Value))
        , integer(static_cast<std::uint64_t>(static_cast<std::int64_t>(value))) {}
    FormatArgument(double value)
        : kind(Kind::real)
        , size(sizeof(double))
        , real(value) {}
    FormatArgument(const wchar_t* value)
        : kind(Kind::wide)
        , size(sizeof(void*))
        , wide(value) {}
    FormatArgument(const char* value)
        : kind(Kind::narrow)
        , size(sizeof(void*))
        , narrow(value) {}
    FormatArgument(const void* value)
        : kind(Kind::pointer)
        , size(sizeof(void*))
        , pointer(value) {}

    Kind kind;
    unsigned char size;
    union {
        std::uint64_t integer; // sign-extended to 64 bits
        double real;
        const wchar_t* wide;
        const char* narrow;
        const void* pointer;
    };
};

/// Fills the format's conversions from the arguments and returns the text, of any length, the same in every
/// locale.
///   %s %ls %ws      wide text          %S %hs          narrow text in the ANSI code page
///   %c %lc %wc      wide character     %C %hc          narrow character
///   %d %i %u %x %X %o                  32 bits; prefixes h, hh, I32 (16, 8, 32 bits) and l, ll, I64, I, j,
///   z, t (64 bits) %f %F %e %E %g %G %a %A            double, exponents of at least two digits %p 16
///   upper-case hexadecimal digits
///   %%              a per cent sign
/// A width or precision may be '*'. A null text is written "(null)". A conversion that is none is written
/// without its per cent sign. An argument that is missing, or that its conversion cannot show (a number as
/// text), is written "?".
std::wstring formatText(const wchar_t* format, const FormatArgument* arguments, std::size_t count);
/// The same from a variable argument list; here the caller answers for the types (a `long` for %ld).
std::wstring formatText(const wchar_t* format, va_list arguments);

} // namespace hostkit

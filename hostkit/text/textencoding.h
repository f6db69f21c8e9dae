// Code pages and UTF-8: wide text to bytes and back.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace hostkit {

// --- The ANSI code page: Windows-1252, fixed ---------------------------------------------------------------

/// The five bytes that the code page leaves undefined (81 8D 8F 90 9D) stand for the control characters of
/// the same number, both ways, so that every byte survives a round trip.
wchar_t wideFromAnsi(unsigned char byte);
std::wstring wideFromAnsi(std::string_view bytes);
/// The byte, or nothing when the character has no place in the code page.
std::optional<unsigned char> ansiFromWide(wchar_t character);
/// A character without a place becomes '?'.
std::string ansiFromWide(std::wstring_view text);

// --- UTF-8 -------------------------------------------------------------------------------------------------

struct Utf8Fault {
    std::size_t offset; // of the first byte that is part of no valid sequence
};
/// Decodes strictly: overlong forms, surrogates and values above U+10FFFF are faults. Each faulty byte
/// becomes U+FFFD and decoding goes on with the next; *fault, when given, tells of the first.
std::wstring wideFromUtf8(std::string_view bytes, std::optional<Utf8Fault>* fault = nullptr);
bool isValidUtf8(std::string_view bytes);
/// A surrogate or a value above U+10FFFF becomes U+FFFD.
std::string utf8FromWide(std::wstring_view text);
void appendUtf8(std::string& bytes, wchar_t character);

// --- Code pages that a drawing names -----------------------------------------------------------------------

enum class CodePage : unsigned short {
    thai874 = 874,
    japanese932 = 932,
    chinese936 = 936,
    korean949 = 949,
    chinese950 = 950,
    centralEurope1250 = 1250,
    cyrillic1251 = 1251,
    western1252 = 1252,
    greek1253 = 1253,
    turkish1254 = 1254,
    hebrew1255 = 1255,
    arabic1256 = 1256,
    baltic1257 = 1257,
    vietnamese1258 = 1258,
    utf8 = 65001,
};

/// From a name as drawings write it, without regard to case: "ANSI_1252", "ANSI_932", "ascii", "UTF-8", and
/// the older "dos..." and "iso8859-..." names that have an equal here. Nothing for a name that is not known.
std::optional<CodePage> codePageFromName(std::wstring_view name);
/// "ANSI_1252" and its like; "UTF-8".
std::wstring nameOfCodePage(CodePage page);
/// True where a second byte of a character may lie below 0x80, so that bytes cannot be looked at one by one.
bool isMultiByte(CodePage page);

/// A byte (or pair of bytes) that the code page leaves undefined becomes U+FFFD in the multi-byte pages and
/// the control character of the same number in the single-byte ones.
std::wstring decodeText(CodePage page, std::string_view bytes);

/// Is given each character that has no place in the code page and appends what stands for it.
using UnmappableHandler = std::function<void(std::string& bytes, wchar_t character)>;
/// Without a handler, '?' stands for such a character.
std::string encodeText(CodePage page, std::wstring_view text, const UnmappableHandler& unmappable = {});

} // namespace hostkit

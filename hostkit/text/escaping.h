// Texts and numbers as XML and JSON want them, in UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace hostkit {

// All append to the text that they are given.

/// What XML forbids inside becomes an entity; what it cannot hold at all (control characters but tab and line
/// feed, surrogates, the last two codes) becomes U+FFFD.
void appendXmlText(std::wstring_view text, std::string& xml);
/// In quotation marks, with what JSON forbids inside as escapes.
void appendJsonText(std::wstring_view text, std::string& json);
/// The shortest form that reads back to the same double; null for what is no number.
void appendJsonNumber(double value, std::string& json);

} // namespace hostkit

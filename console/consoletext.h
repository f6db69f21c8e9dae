#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Text from outside (an argument, a script): UTF-8, or Windows-1252 where the bytes are not UTF-8. A byte
/// order mark in front is dropped.
std::wstring wideFromArgument(std::string_view bytes);

/// Columns that a terminal gives the text: two for wide East Asian characters, none for combining marks.
std::size_t columnsOf(std::wstring_view text);
std::wstring padRight(std::wstring_view text, std::size_t columns);
std::wstring padLeft(std::wstring_view text, std::size_t columns);

/// Control characters, line ends among them, as blanks.
std::wstring onOneLine(std::wstring text);
/// "1 object", "2 objects"; the plural where an s does not make it.
std::wstring counted(std::size_t count, const std::wstring& one, const std::wstring& many = {});

/// The text, or where it takes more columns its beginning with "..." behind it.
std::wstring shortened(std::wstring_view text, std::size_t columns);

/// A table whose columns are as wide as their longest cell, two blanks apart. The first row is the heading
/// and is underlined. Columns whose letter in `alignment` is 'r' stand right, others left. Where a line would
/// be wider than `most`, texts of the widest left columns are shortened, to no less than eight; 0 is no
/// bound.
std::wstring formatTable(const std::vector<std::vector<std::wstring>>& rows, std::string_view alignment,
                         std::size_t most = 0);

/// The shortest text that reads back to the same double, without an exponent where that is short; "nan" and
/// "inf" as they are.
std::wstring numberText(double value);

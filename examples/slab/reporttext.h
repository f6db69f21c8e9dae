#pragma once

#include "dbhandle.h"

#include <string>
#include <vector>

// Numbers and tables of reports, the same in every locale.

/// Hexadecimal.
std::wstring handleText(AcDbHandle handle);
/// With that many decimals; what rounds to nothing has no sign. "?" for what is no number.
std::wstring fixedNumber(double value, int decimals);
/// As few digits as give the same number back.
std::wstring fullNumber(double value);
/// "Length [mm]"; "units" where the drawing has no unit. The power stands behind the unit.
std::wstring withUnit(const std::wstring& heading, const std::wstring& unit, const wchar_t* power);

using TableRow = std::vector<std::wstring>;
/// Columns as wide as their widest text, aligned left or right as 'l' and 'r' say, with a rule under the rows
/// that are named.
std::wstring alignedTable(const std::vector<TableRow>& rows, const std::string& alignment,
                          const std::vector<std::size_t>& ruled);
/// Fields with a comma, a quotation mark or a line end are quoted.
std::wstring csvLine(const TableRow& fields);
std::wstring jsonText(const std::wstring& text);
/// In full; null for what is no number.
std::wstring jsonNumber(double value);
/// The short name of a drawing's unit number; empty for none and for numbers that mean none.
std::wstring unitName(int insunits);

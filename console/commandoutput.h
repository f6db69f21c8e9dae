#pragma once

#include "dbhandle.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

class AcApDocument;

/// The current document; null, and the running command has failed, when there is none.
AcApDocument* documentOrFail();
/// Asks for the form of a report, TABLE or JSON; nothing when the command ends here, failed or stopped. Where
/// `ofSelection` is given, the word SELECTED before the form sets it.
enum class ReportForm { table, json };
std::optional<ReportForm> readReportForm(bool* ofSelection = nullptr);
/// On the command line, in a terminal no wider than that; see formatTable.
void printTable(const std::vector<std::vector<std::wstring>>& rows, std::string_view alignment);
/// Asks for a file (readOutputFile) and writes the UTF-8 text to it, or to the command line where none is
/// named.
void offerText(const std::string& text);

/// Hexadecimal; empty for the null handle.
std::wstring handleText(AcDbHandle handle);
/// "name":"text" of a JSON object.
void appendField(const char* name, std::wstring_view text, std::string& json);

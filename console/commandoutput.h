#pragma once

#include <string>
#include <string_view>
#include <vector>

class AcApDocument;

/// The current document; null, and the running command has failed, when there is none.
AcApDocument* documentOrFail();
/// On the command line; see formatTable.
void printTable(const std::vector<std::vector<std::wstring>>& rows, std::string_view alignment);
/// Writes the file in one step; false, and the running command has failed, when that cannot be done.
bool writeTextFile(const std::wstring& file, const std::string& bytes);
/// Asks for a file and writes the UTF-8 text to it, or to the command line where none is named.
void offerText(const std::string& text);

// The drawings that tests read as they stand: those of others, where they are there, and those of the
// examples.
#pragma once

#include <string>
#include <vector>

namespace drawingtest {

/// Where VEXO_DRAWINGS says, or beside the tree.
std::string drawingsFolder();
bool foldersAreMissing();
/// All of them, sorted.
std::vector<std::string> drawingFiles();
std::wstring wide(const std::string& text);

} // namespace drawingtest

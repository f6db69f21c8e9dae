// A path as the calls under test take it.
#pragma once

#include "cstring.h"

#include <filesystem>

inline CString wide(const std::filesystem::path& path) { return CString(std::wstring_view(path.wstring())); }

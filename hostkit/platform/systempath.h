// Path rules: both separators, drive letters, names of any bytes and looking a file up without regard to
// letter case; leaves out anything else.
#pragma once

#include <string>
#include <string_view>

namespace hostkit {

/// The path in the bytes of the file system. '\' and '/' both separate. "X:\rest" becomes the current port's
/// root of drive X followed by "/rest", and "X:rest" the root, a '/' and rest when that drive has a root,
/// else rest alone, relative to the current directory. What stands behind a NUL is cut off, as the system
/// would.
std::string mapPath(std::wstring_view path);

/// The same for the platform's own file functions: a relative path stands below the host's current directory,
/// where SetCurrentDirectoryW has set one. What a user names on the command line goes through mapPath, so
/// that a module that changes the directory never moves a user's files.
std::string platformPath(std::wstring_view path);
/// The host's current directory; empty while nobody has set it, which means that of the process. It belongs
/// to the current port: no host changes another's.
std::string& hostDirectory();

/// A name of the file system as wide text. Bytes that are not UTF-8, and a '\' within a name, become the
/// reserved characters U+DC00 + byte, which mapPath turns back, so that every name of a listing can be
/// opened.
std::wstring pathFromSystem(std::string_view path);

/// The same, where that is there. Else the first, in the order of their bytes, of the files or directories
/// whose names differ from it in the case of letters alone, part by part; else what mapPath gives. For paths
/// that came through a change of case.
std::string findPath(std::wstring_view path);

/// The part behind the last separator (either one).
std::wstring_view fileNameOfPath(std::wstring_view path);

} // namespace hostkit

#pragma once

#include <string>

/// Does what an installer does: writes the machine's values of the application (paths, main module,
/// language), the host's product key, and makes the directories that the application looks into. Values go to
/// the registry of the current port; what is there already is replaced, other values and the user's stay.
///
/// root: the directory of the install, made if it is missing; a relative one counts from the current
/// directory. module: the application's main module, for the path tools of a test install. On false, problem
/// is a sentence that says what could not be done; what was done before it stays.
bool writeInstallation(const std::wstring& root, unsigned language, const std::wstring& module,
                       std::wstring& problem);

/// The same with the library that this program loads as the main module; fails where the registry does not
/// outlast this process.
bool writeInstallation(const std::wstring& root, unsigned language, std::wstring& problem);

// Menu files: the group's name, toolbars and their buttons of the textual form; leaves out pull-down menus,
// shortcuts, pictures and the forms for machines.
#pragma once

#include "acadstrc.h"

#include <string>
#include <string_view>

namespace hostkit {

struct MenuGroup;

/// Larger files are refused.
constexpr std::size_t largestMenuFile = 16u << 20;

/// Reads a menu in its textual form, UTF-8 or else the ANSI code page, line by line:
///   // ...                      a comment
///   ***MENUGROUP=NAME           once
///   ***TOOLBARS                 begins the toolbars; any other *** section is passed over
///   **ID                        begins a toolbar
///   [ID] [_Toolbar("Name", place, _Show|_Hide, ...)]    its first item; what is not named is shown
///   [ID] [_Button("Name", ...)]macro                    a button; a macro that ends with + goes on in the
///                                                       next line
///   [ID] [--], [_Control(...)], [_Flyout(...)]          passed over
/// eOk; eInvalidInput, with "file:line: reason" as the problem and the group in any state, for a text that is
/// none. The name serves for the problem alone.
Acad::ErrorStatus readMenuText(std::string_view bytes, std::wstring_view file, MenuGroup& group,
                               std::wstring& problem);
/// The same of a file: eFileNotFound; eFileAccessErr for one that cannot be read or is too large.
Acad::ErrorStatus readMenuFile(const std::wstring& file, MenuGroup& group, std::wstring& problem);

} // namespace hostkit

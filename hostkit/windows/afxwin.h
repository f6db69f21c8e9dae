// Stand-in for the host's application framework, windows. Covers windows, controls, dialogs, painting, menus, message boxes and the application; leaves out frames, views and documents.
#pragma once

#include "afx.h"
#include "ccontrols.h"
#include "cdialog.h"
#include "cmenu.h"
#include "cwinapp.h"

/// The name that stands in the caption of AfxMessageBox.
const wchar_t* AfxGetAppName();
void AfxSetAppName(const wchar_t* name);
/// A box without an owner, captioned with the application's name; with no icon in type, an exclamation mark.
/// Returns the button's id.
int AfxMessageBox(const wchar_t* text, UINT type = 0, UINT helpId = 0);
/// The host's main window.
CWnd* AfxGetMainWnd();

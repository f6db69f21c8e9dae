// Stand-in for the host's editor functions. Covers reading a command's answers, keywords, system variables, commands run and queued, environment, alerts, the status bar's meter, windows, coordinate systems, menu groups and, by the headers it includes, selection; leaves out dragging.
#pragma once

#include "accmd.h"
#include "acedads.h"
#include "acutads.h"
#include "adsdef.h"
#include "windowstypes.h"

class CWinApp;
class CWnd;

// --- What a command reads ---------------------------------------------------------------------------------
//
// A command's answers are the words of the line that called it, in order; behind the last one a person is
// asked, if there is one, and a line of a script answers Enter. Results: RTNORM, RTNONE (Enter), RTCAN (the
// user breaks off), RTREJ (an answer of a script that is no value of the wanted kind; a person is asked
// again), RTERROR (no command runs, a null result, or nobody is there to answer any more). Nothing is set
// unless the result is RTNORM. A transparent command behind an apostrophe may stand in place of an answer: it
// runs first.

/// Bits of acedInitGet: Enter is no answer; zero is none; a negative number is none.
constexpr int RSG_NONULL = 1;
constexpr int RSG_NOZERO = 2;
constexpr int RSG_NONEG = 4;

/// Holds for the next reading call alone. The keywords are separated by blanks; the capital letters of each
/// (or all of it, where it has none) are the least that must be typed: "Text CSV Json" is answered by "t",
/// "TEX" or "csv".
int acedInitGet(int flags, const wchar_t* keywords);
/// A text. With cronly 0 it is one word; else all that is left of the line. Enter gives RTNORM and the empty
/// text.
int acedGetString(int cronly, const wchar_t* prompt, CString& result);
/// The same into a buffer of that many characters with the terminator; a longer text is RTREJ. Without a size
/// the buffer has the 133 characters of old.
int acedGetString(int cronly, const wchar_t* prompt, wchar_t* result, std::size_t bufferLength = 133);
/// A whole number in 32 bits, or RTKWORD when a keyword of acedInitGet was given (acedGetInput tells which).
int acedGetInt(const wchar_t* prompt, int* result);
/// A finite number, or RTKWORD.
int acedGetReal(const wchar_t* prompt, ads_real* result);
/// "x,y" or "x,y,z" in drawing units; "@" in front is relative to the base point, where one is given. Or
/// RTKWORD.
int acedGetPoint(const ads_real* basePoint, const wchar_t* prompt, ads_point result);
/// A keyword of acedInitGet as it was written there, however it was typed.
int acedGetKword(const wchar_t* prompt, CString& result);
int acedGetKword(const wchar_t* prompt, wchar_t* result, std::size_t bufferLength = 133);
/// The keyword behind the last RTKWORD; RTERROR when there is none.
int acedGetInput(CString& result);

/// True when the user wants the running command to stop (Ctrl-C); commands that work long look now and then.
bool acedUsrBrk();

// --- System variables -------------------------------------------------------------------------------------
//
// See hostkit::SystemVariables for the variables, their types and where they are kept.

/// Fills the record's type and value, not its link: RTSHORT, RTLONG, RTREAL, RTPOINT, RT3DPOINT, or RTSTR
/// with a text that the caller frees with free. RTNORM; RTERROR, with the record untouched, for a null
/// argument, an unknown name, or a variable of a drawing when there is none.
int acedGetVar(const wchar_t* name, resbuf* result);
/// RTNORM; RTERROR as above; RTREJ for a read-only variable, a value of another type or out of range.
int acedSetVar(const wchar_t* name, const resbuf* value);

// --- Commands that run commands ---------------------------------------------------------------------------
//
// What is queued runs when the running command has returned, or at once after the call where none runs and
// the host takes its input; in the order in which it came, whichever of these calls it came by.

/// Runs a command with its answers, now: (type, value)... closed by 0: RTSTR const wchar_t*, RTSHORT int,
/// RTLONG int, RTREAL double, RTPOINT and RT3DPOINT const double*. The empty text is Enter. What is behind
/// the command's answers is the next command. With CMDECHO 1 the line is printed. RTNORM; RTERROR for no host
/// or an unknown type; RTREJ when there is no such command or it failed, which is printed.
int acedCommand(int type, ...);
/// Queues text for the command line; a line runs when its end comes. "CANCELCMD" drops a line that is not yet
/// at its end. 1; 0 for null or no host.
int acedPostCommand(const wchar_t* text);
/// Queues an expression for evaluation: see hostkit::evaluateExpression. RTNORM; RTERROR for null or no host;
/// RTREJ, with a problem told, for one of 512 characters or more.
int ads_queueexpr(const wchar_t* expression);

// --- The host around the command --------------------------------------------------------------------------

/// The host's environment variables. RTNORM, or RTERROR with value untouched when there is none of that name.
/// The buffer has the given number of characters; a longer value is RTERROR.
int acedGetEnv(const wchar_t* name, wchar_t* value, std::size_t bufferLength = 512);
int acedGetEnv(const wchar_t* name, CString& value);
/// Until the host ends. RTERROR for an empty name.
int acedSetEnv(const wchar_t* name, const wchar_t* value);

/// Shows a meter with its caption in the status bar, at its minimum; one that stands there is replaced. 0;
/// -1, and nothing shown, when the maximum is not above the minimum.
int acedSetStatusBarProgressMeter(const wchar_t* caption, int minimum, int maximum);
/// Moves the meter; positions beyond its bounds stand at them. 0; -1 when none is shown.
int acedSetStatusBarProgressMeterPos(int position);
/// Takes the meter away; without one, nothing.
void acedRestoreStatusBar();

/// A box with one button over the host's main window.
int acedAlert(const wchar_t* text);
/// The host's main window, which covers the screen and shows nothing; null when there is no host.
HWND adsw_acadMainWnd();
/// The same as an object, and the windows for input: the docked command line in the main window and the one
/// in the text window, each with one child that takes characters; null when there is no host. The drawing's
/// view is null without a document, too. All belong to the host. See hostkit::HostWindows.
CWnd* acedGetAcadFrame();
CWnd* acedGetAcadDockCmdLine();
CWnd* acedGetAcadTextCmdLine();
CWnd* acedGetAcadDwgView();

/// The application: its GetIDispatch gives the object that hostapplication.h tells of. Null when there is no
/// host.
CWinApp* acedGetAcadWinApp();
/// TRUE when a menu group of that name, without regard to case, is loaded.
BOOL acedIsMenuGroupLoaded(const wchar_t* group);

// --- Coordinate systems -----------------------------------------------------------------------------------

/// Takes a point, or with a displacement flag other than 0 a vector, from one coordinate system to another,
/// in the current drawing. A system is a record: RTSHORT with 0 the world, 1 the user coordinate system of
/// the current space, 2 the display of the current viewport (origin at its target, z towards the eye, turned
/// by its twist; lengths are drawing units, and perspective changes nothing), 3 the display of the sheet;
/// RT3DPOINT: the system of an entity with that normal, by the arbitrary-axis rule; RTENAME: that of the
/// entity itself. The sheet's display goes only to and from 2, and only where a sheet is current: on the
/// sheet itself both are the same; in one of its viewports the model's display is scaled into it. The result
/// may be the point itself. RTNORM; RTERROR, with the result untouched, for null, no drawing, a record that
/// is none of these, a normal without length, or an entity or viewport that is not there.
int acedTrans(const ads_point point, const resbuf* from, const resbuf* to, int displacement,
              ads_point result);

class AcDbMText;
/// Lets the user edit a paragraph's contents in a box of the host, and sets them. RTCAN, with the paragraph
/// as it was, when he refuses; RTERROR for null, for one that is not open for write, and when no box can be
/// shown. The two flags choose tools that this host does not have.
int acedEditMTextInteractive(AcDbMText* text, bool useNewInterface, bool allowTabs);

#pragma once

#include "acadstrc.h"
#include "afx.h"
#include "dbid.h"
#include "dbmaindefs.h"
#include "geplane.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gevec3d.h"

#include <cstdint>

class AcDbDatabase;
class AcDbEntity;
class AcDbViewTableRecord;
class AcRxClass;
class IDispatch;

/// The host's vertical product by its product id; 0 for any other host.
enum EnumADTVersion {
    ADTVersionNone = 0,
    ADTVersion1 = 1, ///< product id "12"
    ADTVersion2 = 2, ///< "204"
    ADTVersion3 = 3, ///< "304"
    ADTVersion4 = 4, ///< "4004"
    ADTVersion5 = 5, ///< "5004"
    ADTVersion6 = 6, ///< "6004"
    ADTVersion7 = 7, ///< "7004"
    ADTVersion8 = 8, ///< "8004"
};

/// The library's one place for asking the host what it is and what it is doing, and for telling it to do
/// something.
///
/// Each tool asks the host and falls back where the host says no: reads give 0, false or an empty text, and
/// leave their output arguments untouched; writes give eInvalidInput or false. A null text is no name and
/// fails likewise. No tool raises, and none keeps anything between calls. Main thread only.
///
/// What is queued (the tools that say so) runs when the caller's command has returned: nothing of it can be
/// seen on return. What must run in order is queued in one go, as loadMenu does.
class VEXOAcadSystemTools {
public:
    // -----------------------------------------------------------------------------------------------------------------
    // System variables (vexoacadsystemtools_variables.cpp)
    // -----------------------------------------------------------------------------------------------------------------
    //
    // Names are the host's, in any case. A variable is read only in the type that the overload stands for;
    // nothing is converted.

    /// The value of a 16-bit variable; 0 for any other and for one that cannot be read, so nothing tells a
    /// value of 0 from a failure.
    static int getSysVar(const wchar_t* name);
    /// Writes the value of a real; otherwise leaves it.
    static void getSysVar(const wchar_t* name, double& value);
    /// True, with the value, for a 2D (3D) point alone. Coordinates are in drawing units, in the system that
    /// the variable has.
    static bool getSysVar(const wchar_t* name, AcGePoint2d& value);
    static bool getSysVar(const wchar_t* name, AcGePoint3d& value);

    /// eOk, or eInvalidInput when the host refuses: no such variable, a read-only one, another type, out of
    /// range. The whole number is cut to its low 16 bits first.
    static Acad::ErrorStatus setSysVar(const wchar_t* name, int value);
    static Acad::ErrorStatus setSysVar(const wchar_t* name, double value);
    static Acad::ErrorStatus setSysVar(const wchar_t* name, const AcGePoint2d& value);
    static Acad::ErrorStatus setSysVar(const wchar_t* name, const AcGePoint3d& value);

    // -----------------------------------------------------------------------------------------------------------------
    // Which command runs (vexoacadsystemtools_commands.cpp)
    // -----------------------------------------------------------------------------------------------------------------
    //
    // Commands have a global and a localised name. Where names are compared, each is first resolved: looked
    // up as a global name, else as a local one, and replaced by the global name of the command found. A name
    // that no command has stays as it is. The comparison looks at no case.
    //
    // The running command is what CMDNAMES says, as it stands: of commands that run within one another it
    // holds the names joined, and such a text matches none of them.

    /// True when the running command is this one. False without a working database. While none runs, the
    /// empty name is the only one that matches.
    static bool isCommand(const wchar_t* name);
    /// True when both names mean the same command. False for a null one and without a working database.
    static bool isCommand(const wchar_t* first, const wchar_t* second);
    /// A command, an expression or a modal box is active. False without a working database.
    static bool isCommandActive();
    /// No command runs. False without a working database.
    static bool isNullCommandActive();
    /// The global name of the running command, empty while none runs. False when that cannot be read.
    static bool commandActive(CString& name);
    /// "U", "UNDO", "MREDO" or "REDO", or a local name of one of these.
    static bool isUndoRedoCommand(const wchar_t* name);

    /// The running command is one that the application takes for editing of its objects: one of the host's
    /// ("GRIP_STRETCH", "MIRROR", "OFFSET", "MOVE", "ROTATE", "SCALE", "STRETCH", "TRIM", "EXTEND", "BREAK",
    /// "DROPGEOM", "MATCHPROP"), one of the application's for bars ("vexorebarproperties"), one for
    /// distributions of bars ("vexorepartproperties", "vexoassignrebartomember").
    static bool isAcadCommandModify();
    static bool isBarSpecificCommandModify();
    static bool isRepartSpecificCommandModify();

    // -----------------------------------------------------------------------------------------------------------------
    // Telling the host what to do (vexoacadsystemtools_sending.cpp)
    // -----------------------------------------------------------------------------------------------------------------

    /// Gives the focus to the docked command line and sends the text to the host's main window, as another
    /// program would (WM_COPYDATA, data type 1, with its terminator). The text runs as typed input; without a
    /// line end it stays a line that is begun.
    static void sendCommandToAutoCAD(CString command);
    /// Queues the text with a line end for the current document, which is activated; it is echoed. Without a
    /// document nothing is done.
    static void sendCommandToAutoCADEx(CString command);
    /// Gives the focus to the text command line and queues the text with a line end; with cancelFirst behind
    /// a "CANCELCMD". Prints "Cannot post command" when the host takes it not. On the LT host the drawing's
    /// view gets the focus afterwards.
    static void postCommandToAutoCAD(CString command, bool cancelFirst);
    /// Posts one character (a UTF-16 or UTF-32 code) to the input of the text command line.
    static void postMessageToAcad(std::uint64_t character);
    /// Writes the text as it stands, with line ends around it where they are asked for.
    static void cmdLineMsg(CString text, bool newLineBefore, bool newLineAfter);

    /// Queues (command "<text>"), with CMDECHO off around it where it is on now. The text goes in as it
    /// stands: a quotation mark ends a word and begins what follows (callers give several words so:
    /// _.ZOOM" "_E), and a backslash is written twice. A call whose expression would have 512 characters or
    /// more, with its terminator, is refused as a whole and tells so on the command line.
    static void launchCommandNoEcho(const wchar_t* command);
    /// Queues (setvar "<name>" <value>) in the same way. Of "CMDECHO" itself the old value comes back where
    /// it was not 0.
    static void setVarNoEcho(const wchar_t* name, const int& value);

    // -----------------------------------------------------------------------------------------------------------------
    // What the host is (vexoacadsystemtools_identity.cpp)
    // -----------------------------------------------------------------------------------------------------------------

    /// By ACADVER, a text that begins with "major.minor"; false for one that does not. What follows the two
    /// numbers does not count.
    static bool isAcad2004();        ///< 16.0
    static bool isAcad2005OrLater(); ///< 16.1 and above
    static bool isAcad2006();        ///< 16.2
    static bool isAcad2006OrLater(); ///< 16.2 and above
    static bool isAcad2007OrLater(); ///< 17.0 and above
    static bool isAcad2008OrLater(); ///< 17.1 and above
    static bool isAcad2009();        ///< 17.2
    static bool isAcad2009OrLater(); ///< 17.2 and above
    static bool isAcad2010OrLater(); ///< 18.0 and above

    /// The "ProductName" of the host's product key (machine hive) contains "CAD LT", in any case.
    static bool isAcadLT();
    /// A group of the command stack has "AecUiBase" in its name, in this case; else the "ProductName"
    /// contains "ARCHIT", in any case.
    static bool isADT();
    /// By the whole "ProductId"; the value "aecVersion" beside it does not count.
    static EnumADTVersion getADTVersion();

    /// True until SetAcadAsRun was called for this profile of the host: the user's "Settings" have no value
    /// named as the product key from "ACAD-" on. A product key without that part has no mark: always true.
    static bool IsAcadFirstTimeRun();
    static void SetAcadAsRun();

    /// The host's application object, with a reference that the caller releases.
    static bool getApplication(IDispatch** application);

    // -----------------------------------------------------------------------------------------------------------------
    // Menus and toolbars (vexoacadsystemtools_menus.cpp)
    // -----------------------------------------------------------------------------------------------------------------
    //
    // Names of menu groups and toolbars are compared without regard to case. Every interface that a tool
    // takes is released on every path; one that it hands out the caller releases.

    /// Queues the loading (load not 0) of a menu file of the application's Support folder, or the unloading
    /// of the group. 1 when it was queued. 0 when there is nothing to do (the group is loaded already, or is
    /// not), when the data path is not known (the user is told that the installation is damaged), and when
    /// the path or the group's name is too long for an expression of 512 characters (told on the command
    /// line). The file's path goes to the host with '/' and in capital letters, and the host finds it in any
    /// case. The title is not read.
    static int loadMenu(CString menuGroup, CString fileName, CString title, int load);
    /// The menu group of that name, with a reference that the caller releases. False for an empty name.
    static bool getOrdaneMenuGroup(IDispatch** group, const CString& menuGroupName);
    /// Shows or hides a toolbar of a group. False for an empty name, when there is none of that name, and
    /// when the host refuses.
    static bool ShowToolbar(CString toolbarName, bool visible, CString menuGroupName);
    /// Sets whether the host asks for a drawing when it starts. The earlier setting, or false when any step
    /// failed, so nothing tells an earlier "off" from a failure.
    static bool enableStartupDialog(int enable);

    // -----------------------------------------------------------------------------------------------------------------
    // View and space (vexoacadsystemtools_view.cpp)
    // -----------------------------------------------------------------------------------------------------------------

    /// TILEMODE is 1.
    static bool isModelSpace();
    /// TILEMODE is 0 and CVPORT is 1: the sheet itself.
    static bool isPaperSpace();
    /// TILEMODE is 0 and CVPORT is above 1: the model in a viewport of the sheet.
    static bool isFloatingSpace();
    static void setModelSpace();
    /// From model space TILEMODE becomes 0, which comes to the sheet itself; else the command _PSPACE runs.
    static void setPaperSpace();
    /// TILEMODE becomes 0 where it is 1, and in both cases the command _MSPACE runs.
    static void setFloatingSpace();

    /// The axes, unit vectors, and the plane through the origin of the drawing's user coordinate system of
    /// model space, in world coordinates. Null means the working database; without any, the world's. The
    /// z axis is x cross y, made a unit vector.
    static AcGeVector3d getUcsXAxis(AcDbDatabase* database = nullptr);
    static AcGeVector3d getUcsYAxis(AcDbDatabase* database = nullptr);
    static AcGeVector3d getUcsZAxis(AcDbDatabase* database = nullptr);
    static AcGePlane getUcsPlane(AcDbDatabase* database = nullptr);

    /// Makes the record one of the current view: perspective, clipping, middle (display coordinates), target
    /// and direction (world), lens, height. Its width and twist stay as they are, and so does what the host
    /// cannot tell; without a drawing all of it.
    static void GetCurrentView(AcDbViewTableRecord& view);
    /// A reference is being edited in place: REFEDITNAME is not empty.
    static bool IsEditingXref();

    /// Sets the visibility of an entity that is open for write: else eNotOpenForWrite, or eNullEntityPointer
    /// for null. With recurse also of the entities among its persistent reactors, and theirs in turn, each
    /// once; one that cannot be opened for write is passed over, with what hangs on it.
    static Acad::ErrorStatus setVisibility(AcDb::Visibility visibility, AcDbEntity* entity, int recurse);
    /// Opens the entity for write; the status of the open where that fails.
    static Acad::ErrorStatus setVisibility(AcDb::Visibility visibility, AcDbObjectId id, int recurse);

    // -----------------------------------------------------------------------------------------------------------------
    // Undo, applications and classes (vexoacadsystemtools_undo.cpp)
    // -----------------------------------------------------------------------------------------------------------------

    /// What is done in the active document between the two marks is one step for undo. True only when every
    /// step to the host's document went well.
    static bool startUndoMark();
    static bool endUndoMark();

    /// Registers an application's name for extended data in the working drawing, unless it is registered
    /// already; eInvalidInput when the host refuses.
    static Acad::ErrorStatus RegisterXDataFor(const CString& application);
    /// 1 when the host knows a class that is derived from this one and bears another name. 0 for null, and,
    /// with a box that says so, when the host's dictionary of classes cannot be had.
    static int hasDescendantsInOtherApp(const AcRxClass* parent);

    // -----------------------------------------------------------------------------------------------------------------
    // Modules and processes (vexoacadsystemtools_modules.cpp)
    // -----------------------------------------------------------------------------------------------------------------
    //
    // Texts that are looked for are parts of paths, compared in lower case; an empty one is part of every
    // path.

    /// 1, with the path in lower case, for the first module of a process whose path contains both texts; 0
    /// when there is none, or when the system does not show the process.
    static int ProcessContainsModule(unsigned long processId, CString first, CString second, CString& found);
    /// 1 when two processes have such a module from different paths: of each process its first one counts.
    static int ProcessesHaveDifferentModules(CString first, CString second);
    /// True when the host has loaded a module of that name, whatever its extension: its file name contains
    /// the given one without extension, and has a point just behind as many characters. A longer name that
    /// begins alike is another module. The given name is a file name without directory.
    static bool isModuleLoaded(const wchar_t* file);
    /// Compares what follows the last '\' or '/', in any case.
    static bool isTheSameModule(const wchar_t* first, const wchar_t* second);
    /// Cuts at the last point, also where that stands in a directory's name; a point at the very beginning
    /// stays, and so does a text without one.
    static CString FileNameWithoutExtension(const wchar_t* file);
};

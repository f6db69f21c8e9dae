#pragma once

#include "afx.h"
#include "windows.h"

struct IRegistrar;

/// Where the application lives and its settings for each user: registry values, install paths, interface
/// language.
///
/// The int tools return 1 on success and 0 on failure and leave their outputs untouched on 0. Sizes are in
/// bytes, with sizeof(wchar_t) for each wide character. A null key, sub-key or text to be written fails; a
/// null name is the key's default value. No tool shows a message.
class VEXORegistryTools {
public:
    // --- Raw access: the first argument is a whole key path ------------------------------------------------

    /// Opens with extraAccess | KEY_READ. value has room for 1024 characters (textBufferSize bytes); a longer
    /// value fails. A null value asks only whether there is one. The bytes come as they stand, whatever their
    /// type, and with a terminator where there is room for one; text that fills the buffer without a
    /// terminator fails.
    static int GetRegistryValue(const wchar_t* key, const wchar_t* name, wchar_t* value, HKEY hive,
                                unsigned long extraAccess = 0);
    /// Fails for a value that has not four bytes, or that is text.
    static int GetRegistryValue(const wchar_t* key, const wchar_t* name, unsigned long& value, HKEY hive);
    /// Makes the key if it is absent. Writes text with its terminator, of any length.
    static int SetRegistryValue(const wchar_t* key, const wchar_t* name, const wchar_t* value, HKEY hive);
    /// Makes the key if it is absent. Writes the low 32 bits.
    static int SetRegistryValue(const wchar_t* key, const wchar_t* name, const unsigned long& value,
                                HKEY hive);
    /// The one gate for reads: the platform's query, and on success the string case repaired, since a stored
    /// text need not have a terminator. With null data, 1 is added to the size, so a buffer of that size has
    /// room for the guard. With data, and type, name and size given, one zero byte (not a wide terminator) is
    /// written behind text that is not empty. Text that fills the buffer to its last byte has no room for the
    /// guard: it succeeds when it ends in its own terminator, otherwise the answer is ERROR_MORE_DATA. The
    /// result is the platform's status.
    static long VEXORegQueryValueEx(HKEY key, const wchar_t* name, unsigned long* reserved,
                                    unsigned long* type, unsigned char* data, unsigned long* size);
    /// Opens with KEY_QUERY_VALUE alone. value has room for size bytes; otherwise as GetRegistryValue.
    static int QueryValueInRegistry(HKEY hive, wchar_t* key, wchar_t* name, wchar_t* value,
                                    unsigned long size);

    static constexpr unsigned long textBufferSize = 1024 * sizeof(wchar_t);

    // --- Access below the application key ------------------------------------------------------------------

    static int GetRegistryValueAdv(const wchar_t* subKey, const wchar_t* name, wchar_t* value, HKEY hive);
    static int GetRegistryValueAdv(const wchar_t* subKey, const wchar_t* name, unsigned long& value,
                                   HKEY hive);
    static int SetRegistryValueAdv(const wchar_t* subKey, const wchar_t* name, const wchar_t* value,
                                   HKEY hive);
    static int SetRegistryValueAdv(const wchar_t* subKey, const wchar_t* name, const unsigned long& value,
                                   HKEY hive);
    /// Writes text. When that changed an old text that was not empty, flips the host's environment variable
    /// envVar, if the host has it, from "1" to "0" and from anything else to "1": the host sees the flip and
    /// looks again. The result is that of the write.
    static int SetRegistryValueAdvAndSwitchEnvVar(const wchar_t* subKey, const wchar_t* name,
                                                  const wchar_t* value, HKEY hive, const wchar_t* envVar);
    /// Opens with KEY_QUERY_VALUE alone; an empty subKey is the application key itself. size: in, the room of
    /// value in bytes; out, the bytes of the stored value, or with a null value the size of a buffer for it.
    static int QueryValueInRegistryApp(const wchar_t* subKey, const wchar_t* name, wchar_t* value,
                                       unsigned long& size, HKEY hive);
    /// Text of any length. Fails for a value that is no text.
    static int QueryValueInRegistryApp(const CString& subKey, const CString& name, CString& value, HKEY hive);

    // --- Paths ---------------------------------------------------------------------------------------------
    // Texts join with '\'. Where a separator is ensured, one that is there already, '\' or '/', is enough.

    /// The machine's "PATHBIN", else its "Path", with a separator (none after an empty text) and "Bin".
    static int GetOrdaneBinPath(CString& path);
    /// The same into a buffer that has room for it, unchecked.
    static int GetOrdaneBinPath(wchar_t* path);
    /// "PATHDATA" of the user, else of the machine, else the machine's "Path", as it stands.
    static int GetOrdaneDataPath(CString& path);
    static int GetOrdaneDataPath(wchar_t* path);

    /// The machine's "PATHBIN", else "..\\", or on a test install (a "TestingRelease" that begins with "1")
    /// the result of GetPathAppDir. Each getter below also returns a copy of out.
    static CString GetPathParentDir(CString& out, bool trailingSeparator);
    /// The directory of the main module, with or without its closing separator; empty when "Loader", "MODULE"
    /// cannot be read.
    static CString GetPathAppDir(CString& out, bool trailingSeparator);
    /// "Software\Vexomar\ordane\R18\10.1", the key that everything else stands under.
    static void GetPathRegistryApp(CString& path);
    /// The same into a buffer that has room for it; returns the buffer.
    static wchar_t* GetPathRegistryApp(wchar_t* path);
    /// "AcadLocation", else "Location", of the host's product key in the machine hive.
    static int GetAcadLocation(CString& path);

    /// The data path with a separator and "Catalog"; with the flag one more separator. When the data path
    /// cannot be read, the text that out came with takes its place. So do the five below.
    static CString GetPathCatalogDir(CString& out, bool trailingSeparator);
    static CString GetPathSupportDir(CString& out, bool trailingSeparator);
    static CString GetPathSupportStylesDir(CString& out, bool trailingSeparator);
    static CString GetPathSupportLevelArrowDir(CString& out, bool trailingSeparator);
    static CString GetPathSupportDynBlocksDir(CString& out, bool trailingSeparator);
    static CString GetPathRecoverDir(CString& out, bool trailingSeparator);
    /// The data path with a separator and the directory. When the data path cannot be read the result begins
    /// with the separator: a path below the root of the current drive, never an empty text.
    static CString GetPathSupportSymbolDir();
    static CString GetPathSupportLayoutStyles();
    static CString GetPathSupportSamplesDocument();
    static CString GetPathSupportBarSupportsDir();

    // --- Settings and identity -----------------------------------------------------------------------------

    /// The low 10 bits (the bits above them) of the machine's "Language", a language identifier; French, 12
    /// and 1, when the key or a value of the right type is not there.
    static unsigned long GetLanguageUI();
    static unsigned long GetSubLanguageUI();
    /// The whole identifier, or 0; writes nothing.
    static unsigned long GetRegistryLanguageUI();
    /// The user's "Metrics", 0 to 7. An absent value or one outside is replaced by 4, in the registry too.
    int GetDefaultUnitType() const;
    static void SetDefaultUnitType(int type);
    /// The user's "PathRebarSolutionXML". Where it is absent, "Support\Dynamic Reinforcement" below the data
    /// path, which is written there, so that the first use fixes the default; without a data path empty, and
    /// nothing is written.
    static CString GetPathRebarSolutionXML();
    /// The value, or empty.
    static CString GetSketchPointColorsLegendVisibility();
    /// Does nothing for an empty text.
    static void SetSketchPointColorsLegendVisibility(CString visibility);
    /// The file name of the application's main module: "ordane10.arx", or "ordane10.ltx" on the host's LT
    /// edition.
    static CString WhoAmI();
    /// Tries it: makes and deletes a key in the classes hive and in the machine hive.
    static bool CanRegisterComModules();
    /// Registers (or with 0 unregisters) the resource of a module through the platform's "atl70.dll", else
    /// "atl71.dll". E_FAIL when neither is there or the function is missing from it; otherwise the function's
    /// result.
    static long UpdateRegistryD(HINSTANCE instance, const wchar_t* resource, int registerIt,
                                IRegistrar* registrar);
};

#include "vexoacadsystemtools.h"

#include "acarray.h"
#include "cvxlogentry.h"
#include "rxregsvc.h"
#include "tchar.h"
#include "tlhelp32.h"
#include "vexoacadsystemtools_internal.h"
#include "windows.h"

#include <memory>

using namespace vexo;

namespace {

// A snapshot for a scope.
class Snapshot {
public:
    Snapshot(DWORD flags, DWORD processId)
        : m_handle(CreateToolhelp32Snapshot(flags, processId)) {}
    ~Snapshot() {
        if (*this) CloseHandle(m_handle);
    }
    Snapshot(const Snapshot&) = delete;
    Snapshot& operator=(const Snapshot&) = delete;

    explicit operator bool() const { return m_handle != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return m_handle; }

private:
    HANDLE m_handle;
};

struct NamesDeleter {
    void operator()(AcArray<wchar_t*>* names) const {
        for (int i = 0; i < names->length(); ++i) acutDelString(names->at(i));
        delete names;
    }
};

const wchar_t* fileNameOf(const wchar_t* path) {
    const wchar_t* name = path;
    for (; *path; ++path)
        if (*path == L'\\' || *path == L'/') name = path + 1;
    return name;
}

CString withoutExtension(const CString& file) {
    const int point = file.ReverseFind(L'.');
    return point > 0 ? file.Left(point) : file;
}

} // namespace

int VEXOAcadSystemTools::ProcessContainsModule(unsigned long processId, CString first, CString second,
                                               CString& found) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::ProcessContainsModule");
    const Snapshot modules(TH32CS_SNAPMODULE, static_cast<DWORD>(processId));
    if (!modules) return 0;
    first.MakeLower();
    second.MakeLower();
    MODULEENTRY32W module{};
    module.dwSize = sizeof module;
    for (BOOL more = Module32FirstW(modules.get(), &module); more;
         more = Module32NextW(modules.get(), &module)) {
        CString path = module.szExePath;
        path.MakeLower();
        if (path.Find(first) < 0 || path.Find(second) < 0) continue;
        found = path;
        return 1;
    }
    return 0;
}

int VEXOAcadSystemTools::ProcessesHaveDifferentModules(CString first, CString second) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::ProcessesHaveDifferentModules");
    const Snapshot processes(TH32CS_SNAPPROCESS, 0);
    if (!processes) return 0;
    CString firstPath;
    PROCESSENTRY32W process{};
    process.dwSize = sizeof process;
    for (BOOL more = Process32FirstW(processes.get(), &process); more;
         more = Process32NextW(processes.get(), &process)) {
        CString path;
        if (!ProcessContainsModule(process.th32ProcessID, first, second, path)) continue;
        if (firstPath.IsEmpty()) firstPath = path;
        if (path.CompareNoCase(firstPath) != 0) return 1;
    }
    return 0;
}

bool VEXOAcadSystemTools::isModuleLoaded(const wchar_t* file) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isModuleLoaded");
    const CString sought = withoutExtension(file).MakeLower();
    const std::unique_ptr<AcArray<wchar_t*>, NamesDeleter> names(acrxLoadedApps());
    if (!names || sought.IsEmpty()) return false;
    for (int i = 0; i < names->length(); ++i) {
        CString name = names->at(i);
        name.MakeLower();
        if (name.Find(sought) >= 0 && name.GetAt(sought.GetLength()) == L'.') return true;
    }
    return false;
}

bool VEXOAcadSystemTools::isTheSameModule(const wchar_t* first, const wchar_t* second) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isTheSameModule");
    return first && second && _wcsicmp(fileNameOf(first), fileNameOf(second)) == 0;
}

CString VEXOAcadSystemTools::FileNameWithoutExtension(const wchar_t* file) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::FileNameWithoutExtension");
    return withoutExtension(file);
}

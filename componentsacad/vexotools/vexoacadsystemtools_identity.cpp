#include "vexoacadsystemtools.h"

#include "cvxlogentry.h"
#include "cwinapp.h"
#include "rxprodkey.h"
#include "tchar.h"
#include "vexoacadsystemtools_internal.h"
#include "vexoregistrytools.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

using namespace vexo;

bool vexo::takeApplication(Held<IHostApplication>& application) {
    Held<IDispatch> dispatch;
    return VEXOAcadSystemTools::getApplication(dispatch.receive()) &&
           SUCCEEDED(dispatch->QueryInterface(IID_IHostApplication,
                                              reinterpret_cast<void**>(application.receive()))) &&
           application;
}

namespace {

constexpr std::size_t productTextLength = 4096;

using HostVersion = std::pair<int, int>; // major and minor number

// Nine digits a number, so that none runs over.
std::optional<HostVersion> hostVersion() {
    const Variable variable(L"ACADVER");
    HostVersion version;
    if (!variable.text() || std::swscanf(variable.text(), L"%9d.%9d", &version.first, &version.second) != 2)
        return std::nullopt;
    return version;
}

bool isVersion(int major, int minor) { return hostVersion() == HostVersion{major, minor}; }

bool isVersionOrLater(int major, int minor) {
    const std::optional<HostVersion> version = hostVersion();
    return version && *version >= HostVersion{major, minor};
}

// In capital letters; empty where it cannot be read.
CString productText(CString name) {
    CString key = acrxProductKey();
    std::vector<wchar_t> value(productTextLength);
    if (!VEXORegistryTools::QueryValueInRegistry(HKEY_LOCAL_MACHINE, key.GetBuffer(), name.GetBuffer(),
                                                 value.data(), productTextLength * sizeof(wchar_t)))
        return {};
    value.back() = L'\0';
    return CString(value.data()).MakeUpper();
}

bool hasGroupOfProduct() {
    const AcEdCommandStack* const stack = commandStack();
    if (!stack) return false;
    for (const std::unique_ptr<AcEdCommandIterator> walk(stack->iterator()); !walk->done(); walk->next())
        if (std::wcsstr(walk->commandGroup(), L"AecUiBase")) return true;
    return false;
}

struct ProductRow {
    const wchar_t* id;
    EnumADTVersion version;
};
constexpr ProductRow products[] = {{L"12", ADTVersion1},   {L"204", ADTVersion2},  {L"304", ADTVersion3},
                                   {L"4004", ADTVersion4}, {L"5004", ADTVersion5}, {L"6004", ADTVersion6},
                                   {L"7004", ADTVersion7}, {L"8004", ADTVersion8}};

// The name of the mark that the host's profile has run with the application.
CString profileName() {
    const CString key = acrxProductKey();
    const int start = key.Find(L"ACAD-");
    return start < 0 ? CString() : key.Mid(start);
}

} // namespace

bool VEXOAcadSystemTools::isAcad2004() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isAcad2004");
    return isVersion(16, 0);
}

bool VEXOAcadSystemTools::isAcad2005OrLater() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isAcad2005OrLater");
    return isVersionOrLater(16, 1);
}

bool VEXOAcadSystemTools::isAcad2006() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isAcad2006");
    return isVersion(16, 2);
}

bool VEXOAcadSystemTools::isAcad2006OrLater() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isAcad2006OrLater");
    return isVersionOrLater(16, 2);
}

bool VEXOAcadSystemTools::isAcad2007OrLater() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isAcad2007OrLater");
    return isVersionOrLater(17, 0);
}

bool VEXOAcadSystemTools::isAcad2008OrLater() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isAcad2008OrLater");
    return isVersionOrLater(17, 1);
}

bool VEXOAcadSystemTools::isAcad2009() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isAcad2009");
    return isVersion(17, 2);
}

bool VEXOAcadSystemTools::isAcad2009OrLater() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isAcad2009OrLater");
    return isVersionOrLater(17, 2);
}

bool VEXOAcadSystemTools::isAcad2010OrLater() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isAcad2010OrLater");
    return isVersionOrLater(18, 0);
}

bool VEXOAcadSystemTools::isAcadLT() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isAcadLT");
    return productText(L"ProductName").Find(L"CAD LT") >= 0;
}

bool VEXOAcadSystemTools::isADT() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::isADT");
    return hasGroupOfProduct() || productText(L"ProductName").Find(L"ARCHIT") >= 0;
}

EnumADTVersion VEXOAcadSystemTools::getADTVersion() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::getADTVersion");
    const CString id = productText(L"ProductId");
    for (const ProductRow& each : products)
        if (id.CompareNoCase(each.id) == 0) return each.version;
    return ADTVersionNone;
}

bool VEXOAcadSystemTools::IsAcadFirstTimeRun() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::IsAcadFirstTimeRun");
    const CString name = profileName();
    wchar_t* const onlyWhether = nullptr;
    return name.IsEmpty() ||
           !VEXORegistryTools::GetRegistryValueAdv(L"Settings", name, onlyWhether, HKEY_CURRENT_USER);
}

void VEXOAcadSystemTools::SetAcadAsRun() {
    CVxLogEntry entry(L"VEXOAcadSystemTools::SetAcadAsRun");
    const CString name = profileName();
    if (!name.IsEmpty()) VEXORegistryTools::SetRegistryValueAdv(L"Settings", name, L"0", HKEY_CURRENT_USER);
}

bool VEXOAcadSystemTools::getApplication(IDispatch** application) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::getApplication");
    CWinApp* const host = application ? acedGetAcadWinApp() : nullptr;
    IDispatch* const found = host ? host->GetIDispatch(TRUE) : nullptr;
    if (found) *application = found;
    return found != nullptr;
}

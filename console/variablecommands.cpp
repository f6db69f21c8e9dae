#include "variablecommands.h"

#include "aced.h"
#include "commandoutput.h"
#include "consoletext.h"
#include "headeraccess.h"
#include "host.h"
#include "modulecommand.h"
#include "modulemark.h"
#include "rxprodkey.h"
#include "textencoding.h"

#include <limits>
#include <string>
#include <vector>

namespace {

using hostkit::SystemValue;
using hostkit::SystemVariableInfo;
using hostkit::SystemVariables;
using hostkit::VariablePlace;
using hostkit::VariableResult;

std::wstring typeName(short type) {
    switch (type) {
    case RTSHORT:
        return L"16-bit number";
    case RTLONG:
        return L"32-bit number";
    case RTREAL:
        return L"real";
    case RTPOINT:
        return L"2D point";
    case RT3DPOINT:
        return L"3D point";
    default:
        return L"text";
    }
}

const wchar_t* placeName(VariablePlace place) {
    switch (place) {
    case VariablePlace::computed:
        return L"worked out";
    case VariablePlace::session:
        return L"session";
    case VariablePlace::settings:
        return L"settings";
    case VariablePlace::header:
        break;
    }
    return L"drawing";
}

std::wstring rangeOf(const SystemVariableInfo& info) {
    if (info.isReadOnly) return L"read-only";
    if (info.minimum == info.maximum) return L"";
    // A bound at the end of what a real can be is none to a person.
    if (info.minimum == std::numeric_limits<double>::min()) return L"above 0";
    if (info.maximum == std::numeric_limits<double>::max()) return numberText(info.minimum) + L" and above";
    return numberText(info.minimum) + L" to " + numberText(info.maximum);
}

void listVariables(const SystemVariables& variables) {
    std::vector<std::vector<std::wstring>> rows = {{L"Variable", L"Value", L"Type", L"Kept in", L"Allowed"}};
    for (const std::wstring& name : variables.names()) {
        SystemVariableInfo info;
        SystemValue value;
        if (!variables.describe(name, info) || variables.get(name, value) != VariableResult::ok) continue;
        rows.push_back(
            {name, hostkit::formatValue(value), typeName(info.type), placeName(info.place), rangeOf(info)});
    }
    printTable(rows, "lllll");
}

void fail(const SystemVariableInfo& info, VariableResult result, const std::wstring& given = {}) {
    const std::wstring range = info.isReadOnly ? L"" : rangeOf(info);
    const wchar_t* const record = hostkit::namedRecord(info.name);
    const std::wstring quoted = L" \"" + given + L"\"";
    std::wstring reason = hostkit::textOf(result);
    if (result == VariableResult::outOfRange && record)
        reason = L"there is no " + std::wstring(record) + quoted;
    else if (!given.empty())
        reason += L":" + quoted;
    hostkit::failCommand(Acad::eInvalidInput, info.name + L" (" + typeName(info.type) +
                                                  (range.empty() ? L"" : L", " + range) + L"): " + reason);
}

} // namespace

void setVariableCommand() {
    SystemVariables& variables = hostkit::Host::current()->variables();
    CString name;
    if (acedGetString(0, L"Variable [?] <?>: ", name) != RTNORM) return;
    if (name.IsEmpty() || name == L"?") return listVariables(variables);
    SystemVariableInfo info;
    SystemValue value;
    if (!variables.describe(name.GetString(), info))
        return hostkit::failCommand(Acad::eKeyNotFound, std::wstring(name.GetString()) + L": " +
                                                            hostkit::textOf(VariableResult::unknown) +
                                                            L"; SETVAR alone lists them");
    const VariableResult found = variables.get(name.GetString(), value);
    if (found != VariableResult::ok) return fail(info, found);
    const std::wstring shown = info.name + L" = " + hostkit::formatValue(value);
    CString text;
    if (acedGetString(0, (shown + L", new value <as it is>: ").c_str(), text) != RTNORM) return;
    if (text.IsEmpty()) {
        acutPrintf(L"%s\n", shown.c_str());
        return;
    }
    if (!hostkit::parseValue(text == L"." ? L"" : text.GetString(), info.type, value))
        return fail(info, VariableResult::wrongType, text.GetString());
    const VariableResult result = variables.set(name.GetString(), value);
    if (result != VariableResult::ok) fail(info, result, text.GetString());
}

void versionCommand() {
    SystemValue version;
    (void)hostkit::Host::current()->variables().get(L"ACADVER", version);
    acutPrintf(L"Host version %s (ACADVER)\n", version.text.c_str());
    acutPrintf(L"Kit %s, modules' interface %d\n", hostkit::wideFromUtf8(HOSTKIT_VERSION).c_str(),
               HOSTKIT_INTERFACE);
    const std::wstring key = acrxProductKey();
    acutPrintf(L"Product key %s\n", key.empty() ? L"(none)" : key.c_str());
}

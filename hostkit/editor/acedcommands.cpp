#include "aced.h"

#include "casefold.h"
#include "expressionevaluator.h"
#include "host.h"

#include <cstdarg>
#include <cwchar>

using hostkit::Host;
using hostkit::SystemValue;
using hostkit::VariableResult;

namespace {

int resultOf(VariableResult result) {
    switch (result) {
    case VariableResult::ok:
        return RTNORM;
    case VariableResult::unknown:
    case VariableResult::noDocument:
        return RTERROR;
    default:
        return RTREJ;
    }
}

bool toRecord(const SystemValue& value, resbuf& record) {
    switch (value.type) {
    case RTSHORT:
        record.resval.rint = static_cast<short>(value.integer);
        break;
    case RTLONG:
        record.resval.rlong = value.integer;
        break;
    case RTREAL:
        record.resval.rreal = value.reals[0];
        break;
    case RTPOINT:
    case RT3DPOINT:
        for (int i = 0; i < 3; ++i) record.resval.rpoint[i] = value.reals[i];
        break;
    default:
        wchar_t* const text = acutNewString(value.text.c_str());
        if (!text) return false;
        record.resval.rstring = text;
        break;
    }
    record.restype = value.type;
    return true;
}

bool fromRecord(const resbuf& record, SystemValue& value) {
    value.type = record.restype;
    switch (record.restype) {
    case RTSHORT:
        value.integer = record.resval.rint;
        return true;
    case RTLONG:
        value.integer = record.resval.rlong;
        return true;
    case RTREAL:
        value.reals[0] = record.resval.rreal;
        return true;
    case RTPOINT:
    case RT3DPOINT:
        for (int i = 0; i < (record.restype == RTPOINT ? 2 : 3); ++i)
            value.reals[i] = record.resval.rpoint[i];
        return true;
    case RTSTR:
        if (!record.resval.rstring) return false;
        value.text = record.resval.rstring;
        return true;
    default:
        return false;
    }
}

bool readArgument(int type, std::va_list& arguments, SystemValue& value) {
    value.type = static_cast<short>(type);
    switch (type) {
    case RTSHORT:
    case RTLONG:
        value.integer = va_arg(arguments, int);
        return true;
    case RTREAL:
        value.reals[0] = va_arg(arguments, double);
        return true;
    case RTSTR: {
        const auto* text = va_arg(arguments, const wchar_t*);
        value.text = text ? text : L"";
        return true;
    }
    case RTPOINT:
    case RT3DPOINT: {
        const auto* point = va_arg(arguments, const double*);
        for (int i = 0; point && i < (type == RTPOINT ? 2 : 3); ++i) value.reals[i] = point[i];
        return point != nullptr;
    }
    default:
        return false;
    }
}

} // namespace

int acedGetVar(const wchar_t* name, resbuf* result) {
    Host* host = Host::current();
    if (!host || !name || !result) return RTERROR;
    SystemValue value;
    const VariableResult found = host->variables().get(name, value);
    if (found != VariableResult::ok) return RTERROR;
    return toRecord(value, *result) ? RTNORM : RTERROR;
}

int acedSetVar(const wchar_t* name, const resbuf* value) {
    Host* host = Host::current();
    if (!host || !name || !value) return RTERROR;
    hostkit::SystemVariableInfo info;
    if (!host->variables().describe(name, info)) return RTERROR;
    SystemValue given;
    if (!fromRecord(*value, given)) return RTREJ;
    return resultOf(host->variables().set(name, given));
}

int acedCommand(int type, ...) {
    Host* host = Host::current();
    if (!host) return RTERROR;
    std::wstring line;
    std::va_list arguments;
    va_start(arguments, type);
    bool isRead = true;
    for (; isRead && type != 0 && type != RTNONE; type = isRead ? va_arg(arguments, int) : 0) {
        SystemValue value;
        isRead = readArgument(type, arguments, value);
        if (isRead) hostkit::appendCommandWord(line, value);
    }
    va_end(arguments);
    if (!isRead) return RTERROR;
    const hostkit::CommandResult result = hostkit::runCommandLine(*host, line);
    if (result.status == Acad::eOk) return RTNORM;
    acutPrintf(L"\n%s: %s (%s)\n", line.c_str(),
               result.reason.empty() ? L"the command failed" : result.reason.c_str(),
               acadErrorStatusText(result.status));
    return RTREJ;
}

int acedPostCommand(const wchar_t* text) {
    Host* host = Host::current();
    if (!host || !text) return 0;
    hostkit::DeferredItem item;
    if (hostkit::equalFolded(text, L"CANCELCMD"))
        item.kind = hostkit::DeferredItem::Kind::cancel;
    else
        item.text = text;
    host->deferred().add(std::move(item));
    return 1;
}

int ads_queueexpr(const wchar_t* expression) {
    Host* host = Host::current();
    if (!host || !expression) return RTERROR;
    if (std::wcslen(expression) >= hostkit::expressionBufferLength) {
        constexpr std::size_t shown = 60;
        host->port().reportProblem(L"an expression of 512 characters or more is not queued: " +
                                   std::wstring(expression, shown) + L"...");
        return RTREJ;
    }
    hostkit::DeferredItem item;
    item.kind = hostkit::DeferredItem::Kind::expression;
    item.text = expression;
    host->deferred().add(std::move(item));
    return RTNORM;
}

Acad::ErrorStatus AcApDocManager::sendStringToExecute(AcApDocument* document, const wchar_t* text,
                                                      bool activate, bool, bool echo) {
    Host* host = Host::current();
    if (!host || !document || !has(document)) return Acad::eNoDocument;
    if (!text) return Acad::eInvalidInput;
    hostkit::DeferredItem item;
    item.text = text;
    item.database = document->database();
    item.activates = activate;
    item.echoes = echo;
    host->deferred().add(std::move(item));
    return Acad::eOk;
}

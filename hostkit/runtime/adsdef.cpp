#include "adsdef.h"

#include "groupkinds.h"

#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <cwchar>

using AcDb::GroupKind;

namespace {

bool holdsText(int type) {
    if (type == RTSTR || type == RTKWORD) return true;
    if (type >= RTNONE) return false;
    const GroupKind kind = hostkit::kindOfCode(type);
    return kind == GroupKind::kText || (kind == GroupKind::kHandle && type > 0);
}

bool holdsBinary(int type) { return type < RTNONE && hostkit::kindOfCode(type) == GroupKind::kBinary; }

void copyPoint(ads_point to, const double* from) {
    for (int i = 0; from && i < 3; ++i) to[i] = from[i];
}

// Reads the value that follows a type of 5000 and above; false for a type that the list does not know.
bool readTypedValue(resbuf& record, int type, va_list& arguments) {
    switch (type) {
    case RTREAL:
    case RTANG:
    case RTORINT:
        record.resval.rreal = va_arg(arguments, double);
        return true;
    case RTPOINT:
    case RT3DPOINT:
        copyPoint(record.resval.rpoint, va_arg(arguments, const double*));
        return true;
    case RTSHORT:
        record.resval.rint = static_cast<short>(va_arg(arguments, int));
        return true;
    case RTLONG:
        record.resval.rlong = va_arg(arguments, int);
        return true;
    case RTSTR:
        record.resval.rstring = acutNewString(va_arg(arguments, const wchar_t*));
        return true;
    case RTDXF0:
        return false;
    case RTENAME:
    case RTPICKS: {
        const auto* name = va_arg(arguments, const std::intptr_t*);
        for (int i = 0; name && i < 2; ++i) record.resval.rlname[i] = name[i];
        return true;
    }
    case RTNONE:
    case RTLB:
    case RTLE:
    case RTDOTE:
    case RTNIL:
    case RTT:
    case RTVOID:
        return true;
    default:
        return false;
    }
}

bool readGroupValue(resbuf& record, int code, va_list& arguments) {
    if (holdsText(code)) {
        record.resval.rstring = acutNewString(va_arg(arguments, const wchar_t*));
        return true;
    }
    switch (hostkit::kindOfCode(code)) {
    case GroupKind::kPoint:
        copyPoint(record.resval.rpoint, va_arg(arguments, const double*));
        return true;
    case GroupKind::kReal:
        record.resval.rreal = va_arg(arguments, double);
        return true;
    case GroupKind::kInt16:
    case GroupKind::kBool:
        record.resval.rint = static_cast<short>(va_arg(arguments, int));
        return true;
    case GroupKind::kInt32:
        record.resval.rlong = va_arg(arguments, int);
        return true;
    case GroupKind::kInt64:
        record.resval.mnInt64 = va_arg(arguments, Adesk::Int64);
        return true;
    case GroupKind::kHandle: {
        const auto* name = va_arg(arguments, const std::intptr_t*);
        for (int i = 0; name && i < 2; ++i) record.resval.rlname[i] = name[i];
        return true;
    }
    default:
        return false;
    }
}

} // namespace

resbuf* acutNewRb(int type) {
    // Not calloc: for pieces this small it passes by the allocator's short cut.
    auto* record = static_cast<resbuf*>(std::malloc(sizeof(resbuf)));
    if (!record) return nullptr;
    std::memset(record, 0, sizeof *record);
    record->restype = static_cast<short>(type);
    return record;
}

int acutRelRb(resbuf* list) {
    while (list) {
        resbuf* next = list->rbnext;
        if (holdsText(list->restype))
            std::free(list->resval.rstring);
        else if (holdsBinary(list->restype))
            std::free(list->resval.rbinary.buf);
        std::free(list);
        list = next;
    }
    return RTNORM;
}

resbuf* acutBuildList(int type, ...) {
    resbuf* head = nullptr;
    resbuf** tail = &head;
    va_list arguments;
    va_start(arguments, type);
    // Group code 0 closes the list, so an entity's type is given as RTDXF0, which is kept as group 0 with a
    // text.
    for (int code = type; code != 0; code = va_arg(arguments, int)) {
        resbuf* record = acutNewRb(code);
        if (!record) {
            acutRelRb(head);
            head = nullptr;
            break;
        }
        *tail = record;
        tail = &record->rbnext;
        bool known;
        if (code == RTDXF0) {
            record->restype = 0;
            record->resval.rstring = acutNewString(va_arg(arguments, const wchar_t*));
            known = true;
        } else {
            known = code >= RTNONE ? readTypedValue(*record, code, arguments)
                                   : readGroupValue(*record, code, arguments);
        }
        if (known) continue;
        acutRelRb(head);
        head = nullptr;
        break;
    }
    va_end(arguments);
    return head;
}

wchar_t* acutNewString(const wchar_t* text) {
    if (!text) return nullptr;
    const std::size_t bytes = (std::wcslen(text) + 1) * sizeof(wchar_t);
    auto* copy = static_cast<wchar_t*>(std::malloc(bytes));
    if (copy) std::wmemcpy(copy, text, bytes / sizeof(wchar_t));
    return copy;
}

void acutDelString(wchar_t*& text) {
    std::free(text);
    text = nullptr;
}

void acutDelBuffer(wchar_t*& text) { acutDelString(text); }

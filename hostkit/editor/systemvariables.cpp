#include "systemvariables.h"

#include "adscodes.h"
#include "casefold.h"
#include "dbdatabase.h"
#include "headeraccess.h"
#include "headervariables.h"
#include "host.h"
#include "variablestore.h"
#include "variabletable.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace hostkit {

struct SystemVariables::Own {
    SystemVariableInfo info{};
    const ComputedRow* computed = nullptr;
    short code = 0;
    SystemValue value{}; ///< of session and settings; of header variables what a header without it means
    mutable bool isLoaded = false; ///< settings: the registry was asked
};

namespace {

AcApDocument* currentDocument() {
    Host* host = Host::current();
    return host ? host->documents().curDocument() : nullptr;
}

bool isPoint(short type) { return type == RTPOINT || type == RT3DPOINT; }
bool isInteger(short type) { return type == RTSHORT || type == RTLONG; }

// The value in the wanted type; false where it is of another kind.
bool convert(const SystemValue& from, short type, SystemValue& to) {
    to = from;
    to.type = type;
    if (from.type == type) return true;
    if (isInteger(from.type) && isInteger(type)) return true;
    if (isInteger(from.type) && type == RTREAL) {
        to.reals[0] = from.integer;
        return true;
    }
    if (!isPoint(from.type) || !isPoint(type)) return false;
    to.reals[2] = 0.0;
    return true;
}

int coordinates(short type) { return type == RT3DPOINT ? 3 : type == RTPOINT ? 2 : type == RTREAL ? 1 : 0; }

bool isWithin(const SystemVariableInfo& info, const SystemValue& value) {
    for (int i = 0; i < coordinates(value.type); ++i)
        if (!std::isfinite(value.reals[i])) return false;
    const double number = isInteger(value.type) ? value.integer : value.reals[0];
    if (value.type == RTSHORT && (value.integer < std::numeric_limits<short>::min() ||
                                  value.integer > std::numeric_limits<short>::max()))
        return false;
    const bool isNumber = isInteger(value.type) || value.type == RTREAL;
    return !isNumber || info.minimum == info.maximum || (number >= info.minimum && number <= info.maximum);
}

// A variable that only the drawing's header knows.
bool describeHeader(const AcDbDatabase& database, const std::wstring& name, SystemVariableInfo& info) {
    SystemValue value;
    if (!readHeader(database, name, value)) return false;
    const bool isReadOnly = isKeptByHost(name) || isHandleVariable(database, name);
    info = {name, value.type, VariablePlace::header, isReadOnly, 0.0, 0.0};
    return true;
}

} // namespace

const wchar_t* textOf(VariableResult result) {
    switch (result) {
    case VariableResult::ok:
        return L"";
    case VariableResult::unknown:
        return L"there is no variable of that name";
    case VariableResult::noDocument:
        return L"it belongs to a drawing, and none is open";
    case VariableResult::readOnly:
        return L"it is read-only";
    case VariableResult::wrongType:
        return L"the value is of another type";
    case VariableResult::outOfRange:
        return L"the value is not one that it can have";
    }
    return L"";
}

SystemVariables::SystemVariables() {
    for (std::size_t i = 0; i < variableRowCount; ++i) {
        const VariableRow& row = variableRows[i];
        auto own = std::make_unique<Own>();
        own->info = {row.name, row.type, row.place, row.isReadOnly, row.minimum, row.maximum};
        own->code = row.code;
        own->value.type = row.type;
        own->value.integer = isInteger(row.type) ? static_cast<int>(row.first) : 0;
        own->value.reals[0] = row.first;
        if (row.firstText) own->value.text = row.firstText;
        m_own.push_back(std::move(own));
    }
    for (std::size_t i = 0; i < computedRowCount; ++i) {
        const ComputedRow& row = computedRows[i];
        auto own = std::make_unique<Own>();
        own->info = {row.name, row.type, VariablePlace::computed, !row.set, 0.0, 0.0};
        own->computed = &row;
        m_own.push_back(std::move(own));
    }
    for (const auto& own : m_own) m_index.emplace(own->info.name, own.get());
}

SystemVariables::~SystemVariables() = default;

SystemVariables::Own* SystemVariables::find(std::wstring_view name) const {
    const auto found = m_index.find(name);
    return found == m_index.end() ? nullptr : found->second;
}

VariableResult SystemVariables::get(std::wstring_view name, SystemValue& value) const {
    AcApDocument* document = currentDocument();
    Own* own = find(name);
    if (!own) {
        if (!document) return VariableResult::unknown;
        return readHeader(*document->database(), upperCase(name), value) ? VariableResult::ok
                                                                         : VariableResult::unknown;
    }
    if (own->computed) {
        if (own->computed->needsDocument && !document) return VariableResult::noDocument;
        SystemValue found;
        found.type = own->info.type;
        own->computed->get({Host::current(), document}, found);
        value = std::move(found);
        return VariableResult::ok;
    }
    if (own->info.place == VariablePlace::header) {
        if (!document) return VariableResult::noDocument;
        SystemValue found;
        const bool isThere = readHeader(*document->database(), own->info.name, found);
        // A header that has it with a group of another kind counts as one without it.
        if (!isThere || !convert(found, own->info.type, value)) value = own->value;
        return VariableResult::ok;
    }
    if (own->info.place == VariablePlace::settings && !std::exchange(own->isLoaded, true)) {
        SystemValue stored;
        stored.type = own->info.type;
        if (loadSetting(own->info.name, stored) && isWithin(own->info, stored)) own->value = stored;
    }
    value = own->value;
    return VariableResult::ok;
}

VariableResult SystemVariables::setOwn(Own& own, const SystemValue& value) {
    AcApDocument* document = currentDocument();
    if (own.computed) {
        if (own.computed->needsDocument && !document) return VariableResult::noDocument;
        return own.computed->set({Host::current(), document}, value);
    }
    if (own.info.place == VariablePlace::header) {
        if (!document) return VariableResult::noDocument;
        return writeHeader(*document->database(), own.info.name, value, own.code);
    }
    own.value = value;
    own.isLoaded = true;
    if (own.info.place == VariablePlace::settings) storeSetting(own.info.name, value);
    return VariableResult::ok;
}

int SystemVariables::integer(std::wstring_view name, int otherwise) const {
    SystemValue value;
    const bool isWhole =
        get(name, value) == VariableResult::ok && (value.type == RTSHORT || value.type == RTLONG);
    return isWhole ? value.integer : otherwise;
}

VariableResult SystemVariables::set(std::wstring_view name, const SystemValue& value) {
    SystemVariableInfo info;
    if (!describe(name, info)) return VariableResult::unknown;
    if (info.isReadOnly) return VariableResult::readOnly;
    SystemValue converted;
    if (!convert(value, info.type, converted)) return VariableResult::wrongType;
    if (!isWithin(info, converted)) return VariableResult::outOfRange;
    if (Own* own = find(name)) return setOwn(*own, converted);
    // Its group is there, and keeps its code.
    return writeHeader(*currentDocument()->database(), info.name, converted, 0);
}

VariableResult SystemVariables::setByHost(std::wstring_view name, const SystemValue& value) {
    Own* own = find(name);
    if (!own || own->info.place != VariablePlace::session) return VariableResult::unknown;
    SystemValue converted;
    if (!convert(value, own->info.type, converted)) return VariableResult::wrongType;
    if (!isWithin(own->info, converted)) return VariableResult::outOfRange;
    own->value = std::move(converted);
    return VariableResult::ok;
}

bool SystemVariables::describe(std::wstring_view name, SystemVariableInfo& info) const {
    if (const Own* own = find(name)) {
        info = own->info;
        return true;
    }
    const AcApDocument* document = currentDocument();
    return document && describeHeader(*document->database(), upperCase(name), info);
}

std::vector<std::wstring> SystemVariables::names() const {
    std::vector<std::wstring> all;
    for (const auto& own : m_own) all.push_back(own->info.name);
    if (const AcApDocument* document = currentDocument())
        for (const auto& each : document->database()->header().all())
            if (!find(each.name)) all.push_back(each.name);
    std::sort(all.begin(), all.end());
    return all;
}

} // namespace hostkit

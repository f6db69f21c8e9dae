#include "dimensionoverrides.h"

#include "dbaccess.h"
#include "extendeddata.h"

#include "groupcodes.h"

#include <utility>

namespace hostkit {

namespace {

constexpr const wchar_t* application = L"ACAD";
constexpr const wchar_t* listName = L"DSTYLE";
constexpr short textCode = 1000;
constexpr short braceCode = 1002;
constexpr short referenceCode = 1005;
constexpr short realCode = 1040;
constexpr short integerCode = 1070;

/// Where the list of overrides stands.
struct OverrideList {
    bool isThere = false;
    std::size_t from = 0;        ///< its name
    std::size_t firstPair = 0;   ///< behind the open brace
    std::size_t behindPairs = 0; ///< the closing brace, or what ended a list without one
    std::size_t to = 0;
};

/// Calls f(code, value, from, to) for each pair and tells where the pairs end.
template <typename F>
std::size_t forEachPair(const GroupBlock& data, std::size_t from, F&& f) {
    GroupWalker walker(data, from);
    AcDbDxfGroup group;
    for (;;) {
        const std::size_t pair = walker.position();
        if (!walker.next(group) || group.code != integerCode) return pair;
        const auto code = static_cast<short>(group.integer);
        short valueCode = 0;
        if (!walker.peek(valueCode) || valueCode == braceCode || valueCode == applicationCode) return pair;
        walker.next(group);
        f(code, group, pair, walker.position());
    }
}

OverrideList findOverrides(const GroupBlock& data) {
    OverrideList list;
    ApplicationSpan span;
    if (!findApplication(data, application, span)) return list;
    GroupWalker walker(data, span.behindName);
    AcDbDxfGroup group;
    while (walker.position() < span.to) {
        list.from = walker.position();
        if (!walker.next(group)) return list;
        if (!group.isText(textCode, listName) || !walker.next(group) || !group.isText(braceCode, L"{"))
            continue;
        list.isThere = true;
        list.firstPair = walker.position();
        list.behindPairs = forEachPair(data, list.firstPair, [](auto&&...) {});
        GroupWalker end(data, list.behindPairs);
        list.to = end.next(group) && group.isText(braceCode, L"}") ? end.position() : list.behindPairs;
        return list;
    }
    return list;
}

void take(const AcDbDxfGroup& group, const AcDbDatabase*, const DimensionVariable&, std::wstring& value) {
    if (group.code == textCode) value = group.text;
}

void take(const AcDbDxfGroup& group, const AcDbDatabase*, const DimensionVariable&, double& value) {
    if (group.code == realCode) value = group.real;
}

void take(const AcDbDxfGroup& group, const AcDbDatabase* database, const DimensionVariable& variable,
          AcDbObjectId& value) {
    if (group.code != referenceCode || !database) return;
    const AcDbObjectId id = DatabaseAccess::find(*database, group.handle());
    if (checkVariable(variable, id) == Acad::eOk) value = id;
}

template <typename Integer>
void take(const AcDbDxfGroup& group, const AcDbDatabase*, const DimensionVariable&, Integer& value) {
    if (group.code == integerCode) value = static_cast<Integer>(group.integer);
}

void appendPair(GroupBlock& data, short code, const AcDbDxfGroup& value) {
    data.appendInteger(integerCode, code);
    data.append(value);
}

void appendNewList(GroupBlock& data, short code, const AcDbDxfGroup& value) {
    data.appendText(textCode, listName);
    data.appendText(braceCode, L"{");
    appendPair(data, code, value);
    data.appendText(braceCode, L"}");
}

GroupBlock withNewList(const GroupBlock& data, short code, const AcDbDxfGroup& value) {
    GroupBlock result;
    ApplicationSpan span;
    const bool hasApplication = findApplication(data, application, span);
    result.appendPart(data, 0, hasApplication ? span.to : data.size());
    if (!hasApplication) result.appendText(applicationCode, application);
    appendNewList(result, code, value);
    if (hasApplication) result.appendPart(data, span.to, data.size());
    return result;
}

} // namespace

void applyOverrides(const GroupBlock& data, const AcDbDatabase* database, DimensionVariables& variables) {
    const OverrideList list = findOverrides(data);
    if (!list.isThere) return;
    forEachPair(data, list.firstPair, [&](short code, const AcDbDxfGroup& group, std::size_t, std::size_t) {
        const DimensionVariable* const variable = dimensionVariable(code);
        if (!variable) return;
        std::visit([&](auto member) { take(group, database, *variable, variables.*member); },
                   variable->member);
    });
}

AcDbDxfGroup overrideGroup(double value) {
    AcDbDxfGroup group;
    group.code = realCode;
    group.kind = AcDb::GroupKind::kReal;
    group.real = value;
    return group;
}

AcDbDxfGroup overrideGroup(const std::wstring& value) {
    AcDbDxfGroup group;
    group.code = textCode;
    group.text = value;
    return group;
}

AcDbDxfGroup overrideGroup(AcDbObjectId value) {
    AcDbDxfGroup group;
    group.code = referenceCode;
    group.kind = AcDb::GroupKind::kHandle;
    group.integer = static_cast<Adesk::Int64>(value.handle().value());
    return group;
}

GroupBlock withOverride(const GroupBlock* data, short code, const AcDbDxfGroup& value) {
    static const GroupBlock none;
    const GroupBlock& before = data ? *data : none;
    const OverrideList list = findOverrides(before);
    if (!list.isThere) return withNewList(before, code, value);
    GroupBlock result;
    result.appendPart(before, 0, list.firstPair);
    bool isPlaced = false;
    forEachPair(before, list.firstPair,
                [&](short each, const AcDbDxfGroup&, std::size_t from, std::size_t to) {
                    if (each != code)
                        result.appendPart(before, from, to);
                    else if (!std::exchange(isPlaced, true))
                        appendPair(result, code, value);
                });
    if (!isPlaced) appendPair(result, code, value);
    result.appendPart(before, list.behindPairs, before.size());
    return result;
}

GroupBlock withoutOverrides(const GroupBlock& data) {
    const OverrideList list = findOverrides(data);
    if (!list.isThere) return data;
    GroupBlock result;
    result.appendPart(data, 0, list.from);
    result.appendPart(data, list.to, data.size());
    return result;
}

} // namespace hostkit

#include "extendeddata.h"

#include "dbaccess.h"

#include "casefold.h"
#include "groupcodes.h"
#include "groupkinds.h"

#include <string>
#include <utility>
#include <vector>

namespace hostkit {

namespace {

constexpr short firstCode = 1000;

/// Walks a block application by application. What stands before the first one belongs to none.
class ApplicationWalker {
public:
    explicit ApplicationWalker(const GroupBlock& data)
        : m_walker(data) {
        skipValues();
    }
    bool next(ApplicationSpan& span) {
        span.from = m_walker.position();
        AcDbDxfGroup group;
        if (!m_walker.next(group)) return false;
        m_name = group.text;
        span.behindName = m_walker.position();
        skipValues();
        span.to = m_walker.position();
        return true;
    }
    /// Of the last span; good until the next call, and until values are walked over.
    std::wstring_view name() const { return m_name; }

private:
    void skipValues() {
        for (short code = 0; m_walker.peek(code) && code != applicationCode;) m_walker.skip();
    }

    GroupWalker m_walker;
    std::wstring_view m_name;
};

struct NamedSpan : ApplicationSpan {
    std::wstring name;
};

/// A block and where its applications stand in it.
struct Divided {
    const GroupBlock& data;
    std::vector<NamedSpan> spans;

    explicit Divided(const GroupBlock& block)
        : data(block) {
        ApplicationWalker walker(block);
        for (ApplicationSpan span; walker.next(span);) spans.push_back({span, std::wstring(walker.name())});
    }
    const NamedSpan* find(std::wstring_view name) const {
        for (const NamedSpan& span : spans)
            if (span.name == name || equalFolded(span.name, name)) return &span;
        return nullptr;
    }
};

Acad::ErrorStatus pack(const resbuf* list, GroupBlock& data) {
    constexpr std::size_t ordinarySize = 512;
    data.reserve(ordinarySize);
    if (!list || list->restype != applicationCode) return Acad::eInvalidResBuf;
    for (; list; list = list->rbnext) {
        if (list->restype < firstCode || list->restype > lastGroupCode) return Acad::eInvalidResBuf;
        const Acad::ErrorStatus status = data.appendRecord(*list);
        if (status != Acad::eOk) return status;
    }
    return data.isFinite() ? Acad::eOk : Acad::eInvalidResBuf;
}

// Each application once, and known to the drawing where it has values.
Acad::ErrorStatus check(const Divided& now, const AcDbDatabase* database) {
    for (const NamedSpan& span : now.spans) {
        if (now.find(span.name) != &span) return Acad::eInvalidResBuf;
        if (database && !span.isEmpty() && registeredApplication(*database, span.name).isNull())
            return Acad::eRegappIdNotFound;
    }
    return Acad::eOk;
}

GroupBlock merged(const Divided& before, const Divided& now) {
    GroupBlock result;
    result.reserve(before.data.size() + now.data.size());
    const auto take = [&](const NamedSpan& span) {
        if (!span.isEmpty()) result.appendPart(now.data, span.from, span.to);
    };
    for (const NamedSpan& span : before.spans) {
        if (const NamedSpan* replacement = now.find(span.name))
            take(*replacement);
        else
            result.appendPart(before.data, span.from, span.to);
    }
    for (const NamedSpan& span : now.spans)
        if (!before.find(span.name)) take(span);
    return result;
}

} // namespace

AcDbObjectId registeredApplication(const AcDbDatabase& database, std::wstring_view name) {
    const auto* table = DatabaseAccess::objectOf<AcDbSymbolTable>(database.regAppTableId());
    return table ? table->find(name) : AcDbObjectId();
}

bool findApplication(const GroupBlock& data, std::wstring_view name, ApplicationSpan& span) {
    ApplicationWalker walker(data);
    for (ApplicationSpan each; walker.next(each);) {
        if (walker.name() != name && !equalFolded(walker.name(), name)) continue;
        span = each;
        return true;
    }
    return false;
}

Acad::ErrorStatus replaceExtendedData(const GroupBlock& before, const resbuf* list,
                                      const AcDbDatabase* database, GroupBlock& result) {
    GroupBlock given;
    Acad::ErrorStatus status = pack(list, given);
    if (status != Acad::eOk) return status;
    const Divided now(given);
    status = check(now, database);
    if (status != Acad::eOk) return status;
    GroupBlock replaced = merged(Divided(before), now);
    if (replaced.size() > GroupBlock::maxExtendedDataSize) return Acad::eXdataSizeExceeded;
    result = std::move(replaced);
    return Acad::eOk;
}

} // namespace hostkit

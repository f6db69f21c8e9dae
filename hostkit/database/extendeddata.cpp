#include "extendeddata.h"

#include "dbaccess.h"

#include "casefold.h"

namespace hostkit {

namespace {

constexpr short applicationCode = 1001;
constexpr short firstCode = 1000;
constexpr short lastCode = 1071;

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

bool isRegistered(const AcDbDatabase& database, std::wstring_view application) {
    const auto* table = DatabaseAccess::objectOf<AcDbSymbolTable>(database.regAppTableId());
    return table && !table->find(application).isNull();
}

// Each application once, and known to the drawing where it has values.
Acad::ErrorStatus checkApplications(const GroupBlock& data, const AcDbDatabase* database) {
    ApplicationWalker walker(data);
    for (ApplicationSpan span; walker.next(span);) {
        ApplicationSpan first;
        (void)findApplication(data, walker.name(), first);
        if (first.from != span.from) return Acad::eInvalidResBuf;
        if (database && !span.isEmpty() && !isRegistered(*database, walker.name()))
            return Acad::eRegappIdNotFound;
    }
    return Acad::eOk;
}

} // namespace

bool findApplication(const GroupBlock& data, std::wstring_view name, ApplicationSpan& span) {
    ApplicationWalker walker(data);
    for (ApplicationSpan each; walker.next(each);) {
        if (walker.name() != name && !equalFolded(walker.name(), name)) continue;
        span = each;
        return true;
    }
    return false;
}

Acad::ErrorStatus packExtendedData(const resbuf* list, const AcDbDatabase* database, GroupBlock& data) {
    constexpr std::size_t ordinarySize = 512;
    data.reserve(ordinarySize);
    if (!list || list->restype != applicationCode) return Acad::eInvalidResBuf;
    for (; list; list = list->rbnext) {
        if (list->restype < firstCode || list->restype > lastCode) return Acad::eInvalidResBuf;
        const Acad::ErrorStatus status = data.appendRecord(*list);
        if (status != Acad::eOk) return status;
    }
    return checkApplications(data, database);
}

GroupBlock replacedExtendedData(const GroupBlock& before, const GroupBlock& now) {
    GroupBlock result;
    result.reserve(before.size() + now.size());
    const auto take = [&](const ApplicationSpan& span) {
        if (!span.isEmpty()) result.appendPart(now, span.from, span.to);
    };
    ApplicationWalker old(before);
    for (ApplicationSpan span; old.next(span);) {
        ApplicationSpan replacement;
        if (findApplication(now, old.name(), replacement))
            take(replacement);
        else
            result.appendPart(before, span.from, span.to);
    }
    ApplicationWalker given(now);
    for (ApplicationSpan span, ignored; given.next(span);)
        if (!findApplication(before, given.name(), ignored)) take(span);
    return result;
}

} // namespace hostkit

#include "memorydxffiler.h"

#include "dbaccess.h"
#include "groupcodes.h"

namespace hostkit {

void MemoryDxfFiler::rewind() {
    m_walker.reset();
    m_isWaiting = m_hasLast = false;
}

bool MemoryDxfFiler::fetch() {
    if (m_isWaiting) return true;
    if (!m_walker) m_walker.emplace(groups());
    return m_isWaiting = m_walker->next(m_group);
}

bool MemoryDxfFiler::isMark() const { return m_group.code == subclassMarkCode; }

Acad::ErrorStatus MemoryDxfFiler::readItem(AcDbDxfGroup& group) {
    if (m_status != Acad::eOk) return m_status;
    m_hasLast = false;
    if (!fetch() || isMark()) return Acad::eEndOfObject;
    group = m_group;
    m_isWaiting = false;
    m_hasLast = true;
    return Acad::eOk;
}

bool MemoryDxfFiler::atSubclassData(const wchar_t* name) {
    m_hasLast = false;
    while (fetch() && !isMark()) m_isWaiting = false;
    if (!m_isWaiting || m_group.text != name) return false;
    m_isWaiting = false;
    return true;
}

AcDbObjectId MemoryDxfFiler::objectIdOf(const AcDbDxfGroup& group) {
    return database() && group.handle() != 0 ? DatabaseAccess::find(*database(), group.handle())
                                             : AcDbObjectId();
}

void MemoryDxfFiler::writeSubclassMark(const wchar_t* name) { writeText(subclassMarkCode, name); }

} // namespace hostkit

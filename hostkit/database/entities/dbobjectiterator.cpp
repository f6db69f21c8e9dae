#include "dbobjectiterator.h"

#include "dbent.h"

void AcDbObjectIterator::start(bool atBeginning) {
    m_index = atBeginning ? 0 : m_parts.count() - 1;
    skip(!atBeginning);
}

// An index before the first wraps to the largest number and counts as done.
void AcDbObjectIterator::step(bool backwards) {
    if (done()) return;
    m_index += backwards ? static_cast<std::size_t>(-1) : 1;
    skip(backwards);
}

void AcDbObjectIterator::skip(bool backwards) {
    while (m_skipErased && !done() && m_parts.isErasedAt(m_index))
        m_index += backwards ? static_cast<std::size_t>(-1) : 1;
}

AcDbEntity* AcDbObjectIterator::entity() const {
    return done() || m_parts.isResident() ? nullptr : m_parts.at(m_index);
}

bool AcDbObjectIterator::setPosition(AcDbObjectId id) {
    const std::size_t found = id.isNull() ? m_parts.count() : m_parts.find(id);
    if (found >= m_parts.count()) return false;
    m_index = found;
    return true;
}

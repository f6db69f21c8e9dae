// Stand-in for the host's AcDbObjectIterator. Covers the parts of an entity (vertices, attributes); leaves out rollback.
#pragma once

#include "subentitylist.h"

/// Walks the parts that one entity owns. The caller deletes it; the entity must stay open (or, non-resident,
/// alive).
class AcDbObjectIterator {
public:
    explicit AcDbObjectIterator(const hostkit::SubentityList& parts, bool skipErased = true)
        : m_parts(parts)
        , m_skipErased(skipErased) {
        start();
    }
    virtual ~AcDbObjectIterator() = default;

    void start(bool atBeginning = true);
    bool done() const { return m_index >= m_parts.count(); }
    void step(bool backwards = false);
    /// Null for a part of a non-resident entity, and when done.
    AcDbObjectId objectId() const { return done() ? AcDbObjectId() : m_parts.idAt(m_index); }
    /// The part of a non-resident entity; null for one in a drawing, which is opened by its id, and when
    /// done.
    AcDbEntity* entity() const;
    /// False, and no move, when the part is not this entity's.
    bool setPosition(AcDbObjectId id);

private:
    void skip(bool backwards);

    const hostkit::SubentityList& m_parts;
    std::size_t m_index = 0;
    bool m_skipErased;
};

// Entities that one entity owns: vertices, attributes and the end of their sequence, in a drawing and out of
// one; leaves out the meaning of either.
#pragma once

#include "acadstrc.h"
#include "dbid.h"

#include <cstddef>
#include <memory>
#include <vector>

class AcDbDatabase;
class AcDbEntity;

namespace hostkit {

/// Parts in order. As long as the owner is non-resident it holds them itself; when it enters a drawing they
/// do so with it, and are reached by id from then on.
class SubentityList {
public:
    SubentityList() = default;
    ~SubentityList();
    /// Copies are non-resident: clones of the parts that are not erased.
    SubentityList(const SubentityList& other);
    /// Names the same parts, where they are in a drawing; else as a copy.
    SubentityList& operator=(const SubentityList& other);

    std::size_t count() const { return m_isResident ? m_ids.size() : m_parts.size(); }
    bool isResident() const { return m_isResident; }
    /// The part itself, open or not; null only where a drawing file promised one that never came.
    AcDbEntity* at(std::size_t index) const;
    AcDbObjectId idAt(std::size_t index) const { return m_isResident ? m_ids[index] : AcDbObjectId(); }
    bool isErasedAt(std::size_t index) const { return m_isResident && m_ids[index].isErased(); }
    /// The index of an id, or count().
    std::size_t find(AcDbObjectId id) const;

    /// Takes a non-resident part before the one at `index`. With a resident owner the part enters its drawing
    /// and is open for write afterwards. eNullObjectPointer, eAlreadyInDb, eInvalidIndex.
    Acad::ErrorStatus insert(AcDbEntity& owner, std::size_t index, AcDbEntity* part, AcDbObjectId& id);
    Acad::ErrorStatus append(AcDbEntity& owner, AcDbEntity* part, AcDbObjectId& id) {
        return insert(owner, count(), part, id);
    }
    /// Frees the non-resident parts; nothing for a resident owner, whose parts are erased by their ids.
    void clearOwned();

    /// The owner has got its id: its parts get theirs. They are closed afterwards.
    void enterDrawing(AcDbEntity& owner);
    /// Parts that entered and whose owner cannot; they are its own again.
    void leaveDrawing(AcDbDatabase& database) noexcept;
    /// The owner was read into a drawing: the parts that follow are reached by id.
    void becomeResident() { m_isResident = true; }
    /// A reader adds a part that the drawing has already.
    void appendResident(AcDbObjectId id);
    /// A part that came lately is none any more.
    std::size_t takeBack(AcDbObjectId id);
    void giveBack(AcDbObjectId id, std::size_t place);
    /// Erases or restores all parts with their owner; busy ones are passed over.
    void eraseAll(bool erasing);

    /// The closing record of a sequence in a drawing file; null where there is none.
    AcDbObjectId sequenceEnd() const { return m_sequenceEnd; }
    void setSequenceEnd(AcDbObjectId id) { m_sequenceEnd = id; }

private:
    bool m_isResident = false;
    std::vector<AcDbObjectId> m_ids;
    std::vector<std::unique_ptr<AcDbEntity>> m_parts;
    AcDbObjectId m_sequenceEnd;
};

} // namespace hostkit

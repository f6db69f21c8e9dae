// What of a drawing is to be shown anew, and who wants to know: entities, layers, blocks; leaves out
// linetypes, text styles and dimension styles.
#pragma once

#include "dbid.h"

#include <vector>

class AcDbBlockTableRecord;
class AcDbObject;

namespace hostkit {

/// The entity that stands in a block, with that block: of a vertex or an attribute the one that owns it. No
/// block where there is none.
struct StandingEntity {
    const AcDbObject* entity;
    const AcDbBlockTableRecord* block;
};
StandingEntity standingEntity(const AcDbObject& entity);

/// One thing whose look may have changed.
struct ShownChange {
    enum class Kind : unsigned char {
        entity, ///< of a space: new, changed or restored
        gone,   ///< an entity of a space was erased, or never came
        redraw, ///< an entity of a space is as before; somebody asks to see it drawn again
        layer,  ///< its state, colour, linetype ...; erased too
        block   ///< a block that is no space, or what stands in it; all that shows it looks otherwise
    };
    Kind kind;
    /// The entity that stands in the space (for a vertex or an attribute the one that owns it), the layer or
    /// the block.
    AcDbObjectId id;
    /// What changed itself: the vertex, the entity in the block. The same as id for others.
    AcDbObjectId cause;
};

/// Hears of changes while they are told, on the thread of the drawing. It opens nothing for write.
class DisplayObserver {
public:
    virtual ~DisplayObserver() = default;
    /// Told when an object that was changed is closed, once for each open; after an undo, an aborted
    /// transaction or a cancelled open once for each object that was put back. It may be open for read.
    virtual void shownAnew(const ShownChange& change) = 0;
    /// An object that is open for write changes from now on, until shownAnew tells of it or cancel puts it
    /// back.
    virtual void changeBegins(const AcDbObject&) {}
};

/// The observers of a drawing. Without one nothing is found out, and a change costs one look at that.
class DisplayChanges {
public:
    DisplayChanges() = default;
    DisplayChanges(const DisplayChanges&) = delete;
    DisplayChanges& operator=(const DisplayChanges&) = delete;

    bool isWatched() const { return !m_observers.empty(); }
    /// The observer is told until it is removed; not while it is being told.
    void add(DisplayObserver& observer) { m_observers.push_back(&observer); }
    void remove(DisplayObserver& observer);

    void begins(const AcDbObject& object) const {
        if (isWatched()) tellOfBeginning(object);
    }
    void changed(const AcDbObject& object) const {
        if (isWatched()) tellOfChange(object);
    }
    void redrawAsked(const AcDbObject& entity) const {
        if (isWatched()) tellOfRedraw(entity);
    }
    /// An object was put back; it is told of with the others, once, by tellRestored.
    void restored(const AcDbStub& stub) {
        if (isWatched()) m_restored.push_back(&stub);
    }
    void tellRestored();

private:
    void tellOfBeginning(const AcDbObject& object) const;
    void tellOfChange(const AcDbObject& object) const;
    void tellOfRedraw(const AcDbObject& entity) const;
    void tell(const ShownChange& change) const;

    std::vector<DisplayObserver*> m_observers;
    std::vector<const AcDbStub*> m_restored;
};

} // namespace hostkit

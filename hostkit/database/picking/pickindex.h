// Index of a drawing for picking: boxes of a block's entities, kept up with changes; leaves out visibility
// and erasure, which are asked of what it finds.
#pragma once

#include "changingboxtree.h"
#include "displaychanges.h"
#include "pickboxes.h"

#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class AcDbDatabase;

namespace hostkit {

/// Belongs to its drawing, from the first question on. A tree stands for each block, the spaces too, that was
/// asked about and has more than a few entities. Changes are only noted when they are told; each costs a few
/// nanoseconds, and some microseconds at the next question. An entity that is open for write is looked at
/// anew at every question. Classes of applications are asked for their extents when they are told to have
/// changed, and when what they own has.
class PickIndex : public PickBoxes, private DisplayObserver {
public:
    explicit PickIndex(AcDbDatabase& database);
    ~PickIndex() override;

    /// The drawing's own, as the drawing is now.
    static PickIndex& upToDate(AcDbDatabase& database);

    /// Ascending, which is the drawing order.
    bool findNear(const AcDbBlockTableRecord& block, const std::function<bool(const SearchBox&)>& near,
                  std::vector<std::uint32_t>& positions) override;
    /// Of memory, for all blocks.
    std::size_t bytes() const;

private:
    using Blocks = std::unordered_set<const AcDbBlockTableRecord*>;

    /// The entities of one block; numbers are places in the block's list.
    struct Contents {
        ChangingBoxTree tree;
        std::vector<std::uint32_t> endless; ///< ascending
        std::vector<std::uint32_t> holders; ///< what shows blocks, ascending
        std::vector<std::uint32_t> waiting; ///< their boxes may be others now
        std::uint32_t known = 0;            ///< of the list's front

        void set(std::uint32_t position, const SearchBox& box);
        void forgetFrom(std::uint32_t position);
    };

    void shownAnew(const ShownChange& change) override { note(change.cause.stub()); }
    void changeBegins(const AcDbObject& object) override;
    void note(const AcDbStub* stub);

    void drop();
    void startAnew();
    void catchUp();
    void collect(const AcDbStub& stub, Blocks& changed, std::vector<const AcDbStub*>& entities);
    void forgetUsersOf(Blocks& changed);
    void markHolders(const Blocks& changed);
    void mark(const AcDbStub& entity);
    bool isPlaced(const AcDbStub& entity, const AcDbBlockTableRecord& block) const;
    void dropUnplaced(const AcDbStub& entity);

    Contents& contentsOf(const AcDbBlockTableRecord& block);
    void build(const AcDbBlockTableRecord& block, Contents& contents);
    void catchUp(const AcDbBlockTableRecord& block, Contents& contents);
    bool takeTail(const AcDbBlockTableRecord& block, Contents& contents);
    void setAnew(const AcDbBlockTableRecord& block, Contents& contents, std::uint32_t position);
    std::uint32_t positionOf(const AcDbStub* stub) const;
    void setPosition(const AcDbStub* stub, std::uint32_t position);

    SearchBox ofContents(const AcDbBlockTableRecord& block) override;
    void noteShown(const AcDbBlockTableRecord& inner, const AcDbBlockTableRecord& outer) override;
    void noteDrawn(const AcDbEntity& entity, const BlockList& blocks) override;
    bool mayShowBlock(const AcDbEntity& entity) const;
    bool showsAnyOf(const AcDbEntity& holder, const Blocks& blocks) const;

    AcDbDatabase& m_database;
    std::unordered_map<const AcDbBlockTableRecord*, std::unique_ptr<Contents>> m_contents;
    std::unordered_map<const AcDbBlockTableRecord*, Blocks> m_users; ///< of each block, those that show it
    std::unordered_map<const AcDbStub*, BlockList> m_drawn; ///< of entities that draw blocks by themselves
    std::vector<std::uint32_t> m_positions;                 ///< by the index of the stub
    std::vector<const AcDbStub*> m_changed;
    bool m_isDropped = true; ///< more has changed than is worth following
};

} // namespace hostkit

// Boxes for picking: what an entity or a block shows lies within them; leaves out visibility, which changes
// more often.
#pragma once

#include "boxtree.h"
#include "regionprobe.h"

#include <cstdint>
#include <functional>
#include <unordered_map>
#include <vector>

class AcDbBlockTableRecord;
class AcDbEntity;

namespace hostkit {

/// Room for rounding and for the allowance of the tests is in the boxes. A box with an infinite side holds
/// all; one of nothing is empty: low above high.
class PickBoxes {
public:
    PickBoxes() = default;
    virtual ~PickBoxes() = default;
    PickBoxes(const PickBoxes&) = delete;
    PickBoxes& operator=(const PickBoxes&) = delete;

    static SearchBox emptyBox();
    static SearchBox endlessBox();
    static bool isEmpty(const SearchBox& box) { return !(box.low[0] <= box.high[0]); }
    static bool isEndless(const SearchBox& box);

    /// In the coordinates in which the entity stands. Erased entities have one too.
    SearchBox of(const AcDbEntity& entity);
    /// Of all entities of the block that are not erased, in its coordinates. Remembered until it is
    /// forgotten. A block that holds itself has no bounds.
    const SearchBox& of(const AcDbBlockTableRecord& block);
    /// Where the block's list of entities has those that are seen near the region of a question, as far as
    /// their boxes tell: `near(box)`. False, and nothing is found, where all are to be looked at.
    virtual bool findNear(const AcDbBlockTableRecord& block,
                          const std::function<bool(const SearchBox&)>& near,
                          std::vector<std::uint32_t>& positions);

protected:
    using BlockList = std::vector<const AcDbBlockTableRecord*>;
    void forget(const AcDbBlockTableRecord& block) { m_blocks.erase(&block); }
    void forgetAll() { m_blocks.clear(); }
    virtual SearchBox ofContents(const AcDbBlockTableRecord& block);
    /// Called where the box of the inner block goes into that of the outer one.
    virtual void noteShown(const AcDbBlockTableRecord& /*inner*/, const AcDbBlockTableRecord& /*outer*/) {}
    /// Called where an entity that is neither reference nor dimension draws blocks.
    virtual void noteDrawn(const AcDbEntity& /*entity*/, const BlockList& /*blocks*/) {}
    /// As of(entity), for one that stands in the block.
    SearchBox ofPart(const AcDbEntity& entity, const AcDbBlockTableRecord& block);

private:
    SearchBox boxOfDrawing(const AcDbEntity& entity);

    std::unordered_map<const AcDbBlockTableRecord*, SearchBox> m_blocks;
    std::vector<const AcDbBlockTableRecord*> m_path;
};

/// The box as the map shows it.
PlaneBox seen(const SearchBox& box, const ViewMap& toView);

} // namespace hostkit

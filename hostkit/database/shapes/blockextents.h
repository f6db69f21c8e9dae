// Boxes of inserted blocks: blocks in blocks, rows and columns, attributes and blocks that hold themselves;
// leaves out clipping.
#pragma once

#include "dbextents.h"
#include "dbid.h"

#include <unordered_map>
#include <vector>

class AcDbBlockReference;
class AcDbBlockTableRecord;
class AcDbEntity;

namespace hostkit {

/// Works out one box; what it learns about the blocks on its way is good as long as they stay as they are.
class BlockExtents {
public:
    /// Adds the box of the entities that the reference shows, moved by the matrix, and of its visible
    /// attributes. It is exact for turned blocks too: each entity is moved and asked. A drawing in which that
    /// would take more than 100,000 entities has the rest of its turned blocks reckoned by the boxes of the
    /// blocks, which may come out larger. A block that holds itself is left out within itself, and blocks
    /// more than 64 deep are left out.
    void addReference(AcDbExtents& box, const AcDbBlockReference& reference, const AcGeMatrix3d& matrix);

    /// As above, for what stands in the block.
    void addBlock(AcDbExtents& box, AcDbObjectId block, const AcGeMatrix3d& matrix);
    /// Adds the box of what the entity shows, moved by the matrix: nothing for attributes that are invisible
    /// and definitions that show none.
    void addEntity(AcDbExtents& box, const AcDbEntity& entity, const AcGeMatrix3d& matrix);

private:
    void addEntities(AcDbExtents& box, const AcDbBlockTableRecord& block, const AcGeMatrix3d& matrix);
    AcDbExtents boxOf(const AcDbBlockTableRecord& block, const AcGeMatrix3d& matrix);
    bool canEnter(const AcDbBlockTableRecord& block) const;

    std::vector<const AcDbBlockTableRecord*> m_path;
    std::unordered_map<const AcDbBlockTableRecord*, AcDbExtents> m_ownBoxes;
    int m_exactPartsLeft = 100000;
};

} // namespace hostkit

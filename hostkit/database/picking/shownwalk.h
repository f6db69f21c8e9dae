// Walk over what an entity shows: blocks within blocks, rows and columns, attributes, layers; leaves out what
// a single entity looks like.
#pragma once

#include "pickboxes.h"

#include "dbid.h"

#include <vector>

class AcDbBlockReference;
class AcDbBlockTableRecord;
class AcDbDimension;
class AcDbEntity;

namespace hostkit {

/// Where something is shown.
struct ShownPlace {
    ViewMap toView;       ///< from the block's coordinates, or the space's
    AcGeMatrix3d toWorld; ///< likewise; the identity in a space
    AcDbObjectId layer;   ///< in a block what layer 0 stands for
    bool isInBlock = false;
};

/// The layer that counts for the entity there.
AcDbObjectId shownLayer(const AcDbEntity& entity, const ShownPlace& place);
/// Not invisible, and not on a layer that is frozen or, but for references, off. Erasure is not asked.
bool isSeen(const AcDbEntity& entity, const ShownPlace& place);
/// The same in a block, where of definitions of attributes only the constant ones that are not invisible are.
bool isSeenInBlock(const AcDbEntity& entity, const ShownPlace& place);

/// Visits what is shown, the last drawn first, until it is done. Ends after two million visits: a drawing can
/// say that it repeats more than any machine can look at.
class ShownWalk {
public:
    explicit ShownWalk(PickBoxes& boxes)
        : m_boxes(boxes) {}
    virtual ~ShownWalk() = default;
    ShownWalk(const ShownWalk&) = delete;
    ShownWalk& operator=(const ShownWalk&) = delete;

    /// The entity itself is taken as seen.
    void visit(const AcDbEntity& entity, const ShownPlace& place);

protected:
    /// An entity that holds no others.
    virtual void show(const AcDbEntity& entity, const ShownPlace& place) = 0;
    virtual bool isDone() const = 0;
    /// Nothing within the hull is of interest.
    virtual bool mayPass(const PlaneBox& hull) const = 0;
    /// What may be passed now may always be, so that it need not be looked for.
    virtual bool looksNearAlone() const = 0;
    /// The references and dimensions around what is being shown, outermost first.
    const std::vector<const AcDbEntity*>& containers() const { return m_containers; }

private:
    /// Copies of one thing in the view, each a step from the one before.
    struct Copies;
    void visitReference(const AcDbBlockReference& reference, const ShownPlace& place);
    void visitBlock(const AcDbBlockTableRecord& block, const ShownPlace& place);
    template <typename ShowCopy>
    void visitCopies(const Copies& copies, const ShowCopy& showCopy);
    bool canEnter(const AcDbBlockTableRecord& block) const;

    PickBoxes& m_boxes;
    std::vector<const AcDbEntity*> m_containers;
    std::vector<const AcDbBlockTableRecord*> m_path;
    int m_visitsLeft = 2000000;
};

} // namespace hostkit

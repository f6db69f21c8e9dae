#include "curvecases.h"

using namespace curvecases;

namespace {

/// An old-style or 3d polyline of four vertices that stands in a drawing, open for write.
template <typename Polyline>
class Resident {
public:
    explicit Resident(Polyline* polyline)
        : m_polyline(polyline) {
        AcDbObjectPointer<AcDbBlockTableRecord> space(m_drawing.modelSpaceId(), AcDb::kForWrite);
        EXPECT_EQ(space->appendAcDbEntity(polyline), Acad::eOk);
    }
    ~Resident() { m_polyline->close(); }
    Polyline& operator*() const { return *m_polyline; }
    Polyline* operator->() const { return m_polyline; }

    std::vector<AcDbObjectId> vertexIds() const {
        std::vector<AcDbObjectId> ids;
        const std::unique_ptr<AcDbObjectIterator> iterator(m_polyline->vertexIterator());
        for (; !iterator->done(); iterator->step()) {
            EXPECT_EQ(iterator->entity(), nullptr);
            ids.push_back(iterator->objectId());
        }
        return ids;
    }

private:
    AcDbDatabase m_drawing;
    Polyline* m_polyline;
};

AcGePoint3dArray corners() { return pointsOf({{0, 0, 0}, {4, 0, 0}, {4, 3, 0}, {0, 3, 0}}); }

template <typename Polyline, typename VertexClass>
void checkVerticesInADrawing(Polyline* made) {
    const std::unique_ptr<Polyline> outside(Polyline::cast(static_cast<AcRxObject*>(made->clone())));
    const double length = lengthOf(*outside);
    Resident<Polyline> polyline(made);
    EXPECT_EQ(lengthOf(*polyline), length);
    const std::vector<AcDbObjectId> ids = polyline.vertexIds();
    ASSERT_EQ(ids.size(), 4u);

    // A vertex that somebody else has open keeps the whole polyline as it is.
    VertexClass* vertex = nullptr;
    ASSERT_EQ(polyline->openVertex(vertex, ids[2], AcDb::kForWrite), Acad::eOk);
    EXPECT_NE(polyline->transformBy(AcGeMatrix3d::scaling(2.0)), Acad::eOk);
    EXPECT_EQ(lengthOf(*polyline), length);
    ASSERT_EQ(vertex->setPosition({4, 0, 0}), Acad::eOk);
    vertex->close();
    EXPECT_NEAR(lengthOf(*polyline), 4.0 + 5.0 + 3.0, 1e-12);

    ASSERT_EQ(polyline->transformBy(AcGeMatrix3d::scaling(2.0)), Acad::eOk);
    EXPECT_NEAR(lengthOf(*polyline), 24.0, 1e-12);
    EXPECT_EQ(polyline->openVertex(vertex, polyline->objectId(), AcDb::kForRead), Acad::eInvalidInput);

    // An erased vertex is no longer the curve's, and the polyline takes its vertices with it.
    ASSERT_EQ(polyline->openVertex(vertex, ids[3], AcDb::kForWrite), Acad::eOk);
    ASSERT_EQ(vertex->erase(), Acad::eOk);
    vertex->close();
    EXPECT_EQ(polyline.vertexIds().size(), 3u);
    EXPECT_NEAR(lengthOf(*polyline), 16.0, 1e-12);
    ASSERT_EQ(polyline->erase(), Acad::eOk);
    for (const AcDbObjectId& id : ids) EXPECT_TRUE(id.isErased());
}

} // namespace

TEST(PolylinesInADrawing, FollowTheirVertices) {
    checkVerticesInADrawing<AcDb2dPolyline, AcDb2dVertex>(
        new AcDb2dPolyline(AcDb::k2dSimplePoly, corners(), 0.0, Adesk::kTrue));
    checkVerticesInADrawing<AcDb3dPolyline, AcDb3dPolylineVertex>(
        new AcDb3dPolyline(AcDb::k3dSimplePoly, corners(), Adesk::kTrue));
}

TEST(PolylinesInADrawing, TakeNewVerticesWhereTheyAreToldTo) {
    Resident<AcDb2dPolyline> polyline(new AcDb2dPolyline(AcDb::k2dSimplePoly, corners(), 0.0, Adesk::kFalse));
    AcDb2dVertex* between = new AcDb2dVertex(AcGePoint3d(2, 0, 0));
    AcDbObjectId id;
    ASSERT_EQ(polyline->insertVertexAt(id, polyline.vertexIds()[0], between), Acad::eOk);
    EXPECT_TRUE(between->isWriteEnabled());
    between->close();
    AcDb2dVertex* last = new AcDb2dVertex(AcGePoint3d(0, 9, 0));
    ASSERT_EQ(polyline->appendVertex(id, last), Acad::eOk);
    last->close();
    EXPECT_EQ(endParamOf(*polyline), 5.0);
    EXPECT_TRUE(pointAt(*polyline, 1.0) == AcGePoint3d(2, 0, 0));
    EXPECT_TRUE(endOf(*polyline) == AcGePoint3d(0, 9, 0));
    EXPECT_EQ(polyline->appendVertex(id, nullptr), Acad::eNullObjectPointer);
}

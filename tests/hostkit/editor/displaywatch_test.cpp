#include "axlock.h"
#include "dbdatabase.h"
#include "dbline.h"
#include "dbobjptr.h"
#include "dbsymtb.h"
#include "host.h"
#include "scriptedport.h"

#include <gtest/gtest.h>

namespace {

using hostkit::DisplayChange;

AcDbObjectId addLine(AcDbDatabase& drawing) {
    const AcAxDocLock lock(&drawing);
    const AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
    auto* line = new AcDbLine({0, 0, 0}, {1, 0, 0});
    EXPECT_EQ(space->appendAcDbEntity(line), Acad::eOk);
    const AcDbObjectId id = line->objectId();
    line->close();
    return id;
}

TEST(DisplayWatch, TellsThePortOfEachDrawing) {
    hostkit::ScriptedPort port;
    port.isWatchingDisplay = true;
    hostkit::Host host(port);
    for (int documents = 1; documents <= 2; ++documents) {
        ASSERT_EQ(host.newDocument(), Acad::eOk);
        EXPECT_TRUE(port.displayChanges.empty()) << "what a new drawing is made of is nothing new";
        AcDbDatabase& drawing = *host.documents().curDocument()->database();
        const AcDbObjectId line = addLine(drawing);
        ASSERT_EQ(port.displayChanges.size(), 1U);
        const DisplayChange& told = port.displayChanges.front();
        EXPECT_EQ(told.drawing, &drawing);
        EXPECT_EQ(told.handle, line.stub()->handle);
        EXPECT_EQ(told.kind, DisplayChange::Kind::entity);
        port.displayChanges.clear();
        {
            const AcAxDocLock lock(&drawing);
            const AcDbObjectPointer<AcDbLayerTableRecord> layer(drawing.layerZero(), AcDb::kForWrite);
            EXPECT_EQ(layer->setIsOff(true), Acad::eOk);
        }
        ASSERT_EQ(port.displayChanges.size(), 1U);
        EXPECT_EQ(port.displayChanges.front().kind, DisplayChange::Kind::layer);
        port.displayChanges.clear();
    }
    host.documents().closeAll();
    EXPECT_TRUE(port.displayChanges.empty());
}

TEST(DisplayWatch, IsNotMadeForAPortThatDoesNotLook) {
    hostkit::ScriptedPort port;
    hostkit::Host host(port);
    ASSERT_EQ(host.newDocument(), Acad::eOk);
    addLine(*host.documents().curDocument()->database());
    EXPECT_TRUE(port.displayChanges.empty());
}

} // namespace

// The binary form of a class' fields against its text form, for every class and for drawings that others
// made.

#include "drawingfiles.h"
#include "drawingpicture.h"
#include "sampledrawing.h"

#include "dbaccess.h"
#include "dbblockbegin.h"
#include "dbdeepclonefiler.h"
#include "dblayout.h"
#include "dbopaque.h"
#include "rxdict.h"

#include <algorithm>
#include <set>

using namespace hostkit;
using namespace drawingtest;

namespace {

// The groups that the object files, without counts of what it owns, which is not filed with it. A layout
// without plot settings of its own files standard ones among its groups: its order says nothing.
std::vector<std::string> groupsOf(const AcDbObject& object, AcDbDatabase* database) {
    const short ownedCode = object.isKindOf(AcDbSymbolTable::desc()) ? 70 : 66;
    GroupGatherer gatherer(database);
    EXPECT_EQ(object.dxfOutFields(&gatherer), Acad::eOk);
    std::vector<std::string> groups;
    GroupWalker walker(gatherer.groups());
    for (AcDbDxfGroup group; walker.next(group);)
        if (group.code != ownedCode) addGroup(groups.emplace_back(), group);
    if (object.isKindOf(AcDbLayout::desc())) std::sort(groups.begin(), groups.end());
    return groups;
}

// The groups of the object, and those of a fresh one that was filled from the object's binary form.
void expectSameFields(const AcDbObject& object, AcDbDatabase* database) {
    const std::unique_ptr<AcDbObject> copy(AcDbObject::cast(object.isA()->create()));
    ASSERT_TRUE(copy);
    AcDbDeepCloneFiler filer(database);
    ASSERT_EQ(object.dwgOutFields(&filer), Acad::eOk);
    ASSERT_EQ(filer.seek(0, 0), Acad::eOk);
    ASSERT_EQ(copy->dwgInFields(&filer), Acad::eOk);
    EXPECT_EQ(filer.tell(), static_cast<Adesk::Int64>(filer.size())) << "the stream stands at its end";
    // Where a group speaks of what is around the object, not of itself.
    DatabaseAccess::setOwner(*copy, object.ownerId());
    EXPECT_EQ(groupsOf(object, database), groupsOf(*copy, database));
}

bool isOpaque(const AcDbObject& object) {
    return object.isKindOf(AcDbOpaqueObject::desc()) || object.isKindOf(AcDbOpaqueEntity::desc());
}

std::size_t checkDrawing(AcDbDatabase& database, std::set<std::wstring>& classes) {
    std::size_t count = 0;
    DatabaseAccess::forEachObject(database, [&](AcDbObject& object) {
        if (isOpaque(object)) return;
        SCOPED_TRACE(testing::Message()
                     << object.isA()->name() << " " << std::hex << object.handle().value());
        const AcDbObjectPointer<AcDbObject> open(object.objectId(), AcDb::kForRead, true);
        ASSERT_TRUE(open);
        expectSameFields(object, &database);
        classes.insert(object.isA()->name());
        ++count;
    });
    return count;
}

} // namespace

TEST(BinaryForms, everyObjectOfASampleOfAllKinds) {
    const std::unique_ptr<AcDbDatabase> database = sampleDrawing();
    std::set<std::wstring> classes;
    EXPECT_GT(checkDrawing(*database, classes), classes.size());
    for (const auto& [name, entry] : *acrxClassDictionary()) {
        const auto* const kind = static_cast<const AcRxClass*>(entry);
        if (!kind->isDerivedFrom(AcDbObject::desc()) || classes.contains(kind->name())) continue;
        SCOPED_TRACE(testing::Message() << kind->name());
        const std::unique_ptr<AcDbObject> object(AcDbObject::cast(kind->create()));
        if (!object || isOpaque(*object)) continue;
        // Its groups the beginning of a block files.
        DatabaseAccess::setOwner(*object, database->modelSpaceId());
        expectSameFields(*object, database.get());
    }
}

TEST_F(DrawingsOfOthers, objectsHaveTheSameFieldsInBinaryForm) {
    std::set<std::wstring> classes;
    forEach([&](AcDbDatabase& database) {
        EXPECT_GT(checkDrawing(database, classes), 0u);
        ASSERT_FALSE(HasFailure());
    });
}

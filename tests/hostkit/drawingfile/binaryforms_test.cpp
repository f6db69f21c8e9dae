// The binary form of a class' fields against its text form, for every class and for drawings that others
// made.

#include "drawingfiles.h"
#include "grouplist.h"
#include "sampledrawing.h"

#include "drawingreader.h"

#include "dbaccess.h"
#include "dbblockbegin.h"
#include "dbdeepclonefiler.h"
#include "dblayout.h"
#include "dbopaque.h"
#include "dbopen.h"
#include "rxdict.h"

#include <gtest/gtest.h>

#include <set>

using namespace hostkit;
using namespace drawingtest;

namespace {

std::unique_ptr<AcDbObject> freshLike(const AcDbObject& object) {
    return std::unique_ptr<AcDbObject>(AcDbObject::cast(object.isA()->create()));
}

// The groups of the object, and those of a fresh one that was filled from the object's binary form.
void expectSameFields(const AcDbObject& object, AcDbDatabase* database) {
    const std::unique_ptr<AcDbObject> copy = freshLike(object);
    ASSERT_TRUE(copy);
    AcDbDeepCloneFiler filer(database);
    ASSERT_EQ(object.dwgOutFields(&filer), Acad::eOk);
    ASSERT_EQ(filer.seek(0, 0), Acad::eOk);
    ASSERT_EQ(copy->dwgInFields(&filer), Acad::eOk);
    EXPECT_EQ(filer.tell(), static_cast<Adesk::Int64>(filer.size())) << "the stream stands at its end";
    // Where a group speaks of what is around the object, not of itself.
    DatabaseAccess::setOwner(*copy, object.ownerId());
    // Counts of what the object owns, which is not filed with it.
    const short ownedCode = object.isKindOf(AcDbSymbolTable::desc()) ? 70 : 66;
    GroupList expected(database, ownedCode);
    GroupList found(database, ownedCode);
    ASSERT_EQ(object.dxfOutFields(&expected), Acad::eOk);
    ASSERT_EQ(copy->dxfOutFields(&found), Acad::eOk);
    // A layout without plot settings of its own files standard ones among its groups.
    const bool hasOrder = !object.isKindOf(AcDbLayout::desc());
    EXPECT_EQ(hasOrder ? expected.lines() : expected.sorted(), hasOrder ? found.lines() : found.sorted());
}

bool isOpaque(const AcDbObject& object) {
    return object.isKindOf(AcDbOpaqueObject::desc()) || object.isKindOf(AcDbOpaqueEntity::desc());
}

class OpenObject {
public:
    explicit OpenObject(AcDbObjectId id) {
        if (acdbOpenObject(object, id, AcDb::kForRead, true) != Acad::eOk) object = nullptr;
    }
    ~OpenObject() {
        if (object) object->close();
    }
    AcDbObject* object = nullptr;
};

std::size_t checkDrawing(AcDbDatabase& database, std::set<std::wstring>& classes) {
    std::size_t count = 0;
    DatabaseAccess::forEachObject(database, [&](AcDbObject& object) {
        if (isOpaque(object)) return;
        SCOPED_TRACE(testing::Message()
                     << object.isA()->name() << " " << std::hex << object.handle().value());
        const OpenObject open(object.objectId());
        ASSERT_TRUE(open.object);
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
        DatabaseAccess::setOwner(*object,
                                 database->modelSpaceId()); // whose groups the beginning of a block files
        expectSameFields(*object, database.get());
    }
}

TEST(BinaryForms, objectsOfDrawingsThatOthersMade) {
    if (foldersAreMissing()) GTEST_SKIP() << "no drawings in " << drawingsFolder();
    std::set<std::wstring> classes;
    for (const std::string& file : drawingFiles()) {
        SCOPED_TRACE(file);
        const auto database = openDrawing(wide(file));
        ASSERT_TRUE(database);
        EXPECT_GT(checkDrawing(*database, classes), 0u);
        if (HasFailure()) return;
    }
}

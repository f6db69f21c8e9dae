#include "drawingparts.h"
#include "hosttest.h"
#include "vexodatabasetools.h"
#include "vexosmartlock.h"
#include "vexosmartopen.h"
#include "vexosmartpointer.h"

#include "dbline.h"

#include <functional>

namespace {

using Tools = VEXODatabaseTools;

enum class Form { kDatabase, kDocument, kWithLock };

class DictionaryTree : public hostkit::HostTest {
protected:
    DictionaryTree() { giveLockBack(); } // the tools take their own

    /// Opens through one of the three forms, and gives the lock of the third back once the dictionary is
    /// closed.
    bool open(Form form, const wchar_t* name, AcDb::OpenMode mode, int create,
              const std::function<void(AcDbDictionary&)>& use = {}) {
        VEXOSmartLock* lock = nullptr;
        AcDbDictionary* dictionary = nullptr;
        switch (form) {
        case Form::kDatabase:
            dictionary = Tools::openDictionary(name, mode, nullptr, create);
            break;
        case Form::kDocument:
            dictionary = Tools::openDictionary(name, mode, &session.document());
            break;
        case Form::kWithLock:
            dictionary = Tools::openDictionary2(name, mode, lock, nullptr, create);
            EXPECT_EQ(session.document().lockMode(true),
                      lock && mode == AcDb::kForWrite ? AcAp::kWrite : AcAp::kNotLocked);
            break;
        }
        if (form != Form::kWithLock) {
            EXPECT_EQ(session.document().lockMode(true), AcAp::kNotLocked);
        }
        const bool isOpen = dictionary != nullptr;
        EXPECT_EQ(database().numOpenObjects(), isOpen ? 1 : 0) << "level 0 is closed in any case";
        if (isOpen && use) use(*dictionary);
        if (isOpen) dictionary->close();
        delete lock;
        return isOpen;
    }
    template <typename Do>
    void underLock(Do&& act) {
        const AcAxDocLock lock;
        act();
    }
    bool isThere(const wchar_t* name) {
        const AcDbObjectPointer<AcDbDictionary> root(database().namedObjectsDictionaryId(), AcDb::kForRead);
        return root->has(name);
    }
    int stampOf(AcDbDictionary& dictionary) {
        int value = 0;
        return Tools::getIntValueInEntityXData(&dictionary, L"ORDANE", L"VEXO_SERVICES", value) ? value : 0;
    }
    AcDbObjectId append(const wchar_t* dictionary, const wchar_t* key) {
        AcDbObjectId id;
        EXPECT_EQ(Tools::appendToDictionary(dictionary, new AcDbXrecord, id, &database(), true, key), 1);
        EXPECT_FALSE(id.isNull());
        return id;
    }
};

constexpr Form allForms[] = {Form::kDatabase, Form::kDocument, Form::kWithLock};

} // namespace

TEST_F(DictionaryTree, aMissingDictionaryIsMadeForWritingAlone) {
    for (const Form form : allForms) {
        SCOPED_TRACE(static_cast<int>(form));
        const std::wstring name = L"SERVICE " + std::to_wstring(static_cast<int>(form));
        EXPECT_FALSE(open(form, name.c_str(), AcDb::kForRead, 1));
        EXPECT_FALSE(isThere(name.c_str()));
        if (form != Form::kDocument) {
            EXPECT_FALSE(open(form, name.c_str(), AcDb::kForWrite, 0));
        }
        EXPECT_FALSE(isThere(name.c_str()));
        AcDbObjectId made;
        EXPECT_TRUE(open(form, name.c_str(), AcDb::kForWrite, 1, [&](AcDbDictionary& dictionary) {
            made = dictionary.objectId();
            EXPECT_TRUE(dictionary.isWriteEnabled());
            EXPECT_EQ(stampOf(dictionary), 0);
        }));
        for (const AcDb::OpenMode mode : {AcDb::kForRead, AcDb::kForWrite})
            EXPECT_TRUE(open(form, name.c_str(), mode, 1, [&](AcDbDictionary& dictionary) {
                EXPECT_EQ(dictionary.objectId(), made) << "it is made once";
            }));
    }
    for (const wchar_t* name : {L"", static_cast<const wchar_t*>(nullptr), L"a|b"})
        EXPECT_EQ(Tools::openDictionary(name, AcDb::kForWrite, nullptr, 1), nullptr)
            << "level 0 refuses the name";
}

TEST_F(DictionaryTree, onlyTheDatabaseFormStampsTheServices) {
    EXPECT_TRUE(open(Form::kDocument, L"VEXO_SERVICES", AcDb::kForWrite, 1,
                     [&](AcDbDictionary& dictionary) { EXPECT_EQ(stampOf(dictionary), 0); }));
    EXPECT_TRUE(open(Form::kDatabase, L"VEXO_SERVICES", AcDb::kForWrite, 1, [&](AcDbDictionary& dictionary) {
        EXPECT_EQ(stampOf(dictionary), 0) << "one that is found is left alone";
        EXPECT_EQ(dictionary.erase(), Acad::eOk);
    }));
    EXPECT_TRUE(open(Form::kWithLock, L"VEXO_SERVICES", AcDb::kForWrite, 1, [&](AcDbDictionary& dictionary) {
        EXPECT_EQ(stampOf(dictionary), 0);
        EXPECT_EQ(dictionary.erase(), Acad::eOk);
    }));
    EXPECT_TRUE(open(Form::kDatabase, L"vexo_Services", AcDb::kForWrite, 1, [&](AcDbDictionary& dictionary) {
        EXPECT_EQ(stampOf(dictionary), 1);
        EXPECT_EQ(drawingtest::textOf(drawingtest::List(dictionary.xData(L"ORDANE"))),
                  "1001 ORDANE, 1000 VEXO_SERVICES, 1070 1")
            << "the key is the fixed one";
        EXPECT_TRUE(Tools::setIntValueInEntityXData(&dictionary, L"ORDANE", L"VEXO_SERVICES", 5));
    }));
    EXPECT_TRUE(open(Form::kDatabase, L"VEXO_SERVICES", AcDb::kForWrite, 1, [&](AcDbDictionary& dictionary) {
        EXPECT_EQ(stampOf(dictionary), 5);
        const AcDbObjectPointer<AcDbDictionary> root(database().namedObjectsDictionaryId(), AcDb::kForRead);
        wchar_t* name = nullptr;
        EXPECT_EQ(root->nameAt(dictionary.objectId(), name), Acad::eOk);
        EXPECT_STREQ(name, L"vexo_Services");
        acutDelString(name);
    }));
}

// What each form does with its lock when the dictionary cannot be had.
TEST_F(DictionaryTree, busyOrWrongEntries) {
    AcDbObjectId id;
    EXPECT_TRUE(open(Form::kDatabase, L"SERVICE", AcDb::kForWrite, 1,
                     [&](AcDbDictionary& dictionary) { id = dictionary.objectId(); }));
    for (const AcDb::OpenMode held : {AcDb::kForRead, AcDb::kForWrite, AcDb::kForNotify}) {
        SCOPED_TRACE(held);
        AcDbObjectPointer<AcDbDictionary> holder;
        underLock([&] { EXPECT_EQ(holder.open(id, held), Acad::eOk); });
        EXPECT_EQ(Tools::openDictionary(L"SERVICE", AcDb::kForWrite, nullptr, 1), nullptr);
        EXPECT_EQ(Tools::openDictionary(L"SERVICE", AcDb::kForWrite, &session.document()), nullptr);
        auto* lock = reinterpret_cast<VEXOSmartLock*>(1);
        EXPECT_EQ(Tools::openDictionary2(L"SERVICE", AcDb::kForWrite, lock, nullptr, 1), nullptr);
        EXPECT_EQ(lock, nullptr) << "the lock is given back with a busy entry";
        EXPECT_EQ(database().numOpenObjects(), 1);
    }
    const AcDbObjectId rootId = database().namedObjectsDictionaryId();
    underLock([&] { drawingtest::enter(rootId, L"RECORD"); });
    {
        AcDbObjectPointer<AcDbDictionary> root;
        underLock([&] { EXPECT_EQ(root.open(rootId, AcDb::kForWrite), Acad::eOk); });
        VEXOSmartLock* lock = nullptr;
        EXPECT_EQ(Tools::openDictionary2(L"SERVICE", AcDb::kForWrite, lock, nullptr, 1), nullptr);
        EXPECT_EQ(lock, nullptr) << "so it is where level 0 is busy";
    }
    for (const wchar_t* name : {L"RECORD", L"MISSING"}) {
        VEXOSmartLock* lock = nullptr;
        EXPECT_EQ(Tools::openDictionary2(name, AcDb::kForWrite, lock, nullptr, 0), nullptr);
        const VEXOSmartPointer<VEXOSmartLock> owner(lock);
        EXPECT_TRUE(owner) << "here it is left with the caller";
    }
    VEXOSmartLock* untouched = nullptr;
    EXPECT_EQ(Tools::openDictionary2(L"MISSING", AcDb::kForRead, untouched, nullptr, 1), nullptr);
    EXPECT_EQ(untouched, nullptr);
}

TEST_F(DictionaryTree, withoutADocument) {
    AcDbDatabase side;
    session.watch(side);
    ASSERT_EQ(session.host().documents().closeDocument(&session.document()), Acad::eOk);
    EXPECT_EQ(Tools::openDictionary(L"X", AcDb::kForWrite, nullptr, 1), nullptr) << "no working database";
    EXPECT_EQ(Tools::openDictionary(L"X", AcDb::kForWrite, static_cast<AcApDocument*>(nullptr)), nullptr);
    VEXOSmartLock* lock = nullptr;
    EXPECT_EQ(Tools::openDictionary2(L"X", AcDb::kForWrite, lock, &side, 1), nullptr)
        << "there is no current document to lock";
    EXPECT_EQ(lock, nullptr);
    AcDbDictionary* const dictionary = Tools::openDictionary(L"X", AcDb::kForWrite, &side, 1);
    ASSERT_TRUE(dictionary) << "the status of its lock is not asked for";
    dictionary->close();
    EXPECT_TRUE(session.leftovers().empty());
    session.forget(side);
}

TEST_F(DictionaryTree, appending) {
    const AcDbObjectId first = append(L"VEXO_MOULD_REFERENCE", L"mould");
    AcDbObjectId id = first;
    const std::unique_ptr<AcDbXrecord> refused(new AcDbXrecord);
    EXPECT_EQ(
        Tools::appendToDictionary(L"VEXO_MOULD_REFERENCE", refused.get(), id, &database(), true, L"MOULD"), 1)
        << "a refused object shows in the id alone";
    EXPECT_EQ(id, first);
    EXPECT_TRUE(refused->objectId().isNull());
    const AcDbObjectId second = append(L"VEXO_MOULD_REFERENCE", nullptr);
    const AcDbObjectId third = append(L"VEXO_MOULD_REFERENCE", nullptr);
    EXPECT_NE(second, third);

    AcDbObjectId byDocument;
    EXPECT_EQ(Tools::appendToDictionary(L"VEXO_MOULD_REFERENCE", new AcDbXrecord, byDocument,
                                        &session.document(), L"other", 1),
              1);
    AcDbObjectId open;
    EXPECT_EQ(Tools::appendToDictionary(L"KEPT OPEN", new AcDbXrecord, open, &database(), false, L"key"), 1);
    const AcDbObjectId kept = AcDbObjectPointer<AcDbObject>(open, AcDb::kForRead)->ownerId();
    EXPECT_EQ(database().numOpenObjects(), 1);
    auto* dictionary = drawingtest::opened<AcDbDictionary>(kept, AcDb::kForNotify);
    AcDbObjectId direct;
    EXPECT_EQ(Tools::appendToDictionary(dictionary, new AcDbXrecord, direct, L"more"), 1);
    EXPECT_EQ(dictionary->numEntries(), 2u);
    dictionary->close();
    dictionary->close();
    EXPECT_EQ(acdbOpenObject(dictionary, kept, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(Tools::appendToDictionary(dictionary, refused.get(), id, L"x"), 0) << "it is open for read";
    dictionary->close();
    EXPECT_EQ(Tools::appendToDictionary(nullptr, refused.get(), id, L"x"), 0);

    AcDbObjectIdArray ids;
    EXPECT_EQ(Tools::getFromDictionary(L"vexo_mould_reference", ids, nullptr), 1);
    ASSERT_EQ(ids.length(), 4);
    EXPECT_TRUE(ids[0] == first && ids[1] == second && ids[2] == third && ids[3] == byDocument);
    EXPECT_EQ(Tools::getFromDictionary(L"NOTHING", ids, nullptr), 1) << "an absent dictionary is no error";
    EXPECT_TRUE(ids.isEmpty());
}

TEST_F(DictionaryTree, reading) {
    const AcDbObjectId entry = append(L"SERVICE", L"Key");
    AcDbObjectId id;
    EXPECT_EQ(Tools::getFromDictionary(L"SERVICE", L"KEY", id, nullptr), 1);
    EXPECT_EQ(id, entry);
    EXPECT_EQ(Tools::getFromDictionary(L"SERVICE", L"other", id, nullptr), 0);
    EXPECT_EQ(Tools::getFromDictionary(L"NOTHING", L"Key", id, nullptr), 0);
    EXPECT_EQ(Tools::getFromDictionary(static_cast<AcDbDictionary*>(nullptr), L"Key", id, nullptr), 0);
    EXPECT_EQ(id, entry) << "failures leave it alone";
    EXPECT_EQ(Tools::isEntryInDictionary(L"NOTHING", L"Key", id, nullptr), 0);
    EXPECT_EQ(id, entry);
    EXPECT_EQ(Tools::isEntryInDictionary(L"SERVICE", L"other", id, nullptr), 0);
    EXPECT_TRUE(id.isNull());
    EXPECT_EQ(Tools::isEntryInDictionary(L"SERVICE", L"key", id, nullptr), 1);
    EXPECT_EQ(id, entry);

    for (const AcDb::OpenMode mode : {AcDb::kForRead, AcDb::kForWrite}) {
        AcDbObject* object = nullptr;
        ASSERT_EQ(Tools::getFromDictionary(L"SERVICE", L"Key", object, mode, nullptr), 1);
        EXPECT_EQ(object->isWriteEnabled(), mode == AcDb::kForWrite);
        EXPECT_EQ(session.document().lockMode(true), AcAp::kNotLocked) << "the lock goes with the call";
        AcDbObject* second = nullptr;
        EXPECT_EQ(Tools::getFromDictionary(L"SERVICE", L"Key", second, AcDb::kForWrite, nullptr), 0);
        EXPECT_EQ(second, nullptr);
        object->close();
    }
}

TEST_F(DictionaryTree, buildVersion) {
    const AcAxDocLock lock; // for the stamps
    int version = 99;
    EXPECT_FALSE(Tools::isExistInfoObjectDictionary(nullptr)) << "here null is no database";
    EXPECT_FALSE(Tools::isExistInfoObjectDictionary(&database()));
    EXPECT_EQ(Tools::getOrdaneBuildVersion(version, nullptr), 3);
    const AcDbObjectId plain = append(L"VEXO_INFO", L"plain");
    EXPECT_TRUE(Tools::isExistInfoObjectDictionary(&database()));
    EXPECT_EQ(Tools::getOrdaneBuildVersion(version, nullptr), 3);
    for (const auto& [key, value] : {std::pair(L"first", 1210), std::pair(L"second", 1300)}) {
        const VEXOSmartOpen<AcDbObject> info(append(L"VEXO_INFO", key), AcDb::kForWrite, false);
        EXPECT_TRUE(Tools::setIntValueInEntityXData(info.object(), L"ORDANE", L"ORDANE", value));
    }
    EXPECT_EQ(version, 99);
    EXPECT_EQ(Tools::getOrdaneBuildVersion(version, nullptr), Acad::eOk);
    EXPECT_EQ(version, 1210);
    // A busy entry is passed over; as the last one, its status is the answer.
    AcDbObjectIdArray ids;
    Tools::getFromDictionary(L"VEXO_INFO", ids, nullptr);
    AcDbObjectPointer<AcDbObject> first(ids[1], AcDb::kForWrite);
    EXPECT_EQ(Tools::getOrdaneBuildVersion(version, nullptr), Acad::eOk);
    EXPECT_EQ(version, 1300);
    const AcDbObjectPointer<AcDbObject> second(ids[2], AcDb::kForWrite);
    EXPECT_EQ(Tools::getOrdaneBuildVersion(version, nullptr), Acad::eWasOpenForWrite);
    EXPECT_EQ(version, 1300);
    EXPECT_EQ(ids[0], plain);
}

TEST_F(DictionaryTree, appendingEntities) {
    AcDbObjectId id;
    auto* const line = new AcDbLine({0, 0, 0}, {1, 0, 0});
    EXPECT_EQ(Tools::appendEntity(line, L"Anchor", id, nullptr), 0)
        << "this form leaves the lock to its caller";
    underLock([&] { EXPECT_EQ(Tools::appendEntity(line, L"Anchor", id, nullptr), 1); });
    EXPECT_TRUE(line->isWriteEnabled()) << "the entity stays open";
    EXPECT_EQ(database().numOpenObjects(), 1);
    const AcDbObjectId first = id;
    underLock([&] { EXPECT_EQ(Tools::appendEntity(line, L"anchor", id, nullptr), 0) << "it has its place"; });
    EXPECT_EQ(Tools::appendEntity(line, L"anchor", id), 1) << "which this form takes for success";
    EXPECT_EQ(id, first);
    line->close();
    auto* const second = new AcDbLine({0, 0, 0}, {2, 0, 0});
    EXPECT_EQ(Tools::appendEntity(second, L"Other", id), 1);
    second->close();
    EXPECT_EQ(session.document().lockMode(true), AcAp::kNotLocked);
    AcDbLine loose;
    EXPECT_EQ(Tools::appendEntity(nullptr, L"Anchor", id), 3);
    EXPECT_EQ(Tools::appendEntity(nullptr, L"Anchor", id, nullptr), 0);
    EXPECT_EQ(Tools::appendEntity(&loose, L"no|name", id), 0);
    {
        const AcAxDocLock lock;
        const AcDbSymbolTablePointer<AcDbBlockTable> reader(&database(), AcDb::kForRead);
        EXPECT_EQ(Tools::appendEntity(&loose, L"New", id, nullptr), 0) << "the table cannot be upgraded";
        EXPECT_EQ(Tools::appendEntity(&loose, L"New", id), 0);
        const AcDbObjectPointer<AcDbObject> block(Tools::getFromSymbolTable(L"BLOCK", L"Anchor"),
                                                  AcDb::kForRead);
        EXPECT_EQ(Tools::appendEntity(&loose, L"Anchor", id, nullptr), 0);
    }
    EXPECT_TRUE(loose.objectId().isNull());
    ASSERT_EQ(session.host().documents().closeDocument(&session.document()), Acad::eOk);
    EXPECT_EQ(Tools::appendEntity(&loose, L"Anchor", id), 0);
}

TEST_F(DictionaryTree, walks) {
    const AcAxDocLock lock;
    AcDbObjectId ids[3];
    const wchar_t* const blocks[] = {L"*Model_Space", L"Anchor", L"Anchor"};
    for (int i = 0; i < 3; ++i) {
        auto* const line = new AcDbLine({0, 0, 0}, {i + 1.0, 0, 0});
        ASSERT_EQ(Tools::appendEntity(line, blocks[i], ids[i], nullptr), 1);
        line->close();
    }
    AcDbObjectIdArray found;
    found.append(ids[0]);
    EXPECT_EQ(Tools::getFromModelSpace(found, nullptr), 1);
    EXPECT_TRUE(found.length() == 1 && found[0] == ids[0]);
    EXPECT_EQ(Tools::getFromBlockTable(found, L"ANCHOR", &database()), 1);
    EXPECT_TRUE(found.length() == 2 && found[0] == ids[1] && found[1] == ids[2]);
    EXPECT_EQ(Tools::getFromBlockTable(found, nullptr), 1);
    EXPECT_EQ(found.length(), 3);
    ASSERT_EQ(drawingtest::erase(ids[1]), Acad::eOk);
    {
        const AcDbObjectPointer<AcDbObject> busy(database().modelSpaceId(), AcDb::kForWrite);
        EXPECT_EQ(Tools::getFromBlockTable(found, &database()), 1);
        EXPECT_EQ(found.length(), 2) << "a block that is open elsewhere is walked too, what is erased is not";
    }
    EXPECT_EQ(Tools::getFromBlockTable(found, L"None", nullptr), 0);
    EXPECT_TRUE(found.isEmpty());

    EXPECT_EQ(Tools::getFromSymbolTable(L"dimstyle", L"STANDARD"), database().dimStyleStandard());
    EXPECT_EQ(Tools::getFromSymbolTable(L"LAYER", L"0", &database()), database().layerZero());
    EXPECT_EQ(Tools::getFromSymbolTable(L"LTYPE", L"continuous"), database().continuousLinetype());
    for (const auto& [word, name] : {std::pair(L"DIMSTYLE", L"None"), std::pair(L"TABLE", L"0"),
                                     std::pair(L"LAYER", static_cast<const wchar_t*>(nullptr))})
        EXPECT_TRUE(Tools::getFromSymbolTable(word, name).isNull());
}

// Symbol tables, dictionaries and their iterators.

#include "drawingparts.h"

#include "dbdictdflt.h"
#include "dbpoint.h"

#include <set>

namespace {

using namespace drawingtest;

class Tables : public testing::Test {
protected:
    void TearDown() override { EXPECT_EQ(0, database.numOpenObjects()); }

    AcDbObjectId addLayer(const wchar_t* name) { return addRecord<AcDbLayerTable>(database, name); }
    std::vector<std::wstring> layerNames(bool forward = true, bool skipErased = true) {
        AcDbSymbolTablePointer<AcDbLayerTable> table(&database, AcDb::kForRead);
        AcDbLayerTableIterator* made = nullptr;
        EXPECT_EQ(Acad::eOk, table->newIterator(made, forward, skipErased));
        const std::unique_ptr<AcDbLayerTableIterator> iterator(made);
        std::vector<std::wstring> names;
        for (; !iterator->done(); iterator->step(forward, skipErased)) {
            AcDbLayerTableRecord* record = nullptr;
            EXPECT_EQ(Acad::eOk, iterator->getRecord(record, AcDb::kForRead, !skipErased));
            names.push_back(record->name());
            record->close();
        }
        return names;
    }
    AcDbDatabase database;
};

TEST_F(Tables, NamesAreFoldedAndUnique) {
    const AcDbObjectId walls = addLayer(L"Wände");
    AcDbSymbolTablePointer<AcDbLayerTable> table(&database, AcDb::kForWrite);
    AcDbLayerTableRecord taken;
    EXPECT_EQ(Acad::eOk, taken.setName(L"WÄNDE"));
    EXPECT_EQ(Acad::eDuplicateKey, table->add(&taken));
    AcDbObjectId id = database.layerZero();
    EXPECT_EQ(Acad::eOk, table->getAt(L"wäNDe", id));
    EXPECT_EQ(walls, id);
    EXPECT_EQ(Acad::eKeyNotFound, table->getAt(L"Waende", id));
    EXPECT_EQ(walls, id) << "the argument stays on failure";
    EXPECT_EQ(Acad::eInvalidInput, table->getAt(nullptr, id));
    EXPECT_TRUE(table->has(L"WÄNDE") && table->has(walls));
    EXPECT_FALSE(table->has(L"") || table->has(database.continuousLinetype()) || table->has(nullptr));
}

TEST_F(Tables, InvalidNamesAreRefused) {
    AcDbLayerTableRecord layer;
    for (const wchar_t* name : {L"", L"a<b", L"a>b", L"a/b", L"a\\b", L"a\"b", L"a:b", L"a;b", L"a?b", L"a*b",
                                L"a|b", L"a,b", L"a=b", L"a`b", L"a\nb", L"*U"})
        EXPECT_EQ(Acad::eInvalidSymbolTableName, layer.setName(name))
            << std::string(name, name + wcslen(name));
    EXPECT_EQ(Acad::eInvalidSymbolTableName, layer.setName(nullptr));
    EXPECT_EQ(Acad::eInvalidSymbolTableName, layer.setName(std::wstring(256, L'x').c_str()));
    EXPECT_EQ(Acad::eOk, layer.setName(std::wstring(255, L'x').c_str()));
    AcDbSymbolTablePointer<AcDbLayerTable> table(&database, AcDb::kForWrite);
    AcDbLayerTableRecord nameless;
    AcDbObjectId id;
    EXPECT_EQ(Acad::eInvalidSymbolTableName, table->add(id, &nameless));
    AcDbLinetypeTableRecord other;
    other.setName(L"other");
    EXPECT_EQ(Acad::eNotThatKindOfClass, table->add(id, &other));
    EXPECT_EQ(Acad::eNullObjectPointer, table->add(id, nullptr));
    EXPECT_TRUE(id.isNull() && nameless.objectId().isNull() && other.objectId().isNull());
    AcDbLayerTable loose;
    EXPECT_EQ(Acad::eNoDatabase, loose.add(&nameless));
}

TEST_F(Tables, ErasedRecordsFreeTheirNamesAndComeBackIfTheyCan) {
    const AcDbObjectId first = addLayer(L"Axis");
    ASSERT_EQ(Acad::eOk, erase(first));
    {
        AcDbSymbolTablePointer<AcDbLayerTable> table(&database, AcDb::kForRead);
        AcDbObjectId id;
        EXPECT_EQ(Acad::eWasErased, table->getAt(L"Axis", id));
        EXPECT_EQ(Acad::eOk, table->getAt(L"Axis", id, true));
        EXPECT_FALSE(table->has(L"Axis"));
        AcDbLayerTableRecord* record = nullptr;
        EXPECT_EQ(Acad::eWasErased, table->getAt(L"Axis", record, AcDb::kForRead));
        EXPECT_EQ(nullptr, record);
    }
    const AcDbObjectId second = addLayer(L"AXIS");
    EXPECT_EQ(Acad::eDuplicateKey, erase(first, false));
    EXPECT_EQ((std::vector<std::wstring>{L"0", L"AXIS"}), layerNames());
    EXPECT_EQ((std::vector<std::wstring>{L"AXIS", L"Axis", L"0"}), layerNames(false, false));
    ASSERT_EQ(Acad::eOk, erase(second));
    EXPECT_EQ(Acad::eOk, erase(first, false));
    AcDbSymbolTablePointer<AcDbLayerTable> table(&database, AcDb::kForRead);
    EXPECT_EQ(first, table->find(L"axis"));
}

TEST_F(Tables, StandingRecordsCannotBeErased) {
    for (const AcDbObjectId id :
         {database.layerZero(), database.byLayerLinetype(), database.byBlockLinetype(),
          database.continuousLinetype(), database.modelSpaceId(), database.paperSpaceId(),
          database.layerTableId(), database.blockTableId(), database.namedObjectsDictionaryId()})
        EXPECT_EQ(Acad::eCannotBeErasedByCaller, erase(id));
}

TEST_F(Tables, OnlyShapeFilesAndViewportsShareNames) {
    AcDbSymbolTablePointer<AcDbTextStyleTable> styles(&database, AcDb::kForWrite);
    AcDbTextStyleTableRecord second;
    EXPECT_EQ(Acad::eOk, second.setName(L"STANDARD"));
    EXPECT_EQ(Acad::eDuplicateKey, styles->add(&second));
    for (int i = 0; i < 2; ++i) {
        auto* shapes = new AcDbTextStyleTableRecord;
        shapes->setIsShapeFile(true);
        EXPECT_EQ(Acad::eOk, styles->add(shapes));
        shapes->close();
    }
    addRecord<AcDbViewportTable>(database, L"*Active");
    EXPECT_EQ(2u, AcDbSymbolTablePointer<AcDbViewportTable>(&database, AcDb::kForRead)->numRecords());
}

TEST_F(Tables, UnnamedBlocksGetNumbers) {
    std::set<std::wstring> names;
    for (int i = 0; i < 3; ++i) {
        const AcDbObjectPointer<AcDbBlockTableRecord> block(addRecord<AcDbBlockTable>(database, L"*U"),
                                                            AcDb::kForRead);
        EXPECT_TRUE(block->isAnonymous());
        EXPECT_FALSE(block->isLayout());
        names.insert(block->name());
    }
    EXPECT_EQ(3u, names.size());
    EXPECT_FALSE(names.contains(L"*U"));
}

class Dictionaries : public Tables {
protected:
    AcDbObjectId addEntry(const wchar_t* name, AcDbObject* object = new AcDbXrecord) {
        return enter(database.namedObjectsDictionaryId(), name, object);
    }
    std::vector<std::wstring> entryNames() {
        AcDbDictionary* root = nullptr;
        EXPECT_EQ(Acad::eOk, database.getNamedObjectsDictionary(root));
        const std::unique_ptr<AcDbDictionaryIterator> iterator(root->newIterator());
        std::vector<std::wstring> names;
        for (bool more = !iterator->done(); more; more = iterator->next()) names.push_back(iterator->name());
        EXPECT_TRUE(iterator->done() && iterator->objectId().isNull());
        EXPECT_EQ(names.size(), root->numEntries());
        root->close();
        return names;
    }
};

TEST_F(Dictionaries, EntriesByName) {
    const AcDbObjectId entry = addEntry(L"VEXO_SERVICES");
    AcDbObjectPointer<AcDbDictionary> root(database.namedObjectsDictionaryId(), AcDb::kForRead);
    AcDbObjectId id;
    EXPECT_EQ(Acad::eOk, root->getAt(L"vexo_services", id));
    EXPECT_EQ(entry, id);
    EXPECT_EQ(Acad::eKeyNotFound, root->getAt(L"other", id));
    EXPECT_EQ(Acad::eKeyNotFound, root->getAt(nullptr, id));
    EXPECT_EQ(entry, id);
    AcDbXrecord* record = nullptr;
    EXPECT_EQ(Acad::eOk, root->getAt(L"VEXO_SERVICES", record, AcDb::kForWrite));
    AcDbObject* object = nullptr;
    EXPECT_EQ(83, root->getAt(L"VEXO_SERVICES", object, AcDb::kForRead)) << "an entry that another holds";
    EXPECT_EQ(22, root->getAt(L"other", object, AcDb::kForRead));
    record->close();
    AcDbDictionary* wrong = nullptr;
    EXPECT_EQ(46, root->getAt(L"VEXO_SERVICES", wrong, AcDb::kForRead));
    EXPECT_EQ(nullptr, wrong);
    wchar_t* name = nullptr;
    EXPECT_EQ(Acad::eOk, root->nameAt(entry, name));
    EXPECT_STREQ(L"VEXO_SERVICES", name);
    acutDelString(name);
    AcDbXrecord refused;
    EXPECT_EQ(Acad::eNotOpenForWrite, root->setAt(L"x", &refused, id));
    EXPECT_EQ(Acad::eNotOpenForWrite, root->remove(L"VEXO_SERVICES"));
}

TEST_F(Dictionaries, TakenNamesAndBusyEntries) {
    const AcDbObjectId first = addEntry(L"Entry");
    AcDbObjectPointer<AcDbDictionary> root(database.namedObjectsDictionaryId(), AcDb::kForWrite);
    AcDbXrecord refused;
    AcDbObjectId id;
    EXPECT_EQ(Acad::eDuplicateKey, root->setAt(L"ENTRY", &refused, id));
    EXPECT_TRUE(id.isNull() && refused.objectId().isNull() && !first.isErased());
    for (const AcDb::OpenMode held : {AcDb::kForRead, AcDb::kForWrite, AcDb::kForNotify}) {
        AcDbObjectPointer<AcDbObject> busy(first, held);
        AcDbObject* object = nullptr;
        AcDbXrecord* record = nullptr;
        EXPECT_EQ(83, root->getAt(L"entry", object, AcDb::kForWrite)) << held;
        EXPECT_EQ(83, root->getAt(L"entry", record, AcDb::kForWrite)) << held;
        EXPECT_TRUE(!object && !record);
        if (held == AcDb::kForWrite) {
            EXPECT_EQ(Acad::eOk, root->setAt(L"Entry", busy.object(), id)) << "its own name is no other's";
            EXPECT_EQ(first, id);
        }
    }
}

TEST_F(Dictionaries, ErasedEntriesCountAsAbsentAndComeBack) {
    const AcDbObjectId entry = addEntry(L"Entry");
    ASSERT_EQ(Acad::eOk, erase(entry));
    EXPECT_EQ((std::vector<std::wstring>{L"ACAD_GROUP", L"ACAD_LAYOUT"}), entryNames());
    ASSERT_EQ(Acad::eOk, erase(entry, false));
    EXPECT_EQ(3u, entryNames().size());
    ASSERT_EQ(Acad::eOk, erase(entry));
    const AcDbObjectId other = addEntry(L"Entry");
    ASSERT_EQ(Acad::eOk, erase(entry, false));
    AcDbObjectPointer<AcDbDictionary> root(database.namedObjectsDictionaryId(), AcDb::kForRead);
    AcDbObjectId id;
    EXPECT_EQ(Acad::eOk, root->getAt(L"Entry", id));
    EXPECT_EQ(other, id) << "the name was taken meanwhile";
}

TEST_F(Dictionaries, StarNamesAreUniqueAndInvalidOnesRefused) {
    addEntry(L"*A1");
    addEntry(L"*");
    addEntry(L"*");
    const auto names = entryNames();
    EXPECT_EQ(names.size(), std::set<std::wstring>(names.begin(), names.end()).size());
    for (const std::wstring& name : names) EXPECT_NE(L"*", name);
    AcDbObjectPointer<AcDbDictionary> root(database.namedObjectsDictionaryId(), AcDb::kForWrite);
    AcDbXrecord refused;
    AcDbObjectId id;
    for (const wchar_t* name : {L"", L"a|b", L"a\tb"})
        EXPECT_EQ(Acad::eInvalidKey, root->setAt(name, &refused, id));
    EXPECT_EQ(Acad::eInvalidKey, root->setAt(nullptr, &refused, id));
    EXPECT_EQ(Acad::eNullObjectPointer, root->setAt(L"x", nullptr, id));
    AcDbDictionary loose;
    EXPECT_EQ(Acad::eNoDatabase, loose.setAt(L"x", &refused, id));
}

TEST_F(Dictionaries, RemoveRenameAndWalkMeanwhile) {
    const AcDbObjectId one = addEntry(L"one");
    addEntry(L"two");
    addEntry(L"three");
    AcDbObjectPointer<AcDbDictionary> root(database.namedObjectsDictionaryId(), AcDb::kForWrite);
    const std::unique_ptr<AcDbDictionaryIterator> iterator(root->newIterator());
    ASSERT_TRUE(iterator->setPosition(one));
    AcDbObjectId removed;
    EXPECT_EQ(Acad::eOk, root->remove(L"TWO", removed));
    EXPECT_FALSE(removed.isNull() || removed.isErased());
    EXPECT_TRUE(iterator->next());
    EXPECT_STREQ(L"three", iterator->name());
    EXPECT_EQ(Acad::eDuplicateKey, root->setName(L"three", L"ONE"));
    EXPECT_EQ(Acad::eOk, root->setName(L"three", L"two"));
    EXPECT_STREQ(L"two", iterator->name());
    EXPECT_EQ(Acad::eKeyNotFound, root->setName(L"three", L"x"));
    EXPECT_EQ(Acad::eKeyNotFound, root->remove(L"three"));
    EXPECT_EQ(Acad::eOk, root->remove(one));
    EXPECT_FALSE(root->has(one) || root->has(L"one"));
    EXPECT_FALSE(iterator->setPosition(one));
    EXPECT_FALSE(iterator->next());
}

TEST_F(Dictionaries, ExtensionDictionariesGoWithTheirObject) {
    const AcDbObjectId layer = addLayer(L"Slab");
    AcDbObjectId extension;
    {
        AcDbObjectPointer<AcDbLayerTableRecord> record(layer, AcDb::kForWrite);
        EXPECT_TRUE(record->extensionDictionary().isNull());
        EXPECT_EQ(Acad::eKeyNotFound, record->releaseExtensionDictionary());
        ASSERT_EQ(Acad::eOk, record->createExtensionDictionary());
        extension = record->extensionDictionary();
        EXPECT_EQ(Acad::eOk, record->createExtensionDictionary());
        EXPECT_EQ(extension, record->extensionDictionary()) << "one is enough";
        EXPECT_EQ(layer, AcDbObjectPointer<AcDbDictionary>(extension, AcDb::kForRead)->ownerId());
        enter(extension, L"entry");
        EXPECT_EQ(Acad::eContainerNotEmpty, record->releaseExtensionDictionary());
    }
    ASSERT_EQ(Acad::eOk, erase(layer));
    EXPECT_TRUE(extension.isErased());
    ASSERT_EQ(Acad::eOk, erase(layer, false));
    EXPECT_FALSE(extension.isErased());
    AcDbLayerTableRecord loose;
    EXPECT_EQ(Acad::eNoDatabase, loose.createExtensionDictionary());
}

TEST_F(Dictionaries, TheDefaultStandsForMissingNames) {
    const AcDbObjectId id = addEntry(L"styles", new AcDbDictionaryWithDefault);
    const AcDbObjectId normalId = enter(id, L"Normal");
    AcDbObjectPointer<AcDbDictionaryWithDefault> writing(id, AcDb::kForWrite);
    AcDbObjectId found = id;
    EXPECT_EQ(Acad::eKeyNotFound, writing->getAtOrDefault(L"any", found));
    EXPECT_EQ(id, found);
    ASSERT_EQ(Acad::eOk, writing->setDefaultId(normalId));
    EXPECT_EQ(Acad::eOk, writing->getAtOrDefault(L"any", found));
    EXPECT_EQ(normalId, found);
    EXPECT_EQ(Acad::eKeyNotFound, writing->getAt(L"any", found));
}

} // namespace

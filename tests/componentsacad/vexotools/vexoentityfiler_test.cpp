// Filing of entities: the format of both filers, what damage does, entities of any class.
#include "filedkinds.h"
#include "hosttest.h"

#include "dbtext.h"

using namespace filedrecords;
using Tools = VEXOEntityFiler;

namespace {

using hostkit::MemoryDwgFiler;
using hostkit::MemoryDxfFiler;
using Held = std::unique_ptr<AcDbEntity>;

class EntityFiler : public hostkit::HostTest {};

/// The sample elsewhere and in another colour.
Held priorOf(const Kind& kind) {
    Held prior(kind.make());
    EXPECT_EQ(prior->transformBy(AcGeMatrix3d().setToTranslation({100, 50, 0})), Acad::eOk);
    prior->setColorIndex(5);
    return prior;
}

Items with(Items items, std::size_t place, int value) {
    items[place].value = std::to_string(value);
    return items;
}
Items withColor(const Items& items, int color) { return with(items, items.size() - 1, color); }

} // namespace

TEST_F(EntityFiler, FilesWhatDrawingsHold) {
    for (const Kind& kind : kinds()) {
        SCOPED_TRACE(kind.name);
        const Held sample(kind.make());
        EXPECT_EQ(toldBinary(kind, *sample), asBinary(kind.record));
        EXPECT_EQ(toldText(kind, *sample), asText(kind.record));

        Items items = kind.record;
        items.push_back({"I32", "-77"});
        Filled filled(items);
        const Held ofBinary = priorOf(kind), ofText = priorOf(kind);
        EXPECT_EQ(kind.dwgIn(&filled.binary, ofBinary.get()), Acad::eOk);
        EXPECT_EQ(kind.dxfIn(&filled.text, ofText.get()), Acad::eOk);
        EXPECT_EQ(toldBinary(kind, *ofBinary), asBinary(kind.record))
            << "old vertices and loops are replaced";
        EXPECT_EQ(toldText(kind, *ofText), asText(kind.record));
        Adesk::Int32 next = 0;
        AcDbDxfGroup group;
        EXPECT_TRUE(filled.binary.readInt32(&next) == Acad::eOk && next == -77)
            << "no item of the owner is taken";
        EXPECT_TRUE(filled.text.readItem(group) == Acad::eOk && group.integer == -77);
    }
}

TEST_F(EntityFiler, OldRecordsHaveNoColorAndNewOnesAreRefused) {
    for (const Kind& kind : kinds()) {
        for (const int version : {1, 0, -1, 3, 2147483647}) {
            SCOPED_TRACE(std::string(kind.name) + " of version " + std::to_string(version));
            Items items = with(kind.record, 0, version);
            items.pop_back();
            Filled filled(items);
            const bool isOld = version < 2;
            const Held ofBinary = priorOf(kind), ofText = priorOf(kind);
            const std::string expected =
                isOld ? asBinary(withColor(kind.record, 5)) : toldBinary(kind, *ofBinary);
            EXPECT_EQ(kind.dwgIn(&filled.binary, ofBinary.get()), isOld ? 0 : 301);
            EXPECT_EQ(kind.dxfIn(&filled.text, ofText.get()), isOld ? 0 : 301);
            EXPECT_EQ(toldBinary(kind, *ofBinary), expected);
            EXPECT_EQ(toldBinary(kind, *ofText), expected);
            AcDbDxfGroup group;
            EXPECT_EQ(filled.binary.tell() == static_cast<Adesk::Int64>(filled.binary.size()), isOld);
            EXPECT_EQ(filled.text.readItem(group), isOld ? Acad::eEndOfObject : Acad::eOk)
                << "no more is read";
        }
    }
}

// Of every item: the record up to it alone, then the record with another item in its place.
TEST_F(EntityFiler, DamagedItemsFailTheFilerAndLeaveTheEntity) {
    for (const Kind& kind : kinds()) {
        for (std::size_t place = 0; place < kind.record.size(); ++place) {
            for (const bool isCut : {true, false}) {
                SCOPED_TRACE(std::string(kind.name) + (isCut ? " without item " : " with another item ") +
                             std::to_string(place));
                Items items = kind.record;
                if (isCut) items.resize(place);
                Filled filled(items, place);
                const Held ofBinary = priorOf(kind), ofText = priorOf(kind);
                const bool isColor = place + 1 == kind.record.size();
                const std::string left =
                    isColor ? asBinary(withColor(kind.record, 5)) : toldBinary(kind, *ofBinary);
                EXPECT_EQ(kind.dwgIn(&filled.binary, ofBinary.get()), Acad::eDwgObjectImproperlyRead);
                EXPECT_EQ(filled.binary.filerStatus(), Acad::eDwgObjectImproperlyRead);
                EXPECT_EQ(kind.dxfIn(&filled.text, ofText.get()), 50);
                EXPECT_EQ(filled.text.filerStatus(), 50);
                EXPECT_EQ(toldBinary(kind, *ofBinary), left);
                EXPECT_EQ(toldBinary(kind, *ofText), left);

                const int due = kind.record[place].code();
                EXPECT_EQ(narrow(filled.text.errorMessage()),
                          "\nError: expected group code " + std::to_string(due));
                filled.text.resetFilerStatus();
                AcDbDxfGroup group;
                EXPECT_EQ(filled.text.readItem(group), isCut ? Acad::eEndOfObject : Acad::eOk);
                EXPECT_EQ(group.code, isCut ? 0 : due + 1) << "what came instead is the owner's to read";
            }
        }
    }
}

TEST_F(EntityFiler, CountsAndEdgeTypesAreBelievedOnlyAsFarAsTheyHold) {
    for (const Kind& kind : kinds()) {
        for (std::size_t place = 0; place < kind.record.size(); ++place) {
            const bool isCount = kind.record[place].kind == "N";
            if (!isCount && kind.record[place].kind != "E") continue;
            for (const int value : isCount ? std::vector<int>{-1, -2147483647 - 1, 2147483647}
                                           : std::vector<int>{0, 5, -1, 32767}) {
                SCOPED_TRACE(std::string(kind.name) + ' ' + std::to_string(place) + " is " +
                             std::to_string(value));
                Filled filled(with(kind.record, place, value));
                const Held entity = priorOf(kind);
                const std::string before = toldBinary(kind, *entity);
                EXPECT_EQ(kind.dwgIn(&filled.binary, entity.get()), Acad::eDwgObjectImproperlyRead);
                EXPECT_EQ(kind.dxfIn(&filled.text, entity.get()), Acad::eBadDxfSequence);
                EXPECT_FALSE(filled.text.errorMessage().empty());
                EXPECT_EQ(toldBinary(kind, *entity), before);
            }
        }
    }
}

TEST_F(EntityFiler, TheLowBitsOfAColorCount) {
    Filled filled(itemsOf("I32 2, V3 0/0/1, P3 0/0/0, P3 1/0/0, I32 65539"));
    AcDbLine line;
    EXPECT_EQ(Tools::dwgInFieldsLine(&filled.binary, &line), Acad::eOk);
    EXPECT_EQ(line.colorIndex(), 3);
}

TEST_F(EntityFiler, NullsAndFilersThatFailedAreTold) {
    for (const Kind& kind : kinds()) {
        SCOPED_TRACE(kind.name);
        const Held entity = priorOf(kind);
        const std::string before = toldBinary(kind, *entity);
        MemoryDwgFiler binary(AcDb::kFileFiler);
        MemoryDxfFiler text;
        for (const int status : {kind.dwgIn(nullptr, entity.get()), kind.dwgOut(nullptr, entity.get()),
                                 kind.dxfIn(nullptr, entity.get()), kind.dxfOut(nullptr, entity.get()),
                                 kind.dwgIn(&binary, nullptr), kind.dwgOut(&binary, nullptr),
                                 kind.dxfIn(&text, nullptr), kind.dxfOut(&text, nullptr)})
            EXPECT_EQ(status, 20);
        EXPECT_TRUE(binary.size() == 0 && text.groups().isEmpty());
        Filled filled(kind.record);
        filled.binary.setFilerStatus(Acad::eOutOfDisk);
        filled.text.setError(Acad::eOutOfDisk);
        EXPECT_EQ(kind.dwgIn(&filled.binary, entity.get()), Acad::eOutOfDisk);
        EXPECT_EQ(kind.dxfIn(&filled.text, entity.get()), Acad::eOutOfDisk);
        EXPECT_EQ(kind.dwgOut(&filled.binary, entity.get()), Acad::eOutOfDisk);
        EXPECT_EQ(kind.dxfOut(&filled.text, entity.get()), Acad::eOutOfDisk);
        EXPECT_EQ(toldBinary(kind, *entity), before);
    }
}

// Any class.

namespace {

class Beam : public AcDbLine {
    ACRX_DECLARE_MEMBERS(Beam)
};
ACRX_DXF_DEFINE_MEMBERS(Beam, AcDbLine, 0, 0, 0, VEXOBEAM, TEST)

struct BeamClass {
    BeamClass() { Beam::rxInit(); }
    ~BeamClass() { Beam::rxExit(); }
};

/// Reads the items as an entity of any class, by both filers; the last one read belongs to the caller.
Held readBoth(const Items& items, int status) {
    Filled filled(items);
    AcDbLine other;
    AcDbEntity* ofBinary = &other;
    AcDbEntity* ofText = &other;
    EXPECT_EQ(Tools::dwgInFieldsEntity(&filled.binary, ofBinary), status);
    EXPECT_EQ(Tools::dxfInFieldsEntity(&filled.text, ofText), status == 51 ? 50 : status);
    Held first(ofBinary), second(ofText);
    EXPECT_EQ(first ? first->isA() : nullptr, second ? second->isA() : nullptr);
    return second;
}

std::string toldAny(const AcDbEntity* entity) {
    BinarySpy binary;
    TextSpy text;
    EXPECT_EQ(Tools::dwgOutFieldsEntity(&binary, entity), Acad::eOk);
    EXPECT_EQ(Tools::dxfOutFieldsEntity(&text, entity), Acad::eOk);
    return binary.told + text.told;
}

std::string toldOf(const Items& items) { return asBinary(items) + asText(items); }

} // namespace

TEST_F(EntityFiler, AnyEntityIsFiledBehindItsClass) {
    for (const Kind& kind : kinds()) {
        const Held sample(kind.make());
        Items items = itemsOf("I32 1, S " + narrow(sample->isA()->name()));
        items.insert(items.end(), kind.record.begin(), kind.record.end());
        EXPECT_EQ(toldAny(sample.get()), toldOf(items));
        const Held read = readBoth(items, 0);
        ASSERT_TRUE(read);
        EXPECT_EQ(toldAny(read.get()), toldOf(items));
        items.pop_back();
        items.pop_back();
        const Held damaged = readBoth(items, 51);
        ASSERT_TRUE(damaged) << "the entity is the caller's all the same";
    }
}

TEST_F(EntityFiler, WhatIsNoKindOrNothingIsFiledByItsNameAlone) {
    EXPECT_EQ(toldAny(nullptr), toldOf(itemsOf("I32 1, S")));
    EXPECT_FALSE(readBoth(itemsOf("I32 1, S"), 0));
    AcDbText text(AcGePoint3d(1, 2, 3), L"text");
    EXPECT_EQ(toldAny(&text), toldOf(itemsOf("I32 1, S AcDbText")));
    const Held read = readBoth(itemsOf("I32 1, S AcDbText"), 0);
    ASSERT_TRUE(read);
    EXPECT_TRUE(AcDbText::cast(read.get()) && AcDbText::cast(read.get())->position() == AcGePoint3d::kOrigin);
}

TEST_F(EntityFiler, AnApplicationsClassIsFiledAsTheKindAboveIt) {
    const BeamClass known;
    Beam beam;
    beam.setEndPoint(AcGePoint3d(8, 0, 0));
    const Items items = itemsOf("I32 1, S Beam, I32 2, V3 0/0/1, P3 0/0/0, P3 8/0/0, I32 256");
    EXPECT_EQ(toldAny(&beam), toldOf(items));
    const Held read = readBoth(items, 0);
    ASSERT_TRUE(read);
    EXPECT_TRUE(Beam::cast(read.get()));
}

TEST_F(EntityFiler, WhatCannotBeMadeIsToldByItsStatus) {
    const std::pair<const char*, int> cases[] = {
        {"I32 2, S AcDbLine, I32 2", 301},
        {"I32 9", 301},
        {"I32 1, S NoSuchClass", 34},
        {"I32 1, S AcDbDictionary", 20},
        {"I32 1, S AcDbEntity", 20},
        {"I32 1, S AcDbCurve", 20},
        {"I16 1, S AcDbLine", 51},
        {"I32 1, I32 5", 51},
        {"I32 1", 51},
        {"", 51},
    };
    for (const auto& [items, status] : cases) {
        SCOPED_TRACE(items);
        EXPECT_FALSE(readBoth(itemsOf(items), status));
    }
    AcDbLine line;
    AcDbEntity* entity = &line;
    EXPECT_EQ(Tools::dwgInFieldsEntity(nullptr, entity), 20);
    EXPECT_FALSE(entity);
    entity = &line;
    EXPECT_EQ(Tools::dxfInFieldsEntity(nullptr, entity), 20);
    EXPECT_FALSE(entity);
    EXPECT_EQ(Tools::dwgOutFieldsEntity(nullptr, nullptr), 20);
    EXPECT_EQ(Tools::dxfOutFieldsEntity(nullptr, nullptr), 20);

    // The dictionary is asked, not the classes themselves.
    AcRxObject* const classes = acrxSysRegistry()->remove(L"ClassDictionary");
    EXPECT_FALSE(readBoth(itemsOf("I32 1, S AcDbLine"), 34));
    acrxSysRegistry()->atPut(L"ClassDictionary", classes);
}

// The typed store in extended data: its form, its widths, and what damaged blocks do to it.

#include "drawingparts.h"
#include "hosttest.h"
#include "vexodatabasetools.h"

#include "acdbads.h"
#include "dbpoint.h"
#include "drawingreader.h"
#include "drawingwriter.h"

#include <cstdlib>
#include <new>

namespace {

using namespace drawingtest;
using Tools = VEXODatabaseTools;

constexpr const wchar_t* application = L"ORDANE";

AcArray<long> longs(std::initializer_list<long> values) { return arrayOf(values); }

class TypedStore : public hostkit::HostTest {
protected:
    TypedStore() { point = opened<AcDbPoint>(appendToModelSpace(database(), new AcDbPoint)); }
    void TearDown() override {
        point->close();
        HostTest::TearDown();
    }
    void give(resbuf* list) {
        const List given(list);
        (void)acdbRegApp(application);
        ASSERT_EQ(point->setXData(given.get()), Acad::eOk);
    }
    std::string block(const wchar_t* name = application) const { return textOf(List(point->xData(name))); }

    AcDbPoint* point = nullptr;
};

TEST_F(TypedStore, EveryKindIsWrittenInItsFormAndReadBack) {
    EXPECT_EQ(acdbTblSearch(L"APPID", application, 0), nullptr);
    EXPECT_TRUE(Tools::setIntValueInEntityXData(point, application, L"int", -7));
    EXPECT_TRUE(Tools::setLongValueInEntityXData(point, application, L"long", 70000));
    EXPECT_TRUE(Tools::setLongPtrValueInEntityXData(point, application, L"ptr", 12));
    EXPECT_TRUE(Tools::setDoubleValueInEntityXData(point, application, L"double", 2.5));
    EXPECT_TRUE(Tools::setPointValueInEntityXData(point, application, L"point", AcGePoint3d(1, 2, 3)));
    EXPECT_TRUE(Tools::setStringValueInEntityXData(point, application, L"string", L"text"));
    EXPECT_TRUE(Tools::setLongArrayInEntityXData(point, application, L"array", longs({10, -20})));
    EXPECT_TRUE(Tools::setSimpleStringValueInEntityXData(point, application, L"flag"));
    EXPECT_EQ(block(), "1001 ORDANE, 1000 int, 1070 -7, 1000 long, 1071 70000, 1000 ptr, 1071 12, "
                       "1000 double, 1040 2.5, 1000 point, 1010 1/2/3, 1000 string, 1000 text, "
                       "1000 array, 1071 2, 1071 10, 1071 -20, 1000 flag");
    EXPECT_EQ(textOf(List(acdbTblSearch(L"appid", L"ordane", 0))).substr(0, 21), "0 appid, 2 ORDANE, 70");

    int number = 0;
    long wide = 0;
    Adesk::Int64 pointer = 0;
    double real = 0;
    AcGePoint3d place;
    CString text;
    AcArray<long> array = longs({1});
    EXPECT_TRUE(Tools::getIntValueInEntityXData(point, application, L"int", number) && number == -7);
    EXPECT_TRUE(Tools::getLongValueInEntityXData(point, application, L"long", wide) && wide == 70000);
    EXPECT_TRUE(Tools::getLongPtrValueInEntityXData(point, application, L"ptr", pointer) && pointer == 12);
    EXPECT_TRUE(Tools::getDoubleValueInEntityXData(point, application, L"double", real) && real == 2.5);
    EXPECT_TRUE(Tools::getPointValueInEntityXData(point, application, L"point", place) &&
                place == AcGePoint3d(1, 2, 3));
    EXPECT_TRUE(Tools::getStringValueInEntityXData(point, application, L"string", text) && text == L"text");
    EXPECT_TRUE(Tools::hasSimpleStringValueInEntityXData(point, application, L"flag"));
    for (int times = 1; times <= 2; ++times) {
        EXPECT_TRUE(Tools::getLongArrayFromEntityXData(point, application, L"array", array));
        EXPECT_EQ(array.length(), 1 + 2 * times) << "elements are appended";
    }
    EXPECT_EQ(array[4], -20);
}

TEST_F(TypedStore, WidthsAreThoseOfTheDrawing) {
    const std::pair<int, int> ints[] = {
        {70000, 4464}, {40000, -25536}, {-1, -1}, {32767, 32767}, {-32769, 32767}};
    for (const auto& [given, stored] : ints) {
        int value = 0;
        EXPECT_TRUE(Tools::setIntValueInEntityXData(point, application, L"int", given));
        EXPECT_TRUE(Tools::getIntValueInEntityXData(point, application, L"int", value));
        EXPECT_EQ(value, stored) << given;
    }
    const std::pair<long, long> wides[] = {{5000000000, 705032704}, {-5, -5}, {2147483648, -2147483648}};
    for (const auto& [given, stored] : wides) {
        long value = 0x7777777777777777;
        EXPECT_TRUE(Tools::setLongValueInEntityXData(point, application, L"long", given));
        EXPECT_TRUE(Tools::getLongValueInEntityXData(point, application, L"long", value));
        EXPECT_EQ(value, stored) << given;
    }
    // New and replaced alike, and without the sign.
    for (int times = 0; times < 2; ++times) {
        Adesk::Int64 value = 0;
        EXPECT_TRUE(Tools::setLongPtrValueInEntityXData(point, application, L"ptr", -0x100000005));
        EXPECT_TRUE(Tools::getLongPtrValueInEntityXData(point, application, L"ptr", value));
        EXPECT_EQ(value, 0xFFFFFFFB);
    }
    AcArray<long> array;
    EXPECT_TRUE(Tools::setLongArrayInEntityXData(point, application, L"array", longs({-1, 4294967297})));
    EXPECT_TRUE(Tools::getLongArrayFromEntityXData(point, application, L"array", array));
    EXPECT_EQ(array[0], -1);
    EXPECT_EQ(array[1], 1);
    AcArray<Adesk::Int64> pointers;
    EXPECT_TRUE(Tools::getLongPtrArrayFromEntityXData(point, application, L"array", pointers));
    EXPECT_EQ(pointers[0], 0xFFFFFFFF);
}

TEST_F(TypedStore, WhatIsNotThereLeavesThePreset) {
    give(acutBuildList(1001, L"OTHER", 0));
    for (const bool hasBlock : {false, true}) {
        if (hasBlock) give(acutBuildList(1001, application, 1000, L"Key", 1070, 1, 1000, L"last", 0));
        for (const wchar_t* key : {L"key", L"last", static_cast<const wchar_t*>(nullptr)}) {
            int number = 5;
            long wide = 5;
            Adesk::Int64 pointer = 5;
            double real = 5;
            AcGePoint3d place(5, 5, 5);
            CString text(L"5");
            AcArray<long> array = longs({5});
            EXPECT_FALSE(Tools::getIntValueInEntityXData(point, application, key, number));
            EXPECT_FALSE(Tools::getLongValueInEntityXData(point, application, key, wide));
            EXPECT_FALSE(Tools::getLongPtrValueInEntityXData(point, application, key, pointer));
            EXPECT_FALSE(Tools::getDoubleValueInEntityXData(point, application, key, real));
            EXPECT_FALSE(Tools::getPointValueInEntityXData(point, application, key, place));
            EXPECT_FALSE(Tools::getStringValueInEntityXData(point, application, key, text));
            EXPECT_FALSE(Tools::getLongArrayFromEntityXData(point, application, key, array));
            EXPECT_EQ(number, -1);
            EXPECT_EQ(wide, -1);
            EXPECT_EQ(pointer, -1);
            EXPECT_EQ(real, -1.0);
            EXPECT_TRUE(place == AcGePoint3d::kOrigin && text.IsEmpty() && array.length() == 1);
        }
    }
    int number = 5;
    EXPECT_FALSE(
        Tools::getIntValueInEntityXData(static_cast<AcDbObject*>(nullptr), application, L"Key", number));
    EXPECT_EQ(number, -1);
}

// Each case: a block, what is done to it, the result and the block afterwards.
TEST_F(TypedStore, BlocksAreChangedRecordByRecord) {
    using Act = bool (*)(AcDbPoint*);
    struct Case {
        const char* what;
        resbuf* before;
        Act act;
        bool result;
        const char* after;
    };
    const wchar_t* const name = application;
    const Case cases[] =
        {{"an int over a double changes its low 16 bits and keeps the code",
          acutBuildList(1001, name, 1000, L"k", 1040, 0.0, 0),
          [](AcDbPoint* p) {
              double real = 0;
              return Tools::setIntValueInEntityXData(p, application, L"k", 1) &&
                     Tools::getDoubleValueInEntityXData(p, application, L"k", real) && real > 0 &&
                     real < 1e-300;
          },
          true, "1001 ORDANE, 1000 k, 1040 5e-324"},
         {"a string value is found as a key", acutBuildList(1001, name, 1000, L"a", 1000, L"b", 1070, 3, 0),
          [](AcDbPoint* p) {
              int value = 0;
              return Tools::getIntValueInEntityXData(p, application, L"b", value) && value == 3;
          },
          true, "1001 ORDANE, 1000 a, 1000 b, 1070 3"},
         {"a real as text", acutBuildList(1001, name, 1000, L"k", 1040, 1.5, 0),
          [](AcDbPoint* p) {
              CString text;
              return Tools::getStringValueInEntityXData(p, application, L"k", text) && text == L"1.500000";
          },
          true, "1001 ORDANE, 1000 k, 1040 1.5"},
         {"an integer is no text, but there", acutBuildList(1001, name, 1000, L"k", 1070, 1, 0),
          [](AcDbPoint* p) {
              CString text(L"old");
              return Tools::getStringValueInEntityXData(p, application, L"k", text) && text.IsEmpty();
          },
          true, "1001 ORDANE, 1000 k, 1070 1"},
         {"no number over a text", acutBuildList(1001, name, 1000, L"k", 1000, L"v", 0),
          [](AcDbPoint* p) {
              return Tools::setIntValueInEntityXData(p, application, L"k", 1) ||
                     Tools::setLongValueInEntityXData(p, application, L"k", 1) ||
                     Tools::setLongPtrValueInEntityXData(p, application, L"k", 1) ||
                     Tools::setDoubleValueInEntityXData(p, application, L"k", 1) ||
                     Tools::setPointValueInEntityXData(p, application, L"k", AcGePoint3d(1, 1, 1)) ||
                     Tools::setLongArrayInEntityXData(p, application, L"k", AcArray<long>()) ||
                     Tools::addLongValueToArrayInEntityXData(p, application, L"k", 1);
          },
          false, "1001 ORDANE, 1000 k, 1000 v"},
         {"no text over a number", acutBuildList(1001, name, 1000, L"k", 1040, 1.5, 0),
          [](AcDbPoint* p) { return Tools::setStringValueInEntityXData(p, application, L"k", L"v"); }, false,
          "1001 ORDANE, 1000 k, 1040 1.5"},
         {"no value for a key at the end", acutBuildList(1001, name, 1000, L"k", 0),
          [](AcDbPoint* p) {
              return Tools::setIntValueInEntityXData(p, application, L"k", 1) ||
                     Tools::setStringValueInEntityXData(p, application, L"k", L"v") ||
                     Tools::addLongValueToArrayInEntityXData(p, application, L"k", 1) ||
                     Tools::removeLongArrayFromEntityXData(p, application, L"k");
          },
          false, "1001 ORDANE, 1000 k"},
         {"a flag twice is one record", acutBuildList(1001, name, 1000, L"k", 0),
          [](AcDbPoint* p) { return Tools::setSimpleStringValueInEntityXData(p, application, L"k"); }, true,
          "1001 ORDANE, 1000 k"},
         {"the last flag is not removed", acutBuildList(1001, name, 1000, L"k", 0),
          [](AcDbPoint* p) { return Tools::removeSimpleStringValueInEntityXData(p, application, L"k"); },
          false, "1001 ORDANE, 1000 k"},
         {"a flag takes the next key along",
          acutBuildList(1001, name, 1000, L"k", 1000, L"next", 1070, 1, 1070, 2, 0),
          [](AcDbPoint* p) { return Tools::removeSimpleStringValueInEntityXData(p, application, L"k"); },
          true, "1001 ORDANE, 1070 1, 1070 2"},
         {"a shorter array keeps what is behind",
          acutBuildList(1001, name, 1000, L"k", 1071, 3, 1071, 1, 1071, 2, 1071, 3, 1000, L"n", 1070, 9, 0),
          [](AcDbPoint* p) { return Tools::setLongArrayInEntityXData(p, application, L"k", longs({8})); },
          true, "1001 ORDANE, 1000 k, 1071 1, 1071 8, 1000 n, 1070 9"},
         {"an empty array is a count", acutBuildList(1001, name, 1000, L"k", 1071, 1, 1071, 1, 1000, L"n", 0),
          [](AcDbPoint* p) { return Tools::setLongArrayInEntityXData(p, application, L"k", longs({})); },
          true, "1001 ORDANE, 1000 k, 1071 0, 1000 n"},
         {"an element more stands before what is behind",
          acutBuildList(1001, name, 1000, L"k", 1071, 1, 1071, 5, 1000, L"n", 1070, 9, 0),
          [](AcDbPoint* p) { return Tools::addLongValueToArrayInEntityXData(p, application, L"k", 6); }, true,
          "1001 ORDANE, 1000 k, 1071 2, 1071 5, 1071 6, 1000 n, 1070 9"},
         {"a first element", acutBuildList(1001, name, 1000, L"n", 1070, 9, 0),
          [](AcDbPoint* p) { return Tools::addLongValueToArrayInEntityXData(p, application, L"k", 6); }, true,
          "1001 ORDANE, 1000 n, 1070 9, 1000 k, 1071 1, 1071 6"},
         {"an array goes whole",
          acutBuildList(1001, name, 1000, L"k", 1071, 1, 1071, 5, 1000, L"n", 1070, 9, 0),
          [](AcDbPoint* p) { return Tools::removeLongArrayFromEntityXData(p, application, L"k"); }, true,
          "1001 ORDANE, 1000 n, 1070 9"},
         {"an absent array is gone", acutBuildList(1001, name, 1000, L"n", 1070, 9, 0),
          [](AcDbPoint* p) { return Tools::removeLongArrayFromEntityXData(p, application, L"k"); }, true,
          "1001 ORDANE, 1000 n, 1070 9"},
         {"a count that outruns its elements ends with them",
          acutBuildList(1001, name, 1000, L"k", 1071, 1000000000, 1071, 5, 1000, L"n", 1070, 9, 0),
          [](AcDbPoint* p) {
              AcArray<long> values;
              return Tools::getLongArrayFromEntityXData(p, application, L"k", values) &&
                     values.length() == 1 &&
                     Tools::setLongArrayInEntityXData(p, application, L"k", longs({1, 2}));
          },
          true, "1001 ORDANE, 1000 k, 1071 2, 1071 1, 1071 2, 1000 n, 1070 9"},
         {"a count that outruns the block", acutBuildList(1001, name, 1000, L"k", 1071, 7, 1071, 5, 0),
          [](AcDbPoint* p) { return Tools::removeLongArrayFromEntityXData(p, application, L"k"); }, true, ""},
         {"a count below zero", acutBuildList(1001, name, 1000, L"k", 1071, -2, 1071, 5, 0),
          [](AcDbPoint* p) {
              AcArray<long> values;
              return Tools::getLongArrayFromEntityXData(p, application, L"k", values) && values.isEmpty() &&
                     Tools::addLongValueToArrayInEntityXData(p, application, L"k", 3);
          },
          true, "1001 ORDANE, 1000 k, 1071 -1, 1071 3, 1071 5"},
         {"arrays of 64 bits are not written", acutBuildList(1001, name, 1000, L"k", 1071, 1, 1071, 5, 0),
          [](AcDbPoint* p) {
              return Tools::setLongPtrArrayInEntityXData(p, application, L"k", AcArray<Adesk::Int64>()) ||
                     Tools::addLongPtrValueToArrayInEntityXData(p, application, L"k", 1);
          },
          false, "1001 ORDANE, 1000 k, 1071 1, 1071 5"}};
    for (const Case& one : cases) {
        SCOPED_TRACE(one.what);
        give(acutBuildList(1001, name, 0));
        give(one.before);
        EXPECT_EQ(one.act(point), one.result);
        EXPECT_EQ(block(), one.after);
    }
}

TEST_F(TypedStore, OnlyObjectsThatAreOpenForWriteChange) {
    give(acutBuildList(1001, application, 1000, L"k", 1000, L"v", 1000, L"n", 1070, 1, 0));
    const std::string before = block();
    point->downgradeOpen();
    EXPECT_FALSE(Tools::setIntValueInEntityXData(point, application, L"n", 2));
    EXPECT_FALSE(Tools::setStringValueInEntityXData(point, application, L"k", L"w"));
    EXPECT_FALSE(Tools::setSimpleStringValueInEntityXData(point, application, L"new"));
    EXPECT_FALSE(Tools::removeSimpleStringValueInEntityXData(point, application, L"k"));
    EXPECT_FALSE(Tools::setLongArrayInEntityXData(point, application, L"new", longs({1})));
    EXPECT_FALSE(Tools::addLongValueToArrayInEntityXData(point, application, L"new", 1));
    EXPECT_FALSE(Tools::removeLongArrayFromEntityXData(point, application, L"n"));
    EXPECT_EQ(Tools::clearXData(point), Acad::eInvalidInput);
    EXPECT_EQ(Tools::clearXDataWithHandle(point), Acad::eInvalidInput);
    EXPECT_EQ(block(), before);
    int value = 0;
    EXPECT_FALSE(Tools::getIntValueInEntityXData(point->objectId(), application, L"n", value))
        << "by id it needs the entity for write";
    EXPECT_EQ(value, -1);
    point->close();
    EXPECT_TRUE(Tools::setIntValueInEntityXData(point->objectId(), application, L"n", 2));
    EXPECT_TRUE(Tools::getIntValueInEntityXData(point->objectId(), application, L"n", value) && value == 2);
    point = opened<AcDbPoint>(point->objectId()); // closed by the tools
    EXPECT_FALSE(Tools::setSimpleStringValueInEntityXData(nullptr, application, L"k"));
    EXPECT_FALSE(Tools::setIntValueInEntityXData(point, nullptr, L"k", 1));
    EXPECT_FALSE(Tools::getIntValueInEntityXData(point, nullptr, L"n", value));
    EXPECT_FALSE(Tools::hasSimpleStringValueInEntityXData(point, nullptr, L"k"));
    EXPECT_FALSE(Tools::setIntValueInEntityXData(point, application, nullptr, 1));
}

TEST_F(TypedStore, TooMuchIsToldByArraysAlone) {
    const std::wstring large(8170, L'x');
    EXPECT_TRUE(Tools::setStringValueInEntityXData(point, application, L"s", large.c_str()));
    const std::string before = block();
    EXPECT_TRUE(Tools::setStringValueInEntityXData(point, application, L"more", L"text that has no room"));
    EXPECT_TRUE(Tools::setLongArrayInEntityXData(point, application, L"array", longs({1, 2, 3})));
    EXPECT_FALSE(Tools::addLongValueToArrayInEntityXData(point, application, L"array", 1));
    EXPECT_EQ(block(), before);
}

TEST_F(TypedStore, ClearingTakesTheFirstApplicationAlone) {
    EXPECT_EQ(Tools::clearXData(point), Acad::eOk) << "nothing there";
    EXPECT_EQ(Tools::clearXData(nullptr), Acad::eInvalidInput);
    EXPECT_EQ(acdbRegApp(L"OTHER"), RTNORM);
    EXPECT_EQ(acdbRegApp(L"other"), RTERROR) << "registered already";
    give(acutBuildList(1001, application, 1070, 1, 1001, L"OTHER", 1005, L"1F", 0));
    EXPECT_EQ(Tools::clearXDataWithHandle(point), Acad::eOk);
    EXPECT_EQ(block(nullptr), "1001 OTHER, 1005 1F") << "the handle was the other's";
    give(acutBuildList(1001, application, 1070, 1, 0));
    EXPECT_EQ(Tools::clearXData(point), Acad::eOk);
    EXPECT_EQ(block(nullptr), "1001 ORDANE, 1070 1");
    EXPECT_EQ(Tools::clearXDataWithHandle(point), Acad::eOk) << "no handle";
    EXPECT_EQ(block(nullptr), "1001 ORDANE, 1070 1");
}

TEST_F(TypedStore, ValuesComeBackFromASavedDrawingAndThoseOfOthersAreRead) {
    EXPECT_TRUE(Tools::setDoubleValueInEntityXData(point, application, L"épaisseur 壁", 0.1));
    EXPECT_TRUE(Tools::setLongPtrValueInEntityXData(point, application, L"ptr", -1));
    EXPECT_TRUE(Tools::setLongArrayInEntityXData(point, application, L"array", longs({1, 2, 3})));
    point->close();
    std::string bytes;
    ASSERT_EQ(hostkit::writeDrawingToMemory(database(), bytes), Acad::eOk);
    const std::size_t array = bytes.find("array");
    ASSERT_NE(array, std::string::npos);
    bytes.insert(bytes.rfind("1000", array),
                 "1000\r\nstrip\r\n1070\r\n12\r\n1000\r\narea\r\n1040\r\n2.25\r\n");
    const auto again = hostkit::openDrawingFromMemory(bytes, L"saved");
    ASSERT_TRUE(again);
    AcDbObjectId id;
    ASSERT_EQ(again->getAcDbObjectId(id, false, point->objectId().handle()), Acad::eOk);
    {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        double real = 0;
        int number = 0;
        Adesk::Int64 pointer = 0;
        AcArray<long> values;
        EXPECT_TRUE(Tools::getDoubleValueInEntityXData(entity, application, L"épaisseur 壁", real));
        EXPECT_EQ(real, 0.1);
        EXPECT_TRUE(Tools::getLongPtrValueInEntityXData(entity, application, L"ptr", pointer));
        EXPECT_EQ(pointer, 0xFFFFFFFF);
        EXPECT_TRUE(Tools::getLongArrayFromEntityXData(entity, application, L"array", values));
        EXPECT_EQ(values.length(), 3);
        EXPECT_TRUE(Tools::getIntValueInEntityXData(entity.object(), application, L"strip", number));
        EXPECT_EQ(number, 12);
        EXPECT_TRUE(Tools::getDoubleValueInEntityXData(entity, application, L"area", real));
        EXPECT_EQ(real, 2.25);
    }
    EXPECT_EQ(again->numOpenObjects(), 0);
    point = opened<AcDbPoint>(point->objectId());
}

TEST_F(TypedStore, ACopyHasTheFieldsAlone) {
    EXPECT_TRUE(Tools::setIntValueInEntityXData(point, application, L"k", 1));
    EXPECT_EQ(point->setPosition(AcGePoint3d(1, 2, 3)), Acad::eOk);
    EXPECT_EQ(point->setColorIndex(3), Acad::eOk);
    const std::unique_ptr<AcDbObject> copy(Tools::cloneWithoutXData(point));
    const auto* const made = AcDbPoint::cast(copy.get());
    ASSERT_TRUE(made);
    EXPECT_TRUE(made->position() == AcGePoint3d(1, 2, 3));
    EXPECT_EQ(made->colorIndex(), 3);
    EXPECT_EQ(made->layerId(), point->layerId());
    EXPECT_FALSE(made->hasXData());
    EXPECT_TRUE(made->objectId().isNull());
    EXPECT_EQ(Tools::cloneWithoutXData(nullptr), nullptr);
}

// A chunk of stubs beside the drawing's own, with one that says it is the given record.
class ForgedId {
public:
    explicit ForgedId(AcDbObjectId record)
        : m_chunk(std::aligned_alloc(hostkit::stubChunkSize, hostkit::stubChunkSize)) {
        auto* const header = new (m_chunk) hostkit::StubChunkHeader{record.database(), nullptr};
        m_stub = new (header + 1) AcDbStub(*record.stub());
    }
    ~ForgedId() { std::free(m_chunk); }
    AcDbObjectId id() const { return AcDbObjectId(m_stub); }

private:
    void* m_chunk;
    AcDbStub* m_stub;
};

TEST_F(TypedStore, AReferenceThatIsNotTheTablesOwnIsFound) {
    EXPECT_FALSE(Tools::XDataAppLies(nullptr));
    EXPECT_TRUE(Tools::setIntValueInEntityXData(point, application, L"k", 1));
    const AcDbObjectId record = Tools::getFromSymbolTable(L"APPID", application);
    EXPECT_EQ(point->addPersistentReactor(record), Acad::eOk);
    EXPECT_FALSE(Tools::XDataAppLies(point)) << "a true reference";
    const ForgedId forged(record);
    EXPECT_TRUE(c5ObjIdIsEqualTo(forged.id(), record));
    EXPECT_EQ(point->addPersistentReactor(forged.id()), Acad::eOk);
    EXPECT_TRUE(Tools::XDataAppLies(point));
    EXPECT_EQ(point->removePersistentReactor(forged.id()), Acad::eOk);
    EXPECT_FALSE(Tools::XDataAppLies(point));
}

} // namespace

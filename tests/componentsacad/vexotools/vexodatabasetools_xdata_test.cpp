// The typed store in extended data: its form, its widths, and what damaged blocks do to it.

#include "drawingparts.h"
#include "hosttest.h"
#include "vexodatabasetools.h"

#include "acdbads.h"
#include "dbpoint.h"

#include <cstdlib>
#include <functional>
#include <new>
#include <type_traits>
#include <utility>

namespace {

using namespace drawingtest;
using Tools = VEXODatabaseTools;

constexpr const wchar_t* application = L"ORDANE";

AcArray<long> longs(std::initializer_list<long> values) { return arrayOf(values); }

/// What a getter answers and leaves in a value that stood at the preset.
template <typename Object, typename T>
std::pair<bool, T> read(bool (*get)(Object*, const wchar_t*, const wchar_t*, T&),
                        std::type_identity_t<Object>* from, const wchar_t* key,
                        std::type_identity_t<T> preset = {}) {
    const bool isThere = get(from, application, key, preset);
    return {isThere, preset};
}

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

    EXPECT_EQ(read(Tools::getIntValueInEntityXData, point, L"int"), std::pair(true, -7));
    EXPECT_EQ(read(Tools::getLongValueInEntityXData, point, L"long"), std::pair(true, 70000L));
    EXPECT_EQ(read(Tools::getLongPtrValueInEntityXData, point, L"ptr").second, 12);
    EXPECT_EQ(read(Tools::getDoubleValueInEntityXData, point, L"double"), std::pair(true, 2.5));
    EXPECT_EQ(read(Tools::getPointValueInEntityXData, point, L"point").second, AcGePoint3d(1, 2, 3));
    EXPECT_EQ(read(Tools::getStringValueInEntityXData, point, L"string").second, L"text");
    EXPECT_TRUE(Tools::hasSimpleStringValueInEntityXData(point, application, L"flag"));
    AcArray<long> array = longs({1});
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
        EXPECT_TRUE(Tools::setIntValueInEntityXData(point, application, L"int", given));
        EXPECT_EQ(read(Tools::getIntValueInEntityXData, point, L"int"), std::pair(true, stored)) << given;
    }
    const std::pair<long, long> wides[] = {{5000000000, 705032704}, {-5, -5}, {2147483648, -2147483648}};
    for (const auto& [given, stored] : wides) {
        EXPECT_TRUE(Tools::setLongValueInEntityXData(point, application, L"long", given));
        EXPECT_EQ(read(Tools::getLongValueInEntityXData, point, L"long", 0x7777777777777777).second, stored)
            << given;
    }
    // New and replaced alike, and without the sign.
    for (int times = 0; times < 2; ++times) {
        EXPECT_TRUE(Tools::setLongPtrValueInEntityXData(point, application, L"ptr", -0x100000005));
        EXPECT_EQ(read(Tools::getLongPtrValueInEntityXData, point, L"ptr").second, 0xFFFFFFFB);
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
            EXPECT_EQ(read(Tools::getIntValueInEntityXData, point, key, 5), std::pair(false, -1));
            EXPECT_EQ(read(Tools::getLongValueInEntityXData, point, key, 5), std::pair(false, -1L));
            EXPECT_EQ(read(Tools::getLongPtrValueInEntityXData, point, key, 5),
                      std::pair(false, Adesk::Int64(-1)));
            EXPECT_EQ(read(Tools::getDoubleValueInEntityXData, point, key, 5), std::pair(false, -1.0));
            EXPECT_EQ(read(Tools::getPointValueInEntityXData, point, key, AcGePoint3d(5, 5, 5)),
                      std::pair(false, AcGePoint3d::kOrigin));
            EXPECT_EQ(read(Tools::getStringValueInEntityXData, point, key, L"5"),
                      std::pair(false, CString()));
            AcArray<long> array = longs({5});
            EXPECT_FALSE(Tools::getLongArrayFromEntityXData(point, application, key, array));
            EXPECT_EQ(array.length(), 1);
        }
    }
    AcDbObject* const none = nullptr;
    EXPECT_EQ(read(Tools::getIntValueInEntityXData, none, L"Key", 5), std::pair(false, -1));
}

// What is done to a block, by its key k.
using Act = std::function<bool(AcDbPoint*)>;

Act setArray(std::initializer_list<long> values) {
    return [values = longs(values)](AcDbPoint* p) {
        return Tools::setLongArrayInEntityXData(p, application, L"k", values);
    };
}
Act addToArray(long value) {
    return [value](AcDbPoint* p) {
        return Tools::addLongValueToArrayInEntityXData(p, application, L"k", value);
    };
}
bool removeArray(AcDbPoint* p) { return Tools::removeLongArrayFromEntityXData(p, application, L"k"); }
bool setFlag(AcDbPoint* p) { return Tools::setSimpleStringValueInEntityXData(p, application, L"k"); }
bool removeFlag(AcDbPoint* p) { return Tools::removeSimpleStringValueInEntityXData(p, application, L"k"); }
bool setInt(AcDbPoint* p) { return Tools::setIntValueInEntityXData(p, application, L"k", 1); }
bool setText(AcDbPoint* p) { return Tools::setStringValueInEntityXData(p, application, L"k", L"v"); }

Act reads(const wchar_t* text) {
    return [text](AcDbPoint* p) {
        return read(Tools::getStringValueInEntityXData, p, L"k", L"old") == std::pair(true, CString(text));
    };
}
/// Finds these numbers, and then does the other.
Act findsArray(std::initializer_list<long> values, const Act& then) {
    return [values = longs(values), then](AcDbPoint* p) {
        AcArray<long> found;
        return Tools::getLongArrayFromEntityXData(p, application, L"k", found) && found == values && then(p);
    };
}

template <typename... Groups>
resbuf* blockOf(Groups... groups) {
    return acutBuildList(1001, application, groups..., 0);
}

// Each case: a block, what is done to it, the result and the block afterwards.
TEST_F(TypedStore, BlocksAreChangedRecordByRecord) {
    const struct {
        const char* what;
        resbuf* before;
        Act act;
        bool result;
        const char* after;
    } cases[] = {
        {"an int over a double changes its low 16 bits and keeps the code", blockOf(1000, L"k", 1040, 0.0),
         [](AcDbPoint* p) {
             return setInt(p) && read(Tools::getDoubleValueInEntityXData, p, L"k").second == 5e-324;
         },
         true, "1001 ORDANE, 1000 k, 1040 5e-324"},
        {"a string value is found as a key", blockOf(1000, L"a", 1000, L"k", 1070, 3),
         [](AcDbPoint* p) { return read(Tools::getIntValueInEntityXData, p, L"k") == std::pair(true, 3); },
         true, "1001 ORDANE, 1000 a, 1000 k, 1070 3"},
        {"a real as text", blockOf(1000, L"k", 1040, 1.5), reads(L"1.500000"), true,
         "1001 ORDANE, 1000 k, 1040 1.5"},
        {"an integer is no text, but there", blockOf(1000, L"k", 1070, 1), reads(L""), true,
         "1001 ORDANE, 1000 k, 1070 1"},
        {"no number over a text", blockOf(1000, L"k", 1000, L"v"),
         [](AcDbPoint* p) {
             return setInt(p) || Tools::setLongValueInEntityXData(p, application, L"k", 1) ||
                    Tools::setLongPtrValueInEntityXData(p, application, L"k", 1) ||
                    Tools::setDoubleValueInEntityXData(p, application, L"k", 1) ||
                    Tools::setPointValueInEntityXData(p, application, L"k", AcGePoint3d(1, 1, 1)) ||
                    setArray({})(p) || addToArray(1)(p);
         },
         false, "1001 ORDANE, 1000 k, 1000 v"},
        {"no text over a number", blockOf(1000, L"k", 1040, 1.5), setText, false,
         "1001 ORDANE, 1000 k, 1040 1.5"},
        {"no value for a key at the end", blockOf(1000, L"k"),
         [](AcDbPoint* p) { return setInt(p) || setText(p) || addToArray(1)(p) || removeArray(p); }, false,
         "1001 ORDANE, 1000 k"},
        {"a flag twice is one record", blockOf(1000, L"k"), setFlag, true, "1001 ORDANE, 1000 k"},
        {"the last flag is not removed", blockOf(1000, L"k"), removeFlag, false, "1001 ORDANE, 1000 k"},
        {"a flag takes the next key along", blockOf(1000, L"k", 1000, L"next", 1070, 1, 1070, 2), removeFlag,
         true, "1001 ORDANE, 1070 1, 1070 2"},
        {"a shorter array keeps what is behind",
         blockOf(1000, L"k", 1071, 3, 1071, 1, 1071, 2, 1071, 3, 1000, L"n", 1070, 9), setArray({8}), true,
         "1001 ORDANE, 1000 k, 1071 1, 1071 8, 1000 n, 1070 9"},
        {"an empty array is a count", blockOf(1000, L"k", 1071, 1, 1071, 1, 1000, L"n"), setArray({}), true,
         "1001 ORDANE, 1000 k, 1071 0, 1000 n"},
        {"an element more stands before what is behind",
         blockOf(1000, L"k", 1071, 1, 1071, 5, 1000, L"n", 1070, 9), addToArray(6), true,
         "1001 ORDANE, 1000 k, 1071 2, 1071 5, 1071 6, 1000 n, 1070 9"},
        {"a first element", blockOf(1000, L"n", 1070, 9), addToArray(6), true,
         "1001 ORDANE, 1000 n, 1070 9, 1000 k, 1071 1, 1071 6"},
        {"an array goes whole", blockOf(1000, L"k", 1071, 1, 1071, 5, 1000, L"n", 1070, 9), removeArray, true,
         "1001 ORDANE, 1000 n, 1070 9"},
        {"an absent array is gone", blockOf(1000, L"n", 1070, 9), removeArray, true,
         "1001 ORDANE, 1000 n, 1070 9"},
        {"a count that outruns its elements ends with them",
         blockOf(1000, L"k", 1071, 1000000000, 1071, 5, 1000, L"n", 1070, 9),
         findsArray({5}, setArray({1, 2})), true,
         "1001 ORDANE, 1000 k, 1071 2, 1071 1, 1071 2, 1000 n, 1070 9"},
        {"a count that outruns the block", blockOf(1000, L"k", 1071, 7, 1071, 5), removeArray, true, ""},
        {"a count below zero", blockOf(1000, L"k", 1071, -2, 1071, 5), findsArray({}, addToArray(3)), true,
         "1001 ORDANE, 1000 k, 1071 -1, 1071 3, 1071 5"},
        {"arrays of 64 bits are not written", blockOf(1000, L"k", 1071, 1, 1071, 5),
         [](AcDbPoint* p) {
             return Tools::setLongPtrArrayInEntityXData(p, application, L"k", AcArray<Adesk::Int64>()) ||
                    Tools::addLongPtrValueToArrayInEntityXData(p, application, L"k", 1);
         },
         false, "1001 ORDANE, 1000 k, 1071 1, 1071 5"}};
    for (const auto& one : cases) {
        SCOPED_TRACE(one.what);
        give(blockOf());
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
        auto* const header = new (m_chunk) hostkit::StubChunkHeader{record.database(), 0};
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

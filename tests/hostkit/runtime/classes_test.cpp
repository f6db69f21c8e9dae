#include "casefold.h"
#include "rxboiler.h"
#include "rxdict.h"

#include <gtest/gtest.h>

#include <clocale>
#include <memory>

class Beam : public AcRxObject {
    ACRX_DECLARE_MEMBERS(Beam)
};
class TeeBeam : public Beam {
    ACRX_DECLARE_MEMBERS(TeeBeam)
};
class Column : public AcRxObject {
    ACRX_DECLARE_MEMBERS(Column)
};
ACRX_NO_CONS_DEFINE_MEMBERS(Beam, AcRxObject)
ACRX_DXF_DEFINE_MEMBERS(TeeBeam, Beam, 0, 0, 0, VEXO_TEE, TEST)
ACRX_CONS_DEFINE_MEMBERS(Column, AcRxObject, 1)

namespace {

struct RuntimeClasses : testing::Test {
    void SetUp() override {
        TeeBeam::rxInit();
        Column::rxInit();
        Beam::rxInit();
    }
    void TearDown() override {
        TeeBeam::rxExit();
        Beam::rxExit();
        Column::rxExit();
    }
};

TEST_F(RuntimeClasses, KnowAncestryNamesAndCreation) {
    AcRxClass* found = AcRxClass::cast(acrxClassDictionary()->at(L"teebeam")) ? TeeBeam::desc() : nullptr;
    ASSERT_EQ(found, TeeBeam::desc());
    EXPECT_TRUE(TeeBeam::desc()->isDerivedFrom(Beam::desc()));
    EXPECT_TRUE(TeeBeam::desc()->isDerivedFrom(AcRxObject::desc()));
    EXPECT_FALSE(Beam::desc()->isDerivedFrom(TeeBeam::desc()));
    EXPECT_FALSE(Column::desc()->isDerivedFrom(Beam::desc()));
    EXPECT_STREQ(TeeBeam::desc()->dxfName(), L"VEXO_TEE");
    EXPECT_EQ(Beam::desc()->dxfName(), nullptr);
    EXPECT_EQ(Beam::desc()->create(), nullptr);
    AcRxObject* made = TeeBeam::desc()->create();
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(Beam::cast(made), made);
    EXPECT_EQ(Column::cast(made), nullptr);
    EXPECT_EQ(Beam::cast(nullptr), nullptr);
    delete made;
}

TEST_F(RuntimeClasses, AWalkOfTheDictionaryIsSortedAndKeepsWhatItBeganWith) {
    const std::unique_ptr<AcRxDictionaryIterator> walk(acrxClassDictionary()->newIterator());
    Column::rxExit(); // the entry stays in the walk, which may not look at the object
    std::size_t count = 0, found = 0;
    std::wstring earlier;
    for (; !walk->done(); walk->next(), ++count) {
        EXPECT_LT(hostkit::compareFolded(earlier, walk->key()), 0);
        earlier = walk->key();
        if (earlier == L"Beam") found += walk->object() == Beam::desc();
        if (earlier == L"Column") ++found;
    }
    EXPECT_EQ(found, 2u);
    EXPECT_EQ(count, acrxClassDictionary()->numEntries() + 1);
    EXPECT_TRUE(!walk->next() && !walk->key() && !walk->object());
    EXPECT_EQ(AcRxDictionary::cast(Beam::desc()), nullptr);
}

TEST_F(RuntimeClasses, ProtocolsAreFoundOnTheNearestClass) {
    struct Protocol : AcRxObject {
    } low, high;
    TeeBeam tee;
    Beam::desc()->addX(Column::desc(), &high);
    EXPECT_EQ(tee.queryX(Column::desc()), &high);
    EXPECT_EQ(TeeBeam::desc()->addX(Column::desc(), &low), nullptr);
    EXPECT_EQ(tee.queryX(Column::desc()), &low);
    EXPECT_EQ(TeeBeam::desc()->delX(Column::desc()), &low);
    EXPECT_EQ(tee.queryX(Column::desc()), &high);
    EXPECT_EQ(Column().queryX(Column::desc()), nullptr);
}

TEST_F(RuntimeClasses, LeaveTheDictionaryWithTheirModule) {
    Column::rxExit();
    EXPECT_EQ(acrxClassDictionary()->at(L"Column"), nullptr);
    EXPECT_EQ(Column::desc(), nullptr);
    Column::rxExit(); // a second leave does no harm
}

TEST(CaseFold, HoldsForAccentsInEveryLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* locale : {"C", "tr_TR.UTF-8", "C.UTF-8"}) {
        std::setlocale(LC_ALL, locale);
        EXPECT_TRUE(hostkit::equalFolded(L"ÉLÉMENT Iı", L"élément iı")) << locale;
        EXPECT_FALSE(hostkit::equalFolded(L"I", L"ı")) << locale;
        EXPECT_LT(hostkit::compareFolded(L"abc", L"ABCD"), 0);
        EXPECT_EQ(hostkit::FoldedHash()(L"Dalle-Ω"), hostkit::FoldedHash()(L"DALLE-ω"));
    }
    std::setlocale(LC_ALL, before.c_str());
}

} // namespace

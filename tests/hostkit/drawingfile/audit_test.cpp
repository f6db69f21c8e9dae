#include "drawingaudit.h"

#include "drawingfiles.h"
#include "drawingparts.h"
#include "sampledrawing.h"

#include "dbaccess.h"
#include "dbblockreference.h"
#include "dbline.h"
#include "dbsource.h"
#include "headervariables.h"

#include <algorithm>
#include <functional>

using namespace hostkit;
using namespace drawingtest;

namespace {

std::string textOf(const AuditReport& report) {
    std::ostringstream text;
    for (const AuditFinding& finding : report.findings)
        text << narrow(auditCheckName(finding.check)) << ", " << narrow(finding.type) << " " << std::hex
             << finding.handle << std::dec << ": " << narrow(finding.text) << "\n";
    return text.str();
}

/// A check found something at the object, and said so in these words.
testing::AssertionResult finds(const AuditReport& report, AuditCheck check, AuditSeverity severity,
                               AcDbObjectId at, std::wstring_view words) {
    for (const AuditFinding& finding : report.findings)
        if (finding.check == check && finding.severity == severity && finding.handle == at.handle().value() &&
            finding.text.find(words) != std::wstring::npos)
            return testing::AssertionSuccess();
    return testing::AssertionFailure() << textOf(report);
}

/// Replaces the first `from` behind the first `record` of a drawing.
void replaceIn(std::string& bytes, const std::string& record, const std::string& from,
               const std::string& to) {
    const std::size_t start = bytes.find(record);
    ASSERT_NE(start, std::string::npos) << record;
    const std::size_t place = bytes.find(from, start);
    ASSERT_NE(place, std::string::npos) << from;
    bytes.replace(place, from.size(), to);
}

std::string hex(AcDbObjectId id) {
    wchar_t text[17] = {};
    (void)id.handle().getIntoAsciiBuffer(text);
    return narrow(text);
}

using Access = DatabaseAccess;

/// A drawing with a line that has extended data, an insert, and a dictionary with an entry; all ids by name.
struct Subject {
    std::unique_ptr<AcDbDatabase> database = std::make_unique<AcDbDatabase>();
    AcDbObjectId line, insert, block, dictionary, entry;

    Subject() {
        addRecord<AcDbRegAppTable>(*database, L"ORDANE");
        block = addRecord<AcDbBlockTable>(*database, L"Anchor");
        line = appendToModelSpace(*database, new AcDbLine({0, 0, 0}, {1, 0, 0}));
        insert = appendToModelSpace(*database, new AcDbBlockReference({0, 0, 0}, block));
        const List list(acutBuildList(1001, L"ORDANE", 1000, L"mark", 1070, 7, 0));
        change<AcDbLine>(line, [&](AcDbLine& each) { EXPECT_EQ(each.setXData(list.get()), Acad::eOk); });
        dictionary = enter(database->namedObjectsDictionaryId(), L"VEXO_SERVICES", new AcDbDictionary);
        entry = enter(dictionary, L"first");
    }
    template <class T = AcDbObject>
    T& object(AcDbObjectId id) const {
        return *DatabaseAccess::objectOf<T>(id);
    }
    /// An id whose object never came.
    AcDbObjectId lost() const { return Access::reserve(*database, 0xABCD); }
    /// The line has these groups as extended data of the application.
    template <class Append>
    AcDbObjectId mark(const wchar_t* application, Append&& append) const {
        GroupBlock data;
        data.appendText(1001, application);
        append(data);
        Access::setExtendedData(object(line), std::move(data));
        return line;
    }
};

} // namespace

TEST(Audit, soundDrawingsHaveNoFindings) {
    EXPECT_EQ(textOf(auditDrawing(*Subject().database)), "");
    for (const DrawingVersion version :
         {DrawingVersion::kR12, DrawingVersion::k2000, DrawingVersion::k2018}) {
        const auto made = sampleDrawing(version == DrawingVersion::kR12 ? Kinds::kOfR12 : Kinds::kAll);
        EXPECT_EQ(textOf(auditDrawing(*made)), "");
        const auto read = openDrawingFromMemory(saved(*made, version), L"sample");
        ASSERT_TRUE(read);
        const AuditReport report = auditDrawing(*read);
        EXPECT_EQ(textOf(report), "");
        EXPECT_EQ(report.faultCount() + report.remarkCount(), 0u);
        EXPECT_GT(report.objects, 30u);
    }
}

// What goes wrong while a drawing is in use: each damage is found by its check, at the object that has it.
TEST(Audit, damageInMemory) {
    struct Case {
        const char* name;
        AuditCheck check;
        AuditSeverity severity;
        std::function<AcDbObjectId(Subject&)> damage; ///< gives the object that the finding names
        const wchar_t* words;
    };
    constexpr auto fault = AuditSeverity::kFault;
    const Case cases[] = {
        {"nobody owns it", AuditCheck::kOwner, fault,
         [](Subject& s) { return Access::setOwner(s.object(s.entry), {}), s.entry; }, L"it has no owner"},
        {"another owner", AuditCheck::kOwner, fault,
         [](Subject& s) { return Access::setOwner(s.object(s.line), s.block), s.line; }, L"holds it"},
        {"an owner that never came", AuditCheck::kOwner, fault,
         [](Subject& s) { return Access::setOwner(s.object(s.entry), s.lost()), s.entry; },
         L"its owner ABCD is missing"},
        {"two blocks hold it", AuditCheck::kOwner, fault,
         [](Subject& s) {
             return Access::appendToBlock(s.object<AcDbBlockTableRecord>(s.block), s.line), s.line;
         },
         L"both hold it"},
        {"owners in a circle", AuditCheck::kOwner, fault,
         [](Subject& s) { return Access::setOwner(s.object(s.dictionary), s.entry), s.dictionary; },
         L"circle"},
        {"an entity that never came", AuditCheck::kOwner, fault,
         [](Subject& s) {
             return Access::appendToBlock(s.object<AcDbBlockTableRecord>(s.block), s.lost()), s.block;
         },
         L"ABCD is missing"},
        {"an erased layer", AuditCheck::kReference, fault,
         [](Subject& s) {
             const AcDbObjectId layer = addRecord<AcDbLayerTable>(*s.database, L"Slab");
             EXPECT_EQ(erase(layer), Acad::eOk);
             return Access::setLayer(s.object<AcDbEntity>(s.line), layer), s.line;
         },
         L"which is erased"},
        {"a reactor that never came", AuditCheck::kReference, AuditSeverity::kRemark,
         [](Subject& s) { return Access::setPersistentReactors(s.object(s.line), {s.lost()}), s.line; },
         L"its reactor ABCD is missing"},
        {"an entry that never came", AuditCheck::kDictionary, fault,
         [](Subject& s) {
             return Access::putEntry(s.object<AcDbDictionary>(s.dictionary), L"lost", s.lost()), s.dictionary;
         },
         L"its entry lost, ABCD, is missing"},
        {"a block in itself", AuditCheck::kBlock, fault,
         [](Subject& s) {
             auto* const within = new AcDbBlockReference({0, 0, 0}, s.block);
             Access::appendToBlock(s.object<AcDbBlockTableRecord>(s.block),
                                   Access::add(*s.database, within, 0, s.block));
             return s.block;
         },
         L"the block Anchor contains itself"},
        {"an erased block that is inserted", AuditCheck::kBlock, fault,
         [](Subject& s) {
             EXPECT_EQ(erase(s.block), Acad::eOk);
             return s.insert;
         },
         L"the block that it inserts is erased"},
        {"two records of one name", AuditCheck::kTable, fault,
         [](Subject& s) {
             const AcDbObjectId second = addRecord<AcDbBlockTable>(*s.database, L"Other");
             return Access::setRecordName(s.object<AcDbSymbolTableRecord>(second), L"ANCHOR"), second;
         },
         L"the name ANCHOR leads to"},
        {"a current layer that is not there", AuditCheck::kTable, fault,
         [](Subject& s) { return s.database->header().setText(L"CLAYER", L"None", 8), AcDbObjectId(); },
         L"CLAYER names None"},
        {"an application that is not registered", AuditCheck::kExtendedData, fault,
         [](Subject& s) { return s.mark(L"STRANGE", [](GroupBlock&) {}); },
         L"the application STRANGE is not registered"},
        {"braces", AuditCheck::kExtendedData, fault,
         [](Subject& s) { return s.mark(L"ORDANE", [](GroupBlock& data) { data.appendText(1002, L"{"); }); },
         L"braces"},
        {"too much of it", AuditCheck::kExtendedData, fault,
         [](Subject& s) {
             return s.mark(L"ORDANE", [](GroupBlock& data) {
                 for (int i = 0; i < 2000; ++i) data.appendReal(1040, i);
             });
         },
         L"above 16383"},
        {"a handle of nothing", AuditCheck::kExtendedData, AuditSeverity::kRemark,
         [](Subject& s) {
             return s.mark(L"ORDANE", [](GroupBlock& data) { data.appendHandle(1005, 0xABCD); });
         },
         L"refers to ABCD, which is missing"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        Subject subject;
        const AcDbObjectId found = each.damage(subject);
        const AuditReport report = auditDrawing(*subject.database);
        EXPECT_TRUE(finds(report, each.check, each.severity, found, each.words));
        EXPECT_EQ(report.findings.size(), report.faultCount() + report.remarkCount());
    }
}

// What others left in a file: the record is looked at as it stands, also where the reader found a way round.
TEST(Audit, damageInAFile) {
    const Subject subject;
    const std::string sound = saved(*subject.database);
    const std::string ownerOfLine = group(330, hex(subject.database->modelSpaceId()));
    struct Case {
        const char* name;
        std::string record, from, to;
        AuditCheck check;
        AcDbObjectId at;
        const wchar_t* words;
    };
    const std::string line = group(5, hex(subject.line));
    const std::string insert = group(5, hex(subject.insert));
    const std::string dictionary = group(5, hex(subject.dictionary));
    const Case cases[] = {
        {"owner of nothing", line, ownerOfLine, group(330, "ABCD"), AuditCheck::kOwner, subject.line,
         L"its record names the owner ABCD, which is missing"},
        {"hard pointer of nothing", line, "AcDbLine\r\n", "AcDbLine\r\n" + group(390, "ABCD"),
         AuditCheck::kReference, subject.line, L"group 390 refers to ABCD"},
        {"a value that is none", line, group(10, "0.0"), group(10, "zero"), AuditCheck::kRecord, subject.line,
         L"a value is none"},
        {"block of nothing", insert, group(2, "Anchor"), group(2, "Nowhere"), AuditCheck::kBlock,
         subject.insert, L"the block that it inserts is missing"},
        {"entry of nothing", dictionary, group(350, hex(subject.entry)), group(350, "ABCD"),
         AuditCheck::kDictionary, subject.dictionary, L"its entry first, ABCD, is missing"},
        {"entry that nobody lists", dictionary, group(3, "first") + group(350, hex(subject.entry)), "",
         AuditCheck::kOwner, subject.entry, L"does not hold it"},
        {"unregistered application", line, group(1001, "ORDANE"), group(1001, "STRANGE"),
         AuditCheck::kExtendedData, subject.line, L"the application STRANGE"},
        {"damaged extended data", line, group(1070, "7"), group(1070, "seven"), AuditCheck::kExtendedData,
         subject.line, L"its extended data is damaged"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        std::string bytes = sound;
        ASSERT_NO_FATAL_FAILURE(replaceIn(bytes, each.record, each.from, each.to));
        const auto database = openDrawingFromMemory(bytes, L"damaged", nullptr, quietReading);
        ASSERT_TRUE(database);
        const AuditReport report = auditDrawing(*database);
        EXPECT_TRUE(finds(report, each.check, AuditSeverity::kFault, each.at, each.words));
    }
}

TEST(Audit, listsAreCutAndCountsAreNot) {
    const Subject subject;
    for (AcDbHandleValue handle = 1; handle <= 50; ++handle)
        Access::putEntry(subject.object<AcDbDictionary>(subject.dictionary),
                         L"lost " + std::to_wstring(handle),
                         Access::reserve(*subject.database, 0xABC00 + handle));
    const AuditReport report = auditDrawing(*subject.database, 10);
    EXPECT_EQ(report.findings.size(), 10u);
    EXPECT_EQ(report.faultCount(), 50u);
    EXPECT_EQ(report.faults[static_cast<std::size_t>(AuditCheck::kDictionary)], 50u);
}

// A file that has no tables gets those that are new, and nothing that nobody asked for.
TEST(Audit, whatASaveAddsToABareDrawingIsWhole) {
    const auto database = openDrawingFromMemory(header("AC1024") + entities(line()), L"bare");
    ASSERT_TRUE(database);
    EXPECT_EQ(textOf(auditDrawing(*database)), "");
    enter(database->namedObjectsDictionaryId(), L"VEXO_SERVICES", new AcDbDictionary);
    addRecord<AcDbRegAppTable>(*database, L"ORDANE");
    for (const WriteOptions& options : {WriteOptions(), fromFields}) {
        const std::string bytes = saved(*database, options);
        const auto again = openDrawingFromMemory(bytes, L"saved");
        ASSERT_TRUE(again);
        EXPECT_EQ(textOf(auditDrawing(*again)), "") << bytes;
        const std::size_t tables = bytes.find(group(2, "TABLES"));
        EXPECT_LT(tables, bytes.find(group(2, "ENTITIES")));
        EXPECT_EQ(tables, bytes.rfind(group(2, "TABLES"))) << "one section for all that is new";
        const AcDbObjectPointer<AcDbBlockTableRecord> space(again->modelSpaceId(), AcDb::kForRead);
        EXPECT_EQ(space->entities().size(), 1u);
    }
}

// Nothing that is saved, as it stood or with every record new, is worse than what was read.
TEST_F(DrawingsOfOthers, savingAddsNoFindings) {
    forEach([](AcDbDatabase& database) {
        const AuditReport before = auditDrawing(database);
        const auto again =
            openDrawingFromMemory(saved(database, fromFields), L"saved", nullptr, quietReading);
        ASSERT_TRUE(again);
        const AuditReport after = auditDrawing(*again);
        for (std::size_t check = 0; check < auditCheckCount; ++check)
            EXPECT_LE(after.faults[check], before.faults[check]) << "before\n"
                                                                 << textOf(before) << "after\n"
                                                                 << textOf(after);
    });
}

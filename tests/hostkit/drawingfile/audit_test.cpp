#include "drawingaudit.h"

#include "drawingfiles.h"
#include "drawingparts.h"
#include "drawingsofothers.h"
#include "sampledrawing.h"

#include "dbaccess.h"
#include "dbblockreference.h"
#include "dbline.h"
#include "dbsource.h"
#include "headervariables.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>

using namespace hostkit;
using namespace drawingtest;

namespace {

std::string textOf(const AuditReport& report, bool faultsOnly = false) {
    std::ostringstream text;
    for (const AuditFinding& finding : report.findings)
        if (finding.severity == AuditSeverity::kFault || !faultsOnly)
            text << narrow(auditCheckName(finding.check)) << ", " << narrow(finding.type) << " " << std::hex
                 << finding.handle << std::dec << ": " << narrow(finding.text) << "\n";
    return text.str();
}
std::string faultsOf(const AuditReport& report) { return textOf(report, true); }

/// A check found something at the object, and said so in these words.
testing::AssertionResult finds(const AuditReport& report, AuditCheck check, AuditSeverity severity,
                               AcDbObjectId at, std::wstring_view words) {
    for (const AuditFinding& finding : report.findings)
        if (finding.check == check && finding.severity == severity && finding.handle == at.handle().value() &&
            finding.text.find(words) != std::wstring::npos)
            return testing::AssertionSuccess();
    return testing::AssertionFailure() << textOf(report);
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

/// Those that others made, in their folder and below it, and those of the examples.
std::vector<std::filesystem::path> textDrawings() {
    std::vector<std::filesystem::path> files;
    for (const std::string& each :
         {drawingsOfOthers().string(), std::string(VEXO_SOURCE_DIR "/examples/slab")})
        for (const auto& entry : std::filesystem::recursive_directory_iterator(each))
            if (entry.path().extension() == ".dxf") files.push_back(entry.path());
    return files;
}

} // namespace

TEST(Audit, soundDrawingsHaveNoFaults) {
    EXPECT_EQ(textOf(auditDrawing(*Subject().database)), "");
    for (const DrawingVersion version :
         {DrawingVersion::kR12, DrawingVersion::k2000, DrawingVersion::k2018}) {
        const auto made = sampleDrawing(version == DrawingVersion::kR12 ? Kinds::kOfR12 : Kinds::kAll);
        const auto read = openDrawingFromMemory(saved(*made, version), L"sample");
        ASSERT_TRUE(read);
        for (const AuditReport& report : {auditDrawing(*made), auditDrawing(*read)}) {
            EXPECT_EQ(faultsOf(report), "");
            EXPECT_EQ(report.remarkCount(), 1u) << "a dimension that never had a picture\n" << textOf(report);
            EXPECT_GT(report.objects, 25u);
        }
    }
}

// What goes wrong while a drawing is in use is found where it would get into the file.
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
         [](Subject& s) { return Access::setOwner(s.object(s.line), s.block), s.line; }, L"no layout"},
        {"an owner that never came", AuditCheck::kOwner, fault,
         [](Subject& s) { return Access::setOwner(s.object(s.entry), s.lost()), s.entry; },
         L"its owner ABCD is missing"},
        {"two blocks hold it", AuditCheck::kHandle, fault,
         [](Subject& s) {
             return Access::appendToBlock(s.object<AcDbBlockTableRecord>(s.block), s.line), s.line;
         },
         L"its handle is also that of the LINE"},
        {"a reactor that never came", AuditCheck::kReference, AuditSeverity::kRemark,
         [](Subject& s) { return Access::setPersistentReactors(s.object(s.line), {s.lost()}), s.line; },
         L"its reactor ABCD is missing"},
        {"an entry that never came", AuditCheck::kDictionary, fault,
         [](Subject& s) {
             return Access::putEntry(s.object<AcDbDictionary>(s.dictionary), L"lost", s.lost()), s.dictionary;
         },
         L"its entry lost, ABCD, is missing"},
        {"a block in itself", AuditCheck::kStructure, fault,
         [](Subject& s) {
             auto* const within = new AcDbBlockReference({0, 0, 0}, s.block);
             const AcDbObjectId id = Access::add(*s.database, within, 0, s.block);
             Access::appendToBlock(s.object<AcDbBlockTableRecord>(s.block), id);
             return AcDbObjectId();
         },
         L"it cannot be saved: the block Anchor contains itself"},
        {"two records of one name", AuditCheck::kTable, fault,
         [](Subject& s) {
             const AcDbObjectId second = addRecord<AcDbBlockTable>(*s.database, L"Other");
             return Access::setRecordName(s.object<AcDbSymbolTableRecord>(second), L"ANCHOR"), second;
         },
         L"its name ANCHOR is also that of"},
        {"a current layer that is not there", AuditCheck::kTable, fault,
         [](Subject& s) { return s.database->header().setText(L"CLAYER", L"None", 8), AcDbObjectId(); },
         L"names the layer None"},
        {"an application that is not registered", AuditCheck::kExtendedData, fault,
         [](Subject& s) { return s.mark(L"STRANGE", [](GroupBlock&) {}); },
         L"the application STRANGE is not registered"},
        {"too much of it", AuditCheck::kExtendedData, fault,
         [](Subject& s) {
             return s.mark(L"ORDANE", [](GroupBlock& data) {
                 for (int i = 0; i < 2000; ++i) data.appendReal(1040, i);
             });
         },
         L"above 16383"},
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

TEST(Audit, whatCannotBeSavedIsAFault) {
    const Subject subject;
    const AcDbObjectPointer<AcDbLine> open(subject.line, AcDb::kForWrite);
    const AuditReport report = auditDrawing(*subject.database);
    ASSERT_EQ(report.findings.size(), 1u);
    EXPECT_EQ(report.faultCount(), 1u);
    EXPECT_NE(textOf(report).find("it cannot be saved: "), std::string::npos) << textOf(report);
}

// Of a drawing that nobody changed, what is looked at is the file: its lines, and what the reader had left
// out.
TEST(Audit, findingsAreInTheLinesOfTheFile) {
    const std::string bytes =
        header("AC1009") + section("ENTITIES", line(group(62, "300"))) + group(0, "EOF");
    const auto database = openDrawingFromMemory(bytes, L"file", nullptr, quietReading);
    ASSERT_TRUE(database);
    const AuditReport report = auditDrawing(*database);
    ASSERT_EQ(report.findings.size(), 1u) << textOf(report);
    const std::string before = bytes.substr(0, bytes.find(group(62, "300")));
    EXPECT_EQ(report.findings[0].line, countOf(before, "\n") + 1);
    const AcDbObjectPointer<AcDbBlockTableRecord> space(database->modelSpaceId(), AcDb::kForRead);
    EXPECT_EQ(erase(space->entities().at(0)), Acad::eOk);
    EXPECT_EQ(textOf(auditDrawing(*database)), "");
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
    const std::string marked = groups({{0, "LINE"},
                                       {5, "20"},
                                       {100, "AcDbEntity"},
                                       {8, "0"},
                                       {100, "AcDbLine"},
                                       {10, "1.0"},
                                       {20, "2.0"},
                                       {11, "3.0"},
                                       {21, "4.0"}});
    const auto database = openDrawingFromMemory(header("AC1024") + entities(marked), L"bare");
    ASSERT_TRUE(database);
    EXPECT_EQ(faultsOf(auditDrawing(*database)), "");
    enter(database->namedObjectsDictionaryId(), L"VEXO_SERVICES", new AcDbDictionary);
    addRecord<AcDbRegAppTable>(*database, L"ORDANE");
    for (const WriteOptions& options : {WriteOptions(), fromFields}) {
        const std::string bytes = saved(*database, options);
        EXPECT_EQ(faultsOf(auditDrawingText(bytes)), "") << bytes;
        const std::size_t tables = bytes.find(group(2, "TABLES"));
        EXPECT_LT(tables, bytes.find(group(2, "ENTITIES")));
        EXPECT_EQ(tables, bytes.rfind(group(2, "TABLES"))) << "one section for all that is new";
        const auto again = openDrawingFromMemory(bytes, L"saved");
        ASSERT_TRUE(again);
        const AcDbObjectPointer<AcDbBlockTableRecord> space(again->modelSpaceId(), AcDb::kForRead);
        EXPECT_EQ(space->entities().size(), 1u);
    }
}

// Nothing that is saved, as it stood or with every record new, is worse than what was read.
TEST_F(DrawingsOfOthers, savingAddsNoFindings) {
    forEach([](AcDbDatabase& database) {
        const AuditReport before = auditDrawing(database);
        const AuditReport after = auditDrawingText(saved(database, fromFields));
        for (std::size_t check = 0; check < auditCheckCount; ++check)
            EXPECT_LE(after.faults[check], before.faults[check]) << "before\n"
                                                                 << textOf(before) << "after\n"
                                                                 << textOf(after);
    });
}

// Their faults, each looked at by hand in the file: lost dictionaries and ownerless buffers of one whose
// application objects are gone; owners, plot styles and a linetype that their writer mixed up; a dimension
// style that no table has. All others have none.
TEST_F(DrawingsOfOthers, bearTheFaultsThatTheyBear) {
    const std::map<std::string, std::string> known = {
        {"bjnortier__floorplan.dxf", "owner 24, dictionary 5"},
        {"evil-spirit__plan.dxf", "record 1, owner 5, reference 5, table 1"},
        {"evil-spirit__roof_actual_9.dxf", "record 1, owner 5, reference 6, table 1"},
        {"mozman__multi_insert_with_attribs.dxf", "table 1"},
    };
    std::size_t count = 0;
    for (const std::filesystem::path& file : textDrawings()) {
        std::ifstream bytes(file, std::ios::binary);
        const AuditReport report = auditDrawingText(std::string{std::istreambuf_iterator<char>(bytes), {}});
        std::string faults;
        for (std::size_t check = 0; check < auditCheckCount; ++check)
            if (report.faults[check] > 0)
                faults += (faults.empty() ? "" : ", ") +
                          narrow(auditCheckName(static_cast<AuditCheck>(check))) + " " +
                          std::to_string(report.faults[check]);
        const auto expected = known.find(file.filename());
        EXPECT_EQ(faults, expected == known.end() ? "" : expected->second) << file << "\n" << textOf(report);
        ++count;
    }
    EXPECT_GT(count, 20u);
}

#include "drawingaudit.h"

#include "drawingfiles.h"
#include "drawingreader.h"
#include "drawingwriter.h"
#include "sampledrawing.h"

#include "dbaccess.h"
#include "dbblockreference.h"
#include "dbline.h"
#include "dbobjptr.h"
#include "dbsource.h"
#include "dbsymtb.h"
#include "dbxrecrd.h"
#include "headervariables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

using namespace hostkit;
using namespace drawingtest;

namespace {

std::ostream& operator<<(std::ostream& out, const AuditFinding& finding) {
    const auto narrow = [](const std::wstring& text) { return std::string(text.begin(), text.end()); };
    return out << narrow(auditCheckName(finding.check)) << ", " << narrow(finding.type) << " " << std::hex
               << finding.handle << std::dec << ": " << narrow(finding.text);
}

std::string textOf(const AuditReport& report) {
    std::ostringstream text;
    for (const AuditFinding& finding : report.findings) text << finding << "\n";
    return text.str();
}

std::string fileOf(const AcDbDatabase& database, DrawingVersion version = DrawingVersion::k2010) {
    WriteOptions options;
    options.version = version;
    std::string bytes;
    EXPECT_EQ(writeDrawingToMemory(database, bytes, options), Acad::eOk);
    return bytes;
}

/// The text of one group as our writer spells it.
std::string group(int code, const std::string& value) {
    std::string text = std::to_string(code);
    if (text.size() < 3) text.insert(0, 3 - text.size(), ' ');
    return text + "\r\n" + value + "\r\n";
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
    return {text, text + std::wcslen(text)};
}

/// A drawing with a line that has extended data, an insert, and a dictionary with an entry; all ids by name.
struct Subject {
    std::unique_ptr<AcDbDatabase> database = std::make_unique<AcDbDatabase>();
    AcDbObjectId line, insert, block, dictionary, entry;

    Subject() {
        registerApplication(*database, L"ORDANE");
        {
            AcDbSymbolTablePointer<AcDbBlockTable> blocks(database.get(), AcDb::kForWrite);
            auto* const record = new AcDbBlockTableRecord;
            record->setName(L"Anchor");
            EXPECT_EQ(blocks->add(block, record), Acad::eOk);
            record->close();
        }
        auto* const plain = new AcDbLine({0, 0, 0}, {1, 0, 0});
        line = addToModelSpace(*database, plain);
        insert = addToModelSpace(*database, new AcDbBlockReference({0, 0, 0}, block));
        AcDbObjectPointer<AcDbLine> opened(line, AcDb::kForWrite);
        resbuf* const list = acutBuildList(1001, L"ORDANE", 1000, L"mark", 1070, 7, 0);
        EXPECT_EQ(opened->setXData(list), Acad::eOk);
        acutRelRb(list);
        AcDbObjectPointer<AcDbDictionary> root(database->namedObjectsDictionaryId(), AcDb::kForWrite);
        auto* const service = new AcDbDictionary;
        EXPECT_EQ(root->setAt(L"VEXO_SERVICES", service, dictionary), Acad::eOk);
        auto* const record = new AcDbXrecord;
        EXPECT_EQ(service->setAt(L"first", record, entry), Acad::eOk);
        record->close();
        service->close();
    }
    AcDbObject& object(AcDbObjectId id) const { return *DatabaseAccess::object(id); }
};

} // namespace

TEST(Audit, soundDrawingsHaveNoFindings) {
    EXPECT_EQ(textOf(auditDrawing(*Subject().database)), "");
    for (const DrawingVersion version :
         {DrawingVersion::kR12, DrawingVersion::k2000, DrawingVersion::k2018}) {
        const auto made = sampleDrawing(version == DrawingVersion::kR12 ? Kinds::kOfR12 : Kinds::kAll);
        EXPECT_EQ(textOf(auditDrawing(*made)), "");
        const auto read = openDrawingFromMemory(fileOf(*made, version), L"sample");
        ASSERT_TRUE(read);
        const AuditReport report = auditDrawing(*read);
        EXPECT_EQ(textOf(report), "");
        EXPECT_EQ(report.faultCount() + report.remarkCount(), 0u);
        EXPECT_GT(report.objects, 30u);
    }
}

// What goes wrong inside a session: each damage is found by its check, at the object that has it.
TEST(Audit, damageInMemory) {
    struct Case {
        const char* name;
        AuditCheck check;
        AuditSeverity severity;
        std::function<AcDbObjectId(Subject&)> damage; ///< gives the object that the finding names
        const wchar_t* words;
    };
    using Access = DatabaseAccess;
    constexpr auto fault = AuditSeverity::kFault;
    const Case cases[] = {
        {"nobody owns it", AuditCheck::kOwner, fault,
         [](Subject& s) { return Access::setOwner(s.object(s.entry), {}), s.entry; }, L"it has no owner"},
        {"another owner", AuditCheck::kOwner, fault,
         [](Subject& s) { return Access::setOwner(s.object(s.line), s.block), s.line; }, L"holds it"},
        {"an owner that never came", AuditCheck::kOwner, fault,
         [](Subject& s) {
             Access::setOwner(s.object(s.entry), Access::reserve(*s.database, 0xABCD));
             return s.entry;
         },
         L"its owner ABCD is missing"},
        {"two blocks hold it", AuditCheck::kOwner, fault,
         [](Subject& s) {
             Access::appendToBlock(static_cast<AcDbBlockTableRecord&>(s.object(s.block)), s.line);
             return s.line;
         },
         L"both hold it"},
        {"owners in a circle", AuditCheck::kOwner, fault,
         [](Subject& s) {
             Access::setOwner(s.object(s.dictionary), s.entry);
             return s.dictionary;
         },
         L"circle"},
        {"an entity that never came", AuditCheck::kOwner, fault,
         [](Subject& s) {
             Access::appendToBlock(static_cast<AcDbBlockTableRecord&>(s.object(s.block)),
                                   Access::reserve(*s.database, 0xABCD));
             return s.block;
         },
         L"ABCD is missing"},
        {"an erased layer", AuditCheck::kReference, fault,
         [](Subject& s) {
             AcDbObjectId layer;
             AcDbSymbolTablePointer<AcDbLayerTable> layers(s.database.get(), AcDb::kForWrite);
             auto* const record = new AcDbLayerTableRecord;
             record->setName(L"Slab");
             EXPECT_EQ(layers->add(layer, record), Acad::eOk);
             EXPECT_EQ(record->erase(), Acad::eOk);
             record->close();
             Access::setLayer(static_cast<AcDbEntity&>(s.object(s.line)), layer);
             return s.line;
         },
         L"which is erased"},
        {"a reactor that never came", AuditCheck::kReference, AuditSeverity::kRemark,
         [](Subject& s) {
             Access::setPersistentReactors(s.object(s.line), {Access::reserve(*s.database, 0xABCD)});
             return s.line;
         },
         L"its reactor ABCD is missing"},
        {"an entry that never came", AuditCheck::kDictionary, fault,
         [](Subject& s) {
             Access::putEntry(static_cast<AcDbDictionary&>(s.object(s.dictionary)), L"lost",
                              Access::reserve(*s.database, 0xABCD));
             return s.dictionary;
         },
         L"its entry lost, ABCD, is missing"},
        {"a block in itself", AuditCheck::kBlock, fault,
         [](Subject& s) {
             auto* const inner = new AcDbBlockReference({0, 0, 0}, s.block);
             AcDbObjectPointer<AcDbBlockTableRecord> block(s.block, AcDb::kForWrite);
             EXPECT_EQ(block->appendAcDbEntity(inner), Acad::eOk);
             inner->close();
             return s.block;
         },
         L"the block Anchor contains itself"},
        {"an erased block that is inserted", AuditCheck::kBlock, fault,
         [](Subject& s) {
             AcDbObjectPointer<AcDbObject> block(s.block, AcDb::kForWrite);
             EXPECT_EQ(block->erase(), Acad::eOk);
             return s.insert;
         },
         L"the block that it inserts is erased"},
        {"two records of one name", AuditCheck::kTable, fault,
         [](Subject& s) {
             AcDbObjectId second;
             AcDbSymbolTablePointer<AcDbBlockTable> blocks(s.database.get(), AcDb::kForWrite);
             auto* const record = new AcDbBlockTableRecord;
             record->setName(L"Other");
             EXPECT_EQ(blocks->add(second, record), Acad::eOk);
             Access::setRecordName(*record, L"ANCHOR");
             record->close();
             return second;
         },
         L"the name ANCHOR leads to"},
        {"a current layer that is not there", AuditCheck::kTable, fault,
         [](Subject& s) { return s.database->header().setText(L"CLAYER", L"None", 8), AcDbObjectId(); },
         L"CLAYER names None"},
        {"an application that is not registered", AuditCheck::kExtendedData, fault,
         [](Subject& s) {
             GroupBlock data;
             data.appendText(1001, L"STRANGE");
             Access::setExtendedData(s.object(s.line), std::move(data));
             return s.line;
         },
         L"the application STRANGE is not registered"},
        {"braces", AuditCheck::kExtendedData, fault,
         [](Subject& s) {
             GroupBlock data;
             data.appendText(1001, L"ORDANE");
             data.appendText(1002, L"{");
             Access::setExtendedData(s.object(s.line), std::move(data));
             return s.line;
         },
         L"braces"},
        {"too much of it", AuditCheck::kExtendedData, fault,
         [](Subject& s) {
             GroupBlock data;
             data.appendText(1001, L"ORDANE");
             for (int i = 0; i < 2000; ++i) data.appendReal(1040, i);
             Access::setExtendedData(s.object(s.line), std::move(data));
             return s.line;
         },
         L"above 16383"},
        {"a handle of nothing", AuditCheck::kExtendedData, AuditSeverity::kRemark,
         [](Subject& s) {
             GroupBlock data;
             data.appendText(1001, L"ORDANE");
             data.appendHandle(1005, 0xABCD);
             Access::setExtendedData(s.object(s.line), std::move(data));
             return s.line;
         },
         L"refers to ABCD, which is missing"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        Subject subject;
        const AcDbObjectId found = each.damage(subject);
        const AuditReport report = auditDrawing(*subject.database);
        EXPECT_TRUE(std::any_of(report.findings.begin(), report.findings.end(),
                                [&](const AuditFinding& finding) {
                                    return finding.check == each.check && finding.severity == each.severity &&
                                           finding.handle == found.handle().value() &&
                                           finding.text.find(each.words) != std::wstring::npos;
                                }))
            << textOf(report);
        EXPECT_EQ(report.findings.size(), report.faultCount() + report.remarkCount());
    }
}

// What others left in a file: the record is looked at as it stands, also where the reader found a way round.
TEST(Audit, damageInAFile) {
    const Subject subject;
    const std::string sound = fileOf(*subject.database);
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
    ReadOptions quiet;
    quiet.tellPort = false;
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        std::string bytes = sound;
        ASSERT_NO_FATAL_FAILURE(replaceIn(bytes, each.record, each.from, each.to));
        const auto database = openDrawingFromMemory(bytes, L"damaged", nullptr, quiet);
        ASSERT_TRUE(database);
        const AuditReport report = auditDrawing(*database);
        EXPECT_GE(report.faultCount(), 1u);
        EXPECT_TRUE(std::any_of(report.findings.begin(), report.findings.end(),
                                [&](const AuditFinding& finding) {
                                    return finding.check == each.check &&
                                           finding.severity == AuditSeverity::kFault &&
                                           finding.handle == each.at.handle().value() &&
                                           finding.text.find(each.words) != std::wstring::npos;
                                }))
            << textOf(report);
    }
}

TEST(Audit, listsAreCutAndCountsAreNot) {
    Subject subject;
    auto& dictionary = static_cast<AcDbDictionary&>(subject.object(subject.dictionary));
    for (AcDbHandleValue handle = 1; handle <= 50; ++handle)
        DatabaseAccess::putEntry(dictionary, L"lost " + std::to_wstring(handle),
                                 DatabaseAccess::reserve(*subject.database, 0xABC00 + handle));
    const AuditReport report = auditDrawing(*subject.database, 10);
    EXPECT_EQ(report.findings.size(), 10u);
    EXPECT_EQ(report.faultCount(), 50u);
    EXPECT_EQ(report.faults[static_cast<std::size_t>(AuditCheck::kDictionary)], 50u);
}

// A file that has no tables gets, with the layouts that its root then names, the spaces that these name.
TEST(Audit, whatASaveAddsToABareDrawingIsWhole) {
    const std::string bare =
        group(0, "SECTION") + group(2, "HEADER") + group(9, "$ACADVER") + group(1, "AC1024") +
        group(0, "ENDSEC") + group(0, "SECTION") + group(2, "ENTITIES") + group(0, "LINE") + group(5, "2F") +
        group(100, "AcDbEntity") + group(8, "0") + group(100, "AcDbLine") + group(10, "1.0") +
        group(20, "2.0") + group(11, "3.0") + group(21, "4.0") + group(0, "ENDSEC") + group(0, "EOF");
    const auto database = openDrawingFromMemory(bare, L"bare");
    ASSERT_TRUE(database);
    EXPECT_EQ(textOf(auditDrawing(*database)), "");
    {
        AcDbObjectPointer<AcDbDictionary> root(database->namedObjectsDictionaryId(), AcDb::kForWrite);
        auto* const service = new AcDbDictionary;
        AcDbObjectId id;
        ASSERT_EQ(root->setAt(L"VEXO_SERVICES", service, id), Acad::eOk);
        service->close();
        registerApplication(*database, L"ORDANE");
    }
    for (const bool everything : {false, true}) {
        WriteOptions options;
        options.everythingFromFields = everything;
        std::string bytes;
        ASSERT_EQ(writeDrawingToMemory(*database, bytes, options), Acad::eOk);
        const auto saved = openDrawingFromMemory(bytes, L"saved");
        ASSERT_TRUE(saved);
        EXPECT_EQ(textOf(auditDrawing(*saved)), "") << bytes;
        const std::size_t tables = bytes.find(group(2, "TABLES"));
        EXPECT_LT(tables, bytes.find(group(2, "BLOCKS")));
        EXPECT_LT(bytes.find(group(2, "BLOCKS")), bytes.find(group(2, "ENTITIES")));
        EXPECT_EQ(tables, bytes.rfind(group(2, "TABLES"))) << "one section for all that is new";
        const AcDbObjectPointer<AcDbBlockTableRecord> space(saved->modelSpaceId(), AcDb::kForRead);
        EXPECT_EQ(space->entities().size(), 1u);
    }
}

// Nothing that is saved, as it stood or with every record new, is worse than what was read.
TEST(Audit, savingAddsNoFindings) {
    if (foldersAreMissing()) GTEST_SKIP() << "no drawings in " << drawingsFolder();
    ReadOptions quiet;
    quiet.tellPort = false;
    for (const std::string& file : drawingFiles()) {
        SCOPED_TRACE(file);
        const auto database = openDrawing(wide(file), nullptr, quiet);
        ASSERT_TRUE(database);
        const AuditReport before = auditDrawing(*database);
        WriteOptions options;
        options.everythingFromFields = true;
        std::string bytes;
        ASSERT_EQ(writeDrawingToMemory(*database, bytes, options), Acad::eOk);
        const auto saved = openDrawingFromMemory(bytes, L"saved", nullptr, quiet);
        ASSERT_TRUE(saved);
        const AuditReport after = auditDrawing(*saved);
        for (std::size_t check = 0; check < auditCheckCount; ++check)
            EXPECT_LE(after.faults[check], before.faults[check]) << "before\n"
                                                                 << textOf(before) << "after\n"
                                                                 << textOf(after);
    }
}

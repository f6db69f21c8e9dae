// Drawings saved in another form: what goes along, what is turned or left out, and that the rest stays sound.
#include "drawingaudit.h"
#include "drawingfiles.h"
#include "drawinglisting.h"
#include "drawingparts.h"
#include "formtransfer.h"
#include "r12names.h"
#include "recordcompare.h"

#include "dbaccess.h"
#include "dbdatabase.h"
#include "dblayertable.h"
#include "dbtext.h"
#include "dbviewport.h"

#include <algorithm>
#include <map>
#include <set>

using namespace hostkit;
using namespace drawingtest;

namespace {

constexpr DrawingVersion forms[] = {DrawingVersion::kR12,  DrawingVersion::k2000, DrawingVersion::k2004,
                                    DrawingVersion::k2007, DrawingVersion::k2010, DrawingVersion::k2013,
                                    DrawingVersion::k2018};

std::map<std::wstring, int> kindsOf(const AcDbDatabase& database) {
    std::map<std::wstring, int> kinds;
    for (const ListedEntity& entity : listDrawing(database).entities) ++kinds[entity.type];
    return kinds;
}

std::multiset<std::wstring> faultsOf(const AcDbDatabase& database) {
    std::multiset<std::wstring> faults;
    for (const AuditFinding& finding : auditDrawing(database).findings)
        if (finding.severity == AuditSeverity::kFault)
            faults.insert(finding.type + L" " + auditCheckName(finding.check));
    return faults;
}

std::string transferred(const std::string& text, DrawingVersion from, DrawingVersion to,
                        FormChanges& changes) {
    const auto style = [](DrawingVersion version) {
        return DrawingStyle{DrawingText(isUtf8(version) ? CodePage::utf8 : CodePage::western1252), version,
                            "\r\n"};
    };
    return FormTransfer(text, style(from), style(to), changes).run();
}

// A table of variables, a dictionary and objects, as a later form has them.
std::string objectsDrawing() {
    const std::string dictionary = groups({{0, "DICTIONARY"},
                                           {5, "C"},
                                           {330, "0"},
                                           {100, "AcDbDictionary"},
                                           {3, "KEEP"},
                                           {350, "D"},
                                           {3, "LOOK"},
                                           {350, "E"}});
    const std::string record = groups({{0, "XRECORD"},
                                       {5, "D"},
                                       {102, "{ACAD_REACTORS"},
                                       {330, "E"},
                                       {102, "}"},
                                       {330, "C"},
                                       {100, "AcDbXrecord"},
                                       {420, "7"},
                                       {340, "E"}});
    const std::string look = groups({{0, "SUN"},
                                     {5, "E"},
                                     {102, "{ACAD_XDICTIONARY"},
                                     {360, "F"},
                                     {102, "}"},
                                     {330, "C"},
                                     {100, "AcDbSun"},
                                     {2, "flat"}});
    const std::string owned = groups({{0, "DICTIONARY"}, {5, "F"}, {330, "E"}, {100, "AcDbDictionary"}});
    const std::string entity = groups({{0, "LINE"},
                                       {5, "A"},
                                       {102, "{ACAD_REACTORS"},
                                       {330, "D"},
                                       {330, "E"},
                                       {102, "}"},
                                       {330, "1F"},
                                       {100, "AcDbEntity"},
                                       {8, "Wand \xC3\xA4 \xE2\x82\xAC \xCE\xA9"},
                                       {62, "1"},
                                       {420, "255"},
                                       {348, "E"},
                                       {100, "AcDbLine"},
                                       {10, "0.0"},
                                       {20, "0.0"},
                                       {11, "1.0"},
                                       {21, "0.0"},
                                       {777, "unknown"},
                                       {1001, "APP"},
                                       {1005, "E"}});
    return section("HEADER", groups({{9, "$ACADVER"},
                                     {1, "AC1032"},
                                     {9, "$LTSCALE"},
                                     {40, "1.0"},
                                     {9, "$CMATERIAL"},
                                     {347, "E"},
                                     {9, "$REQUIREDVERSIONS"},
                                     {160, "0"}})) +
           section("ENTITIES", entity) + section("OBJECTS", dictionary + record + look + owned) +
           group(0, "EOF");
}

} // namespace

TEST(Forms, whatIsTooNewGoesWithAllThatSpokeOfIt) {
    FormChanges changes;
    const std::string text =
        transferred(objectsDrawing(), DrawingVersion::k2018, DrawingVersion::k2004, changes);
    const Records records = recordsOf(text);
    const auto pairs = [&](const std::string& key) -> std::vector<Pair> {
        for (const auto& [name, groups] : records)
            if (name.find(key) != std::string::npos) return groups;
        ADD_FAILURE() << key;
        return {};
    };
    using Pairs = std::vector<Pair>;
    EXPECT_EQ(pairs("LINE"), (Pairs{{0, "LINE"},
                                    {5, "A"},
                                    {102, "{ACAD_REACTORS"},
                                    {330, "D"},
                                    {102, "}"},
                                    {330, "1F"},
                                    {100, "AcDbEntity"},
                                    {8, "Wand \xE4 \x80 \\U+03A9"},
                                    {62, "1"},
                                    {420, "255"},
                                    {100, "AcDbLine"},
                                    {10, "0.0"},
                                    {20, "0.0"},
                                    {11, "1.0"},
                                    {21, "0.0"},
                                    {777, "unknown"},
                                    {1001, "APP"},
                                    {1005, "0"}}));
    EXPECT_EQ(
        pairs("DICTIONARY"),
        (Pairs{{0, "DICTIONARY"}, {5, "C"}, {330, "0"}, {100, "AcDbDictionary"}, {3, "KEEP"}, {350, "D"}}));
    EXPECT_EQ(pairs("XRECORD"),
              (Pairs{{0, "XRECORD"}, {5, "D"}, {330, "C"}, {100, "AcDbXrecord"}, {420, "7"}, {340, "0"}}))
        << "what stands in a record of an application is its own";
    for (const char* gone : {"SUN", "CMATERIAL", "REQUIREDVERSIONS"})
        EXPECT_EQ(text.find(gone), std::string::npos) << gone;
    EXPECT_NE(text.find("LTSCALE"), std::string::npos);
    EXPECT_NE(text.find("AC1018"), std::string::npos);
    ASSERT_EQ(changes.all().size(), 2u);
    EXPECT_EQ(changes.all()[0].kind, L"SUN");
    EXPECT_EQ(changes.all()[0].handles, std::vector<std::uint64_t>{0xE});
    EXPECT_EQ(changes.all()[1].handles, std::vector<std::uint64_t>{0xF});
}

TEST(Forms, aKindThatAnOlderFileHoldsAllTheSameGoesToEveryLaterForm) {
    FormChanges changes;
    const std::string text =
        transferred(objectsDrawing(), DrawingVersion::k2000, DrawingVersion::k2004, changes);
    EXPECT_NE(text.find("SUN"), std::string::npos);
    EXPECT_TRUE(changes.all().empty());
}

TEST(Forms, textsAreSpeltInTheEncodingOfTheirForm) {
    AcDbDatabase database;
    auto* const text = new AcDbText;
    ASSERT_EQ(text->setTextString(L"\u4E2D \\P"), Acad::eOk);
    (void)appendToModelSpace(database, text);
    const char* const escaped = "\r\n  1\r\n\\U+4E2D \\P\r\n";
    const char* const plain = "\r\n  1\r\n\xE4\xB8\xAD \\P\r\n";
    WriteOptions older = quietWriting, later = quietWriting;
    older.version = DrawingVersion::k2000;
    later.version = DrawingVersion::k2010;
    std::string bytes = saved(database, older);
    EXPECT_NE(bytes.find(escaped), std::string::npos);
    for (const auto& [options, spelt] : {std::pair(later, plain), {older, escaped}}) {
        const auto read = openDrawingFromMemory(bytes, L"plan.dxf", nullptr, quietReading);
        ASSERT_TRUE(read);
        bytes = saved(*read, options);
        EXPECT_NE(bytes.find(spelt), std::string::npos);
    }
}

TEST(Forms, namesOfR12AreSoundAndUnique) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"Slab", L"Slab"},
        {L"SLAB", L"SLAB_2"},
        {L"*D12", L"*D12"},
        {L"Dalle \u00E9paisse (20)", L"Dalle_epaisse__20_"},
        {L"W\u00E4nde", L"Waende"},
        {L"Stra\u00DFe", L"Strasse"},
        {L"\u4E2D", L"_"},
        {L"\u4E2E", L"__2"},
        {L"0123456789012345678901234567890123", L"012345678901_678901234567890123"},
        {L"0123456789012345678901234567890124", L"012345678901_678901234567890124"},
        {L"012345678901XYZ678901234567890123", L"01234567890_78901234567890123_2"},
    };
    R12Names names;
    for (const auto& [name, expected] : cases) EXPECT_EQ(names.take(name), expected);
}

// R12 has a viewport's view as extended data. What comes back from it is what went in, but for what R12
// lacks.
TEST(Forms, aViewportKeepsItsViewThroughR12) {
    const std::initializer_list<std::pair<int, std::string>> view = {
        {12, "3.0"},  {22, "4.0"},  {13, "0.5"},  {23, "0.25"}, {14, "10.0"}, {24, "20.0"},
        {15, "5.0"},  {25, "6.0"},  {16, "0.0"},  {26, "-1.0"}, {36, "0.5"},  {17, "7.0"},
        {27, "8.0"},  {37, "9.0"},  {42, "35.0"}, {43, "1.5"},  {44, "-2.5"}, {45, "30.0"},
        {50, "15.0"}, {51, "45.0"}, {72, "1000"}, {90, "33570"}};
    const std::string viewport = groups({{0, "VIEWPORT"},
                                         {5, "A0"},
                                         {330, "1E"},
                                         {100, "AcDbEntity"},
                                         {67, "1"},
                                         {8, "0"},
                                         {100, "AcDbViewport"},
                                         {10, "100.0"},
                                         {20, "50.0"},
                                         {30, "0.0"},
                                         {40, "80.0"},
                                         {41, "60.0"},
                                         {68, "2"},
                                         {69, "2"}}) +
                                 groups(view);
    const auto database =
        openDrawingFromMemory(header("AC1015") + entities(viewport), L"sheet", nullptr, quietReading);
    ASSERT_TRUE(database);
    const auto older =
        openDrawingFromMemory(saved(*database, DrawingVersion::kR12), L"R12", nullptr, quietReading);
    ASSERT_TRUE(older);
    for (const auto& [name, record] : recordsOf(saved(*older, DrawingVersion::k2000))) {
        if (name.find("VIEWPORT") == std::string::npos) continue;
        for (const auto& [code, value] : view) {
            const bool isStatus = code == 90; // R12 has the bits up to 4096 but one
            const auto found = std::find_if(record.begin(), record.end(),
                                            [code = code](const Pair& pair) { return pair.code == code; });
            ASSERT_NE(found, record.end()) << code;
            EXPECT_EQ(found->value,
                      isStatus ? std::to_string(33570 & (0x1F | 32 | 128 | 256 | 512 | 1024 | 2048 | 4096))
                               : value)
                << code;
        }
        return;
    }
    FAIL() << "no viewport";
}

void expectSameView(const AcDbViewport& one, const AcDbViewport& other) {
    EXPECT_EQ(one.centerPoint(), other.centerPoint());
    EXPECT_EQ(one.width(), other.width());
    EXPECT_EQ(one.height(), other.height());
    EXPECT_EQ(one.number(), other.number());
    EXPECT_EQ(one.viewCenter(), other.viewCenter());
    EXPECT_EQ(one.viewTarget(), other.viewTarget());
    EXPECT_EQ(one.viewDirection(), other.viewDirection());
    EXPECT_EQ(one.customScale(), other.customScale());
    EXPECT_NEAR(one.twistAngle(), other.twistAngle(), 1e-15);
    EXPECT_EQ(one.lensLength(), other.lensLength());
    EXPECT_EQ(one.isOn(), other.isOn());
    const auto* layers = DatabaseAccess::objectOf<AcDbLayerTable>(other.database()->layerTableId());
    const AcDbObjectId layer = layers->find(L"HIDDEN");
    EXPECT_TRUE(other.isLayerFrozenInViewport(layer));
    EXPECT_EQ(other.frozenLayers().size(), 1u);
}

// One that a module made, and one whose view was changed after it came back from R12.
TEST(Forms, viewportsOfModulesComeBackFromEveryForm) {
    AcDbDatabase drawing;
    const AcDbObjectId layer = addRecord<AcDbLayerTable>(drawing, L"HIDDEN");
    auto* made = new AcDbViewport;
    const AcDbObjectId id = append(drawing.paperSpaceId(), made);
    change<AcDbViewport>(id, [&](AcDbViewport& viewport) {
        EXPECT_EQ(viewport.setCenterPoint({100.0, 50.0, 0.0}), Acad::eOk);
        EXPECT_EQ(viewport.setWidth(80.0), Acad::eOk);
        EXPECT_EQ(viewport.setHeight(40.0), Acad::eOk);
        EXPECT_EQ(viewport.setNumber(3), Acad::eOk);
        EXPECT_EQ(viewport.setViewCenter({7.0, -3.0}), Acad::eOk);
        EXPECT_EQ(viewport.setViewTarget({1.0, 2.0, 3.0}), Acad::eOk);
        EXPECT_EQ(viewport.setViewDirection({0.0, -1.0, 0.5}), Acad::eOk);
        EXPECT_EQ(viewport.setTwistAngle(0.5), Acad::eOk);
        EXPECT_EQ(viewport.setLensLength(35.0), Acad::eOk);
        EXPECT_EQ(viewport.setCustomScale(0.25), Acad::eOk);
        AcDbObjectIdArray layers;
        layers.append(layer);
        EXPECT_EQ(viewport.freezeLayersInViewport(layers), Acad::eOk);
        layers.append(id);
        EXPECT_EQ(viewport.freezeLayersInViewport(layers), Acad::eNotThatKindOfClass);
        for (const double bad : {0.0, -1.0, std::nan("")}) {
            EXPECT_EQ(viewport.setWidth(bad), Acad::eInvalidInput);
            EXPECT_EQ(viewport.setCustomScale(bad), Acad::eInvalidInput);
        }
    });
    const auto viewportOf = [](const AcDbDatabase& database) {
        const auto* sheet = DatabaseAccess::objectOf<AcDbBlockTableRecord>(database.paperSpaceId());
        return DatabaseAccess::objectOf<AcDbViewport>(sheet->entities().at(0));
    };
    for (const DrawingVersion version :
         {DrawingVersion::kR12, DrawingVersion::k2000, DrawingVersion::k2018}) {
        SCOPED_TRACE(nameOfVersion(version));
        const auto read = openDrawingFromMemory(saved(drawing, version), L"first", nullptr, quietReading);
        ASSERT_TRUE(read);
        expectSameView(*made, *viewportOf(*read));
        EXPECT_EQ(viewportOf(*read)->tellsView(), version != DrawingVersion::kR12);
        change<AcDbViewport>(viewportOf(*read)->objectId(), [](AcDbViewport& viewport) {
            EXPECT_EQ(viewport.setViewTarget({-8.0, 9.0, 0.0}), Acad::eOk);
            EXPECT_EQ(viewport.setOff(), Acad::eOk);
        });
        const AcDbViewport& changed = *viewportOf(*read);
        EXPECT_EQ(changed.customScale(), made->customScale());
        EXPECT_FALSE(changed.isOn());
        for (const DrawingVersion next : {version, DrawingVersion::k2000}) {
            const auto again = openDrawingFromMemory(saved(*read, next), L"again", nullptr, quietReading);
            ASSERT_TRUE(again);
            expectSameView(changed, *viewportOf(*again));
            EXPECT_EQ(viewportOf(*again)->tellsView(), next != DrawingVersion::kR12);
        }
    }
}

TEST(Forms, blankLinesBeforeADrawingStay) {
    const std::string start = "\r\n \r\n";
    const auto database =
        openDrawingFromMemory(start + header("AC1015") + entities(line()), L"blank", nullptr, quietReading);
    ASSERT_TRUE(database);
    const std::string same = saved(*database);
    EXPECT_EQ(same, start + header("AC1015") + entities(line()));
    const std::string anew = saved(*database, fromFields);
    EXPECT_EQ(anew.substr(0, start.size()), start);
    EXPECT_TRUE(openDrawingFromMemory(anew, L"again", nullptr, quietReading));
}

class FormsOfOthers : public DrawingsOfOthers {};

// By the drawing's own account: every entity is there, was turned, or was left out, and is told.
TEST_F(FormsOfOthers, everyDrawingGoesIntoEveryForm) {
    forEach([](const AcDbDatabase& database) {
        const auto before = kindsOf(database);
        const auto faults = faultsOf(database);
        for (const DrawingVersion form : forms) {
            SCOPED_TRACE(nameOfVersion(form));
            WriteOptions options = quietWriting;
            options.version = form;
            WriteReport report;
            const std::string bytes = saved(database, options, &report);
            ReadReport reading;
            const auto again = openDrawingFromMemory(bytes, L"again", &reading, quietReading);
            ASSERT_TRUE(again) << std::string(reading.fatalMessage().begin(), reading.fatalMessage().end());
            EXPECT_EQ(reading.version, form);
            EXPECT_TRUE(saved(*again) == bytes);
            for (const std::wstring& fault : faultsOf(*again))
                EXPECT_TRUE(faults.contains(fault)) << std::string(fault.begin(), fault.end());
            auto expected = before;
            std::set<std::wstring> grown;
            for (const FormChange& change : report.changes.all()) {
                if (expected.contains(change.kind))
                    expected[change.kind] -= static_cast<int>(change.handles.size());
                if (!change.isLeftOut()) grown.insert(change.became);
            }
            const auto after = kindsOf(*again);
            for (const auto& [kind, count] : expected) {
                if (grown.contains(kind)) continue;
                EXPECT_EQ(after.contains(kind) ? after.at(kind) : 0, count)
                    << std::string(kind.begin(), kind.end());
            }
        }
    });
}

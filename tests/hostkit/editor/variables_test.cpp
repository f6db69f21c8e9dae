#include "commandtest.h"
#include "currentview.h"
#include "dbsymtb.h"
#include "headervariables.h"

#include <cstdlib>
#include <limits>
#include <numbers>

namespace {

using hostkit::SystemValue;
using hostkit::VariablePlace;
using enum hostkit::VariableResult;

class VariablesTest : public CommandTest {
protected:
    hostkit::HeaderVariables& header() { return database().header(); }
    static SystemValue integer(int number, short type = RTSHORT) { return {type, number, {}, {}}; }
    static SystemValue real(double number) { return {RTREAL, 0, {number}, {}}; }
    static SystemValue text(const wchar_t* what) { return {RTSTR, 0, {}, what}; }
    hostkit::VariableResult set(const wchar_t* name, const SystemValue& value) {
        return host.variables().set(name, value);
    }
    void expectPoint(const wchar_t* name, double x, double y, double z) {
        const SystemValue found = value(name);
        EXPECT_EQ(found.type, RT3DPOINT);
        const double expected[] = {x, y, z};
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(found.reals[i], expected[i], 1e-9) << hostkit::utf8FromWide(name) << " " << i;
    }
};

TEST_F(VariablesTest, SettingKeepsTypeRangeAndReadOnly) {
    const double endless = std::numeric_limits<double>::infinity();
    const auto expectSet = [&](const wchar_t* name, const SystemValue& given,
                               hostkit::VariableResult result) {
        SCOPED_TRACE(hostkit::utf8FromWide(name));
        SystemValue before, after;
        (void)host.variables().get(name, before);
        EXPECT_EQ(set(name, given), result);
        (void)host.variables().get(name, after);
        EXPECT_TRUE(result == ok || formatValue(before) == formatValue(after));
    };
    const std::tuple<const wchar_t*, int, hostkit::VariableResult> integers[] = {
        {L"CMDECHO", 0, ok},
        {L"cmdEcho", 2, outOfRange},
        {L"LTSCALE", 3, ok},
        {L"EXTMIN", 1, readOnly},
        {L"NOSUCH", 1, unknown},
        {L"", 1, unknown},
        {L"USERI1", 40000, outOfRange},
        {L"USERI1", -32768, ok}};
    for (const auto& [name, number, result] : integers) expectSet(name, integer(number, RTLONG), result);
    const std::tuple<const wchar_t*, double, hostkit::VariableResult> reals[] = {
        {L"CMDECHO", 1.0, wrongType},      {L"INSBASE", 1.0, wrongType},
        {L"VIEWSIZE", 3.0, readOnly},      {L"LTSCALE", 0.0, outOfRange},
        {L"LTSCALE", endless, outOfRange}, {L"THICKNESS", -endless, outOfRange}};
    for (const auto& [name, number, result] : reals) expectSet(name, real(number), result);
    const std::tuple<const wchar_t*, const wchar_t*, hostkit::VariableResult> texts[] = {
        {L"CMDECHO", L"1", wrongType},
        {L"ACADVER", L"99.0", readOnly},
        {L"CMDNAMES", L"LINE", readOnly},
        {L"CLAYER", L"nosuch", outOfRange},
        {L"CLAYER", L"0", ok},
        {L"CECOLOR", L"bylayer", ok},
        {L"CECOLOR", L"3", ok},
        {L"CECOLOR", L"256", outOfRange}};
    for (const auto& [name, given, result] : texts) expectSet(name, text(given), result);
    EXPECT_EQ(header().real(L"LTSCALE"), 3.0);
    EXPECT_EQ(value(L"CECOLOR").text, L"3");
    EXPECT_EQ(value(L"USERI1").integer, -32768);
}

TEST_F(VariablesTest, HeaderVariablesHaveTheTypesOfTheirGroups) {
    header().setText(L"PROJECTNAME", L"Tower", 1);
    header().setInteger(L"CUSTOM", 70000, 90);
    header().setHandle(L"SOMEHANDLE", 0x2A);
    const std::tuple<const wchar_t*, short, bool> cases[] = {
        {L"projectname", RTSTR, false}, {L"CUSTOM", RTLONG, false},     {L"SOMEHANDLE", RTSTR, true},
        {L"LIMMAX", RTPOINT, false},    {L"INSBASE", RT3DPOINT, false}, {L"EXTMAX", RT3DPOINT, true},
        {L"ANGBASE", RTREAL, false},    {L"CELWEIGHT", RTSHORT, false}};
    for (const auto& [name, type, isReadOnly] : cases) {
        hostkit::SystemVariableInfo info;
        ASSERT_TRUE(host.variables().describe(name, info));
        SCOPED_TRACE(hostkit::utf8FromWide(name));
        EXPECT_EQ(info.type, type);
        EXPECT_EQ(info.isReadOnly, isReadOnly);
        EXPECT_EQ(info.place, VariablePlace::header);
        EXPECT_EQ(value(name).type, type);
    }
    EXPECT_EQ(set(L"custom", integer(-70000, RTLONG)), ok);
    EXPECT_EQ(header().integer(L"CUSTOM"), -70000);
    SystemValue point;
    ASSERT_TRUE(hostkit::parseValue(L"1,2,3", RT3DPOINT, point));
    EXPECT_EQ(set(L"LIMMAX", point), ok);
    EXPECT_EQ(formatValue(value(L"LIMMAX")), L"1,2");
}

TEST_F(VariablesTest, TheCallsGiveRecordsThatTheCallerFrees) {
    resbuf record{};
    ASSERT_EQ(acedGetVar(L"ACADVER", &record), RTNORM);
    EXPECT_EQ(record.restype, RTSTR);
    EXPECT_STREQ(record.resval.rstring, L"18.0");
    std::free(record.resval.rstring);
    record.restype = 77;
    EXPECT_EQ(acedGetVar(L"NOSUCH", &record), RTERROR);
    EXPECT_EQ(acedGetVar(nullptr, &record), RTERROR);
    EXPECT_EQ(acedGetVar(L"ACADVER", nullptr), RTERROR);
    EXPECT_EQ(record.restype, 77);

    record.restype = RTSHORT;
    record.resval.rint = 0;
    EXPECT_EQ(acedSetVar(L"CMDECHO", &record), RTNORM);
    ASSERT_EQ(acedGetVar(L"cmdecho", &record), RTNORM);
    EXPECT_EQ(record.resval.rint, 0);
    record.restype = RTSTR;
    record.resval.rstring = nullptr;
    EXPECT_EQ(acedSetVar(L"USERS1", &record), RTREJ);
    record.restype = RTENAME;
    EXPECT_EQ(acedSetVar(L"CMDECHO", &record), RTREJ);
    EXPECT_EQ(acedSetVar(L"NOSUCH", &record), RTERROR);
    EXPECT_EQ(acedSetVar(L"CMDECHO", nullptr), RTERROR);
}

TEST_F(VariablesTest, RunningCommandsAreNamedAndCounted) {
    host.commands().addCommand(L"T", L"INNER", nullptr, ACRX_CMD_TRANSPARENT, runBody);
    const auto expectRunning = [&](const wchar_t* names, int active) {
        EXPECT_EQ(value(L"CMDNAMES").text, names);
        EXPECT_EQ(value(L"CMDACTIVE").integer, active);
    };
    expectRunning(L"", 0);
    int innerRuns = 0;
    run(L"va", [&] {
        expectRunning(L"GO", 1);
        body = [&] {
            expectRunning(L"GO'INNER", 3);
            ++innerRuns;
        };
        host.run(L"INNER");
    });
    EXPECT_EQ(innerRuns, 1);
}

TEST_F(VariablesTest, SpacesGoByTilemodeAndViewport) {
    EXPECT_EQ(value(L"CVPORT").integer, 2);
    EXPECT_EQ(set(L"CVPORT", integer(1)), outOfRange);
    EXPECT_EQ(host.run(L"MSPACE").status, Acad::eNotApplicable);
    EXPECT_EQ(set(L"TILEMODE", integer(2)), outOfRange);
    EXPECT_EQ(set(L"TILEMODE", integer(0)), ok);
    EXPECT_EQ(value(L"CVPORT").integer, 1);
    EXPECT_EQ(acedCommand(RTSTR, L"_MSPACE", 0), RTNORM);
    EXPECT_EQ(value(L"CVPORT").integer, 2);
    EXPECT_EQ(acedCommand(RTSTR, L"_PSPACE", 0), RTNORM);
    EXPECT_EQ(value(L"CVPORT").integer, 1);
    EXPECT_EQ(set(L"CVPORT", integer(3)), ok);
    EXPECT_EQ(value(L"CVPORT").integer, 3);
    EXPECT_EQ(set(L"TILEMODE", integer(1)), ok);
    EXPECT_EQ(set(L"TILEMODE", integer(0)), ok);
    EXPECT_EQ(value(L"CVPORT").integer, 1) << "one comes to the sheet itself";
}

// A view from the front (along +y, onto the xz plane) in a coordinate system turned by a quarter about z.
TEST_F(VariablesTest, TheViewIsToldInTheUserCoordinateSystem) {
    AcDbViewportTable* table = nullptr;
    ASSERT_EQ(database().getSymbolTable(table, AcDb::kForWrite), Acad::eOk);
    AcDbViewportTableRecord* record = nullptr;
    ASSERT_EQ(table->getAt(L"*Active", record, AcDb::kForWrite), Acad::eOk);
    hostkit::GroupBlock groups;
    const double middle[] = {7.0, 9.0}, direction[] = {0.0, -2.0, 0.0}, target[] = {100.0, 200.0, 300.0};
    groups.appendPoint(12, middle, 2);
    groups.appendPoint(16, direction);
    groups.appendPoint(17, target);
    const std::pair<short, double> numbers[] = {{40, 55.0}, {42, 35.0}, {43, 1.5}, {44, -2.5}, {51, 90.0}};
    for (const auto& [code, number] : numbers) groups.appendReal(code, number);
    groups.appendInteger(71, 5);
    record->setGroups(groups);
    record->close();
    table->close();
    const double origin[] = {10.0, 0.0, 0.0}, x[] = {0.0, 1.0, 0.0}, y[] = {-1.0, 0.0, 0.0};
    EXPECT_EQ(value(L"WORLDUCS").integer, 1);
    header().setPoint(L"UCSORG", origin, 3);
    header().setPoint(L"UCSXDIR", x, 3);
    header().setPoint(L"UCSYDIR", y, 3);
    EXPECT_EQ(value(L"WORLDUCS").integer, 0);

    const std::pair<const wchar_t*, double> reals[] = {
        {L"VIEWSIZE", 55.0}, {L"LENSLENGTH", 35.0}, {L"FRONTZ", 1.5}, {L"BACKZ", -2.5}};
    for (const auto& [name, expected] : reals) EXPECT_EQ(value(name).reals[0], expected);
    EXPECT_NEAR(value(L"VIEWTWIST").reals[0], std::numbers::pi / 2.0, 1e-12);
    EXPECT_EQ(value(L"VIEWMODE").integer, 5);
    expectPoint(L"TARGET", 200.0, -90.0, 300.0);
    expectPoint(L"VIEWDIR", -2.0, 0.0, 0.0);
    // Seen from the front x goes right and z up; turned back by the twist, (7, 9) lies 9 right and 7 down.
    expectPoint(L"VIEWCTR", 200.0, -(100.0 + 9.0 - 10.0), 300.0 - 7.0);
    EXPECT_EQ(set(L"TILEMODE", integer(0)), ok);
    expectPoint(L"VIEWDIR", 0.0, 0.0, 1.0);
}

TEST_F(VariablesTest, SettingsAreKeptForTheProductAndOthersAreNot) {
    EXPECT_EQ(set(L"FILEDIA", integer(0)), ok) << "without a product's key";
    const auto inHost = [&](const std::function<void(hostkit::SystemVariables&)>& what) {
        hostkit::Host fresh(port);
        fresh.runtime().setProductKey(L"Software\\Maker\\Product");
        what(fresh.variables());
    };
    SystemValue found;
    inHost([&](hostkit::SystemVariables& fresh) {
        ASSERT_EQ(fresh.get(L"FILEDIA", found), ok);
        EXPECT_EQ(found.integer, 1) << "the other host's value is its own";
        EXPECT_EQ(fresh.set(L"FILEDIA", integer(0)), ok);
        EXPECT_EQ(fresh.set(L"CMDECHO", integer(0)), ok);
        EXPECT_EQ(fresh.get(L"LTSCALE", found), noDocument);
        EXPECT_EQ(fresh.set(L"TILEMODE", integer(0)), noDocument);
        EXPECT_EQ(fresh.get(L"PROJECTNAME", found), unknown);
    });
    inHost([&](hostkit::SystemVariables& fresh) {
        ASSERT_EQ(fresh.get(L"FILEDIA", found), ok);
        EXPECT_EQ(found.integer, 0);
        ASSERT_EQ(fresh.get(L"CMDECHO", found), ok);
        EXPECT_EQ(found.integer, 1);
    });
}

} // namespace

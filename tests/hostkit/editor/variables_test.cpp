#include "aced.h"
#include "currentview.h"
#include "dbdatabase.h"
#include "dbsymtb.h"
#include "headervariables.h"
#include "hosttest.h"

#include <cstdlib>
#include <functional>
#include <limits>
#include <numbers>

namespace {

using hostkit::SystemValue;
using hostkit::VariablePlace;
using hostkit::VariableResult;

std::function<void()> body;
void runBody() { body(); }

class VariablesTest : public hostkit::HostTest {
protected:
    hostkit::SystemVariables& variables() { return session.host().variables(); }
    hostkit::HeaderVariables& header() { return database().header(); }
    SystemValue value(const wchar_t* name) {
        SystemValue found;
        EXPECT_EQ(variables().get(name, found), VariableResult::ok) << hostkit::utf8FromWide(name);
        return found;
    }
    static SystemValue integer(int number, short type = RTSHORT) {
        SystemValue value;
        value.type = type;
        value.integer = number;
        return value;
    }
    static SystemValue real(double number) {
        SystemValue value;
        value.type = RTREAL;
        value.reals[0] = number;
        return value;
    }
    static SystemValue text(const wchar_t* what) {
        SystemValue value;
        value.type = RTSTR;
        value.text = what;
        return value;
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
    struct {
        const wchar_t* name;
        SystemValue value;
        VariableResult result;
    } const cases[] = {
        {L"CMDECHO", integer(0), VariableResult::ok},
        {L"cmdEcho", integer(2), VariableResult::outOfRange},
        {L"CMDECHO", real(1.0), VariableResult::wrongType},
        {L"CMDECHO", text(L"1"), VariableResult::wrongType},
        {L"ACADVER", text(L"99.0"), VariableResult::readOnly},
        {L"CMDNAMES", text(L"LINE"), VariableResult::readOnly},
        {L"VIEWSIZE", real(3.0), VariableResult::readOnly},
        {L"EXTMIN", integer(1), VariableResult::readOnly},
        {L"NOSUCH", integer(1), VariableResult::unknown},
        {L"", integer(1), VariableResult::unknown},
        {L"LTSCALE", integer(3), VariableResult::ok},
        {L"LTSCALE", real(0.0), VariableResult::outOfRange},
        {L"LTSCALE", real(endless), VariableResult::outOfRange},
        {L"THICKNESS", real(-endless), VariableResult::outOfRange},
        {L"USERI1", integer(40000, RTLONG), VariableResult::outOfRange},
        {L"USERI1", integer(-32768, RTLONG), VariableResult::ok},
        {L"CLAYER", text(L"nosuch"), VariableResult::outOfRange},
        {L"CLAYER", text(L"0"), VariableResult::ok},
        {L"CECOLOR", text(L"bylayer"), VariableResult::ok},
        {L"CECOLOR", text(L"256"), VariableResult::outOfRange},
        {L"INSBASE", real(1.0), VariableResult::wrongType},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(hostkit::utf8FromWide(each.name));
        SystemValue before, after;
        (void)variables().get(each.name, before);
        EXPECT_EQ(variables().set(each.name, each.value), each.result);
        if (each.result == VariableResult::ok) continue;
        (void)variables().get(each.name, after);
        EXPECT_EQ(formatValue(before), formatValue(after));
    }
    EXPECT_EQ(header().real(L"LTSCALE"), 3.0);
    EXPECT_EQ(value(L"USERI1").integer, -32768);
}

TEST_F(VariablesTest, HeaderVariablesHaveTheTypesOfTheirGroups) {
    header().setText(L"PROJECTNAME", L"Tower", 1);
    header().setInteger(L"CUSTOM", 70000, 90);
    header().setHandle(L"SOMEHANDLE", 0x2A);
    struct {
        const wchar_t* name;
        short type;
        bool isReadOnly;
    } const cases[] = {{L"projectname", RTSTR, false}, {L"CUSTOM", RTLONG, false},
                       {L"SOMEHANDLE", RTSTR, true},   {L"LIMMAX", RTPOINT, false},
                       {L"INSBASE", RT3DPOINT, false}, {L"EXTMAX", RT3DPOINT, true},
                       {L"ANGBASE", RTREAL, false},    {L"CELWEIGHT", RTSHORT, false}};
    for (const auto& each : cases) {
        hostkit::SystemVariableInfo info;
        ASSERT_TRUE(variables().describe(each.name, info));
        EXPECT_EQ(info.type, each.type) << hostkit::utf8FromWide(each.name);
        EXPECT_EQ(info.isReadOnly, each.isReadOnly) << hostkit::utf8FromWide(each.name);
        EXPECT_EQ(info.place, VariablePlace::header);
        EXPECT_EQ(value(each.name).type, each.type);
    }
    EXPECT_EQ(variables().set(L"custom", integer(-70000, RTLONG)), VariableResult::ok);
    EXPECT_EQ(header().integer(L"CUSTOM"), -70000);
    SystemValue point;
    ASSERT_TRUE(hostkit::parseValue(L"1,2,3", RT3DPOINT, point));
    EXPECT_EQ(variables().set(L"LIMMAX", point), VariableResult::ok);
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
    session.host().commands().addCommand(L"T", L"OUTER", L"dehors", ACRX_CMD_MODAL, runBody);
    session.host().commands().addCommand(L"T", L"INNER", nullptr, ACRX_CMD_TRANSPARENT, runBody);
    EXPECT_EQ(value(L"CMDNAMES").text, L"");
    EXPECT_EQ(value(L"CMDACTIVE").integer, 0);
    int runs = 0;
    body = [&] {
        if (runs++ == 0) {
            EXPECT_EQ(value(L"CMDNAMES").text, L"OUTER");
            EXPECT_EQ(value(L"CMDACTIVE").integer, 1);
            const auto again = body;
            session.host().run(L"INNER");
        } else {
            EXPECT_EQ(value(L"CMDNAMES").text, L"OUTER'INNER");
            EXPECT_EQ(value(L"CMDACTIVE").integer, 3);
        }
    };
    session.host().run(L"dehors");
    EXPECT_EQ(runs, 2);
    body = nullptr;
}

TEST_F(VariablesTest, SpacesGoByTilemodeAndViewport) {
    EXPECT_EQ(value(L"CVPORT").integer, 2);
    EXPECT_EQ(variables().set(L"CVPORT", integer(1)), VariableResult::outOfRange);
    EXPECT_EQ(session.host().run(L"MSPACE").status, Acad::eNotApplicable);
    EXPECT_EQ(variables().set(L"TILEMODE", integer(2)), VariableResult::outOfRange);
    EXPECT_EQ(variables().set(L"TILEMODE", integer(0)), VariableResult::ok);
    EXPECT_EQ(value(L"CVPORT").integer, 1);
    EXPECT_EQ(acedCommand(RTSTR, L"_MSPACE", 0), RTNORM);
    EXPECT_EQ(value(L"CVPORT").integer, 2);
    EXPECT_EQ(acedCommand(RTSTR, L"_PSPACE", 0), RTNORM);
    EXPECT_EQ(value(L"CVPORT").integer, 1);
    EXPECT_EQ(variables().set(L"CVPORT", integer(3)), VariableResult::ok);
    EXPECT_EQ(variables().set(L"TILEMODE", integer(1)), VariableResult::ok);
    EXPECT_EQ(variables().set(L"TILEMODE", integer(0)), VariableResult::ok);
    EXPECT_EQ(value(L"CVPORT").integer, 1) << "one comes to the sheet itself";
}

// A view from the front (along +y, onto the xz plane) in a coordinate system turned by a quarter about z.
TEST_F(VariablesTest, TheViewIsToldInTheUserCoordinateSystem) {
    AcDbViewportTable* table = nullptr;
    ASSERT_EQ(database().getSymbolTable(table, AcDb::kForWrite), Acad::eOk);
    AcDbObjectId id;
    AcDbViewportTableRecord* record = nullptr;
    if (table->getAt(L"*Active", record, AcDb::kForWrite) != Acad::eOk) {
        record = new AcDbViewportTableRecord;
        ASSERT_EQ(record->setName(L"*Active"), Acad::eOk);
        ASSERT_EQ(table->add(id, record), Acad::eOk);
    }
    hostkit::GroupBlock groups;
    const double middle[] = {7.0, 9.0}, direction[] = {0.0, -2.0, 0.0}, target[] = {100.0, 200.0, 300.0};
    groups.appendPoint(12, middle, 2);
    groups.appendPoint(16, direction);
    groups.appendPoint(17, target);
    groups.appendReal(40, 55.0);
    groups.appendReal(42, 35.0);
    groups.appendReal(43, 1.5);
    groups.appendReal(44, -2.5);
    groups.appendReal(51, 90.0);
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

    EXPECT_EQ(value(L"VIEWSIZE").reals[0], 55.0);
    EXPECT_EQ(value(L"LENSLENGTH").reals[0], 35.0);
    EXPECT_EQ(value(L"FRONTZ").reals[0], 1.5);
    EXPECT_EQ(value(L"BACKZ").reals[0], -2.5);
    EXPECT_EQ(value(L"VIEWMODE").integer, 5);
    EXPECT_NEAR(value(L"VIEWTWIST").reals[0], std::numbers::pi / 2.0, 1e-12);
    expectPoint(L"TARGET", 200.0, -90.0, 300.0);
    expectPoint(L"VIEWDIR", -2.0, 0.0, 0.0);
    // Seen from the front x goes right and z up; turned back by the twist, (7, 9) lies 9 right and 7 down.
    expectPoint(L"VIEWCTR", 200.0, -(100.0 + 9.0 - 10.0), 300.0 - 7.0);
    EXPECT_EQ(variables().set(L"TILEMODE", integer(0)), VariableResult::ok);
    expectPoint(L"VIEWDIR", 0.0, 0.0, 1.0);
}

TEST_F(VariablesTest, SettingsAreKeptForTheProductAndOthersAreNot) {
    EXPECT_EQ(variables().set(L"FILEDIA", integer(0)), VariableResult::ok) << "without a product's key";
    const auto inHost = [&](const std::function<void(hostkit::SystemVariables&)>& what) {
        hostkit::Host host(session.port());
        host.runtime().setProductKey(L"Software\\Maker\\Product");
        what(host.variables());
    };
    SystemValue found;
    inHost([&](hostkit::SystemVariables& fresh) {
        ASSERT_EQ(fresh.get(L"FILEDIA", found), VariableResult::ok);
        EXPECT_EQ(found.integer, 1) << "the other host's value is its own";
        EXPECT_EQ(fresh.set(L"FILEDIA", integer(0)), VariableResult::ok);
        EXPECT_EQ(fresh.set(L"CMDECHO", integer(0)), VariableResult::ok);
        EXPECT_EQ(fresh.get(L"LTSCALE", found), VariableResult::noDocument);
        EXPECT_EQ(fresh.set(L"TILEMODE", integer(0)), VariableResult::noDocument);
        EXPECT_EQ(fresh.get(L"PROJECTNAME", found), VariableResult::unknown);
    });
    inHost([&](hostkit::SystemVariables& fresh) {
        ASSERT_EQ(fresh.get(L"FILEDIA", found), VariableResult::ok);
        EXPECT_EQ(found.integer, 0);
        ASSERT_EQ(fresh.get(L"CMDECHO", found), VariableResult::ok);
        EXPECT_EQ(found.integer, 1);
    });
}

} // namespace

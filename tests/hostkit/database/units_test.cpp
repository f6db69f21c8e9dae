#include "acdbunits.h"

#include "dbapserv.h"
#include "dbdatabase.h"
#include "headervariables.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <string>

namespace {

std::wstring lengthOf(double value, int unit = -1, int precision = -1) {
    wchar_t text[hostkit::kNumberTextRoom] = L"untouched";
    return acdbRToS(value, unit, precision, text) == RTNORM ? text : L"failed, " + std::wstring(text);
}

std::wstring angleOf(double degrees, int unit = -1, int precision = -1) {
    wchar_t text[hostkit::kNumberTextRoom] = L"untouched";
    const int status = acdbAngToS(degrees / 180.0 * std::numbers::pi, unit, precision, text);
    return status == RTNORM ? text : L"failed, " + std::wstring(text);
}

class Units : public ::testing::Test {
protected:
    Units() { m_services.setWorkingDatabase(&m_database); }
    hostkit::HeaderVariables& header() { return m_database.header(); }

private:
    AcDbDatabase m_database;
    AcDbHostApplicationServices m_services;
    hostkit::ScopedDatabaseServices m_current{m_services};
};

TEST_F(Units, TheDrawingSaysWhatIsNotAskedFor) {
    EXPECT_EQ(lengthOf(15.5), L"15.5000");
    header().setInteger(L"LUNITS", 4);
    header().setInteger(L"LUPREC", 1);
    EXPECT_EQ(lengthOf(15.5), L"1'-3 1/2\"");
    EXPECT_EQ(lengthOf(15.5, 2), L"15.5");
    header().setInteger(L"UNITMODE", 1);
    EXPECT_EQ(lengthOf(15.5), L"1'3-1/2\"");
    header().setInteger(L"DIMZIN", 12);
    EXPECT_EQ(lengthOf(0.25, 2, 4), L".25");
    header().setInteger(L"AUNITS", 4);
    header().setInteger(L"AUPREC", 2);
    EXPECT_EQ(angleOf(45.5), L"N44d30'E");
    header().setInteger(L"UNITMODE", 0);
    EXPECT_EQ(angleOf(45.5), L"N 44d30' E");
    EXPECT_EQ(angleOf(45.5, 0, 4), L"45.5");
}

TEST_F(Units, DirectionsCountFromTheBase) {
    EXPECT_EQ(angleOf(-30.0, 0, 0), L"330");
    EXPECT_EQ(angleOf(359.9999, 0, 2), L"0.00");
    EXPECT_EQ(angleOf(359.9999, 1, 3), L"0d0'0\"");
    header().setReal(L"ANGBASE", std::numbers::pi / 2);
    EXPECT_EQ(angleOf(90.0, 0, 0), L"0");
    header().setInteger(L"ANGDIR", 1);
    EXPECT_EQ(angleOf(60.0, 0, 0), L"30");
    EXPECT_EQ(angleOf(60.0, 4, 0), L"N 30d E");
    for (int unit = 0; unit <= 4; ++unit)
        for (double degrees = 0.0; degrees < 360.0; degrees += 7.5) {
            double back = -1.0;
            ASSERT_EQ(acdbAngToF(angleOf(degrees, unit, 8).c_str(), unit, &back), RTNORM);
            EXPECT_NEAR(std::remainder(back * 180.0 / std::numbers::pi - degrees, 360.0), 0.0, 1e-6);
        }
}

TEST_F(Units, WhatIsNoneFailsAndWritesNothing) {
    for (const auto& [unit, precision] : {std::pair(0, 2), {6, 2}, {-2, 2}, {2, 9}, {2, -2}})
        EXPECT_EQ(lengthOf(1.0, unit, precision), L"failed, untouched");
    for (const auto& [unit, precision] : {std::pair(5, 2), {-2, 2}, {0, 9}})
        EXPECT_EQ(angleOf(1.0, unit, precision), L"failed, untouched");
    EXPECT_EQ(lengthOf(std::nan(""), 2, 2), L"failed, untouched");
    EXPECT_EQ(angleOf(std::nan(""), 0, 2), L"failed, untouched");
    EXPECT_EQ(lengthOf(1e132, 2, 0), L"failed, untouched");
    EXPECT_EQ(lengthOf(1e130, 2, 0).size(), hostkit::kNumberTextRoom - 1);
    EXPECT_EQ(lengthOf(1e308, 1, 0), L"1E+308");
    double value = 5.0;
    EXPECT_EQ(acdbRToS(1.0, 2, 2, nullptr), RTERROR);
    EXPECT_EQ(acdbDisToF(nullptr, 2, &value), RTERROR);
    EXPECT_EQ(acdbDisToF(L"1", 2, nullptr), RTERROR);
    EXPECT_EQ(acdbDisToF(L"1'3", 2, &value), RTERROR);
    EXPECT_EQ(acdbAngToF(L"", 0, &value), RTERROR);
    EXPECT_EQ(value, 5.0);
    header().setInteger(L"LUNITS", 4);
    EXPECT_EQ(acdbDisToF(L"1'3", -1, &value), RTNORM);
    EXPECT_EQ(value, 15.0);
}

} // namespace

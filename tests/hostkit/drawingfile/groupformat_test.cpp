#include "drawingversion.h"
#include "groupformat.h"
#include "groupscanner.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>

using namespace hostkit;

TEST(GroupFormat, realsReadBackToTheSameDouble) {
    std::mt19937_64 random(11);
    std::vector<double> values = {
        0.0, -0.0, 1.0, -1.5, 0.1, 1e20, 1e-20, 123456789.123456789, 5e-324, 1.7976931348623157e308};
    while (values.size() < 20000) {
        const double value = std::bit_cast<double>(random());
        if (std::isfinite(value)) values.push_back(value);
    }
    for (const double value : values) {
        std::string bytes;
        appendReal(value, bytes);
        ASSERT_TRUE(realFromText(bytes)) << bytes;
        EXPECT_EQ(std::bit_cast<std::uint64_t>(*realFromText(bytes)), std::bit_cast<std::uint64_t>(value))
            << bytes;
        EXPECT_NE(bytes.find('.'), std::string::npos) << bytes;
    }
}

TEST(GroupFormat, spellsGroupsAsReadersExpectThem) {
    DrawingStyle style;
    style.newline = "\n";
    std::string bytes;
    appendText(0, L"LINE", style, bytes);
    appendHandle(5, 0x1AF, style, bytes);
    appendReal(10, 1, style, bytes);
    appendReal(40, 1e20, style, bytes);
    appendInteger(370, -1, style, bytes);
    EXPECT_EQ(bytes, "  0\nLINE\n  5\n1AF\n 10\n1.0\n 40\n1.0e+20\n370\n-1\n");
}

TEST(DrawingVersion, knowsOlderAndLaterForms) {
    EXPECT_EQ(versionFromName("AC1015"), DrawingVersion::k2000);
    EXPECT_EQ(versionFromName("AC1006"), DrawingVersion::kR12);
    EXPECT_EQ(versionFromName("AC1025"), DrawingVersion::k2010);
    EXPECT_EQ(versionFromName("AC1099"), DrawingVersion::k2018);
    for (const char* text : {"", "AC10", "AC10155", "DC1015", "AC10x5"})
        EXPECT_FALSE(versionFromName(text)) << text;
    for (const DrawingVersion version : {DrawingVersion::kR12, DrawingVersion::kR14, DrawingVersion::k2018})
        EXPECT_EQ(versionFromName(nameOfVersion(version)), version);
}

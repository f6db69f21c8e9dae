#include "drawingfiles.h"
#include "drawinglisting.h"
#include "drawingparts.h"
#include "sampledrawing.h"

#include <fstream>

using namespace hostkit;
using namespace drawingtest;

namespace {

// Without handles: those of ends of sequences are given anew by each save.
std::string listingOf(const AcDbDatabase& database) {
    DrawingListing listing = listDrawing(database);
    listing.version.clear();
    return listingAsJson(listing);
}

} // namespace

TEST(NewDrawing, comesBackFromEveryForm) {
    for (const DrawingVersion version :
         {DrawingVersion::kR12, DrawingVersion::k2000, DrawingVersion::k2004, DrawingVersion::k2007,
          DrawingVersion::k2010, DrawingVersion::k2013, DrawingVersion::k2018}) {
        SCOPED_TRACE(nameOfVersion(version));
        const auto database = sampleDrawing(version == DrawingVersion::kR12 ? Kinds::kOfR12 : Kinds::kAll);
        const std::string bytes = saved(*database, version);
        ReadReport report;
        const auto again = openDrawingFromMemory(bytes, L"again", &report);
        ASSERT_TRUE(again) << narrow(report.fatalMessage());
        EXPECT_EQ(report.problemCount, 0u);
        EXPECT_EQ(report.version, version);
        EXPECT_EQ(again->numOpenObjects(), 0);
        std::string expected = listingOf(*database);
        const std::string layer = "B\xC3\xA9ton \xE4\xB8\xAD"; // R12 has no such name
        if (version == DrawingVersion::kR12) expected.replace(expected.find(layer), layer.size(), "Beton__");
        EXPECT_EQ(listingOf(*again), expected);
        EXPECT_TRUE(saved(*again) == bytes) << "a second save of the same is the same to the byte";
        if (const char* const folder = std::getenv("VEXO_KEEP_DRAWINGS"))
            std::ofstream(std::string(folder) + "/" + std::string(nameOfVersion(version)) + ".dxf",
                          std::ios::binary)
                << bytes;
    }
}

TEST(NewDrawing, goesFromFormToForm) {
    const auto database = sampleDrawing();
    const auto first = openDrawingFromMemory(saved(*database, DrawingVersion::k2000), L"2000");
    ASSERT_TRUE(first);
    const auto second = openDrawingFromMemory(saved(*first, DrawingVersion::k2018), L"2018");
    ASSERT_TRUE(second);
    EXPECT_EQ(listingOf(*second), listingOf(*database));
}

TEST(NewDrawing, listsWhatItHolds) {
    const auto database = sampleDrawing();
    const DrawingListing listing = listDrawing(*database);
    const auto find = [&](std::wstring_view type) {
        for (const ListedEntity& entity : listing.entities)
            if (entity.type == type) return entity;
        ADD_FAILURE() << "none listed";
        return ListedEntity();
    };
    using Vertices = std::vector<std::array<double, 4>>;
    EXPECT_EQ(find(L"LWPOLYLINE").vertices,
              (Vertices{{0, 0, 3.5, 0.5}, {100, 0, 3.5, 0}, {100, 100, 3.5, 0}}));
    EXPECT_EQ(find(L"POLYLINE").vertices[1][3], 0.5);
    EXPECT_EQ(find(L"ATTRIB").text, L"C^1\n2");
    EXPECT_EQ(find(L"ATTRIB").name, L"NUMBER");
    EXPECT_EQ(find(L"INSERT").name, L"Column");
    EXPECT_EQ(find(L"HATCH").paths, 1u);
    EXPECT_EQ(find(L"MTEXT").text, std::wstring(300, L'a') + L"\\P{\\fArial;b}");
    EXPECT_EQ(listing.entities.back().space, L"Column");
    const std::string json = listingAsJson(listing);
    EXPECT_NE(json.find(R"("text":"C^1\u000a2")"), std::string::npos);
    EXPECT_NE(
        json.find(
            R"("xdata":{"ORDANE":[[1000,"KEY"],[1070,-5],[1071,123456],[1040,2.5],[1010,[1.5,2.5,3.5]]]})"),
        std::string::npos);
}

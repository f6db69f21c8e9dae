// Writes the example drawings: makedrawings FOLDER. They are committed; this program is how they came to be.
#include "sheet.h"

#include <cmath>
#include <cstdio>
#include <exception>
#include <numbers>

namespace {

constexpr double quarterBulge = 0.41421356237309503;
constexpr double pi = std::numbers::pi;

// The layers of a formwork plan, colours by the habits of the trade.
void addLayers(Sheet& sheet) {
    sheet.addLayer(L"COFFRAGE", 3, L"Continuous", 50);
    sheet.addLayer(L"TREMIES", 1, L"Continuous", 35);
    sheet.addLayer(L"POTEAUX", 5, L"Continuous", 35);
    sheet.addLayer(L"VOILES", 8);
    sheet.addLayer(L"AXES", 9, L"AXIS");
    sheet.addLayer(L"COTATIONS", 4);
    sheet.addLayer(L"TEXTES", 7);
    sheet.addLayer(L"CARTOUCHE", 7, L"Continuous", 50);
    sheet.addLayer(L"CACHE", 6, L"HIDDEN");
}

void drawTitleBlock(Sheet& sheet, double right, double bottom, const std::wstring& title,
                    const std::wstring& number) {
    constexpr double width = 10000.0;
    constexpr double height = 3000.0;
    const double left = right - width;
    sheet.useLayer(L"CARTOUCHE");
    sheet.rectangle(left, bottom, width, height);
    sheet.line(left, bottom + 1000, right, bottom + 1000);
    sheet.line(left + 7000, bottom, left + 7000, bottom + 1000);
    sheet.useLayer(L"TEXTES");
    sheet.paragraphs(left + 300, bottom + 2700, 420, 9400, title);
    sheet.text(left + 300, bottom + 350, 300, L"\u00C9chelle 1:100 \u2013 cotes en mm");
    sheet.text(left + 8500, bottom + 350, 300, number, AcDb::kTextCenter);
}

AcDbObjectId makeBubble(Sheet& sheet) {
    const AcDbObjectId bubble = sheet.beginBlock(L"BULLE_AXE");
    sheet.useLayer(L"0");
    sheet.useLinetype(L"Continuous");
    sheet.circle(0, 0, 450);
    sheet.useLinetype(L"ByLayer");
    sheet.attributeDefinition(L"AXE", L"Nom de l'axe", 400);
    sheet.endBlock();
    return bubble;
}

void drawAxes(Sheet& sheet, const std::vector<double>& xs, const std::vector<double>& ys, double width,
              double height) {
    const AcDbObjectId bubble = makeBubble(sheet);
    sheet.useLayer(L"AXES");
    wchar_t letter = L'A';
    for (const double x : xs) {
        sheet.line(x, -5200, x, height + 1000);
        sheet.insertLabelled(bubble, x, height + 1450, L"AXE", std::wstring(1, letter++), 400);
    }
    int number = 1;
    for (const double y : ys) {
        sheet.line(-5200, y, width + 1000, y);
        sheet.insertLabelled(bubble, width + 1450, y, L"AXE", std::to_wstring(number++), 400);
    }
}

void dimensionChain(Sheet& sheet, const std::vector<double>& stations, double start, double line,
                    bool isUpright) {
    sheet.useLayer(L"COTATIONS");
    for (std::size_t i = 0; i + 1 < stations.size(); ++i)
        sheet.dimension(stations[i], stations[i + 1], start, line, isUpright, 300);
}

void drawColumn(Sheet& sheet, double x, double y, double size) {
    const std::vector<Corner> corners = rectangleCorners(x - size / 2, y - size / 2, size, size);
    sheet.useLayer(L"POTEAUX");
    sheet.contour(corners);
    sheet.solidHatch({corners});
}

void crossOut(Sheet& sheet, double x, double y, double width, double height) {
    sheet.line(x, y, x + width, y + height);
    sheet.line(x, y + height, x + width, y);
}

// A floor with straight, round and rounded openings; two of them reach over the edge.
void drawFloorOpenings(Sheet& sheet) {
    sheet.useLayer(L"TREMIES");
    sheet.rectangle(7500, 6000, 2600, 5000);
    crossOut(sheet, 7500, 6000, 2600, 5000);
    sheet.contour(roundedCorners(13200, 9500, 2000, 2000, 200));
    crossOut(sheet, 13200, 9500, 2000, 2000);
    sheet.circle(15500, 2800, 450);
    sheet.oldContour(roundedCorners(2000, 6500, 600, 2400, 300));
    sheet.rectangle(20000, -300, 1500, 900);
    sheet.circle(24000, 6700, 600);
    sheet.useLayer(L"TEXTES");
    sheet.text(8800, 5350, 250, L"T1 260x500", AcDb::kTextCenter);
    sheet.text(14200, 9000, 250, L"T2 200x200 r20", AcDb::kTextCenter);
    sheet.text(16100, 2700, 250, L"T3 %%c900");
    sheet.text(1800, 7700, 250, L"T4 60x240", AcDb::kTextCenter, AcDb::kTextBase, pi / 2);
    sheet.text(20750, 800, 250, L"T5 150x90", AcDb::kTextCenter);
    sheet.text(23250, 6600, 250, L"T6 %%c1200", AcDb::kTextRight);
}

void makeFloor(const std::string& file) {
    Sheet sheet;
    addLayers(sheet);
    sheet.useLayer(L"COFFRAGE");
    sheet.contour({{0, 0},
                   {24000, 0},
                   {24000, 9000},
                   {18000, 9000},
                   {18000, 15000},
                   {3000, 15000, quarterBulge},
                   {0, 12000}});
    drawFloorOpenings(sheet);
    const std::vector<Corner> wallOutside = rectangleCorners(7300, 5800, 3000, 5400);
    sheet.useLayer(L"VOILES");
    sheet.contour(wallOutside);
    sheet.lineHatch({wallOutside, rectangleCorners(7500, 6000, 2600, 5000)}, 70);

    const std::vector<double> xs = {300, 6300, 12300, 17700, 23700};
    const std::vector<double> ys = {300, 4700, 8700, 14700};
    drawAxes(sheet, xs, ys, 24000, 15000);
    for (const double x : xs)
        for (const double y : ys) {
            const bool isOutside = (x > 18000 && y > 9000) || (x < 1000 && y > 12000);
            if (!isOutside) drawColumn(sheet, x, y, 400);
        }
    dimensionChain(sheet, xs, 0, -2500, false);
    dimensionChain(sheet, {0, 18000, 24000}, 0, -3700, false);
    dimensionChain(sheet, ys, 0, -2500, true);
    dimensionChain(sheet, {0, 12000, 15000}, 0, -3700, true);

    sheet.useLayer(L"TEXTES");
    sheet.paragraphs(
        2600, 3600, 350, 7000,
        L"{\\H1.3x;DALLE D1}\\P\u00C9paisseur 250 \u2013 b\u00E9ton C30/37\\PEnrobage 30 %%p5 mm");
    sheet.paragraphs(
        19000, 14700, 300, 8000,
        L"{\\LL\u00E9gende}\\PContour de coffrage : vert\\PTr\u00E9mies : rouge\\PPoteaux 40x40 : bleu");
    sheet.useLayer(L"CARTOUCHE");
    sheet.rectangle(-6500, -8500, 34500, 26500);
    drawTitleBlock(sheet, 27500, -8000, L"PLANCHER HAUT DU REZ\\PPlan de coffrage", L"D1-01");
    sheet.save(file);
}

// One of four shapes in turn, about its middle.
void drawDuct(Sheet& sheet, int number, double x, double y) {
    sheet.useLayer(L"TREMIES");
    switch (number % 4) {
    case 0:
        sheet.rectangle(x - 350, y - 250, 700, 500);
        break;
    case 1:
        sheet.circle(x, y, 280);
        break;
    case 2:
        sheet.contour(roundedCorners(x - 450, y - 200, 900, 400, 200));
        break;
    default:
        sheet.oldContour(
            {{x - 300, y - 250}, {x + 300, y - 250, 1.0}, {x + 300, y + 250}, {x - 300, y + 250, 1.0}});
        break;
    }
    sheet.useLayer(L"TEXTES");
    sheet.text(x, y, 150, L"R" + std::to_wstring(number + 1), AcDb::kTextCenter, AcDb::kTextVertMid);
}

// A plate with round ends, a re-entrant corner and a hundred ducts.
void makeDuctPlate(const std::string& file) {
    Sheet sheet;
    addLayers(sheet);
    sheet.useLayer(L"COFFRAGE");
    sheet.contour({{0, 0},
                   {30000, 0, 1.0},
                   {30000, 12000},
                   {13500, 12000, -quarterBulge},
                   {12000, 13500},
                   {12000, 20000},
                   {4000, 20000, quarterBulge},
                   {0, 16000}});
    for (int number = 0; number < 100; ++number)
        drawDuct(sheet, number, 1800 + 2900.0 * (number % 10), 900 + 1120.0 * (number / 10));
    sheet.useLayer(L"CACHE");
    sheet.rectangle(1000, 13500, 10000, 5500);
    sheet.useLayer(L"VOILES");
    sheet.lineHatch({roundedCorners(2500, 14500, 7000, 3500, 500)}, 250);
    sheet.useLayer(L"TREMIES");
    sheet.contour(roundedCorners(2500, 14500, 7000, 3500, 500));
    dimensionChain(sheet, {0, 12000, 30000, 36000}, 0, -1800, false);
    dimensionChain(sheet, {0, 12000, 20000}, 0, -1800, true);
    sheet.useLayer(L"TEXTES");
    sheet.paragraphs(13500, 18500, 400, 12000,
                     L"{\\H1.4x;DALLE D2}\\P100 r\u00E9servations R1 \u00E0 R100\\P\u00C9paisseur 300, rayon "
                     L"d'about 6000, cong\u00E9 rentrant R1500");
    sheet.useLayer(L"CARTOUCHE");
    sheet.rectangle(-4000, -8500, 42500, 31000);
    drawTitleBlock(sheet, 38000, -8000, L"DALLE TECHNIQUE\\PPlan des r\u00E9servations", L"D2-01");
    sheet.save(file);
}

// A balcony in its own coordinates, fixed along y = 0: what stands on layer 0 takes the reference's layer.
AcDbObjectId makeBalcony(Sheet& sheet) {
    const AcDbObjectId block = sheet.beginBlock(L"BALCON");
    sheet.useLayer(L"0");
    sheet.contour({{0, 0},
                   {4000, 0},
                   {4000, -1200, -quarterBulge},
                   {3600, -1600},
                   {400, -1600, -quarterBulge},
                   {0, -1200}});
    sheet.useLayer(L"TREMIES");
    sheet.circle(3500, -400, 100);
    sheet.useLayer(L"CACHE");
    sheet.line(0, -200, 4000, -200);
    sheet.useLayer(L"TEXTES");
    sheet.text(300, -900, 250, L"Balcon ép. 180");
    sheet.endBlock();
    return block;
}

// Blocks in blocks, mirrored, turned, raised, in rows and columns, and stretched.
void makeBalconies(const std::string& file) {
    Sheet sheet;
    addLayers(sheet);
    const AcDbObjectId balcony = makeBalcony(sheet);
    const AcDbObjectId bay = sheet.beginBlock(L"TRAVEE");
    sheet.useLayer(L"COFFRAGE");
    sheet.rectangle(0, 0, 9600, 6000);
    sheet.insert(balcony, 400, 0);
    sheet.insert(balcony, 9200, 0, -1.0);
    sheet.useLayer(L"TREMIES");
    sheet.oldContour(roundedCorners(4200, 3500, 1200, 1200, 150));
    sheet.endBlock();
    const AcDbObjectId duct = sheet.beginBlock(L"RESERVATION");
    sheet.useLayer(L"0");
    sheet.rectangle(-150, -150, 300, 300);
    sheet.circle(0, 0, 60);
    sheet.endBlock();

    sheet.useLayer(L"COFFRAGE");
    sheet.insert(bay, 0, 0);
    sheet.insert(bay, 9600, 0, 1.0, 1.0, 0.0, 2800.0);
    sheet.insert(bay, 28800, 0, -1.0);
    sheet.contour({{0, 6000},
                   {28800, 6000},
                   {28800, 9000, quarterBulge},
                   {26800, 11000},
                   {2000, 11000, quarterBulge},
                   {0, 9000}},
                  2800.0);
    sheet.insert(balcony, 0, 10000, 1.25, 1.0, -pi / 2);
    sheet.useLayer(L"TREMIES");
    sheet.insertArray(duct, 4000, 7500, 2, 12, 1500, 1800);
    sheet.useLayer(L"TEXTES");
    sheet.text(14400, 10200, 400, L"DALLE D3 \u2013 niveau +2.80", AcDb::kTextCenter);
    dimensionChain(sheet, {0, 9600, 19200, 28800}, 0, -3200, false);
    dimensionChain(sheet, {0, 6000, 11000}, 28800, 32000, true);
    sheet.useLayer(L"CARTOUCHE");
    sheet.rectangle(-4000, -9000, 38500, 22500);
    drawTitleBlock(sheet, 34000, -8500, L"\u00C9TAGE COURANT\\PBalcons et trav\u00E9es types", L"D3-01");
    sheet.save(file);
}

// Corners turned about the origin, then moved.
std::vector<Corner> placed(std::vector<Corner> corners, double angle, double x, double y) {
    for (Corner& corner : corners)
        corner = {x + corner.x * std::cos(angle) - corner.y * std::sin(angle),
                  y + corner.x * std::sin(angle) + corner.y * std::cos(angle), corner.bulge};
    return corners;
}

// Two slabs with a joint between them, set askew: a curved front, a court with an island in it, openings that
// overlap each other, that stand in both slabs, and on their edges.
void makePodium(const std::string& file) {
    constexpr double angle = pi / 6;
    Sheet sheet;
    addLayers(sheet);
    const auto put = [&](const std::vector<Corner>& corners) {
        sheet.contour(placed(corners, angle, 50000, 20000));
    };
    sheet.useLayer(L"COFFRAGE");
    put({{0, 0, 0.2}, {36000, 0}, {36000, 27000}, {20000, 27000}, {20000, 21000}, {0, 21000}});
    put({{36040, 0}, {52000, 0}, {52000, 15000, 0.3}, {46000, 27000}, {36040, 27000}});
    put(roundedCorners(13500, 9500, 3000, 3000, 1500)); // the island
    sheet.useLayer(L"TREMIES");
    put(roundedCorners(10000, 6000, 10000, 10000, 2000)); // the court
    put(rectangleCorners(24000, 8000, 5200, 2600));       // stairs, with the lift beside them
    put(rectangleCorners(28000, 9300, 2400, 2800));
    put(rectangleCorners(34500, 16000, 3100, 1800)); // over the joint
    put({{52000, 6000}, {52000, 8000, 1.0}});        // half round, its straight side on the edge
    put(rectangleCorners(2000, -2500, 1500, 4000));  // over the front
    put(rectangleCorners(22000, 25500, 900, 1500));  // its upper side on the edge
    for (int i = 0; i < 8; ++i) put(roundedCorners(40000 + 1300.0 * i, 21000, 600, 600, 300));
    for (int i = 0; i < 6; ++i) put(rectangleCorners(3000 + 1000.0 * i, 18000, 1000, 400)); // side by side
    sheet.useLayer(L"TEXTES");
    sheet.paragraphs(
        38000, 62000, 900, 24000,
        L"{\\H1.3x;DALLES D4 ET D5}\\Pjoint de 40, axes \u00E0 30%%d\\Pcour avec \u00EElot central");
    sheet.useLayer(L"CARTOUCHE");
    sheet.rectangle(34000, 9000, 72000, 60000);
    drawTitleBlock(sheet, 105500, 9500, L"SOCLE\\PPlan de coffrage", L"D4-01");
    sheet.save(file);
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("Usage: makedrawings FOLDER\n", stderr);
        return 2;
    }
    const std::string folder = arguments[1];
    try {
        makeFloor(folder + "/floor.dxf");
        makeDuctPlate(folder + "/ducts.dxf");
        makeBalconies(folder + "/balconies.dxf");
        makePodium(folder + "/podium.dxf");
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "makedrawings: %s\n", fault.what());
        return 1;
    }
    return 0;
}

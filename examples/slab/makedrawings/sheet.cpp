#include "sheet.h"

#include "db2dpolyline.h"
#include "dbarc.h"
#include "dbattdef.h"
#include "dbattribute.h"
#include "dbblockreference.h"
#include "dbblocktable.h"
#include "dbcircle.h"
#include "dbdim.h"
#include "dbhatch.h"
#include "dblayertable.h"
#include "dbline.h"
#include "dblinetypetable.h"
#include "dbminsert.h"
#include "dbobjptr.h"
#include "dbpolyline.h"
#include "dbsolid.h"
#include "drawingwriter.h"
#include "hatchloop.h"
#include "headervariables.h"
#include "textencoding.h"

#include <cmath>
#include <numbers>
#include <stdexcept>

namespace {

constexpr double quarterBulge = 0.41421356237309503; // tan(22.5 degrees): a quarter of a circle
constexpr int millimetres = 4;

void check(Acad::ErrorStatus status, const char* what) {
    if (status == Acad::eOk) return;
    throw std::runtime_error(std::string(what) + ": " + hostkit::utf8FromWide(acadErrorStatusText(status)));
}

} // namespace

Sheet::Sheet()
    : m_database(std::make_unique<AcDbDatabase>(true, true)) {
    m_layer = m_database->layerZero();
    m_linetype = m_database->byLayerLinetype();
    m_block = m_database->modelSpaceId();
    check(m_database->setInsunits(millimetres), "the unit");
    m_database->header().setInteger(L"LUPREC", 2);
    m_database->header().setReal(L"LTSCALE", 1.0);
    addLinetype(L"AXIS", L"Dash dot ____ . ____ . ____", {600.0, -100.0, 0.0, -100.0});
    addLinetype(L"HIDDEN", L"Hidden __ __ __ __", {200.0, -100.0});
}

void Sheet::addLinetype(const wchar_t* name, const wchar_t* description, const std::vector<double>& dashes) {
    const AcDbSymbolTablePointer<AcDbLinetypeTable> table(m_database.get(), AcDb::kForWrite);
    auto* record = new AcDbLinetypeTableRecord;
    record->setName(name);
    record->setComments(description);
    record->setNumDashes(static_cast<int>(dashes.size()));
    double length = 0.0;
    for (std::size_t i = 0; i < dashes.size(); ++i) {
        record->setDashLengthAt(static_cast<int>(i), dashes[i]);
        length += std::abs(dashes[i]);
    }
    record->setPatternLength(length);
    check(table->add(record), "a linetype");
    record->close();
}

void Sheet::addLayer(const wchar_t* name, int color, const wchar_t* linetype, int lineweight) {
    const AcDbSymbolTablePointer<AcDbLinetypeTable> linetypes(m_database.get(), AcDb::kForRead);
    const AcDbSymbolTablePointer<AcDbLayerTable> table(m_database.get(), AcDb::kForWrite);
    auto* record = new AcDbLayerTableRecord;
    record->setName(name);
    AcCmColor index;
    index.setColorIndex(static_cast<Adesk::UInt16>(color));
    record->setColor(index);
    record->setLinetypeObjectId(linetypes->find(linetype));
    record->setLineWeight(static_cast<AcDb::LineWeight>(lineweight));
    check(table->add(record), "a layer");
    record->close();
}

void Sheet::useLayer(const wchar_t* name) {
    const AcDbSymbolTablePointer<AcDbLayerTable> table(m_database.get(), AcDb::kForRead);
    check(table->getAt(name, m_layer), "a layer's name");
}

void Sheet::useLinetype(const wchar_t* name) {
    const AcDbSymbolTablePointer<AcDbLinetypeTable> table(m_database.get(), AcDb::kForRead);
    check(table->getAt(name, m_linetype), "a linetype's name");
}

AcDbObjectId Sheet::beginBlock(const wchar_t* name) {
    const AcDbSymbolTablePointer<AcDbBlockTable> table(m_database.get(), AcDb::kForWrite);
    auto* record = new AcDbBlockTableRecord;
    record->setName(name);
    check(table->add(m_block, record), "a block");
    record->close();
    return m_block;
}

void Sheet::endBlock() { m_block = m_database->modelSpaceId(); }

AcDbObjectId Sheet::add(AcDbEntity* entity) {
    std::unique_ptr<AcDbEntity> owned(entity);
    entity->setDatabaseDefaults(m_database.get());
    check(entity->setLayer(m_layer), "an entity's layer");
    check(entity->setLinetype(m_linetype), "an entity's linetype");
    const AcDbObjectPointer<AcDbBlockTableRecord> block(m_block, AcDb::kForWrite);
    AcDbObjectId id;
    check(block->appendAcDbEntity(id, entity), "an entity");
    (void)owned.release(); // the block has it now
    entity->close();
    return id;
}

void Sheet::line(double x1, double y1, double x2, double y2) {
    add(new AcDbLine(AcGePoint3d(x1, y1, 0.0), AcGePoint3d(x2, y2, 0.0)));
}

void Sheet::circle(double x, double y, double radius) {
    add(new AcDbCircle(AcGePoint3d(x, y, 0.0), AcGeVector3d::kZAxis, radius));
}

void Sheet::arc(double x, double y, double radius, double startAngle, double endAngle) {
    add(new AcDbArc(AcGePoint3d(x, y, 0.0), radius, startAngle, endAngle));
}

void Sheet::contour(const std::vector<Corner>& corners, double elevation) {
    auto* polyline = new AcDbPolyline(static_cast<unsigned>(corners.size()));
    for (const Corner& corner : corners)
        polyline->addVertexAt(polyline->numVerts(), AcGePoint2d(corner.x, corner.y), corner.bulge);
    polyline->setClosed(true);
    polyline->setElevation(elevation);
    add(polyline);
}

void Sheet::oldContour(const std::vector<Corner>& corners) {
    AcGePoint3dArray points;
    AcGeDoubleArray bulges;
    for (const Corner& corner : corners) {
        points.append(AcGePoint3d(corner.x, corner.y, 0.0));
        bulges.append(corner.bulge);
    }
    add(new AcDb2dPolyline(AcDb::k2dSimplePoly, points, 0.0, true, 0.0, 0.0, &bulges));
}

void Sheet::rectangle(double x, double y, double width, double height) {
    contour(rectangleCorners(x, y, width, height));
}

void Sheet::text(double x, double y, double height, const std::wstring& wording, AcDb::TextHorzMode across,
                 AcDb::TextVertMode upwards, double rotation) {
    auto* text = new AcDbText(AcGePoint3d(x, y, 0.0), wording.c_str(), m_database->textStyleStandard(),
                              height, rotation);
    text->setHorizontalMode(across);
    text->setVerticalMode(upwards);
    if (!text->isDefaultAlignment()) text->setAlignmentPoint(AcGePoint3d(x, y, 0.0));
    add(text);
}

void Sheet::paragraphs(double x, double y, double height, double width, const std::wstring& contents,
                       AcDbMText::AttachmentPoint attachment) {
    auto* text = new AcDbMText;
    text->setLocation(AcGePoint3d(x, y, 0.0));
    text->setTextHeight(height);
    text->setWidth(width);
    text->setAttachment(attachment);
    text->setTextStyle(m_database->textStyleStandard());
    text->setContents(contents.c_str());
    add(text);
}

void Sheet::hatch(const std::vector<std::vector<Corner>>& loops, double spacing) {
    auto* hatch = new AcDbHatch;
    if (spacing > 0.0) {
        const double step = spacing / std::numbers::sqrt2;
        hatch->setPattern(AcDbHatch::kUserDefined, L"LINES45");
        hatch->setPatternDefinitions(
            {{std::numbers::pi / 4.0, AcGePoint2d(), AcGeVector2d(-step, step), {}}});
    } else {
        hatch->setPattern(AcDbHatch::kPreDefined, L"SOLID");
    }
    bool isFirst = true;
    for (const std::vector<Corner>& loop : loops) {
        AcGePoint2dArray vertices;
        AcGeDoubleArray bulges;
        for (const Corner& corner : loop) {
            vertices.append(AcGePoint2d(corner.x, corner.y));
            bulges.append(corner.bulge);
        }
        const int type = AcDbHatch::kPolyline | (isFirst ? AcDbHatch::kExternal : AcDbHatch::kDefault);
        check(hatch->appendLoop(type, vertices, bulges), "a hatch loop");
        isFirst = false;
    }
    add(hatch);
}

void Sheet::solidHatch(const std::vector<std::vector<Corner>>& loops) { hatch(loops, 0.0); }
void Sheet::lineHatch(const std::vector<std::vector<Corner>>& loops, double spacing) {
    hatch(loops, spacing);
}

AcDbObjectId Sheet::insert(AcDbObjectId block, double x, double y, double scaleX, double scaleY,
                           double rotation, double elevation) {
    auto* reference = new AcDbBlockReference(AcGePoint3d(x, y, elevation), block);
    check(reference->setScaleFactors(AcGeScale3d(scaleX, scaleY, 1.0)), "a scale");
    reference->setRotation(rotation);
    return add(reference);
}

namespace {

void placeInMiddle(AcDbText& text, double x, double y, double height, AcDbObjectId style) {
    text.setHeight(height);
    text.setTextStyle(style);
    text.setPosition(AcGePoint3d(x, y, 0.0));
    text.setHorizontalMode(AcDb::kTextCenter);
    text.setVerticalMode(AcDb::kTextVertMid);
    text.setAlignmentPoint(AcGePoint3d(x, y, 0.0));
}

} // namespace

void Sheet::insertLabelled(AcDbObjectId block, double x, double y, const wchar_t* tag,
                           const std::wstring& value, double height) {
    auto* attribute = new AcDbAttribute;
    placeInMiddle(*attribute, x, y, height, m_database->textStyleStandard());
    attribute->setTag(tag);
    attribute->setTextString(value.c_str());
    attribute->setDatabaseDefaults(m_database.get());
    attribute->setLayer(m_layer);
    auto* reference = new AcDbBlockReference(AcGePoint3d(x, y, 0.0), block);
    check(reference->appendAttribute(attribute), "an attribute");
    add(reference);
}

void Sheet::attributeDefinition(const wchar_t* tag, const wchar_t* prompt, double height) {
    auto* definition = new AcDbAttributeDefinition;
    placeInMiddle(*definition, 0.0, 0.0, height, m_database->textStyleStandard());
    definition->setTag(tag);
    definition->setPrompt(prompt);
    add(definition);
}

void Sheet::insertArray(AcDbObjectId block, double x, double y, int rows, int columns, double rowSpacing,
                        double columnSpacing, double rotation) {
    auto* reference = new AcDbMInsertBlock;
    check(reference->setBlockTableRecord(block), "a block");
    reference->setPosition(AcGePoint3d(x, y, 0.0));
    reference->setRotation(rotation);
    reference->setRows(static_cast<Adesk::UInt16>(rows));
    reference->setColumns(static_cast<Adesk::UInt16>(columns));
    reference->setRowSpacing(rowSpacing);
    reference->setColumnSpacing(columnSpacing);
    add(reference);
}

void Sheet::dimension(double from, double to, double start, double lineAt, bool isUpright,
                      double textHeight) {
    const auto at = [isUpright](double along, double across) {
        return isUpright ? AcGePoint3d(across, along, 0.0) : AcGePoint3d(along, across, 0.0);
    };
    const auto draw = [&](double along1, double across1, double along2, double across2) {
        add(new AcDbLine(at(along1, across1), at(along2, across2)));
    };
    const double gap = textHeight / 2.0;
    const double away = lineAt > start ? 1.0 : -1.0;
    const AcDbObjectId outer = m_block;
    const AcDbObjectId block = beginBlock(L"*D");
    draw(from, start + away * gap, from, lineAt + away * gap);
    draw(to, start + away * gap, to, lineAt + away * gap);
    draw(from - gap, lineAt, to + gap, lineAt);
    for (const double tick : {from, to})
        draw(tick - gap / 2, lineAt - gap / 2, tick + gap / 2, lineAt + gap / 2);
    const double middle = (from + to) / 2.0;
    // Read from below or from the right: the text stands above its line or to the left of it.
    const AcGePoint3d place = at(middle, lineAt + (isUpright ? -1.0 : 1.0) * textHeight * 0.4);
    text(place.x, place.y, textHeight, std::to_wstring(std::lround(std::abs(to - from))), AcDb::kTextCenter,
         AcDb::kTextBase, isUpright ? std::numbers::pi / 2.0 : 0.0);
    m_block = outer;

    auto* dimension = new AcDbDimension(AcDbDimension::kRotated);
    dimension->setPointOf(10, at(to, lineAt));
    dimension->setPointOf(13, at(from, start));
    dimension->setPointOf(14, at(to, start));
    dimension->setRotation(isUpright ? std::numbers::pi / 2.0 : 0.0);
    dimension->setTextPosition(place);
    dimension->setDimensionStyle(m_database->dimStyleStandard());
    dimension->setDimBlockId(block);
    add(dimension);
}

void Sheet::save(const std::string& file) {
    check(hostkit::writeDrawing(*m_database, hostkit::wideFromUtf8(file)), file.c_str());
}

std::vector<Corner> rectangleCorners(double x, double y, double width, double height) {
    return {{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}};
}

std::vector<Corner> roundedCorners(double x, double y, double width, double height, double radius) {
    const double r = radius;
    return {{x + r, y},
            {x + width - r, y, quarterBulge},
            {x + width, y + r},
            {x + width, y + height - r, quarterBulge},
            {x + width - r, y + height},
            {x + r, y + height, quarterBulge},
            {x, y + height - r},
            {x, y + r, quarterBulge}};
}

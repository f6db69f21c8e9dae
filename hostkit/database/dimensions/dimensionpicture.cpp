#include "dimensionpicture.h"

#include "blockholding.h"
#include "dbaccess.h"
#include "dbarc.h"
#include "dbblockreference.h"
#include "dblayertable.h"
#include "dbline.h"
#include "dbmtext.h"
#include "dbpoint.h"
#include "dbsolid.h"
#include "dbtextstyletablerecord.h"
#include "dimensionsizes.h"
#include "entitycoordinates.h"

namespace hostkit {

namespace {

/// Which variables give a piece its look.
struct Look {
    Adesk::Int16 color = AcCmEntityColor::kACIbyBlock;
    Adesk::Int16 weight = AcDb::kLnWtByLayer;
    AcDbObjectId linetype; ///< null: the dimension's
};

Look lookOf(PieceLook look, const DimensionVariables& variables) {
    switch (look) {
    case PieceLook::firstExtension:
        return {variables.dimclre, variables.dimlwe, variables.dimltex1};
    case PieceLook::secondExtension:
        return {variables.dimclre, variables.dimlwe, variables.dimltex2};
    case PieceLook::dimensionLine:
    case PieceLook::arcSymbol:
        return {variables.dimclrd, variables.dimlwd, variables.dimltype};
    case PieceLook::filledArrow:
        return {variables.dimclrd, AcDb::kLnWtByLayer, {}};
    case PieceLook::arrow:
        return {variables.dimclrd, variables.dimlwd, {}};
    case PieceLook::text:
        return {variables.dimclrt, AcDb::kLnWtByLayer, {}};
    case PieceLook::centreMark:
        return {variables.dimclre, variables.dimlwe, {}};
    case PieceLook::definition:
        break;
    }
    return {};
}

/// Makes the entities of one dimension.
class EntityMaker {
public:
    EntityMaker(const AcDbDimension& dimension, const DimensionPicture& picture, PieceUse use)
        : m_dimension(dimension)
        , m_picture(picture)
        , m_use(use)
        , m_normal(dimension.normal())
        , m_elevation(dimension.planePointOf(DimensionShape::firstPointCode).z) {}

    std::unique_ptr<AcDbEntity> make(const DimensionPiece& piece) const;

private:
    AcGePoint3d world(const AcGePoint2d& point) const {
        return toWorld(m_normal, AcGePoint3d(point.x, point.y, m_elevation));
    }
    std::unique_ptr<AcDbEntity> makeForm(const DimensionPiece& piece) const;
    std::unique_ptr<AcDbEntity> makeTriangle(const DimensionPiece& piece) const;
    std::unique_ptr<AcDbEntity> makeInsert(const DimensionPiece& piece) const;
    std::unique_ptr<AcDbEntity> makeParagraph(const DimensionPiece& piece) const;
    void setGround(AcDbMText& text) const;
    std::unique_ptr<AcDbEntity> makePoint(const DimensionPiece& piece) const;
    void dress(AcDbEntity& entity, PieceLook look) const;
    AcDbObjectId definitionLayer() const;

    const AcDbDimension& m_dimension;
    const DimensionPicture& m_picture;
    PieceUse m_use;
    AcGeVector3d m_normal;
    double m_elevation;
};

std::unique_ptr<AcDbEntity> EntityMaker::makeTriangle(const DimensionPiece& piece) const {
    const AcGePoint2d* const at = piece.at;
    const double z = m_elevation;
    auto solid =
        std::make_unique<AcDbSolid>(AcGePoint3d(at[0].x, at[0].y, z), AcGePoint3d(at[1].x, at[1].y, z),
                                    AcGePoint3d(at[2].x, at[2].y, z), AcGePoint3d(at[2].x, at[2].y, z));
    if (isZAxis(m_normal)) return solid;
    (void)solid->setNormal(m_normal);
    const Adesk::UInt16 corners[] = {0, 1, 2, 2};
    for (Adesk::UInt16 i = 0; i < 4; ++i) (void)solid->setPointAt(i, world(at[corners[i]]));
    return solid;
}

std::unique_ptr<AcDbEntity> EntityMaker::makeInsert(const DimensionPiece& piece) const {
    auto insert = std::make_unique<AcDbBlockReference>(world(piece.at[0]), piece.block);
    (void)insert->setNormal(m_normal);
    (void)insert->setPosition(world(piece.at[0]));
    (void)insert->setScaleFactors({piece.size, piece.size, piece.size});
    (void)insert->setRotation(piece.startAngle);
    return insert;
}

std::unique_ptr<AcDbEntity> EntityMaker::makeParagraph(const DimensionPiece& piece) const {
    auto text = std::make_unique<AcDbMText>();
    (void)text->setNormal(m_normal);
    (void)text->setLocation(world(piece.at[0]));
    (void)text->setTextHeight(piece.size);
    (void)text->setAttachment(AcDbMText::kMiddleCenter);
    (void)text->setFlowDirection(AcDbMText::kLtoR);
    if (!m_picture.variables.dimtxsty.isNull()) (void)text->setTextStyle(m_picture.variables.dimtxsty);
    (void)text->setContents(m_picture.wording.contents.c_str());
    (void)text->setLineSpacingFactor(m_picture.wording.lineSpacing);
    setGround(*text);
    const AcGeVector2d along(std::cos(piece.startAngle), std::sin(piece.startAngle));
    constexpr double level = 1e-12;
    if (std::abs(along.y) > level || along.x < 0.0)
        (void)text->setDirection(toWorld(m_normal, AcGeVector3d(along.x, along.y, 0.0)));
    return text;
}

void EntityMaker::setGround(AcDbMText& text) const {
    constexpr int drawingGround = 1;
    constexpr double groundScale = 1.25;
    const DimensionVariables& variables = m_picture.variables;
    if (variables.dimtfill == 0) return;
    AcCmColor color;
    (void)color.setColorIndex(static_cast<Adesk::UInt16>(variables.dimtfillclr));
    (void)text.setBackgroundFillColor(color);
    (void)text.setUseBackgroundColor(variables.dimtfill == drawingGround);
    (void)text.setBackgroundScaleFactor(groundScale);
}

// Each stands where the dimension has it, whatever its height above the plane.
std::unique_ptr<AcDbEntity> EntityMaker::makePoint(const DimensionPiece& piece) const {
    const double height = m_dimension.planePointOf(piece.code).z;
    auto point =
        std::make_unique<AcDbPoint>(toWorld(m_normal, AcGePoint3d(piece.at[0].x, piece.at[0].y, height)));
    (void)point->setNormal(m_normal);
    return point;
}

std::unique_ptr<AcDbEntity> EntityMaker::makeForm(const DimensionPiece& piece) const {
    switch (piece.form) {
    case DimensionPiece::Form::line: {
        auto line = std::make_unique<AcDbLine>(world(piece.at[0]), world(piece.at[1]));
        (void)line->setNormal(m_normal);
        return line;
    }
    case DimensionPiece::Form::arc:
        return std::make_unique<AcDbArc>(world(piece.at[0]), m_normal, piece.size, piece.startAngle,
                                         piece.endAngle);
    case DimensionPiece::Form::triangle:
        return makeTriangle(piece);
    case DimensionPiece::Form::insert:
        return makeInsert(piece);
    case DimensionPiece::Form::paragraph:
        return makeParagraph(piece);
    case DimensionPiece::Form::point:
        return makePoint(piece);
    }
    return nullptr;
}

AcDbObjectId EntityMaker::definitionLayer() const {
    const AcDbDatabase* const database = m_dimension.database();
    const auto* layers =
        database ? DatabaseAccess::objectOf<AcDbLayerTable>(database->layerTableId()) : nullptr;
    return layers ? layers->find(definitionLayerName) : AcDbObjectId();
}

void EntityMaker::dress(AcDbEntity& entity, PieceLook piece) const {
    const Look look = lookOf(piece, m_picture.variables);
    AcDbObjectId layer = m_dimension.layerId();
    if (piece == PieceLook::definition)
        if (const AcDbObjectId definitions = definitionLayer(); !definitions.isNull()) layer = definitions;
    if (!layer.isNull()) (void)entity.setLayer(layer);
    const AcDbObjectId linetype = look.linetype.isNull() ? m_dimension.linetypeId() : look.linetype;
    if (!linetype.isNull()) (void)entity.setLinetype(linetype);
    (void)entity.setColorIndex(static_cast<Adesk::UInt16>(look.color));
    (void)entity.setLineWeight(static_cast<AcDb::LineWeight>(look.weight));
    (void)entity.setLinetypeScale(m_dimension.linetypeScale());
    if (m_use == PieceUse::loose) takeLookOfBlock(entity, m_dimension);
}

std::unique_ptr<AcDbEntity> EntityMaker::make(const DimensionPiece& piece) const {
    std::unique_ptr<AcDbEntity> entity = makeForm(piece);
    dress(*entity, piece.look);
    return entity;
}

double textHeightOf(const DimensionVariables& variables) {
    const auto* style = DatabaseAccess::objectOf<AcDbTextStyleTableRecord>(variables.dimtxsty);
    if (style && style->textSize() > 0.0) return style->textSize();
    return variables.dimtxt * variables.scale();
}

// A block that holds the one in which the dimension stands can be no arrow: the drawing would have a circle.
DimensionArrows arrowsOf(const AcDbDimension& dimension, const DimensionVariables& variables) {
    DimensionArrows arrows = dimensionArrows(variables);
    for (int end = 0; end < 2; ++end) {
        const AcDbObjectId block = arrows.blocks[end];
        if (!block.isNull() && (block.isErased() || holdsBlock(block, dimension.blockId())))
            arrows.blocks[end].setNull();
    }
    return arrows;
}

} // namespace

DimensionShape dimensionShape(const AcDbDimension& dimension) {
    DimensionShape shape;
    shape.kind = dimension.kindOfLayout();
    int code = DimensionShape::firstPointCode;
    for (AcGePoint2d& point : shape.points) {
        const AcGePoint3d given = dimension.planePointOf(code++);
        point.set(given.x, given.y);
    }
    shape.rotation = dimension.rotation();
    shape.oblique = dimension.oblique();
    shape.horizontal = -dimension.horizontalRotation();
    shape.textRotation = dimension.textRotation();
    shape.isTextPlaced = !dimension.isUsingDefaultTextPosition();
    shape.isOrdinateOfX = dimension.isOrdinateOfX();
    shape.isFlipped[0] = dimension.isFirstArrowFlipped();
    shape.isFlipped[1] = dimension.isSecondArrowFlipped();
    return shape;
}

bool layOutDimension(const AcDbDimension& dimension, DimensionPicture& picture) {
    picture.variables = dimension.variables();
    picture.shape = dimensionShape(dimension);
    picture.measure = dimensionMeasure(picture.shape);
    if (!std::isfinite(picture.measure)) return false;
    picture.wording.contents =
        dimensionText(picture.variables, measureKindOf(picture.shape.kind), picture.measure,
                      dimension.userText(), dimension.isInPaperSpace());
    picture.wording.height = textHeightOf(picture.variables);
    if (!(picture.wording.height > 0.0)) picture.wording.contents.clear();
    if (!picture.wording.contents.empty())
        measureWording(picture.wording, picture.variables.dimtxsty,
                       DimensionSizes(picture.variables, picture.wording).lineGap());
    return layOutDimension(picture.shape, picture.variables, arrowsOf(dimension, picture.variables),
                           picture.wording, picture.layout);
}

std::vector<std::unique_ptr<AcDbEntity>> entitiesOf(const AcDbDimension& dimension,
                                                    const DimensionPicture& picture, PieceUse use) {
    const EntityMaker maker(dimension, picture, use);
    std::vector<std::unique_ptr<AcDbEntity>> entities;
    entities.reserve(picture.layout.pieces.size());
    for (const DimensionPiece& piece : picture.layout.pieces)
        if (use != PieceUse::plotted || piece.look != PieceLook::definition)
            entities.push_back(maker.make(piece));
    return entities;
}

void takeLookOfBlock(AcDbEntity& entity, const AcDbEntity& user) {
    if (entity.color().isByBlock()) (void)entity.setColor(user.color());
    if (entity.lineWeight() == AcDb::kLnWtByBlock) (void)entity.setLineWeight(user.lineWeight());
    const AcDbDatabase* const database = entity.linetypeId().database();
    if (database && entity.linetypeId() == database->byBlockLinetype() && !user.linetypeId().isNull())
        (void)entity.setLinetype(user.linetypeId());
}

} // namespace hostkit

// Pictures of multileaders.

#include "acgi.h"
#include "blockdrawing.h"
#include "dbaccess.h"
#include "dbattdef.h"
#include "dbblockreference.h"
#include "dbmtext.h"
#include "dbopaque.h"
#include "leaderlines.h"
#include "multileaderrecord.h"
#include "pathgeometry.h"
#include "recordpictures.h"
#include "textplacing.h"

namespace hostkit {

namespace {

using Record = MultileaderRecord;

// By-block colours are those of the entity itself.
void takeColor(AcGiSubEntityTraits& traits, PackedColor color, const AcDbEntity& entity) {
    setLook(traits, entity);
    switch (color >> 24) {
    case 0xC0:
        traits.setColor(AcCmEntityColor::kACIbyLayer);
        break;
    case 0xC2:
        traits.setTrueColor(AcCmEntityColor(static_cast<Adesk::UInt8>(color >> 16),
                                            static_cast<Adesk::UInt8>(color >> 8),
                                            static_cast<Adesk::UInt8>(color)));
        break;
    case 0xC3:
        traits.setColor(static_cast<Adesk::UInt16>(color & 0xFF));
        break;
    }
}

void giveGround(AcDbMText& text, const Record::Text& from) {
    AcCmColor color;
    if (from.groundColor >> 24 == 0xC2)
        (void)color.setRGB(static_cast<Adesk::UInt8>(from.groundColor >> 16),
                           static_cast<Adesk::UInt8>(from.groundColor >> 8),
                           static_cast<Adesk::UInt8>(from.groundColor));
    else if (from.groundColor >> 24 == 0xC3)
        (void)color.setColorIndex(static_cast<Adesk::UInt16>(from.groundColor & 0xFF));
    (void)text.setBackgroundFillColor(color);
    (void)text.setBackgroundScaleFactor(from.groundScale);
    (void)text.setUseBackgroundColor(from.isPaperGround);
    (void)text.setBackgroundFill(true);
}

AcDbMText textOf(const Record::Text& from) {
    constexpr AcDbMText::AttachmentPoint attachments[] = {AcDbMText::kTopLeft, AcDbMText::kTopCenter,
                                                          AcDbMText::kTopRight};
    AcDbMText text;
    (void)text.setNormal(from.normal);
    (void)text.setDirection(from.direction);
    (void)text.setLocation(from.location);
    (void)text.setTextHeight(from.height);
    (void)text.setWidth(from.width);
    (void)text.setLineSpacingFactor(from.lineSpacing);
    if (from.alignment >= 1 && from.alignment <= 3) (void)text.setAttachment(attachments[from.alignment - 1]);
    (void)text.setTextStyle(from.style);
    (void)text.setContents(from.contents.c_str());
    if (from.hasGround) giveGround(text, from);
    return text;
}

// Some attachments underline the text: the landing goes on under it, with the gap on both sides.
double underline(const Record& record, const Record::Branch& branch) {
    constexpr int bottomLine = 5, topLine = 6, allLines = 8;
    if (!record.hasText) return 0.0;
    const bool isFromLeft = branch.direction.dotProduct(record.text.direction) >= 0.0;
    const int attachment = record.text.attachments[isFromLeft ? 0 : 1];
    if (attachment != bottomLine && attachment != topLine && attachment != allLines) return 0.0;
    const double width = textOf(record.text).actualWidth();
    return width > 0.0 ? width + 2.0 * record.gap : 0.0;
}

void drawBranch(AcGiWorldDraw& draw, const AcDbEntity& entity, const Record& record,
                const Record::Branch& branch) {
    const bool isCurved = record.path == Record::Path::curved;
    for (const Record::Line& from : branch.lines) {
        LeaderLine line;
        line.points = from.points;
        line.gaps = from.gaps;
        if (branch.hasLanding) line.points.push_back(branch.landing);
        line.normal = record.normal;
        line.arrow = blockToShow(from.arrow.isNull() ? record.arrow : from.arrow);
        line.arrowSize = from.arrowSize > 0.0 ? from.arrowSize : record.arrowSize;
        line.isCurved = isCurved;
        takeColor(draw.subEntityTraits(), from.color == byBlockColor ? record.lineColor : from.color, entity);
        drawLeaderLine(draw, line);
    }
    if (!record.isLed || !branch.isLed || !branch.hasLanding || isCurved || !(branch.length > 0.0)) return;
    const AcGeVector3d run = branch.direction.normal() * (branch.length + underline(record, branch));
    takeColor(draw.subEntityTraits(), record.lineColor, entity);
    drawPath(draw, interruptedChain({branch.landing, branch.landing + run}, branch.gaps));
}

void drawFrame(AcGiWorldDraw& draw, const AcDbMText& text, double gap) {
    AcGePoint3d corners[4];
    if (!text.letterBox(corners)) return;
    const AcGeVector3d x = (corners[1] - corners[0]).normal() * gap;
    const AcGeVector3d y = (corners[0] - corners[3]).normal() * gap;
    PicturePath path;
    path.moveTo(corners[0] - x + y);
    path.lineTo(corners[1] + x + y);
    path.lineTo(corners[2] + x - y);
    path.lineTo(corners[3] - x - y);
    path.close();
    drawPath(draw, path);
}

void drawText(AcGiWorldDraw& draw, const AcDbEntity& entity, const Record& record) {
    if (!(record.text.height > 0.0)) return;
    AcDbMText text = textOf(record.text);
    takeColor(draw.subEntityTraits(), record.text.color, entity);
    text.worldDraw(&draw);
    if (record.isFramed) drawFrame(draw, text, record.gap);
}

void drawContents(AcGiWorldDraw& draw, const AcDbEntity& entity, const Record& record) {
    const Record::Block& from = record.block;
    const AcDbObjectId id = blockToShow(from.id);
    if (id.isNull()) return;
    AcDbBlockReference reference(AcGePoint3d::kOrigin, id);
    (void)reference.setNormal(from.normal);
    (void)reference.setPosition(from.position);
    (void)reference.setScaleFactors(from.scale);
    (void)reference.setRotation(from.rotation);
    takeColor(draw.subEntityTraits(), from.color, entity);
    const AcGeMatrix3d place = reference.blockTransform();
    drawBlock(draw, id, place);
    draw.geometry().pushModelTransform(place);
    for (const auto& [definition, wording] : from.attributes) {
        const auto* const attribute = DatabaseAccess::objectOf<AcDbAttributeDefinition>(definition);
        if (!attribute || attribute->isConstant() || attribute->isInvisible()) continue;
        drawLetters(draw, placedText(*attribute, wording), attribute->normal(), attribute->textStyle());
    }
    draw.geometry().popModelTransform();
}

} // namespace

void drawMultileader(AcGiWorldDraw& draw, const AcDbOpaqueEntity& entity) {
    const MultileaderRecord record = readMultileader(entity);
    if (record.path != Record::Path::none)
        for (const Record::Branch& branch : record.branches) drawBranch(draw, entity, record, branch);
    if (record.hasText) drawText(draw, entity, record);
    if (record.hasBlock) drawContents(draw, entity, record);
}

} // namespace hostkit

#include "dbmtext.h"

#include "adsdef.h"
#include "dbaccess.h"
#include "dbtext.h"
#include "dbtextstyletablerecord.h"
#include "fielditems.h"
#include "fieldsetters.h"
#include "flatmotion.h"
#include "handover.h"
#include "paragraphlayout.h"
#include "paragraphparts.h"
#include "symbolnames.h"
#include "textmarkup.h"

#include <algorithm>

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbMText, AcDbEntity, L"MTEXT")

namespace {

constexpr double kSmallestLineSpacing = 0.25;
constexpr double kLargestLineSpacing = 4.0;
constexpr Adesk::Int16 kExactSpacing = 2;
constexpr double kSmallestGround = 1.0;
constexpr double kLargestGround = 5.0;

// Columns from left to right, then rows from the top.
int placeOf(Adesk::Int16 attachment) {
    return std::clamp<int>(attachment, AcDbMText::kTopLeft, AcDbMText::kBottomRight) - AcDbMText::kTopLeft;
}

AcGeVector3d xAxisOf(const AcGeVector3d& normal) { return hostkit::toWorld(normal, AcGeVector3d::kXAxis); }

} // namespace

namespace {

// The 2018 form has the place a second time, with the columns: they would stay behind.
Acad::ErrorStatus withoutColumns(AcDbMText& text, Acad::ErrorStatus status) {
    if (status == Acad::eOk) hostkit::DatabaseAccess::dropEmbedded(text);
    return status;
}

} // namespace

Acad::ErrorStatus AcDbMText::setLocation(const AcGePoint3d& location) {
    return withoutColumns(*this, hostkit::setFiniteField(*this, m_location, location));
}

Acad::ErrorStatus AcDbMText::setNormal(const AcGeVector3d& normal) {
    if (!hostkit::isDirection(normal)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    m_normal = normal.normal();
    if (!m_hasDirection) return Acad::eOk;
    const AcGeVector3d flat = m_direction - m_normal * m_direction.dotProduct(m_normal);
    m_direction = flat.isZeroLength() ? xAxisOf(m_normal) : flat.normal();
    return Acad::eOk;
}

AcGeVector3d AcDbMText::direction() const {
    if (m_hasDirection) return m_direction;
    return hostkit::toWorld(m_normal, AcGeVector3d(std::cos(m_rotation), std::sin(m_rotation), 0.0));
}

Acad::ErrorStatus AcDbMText::setDirection(const AcGeVector3d& direction) {
    const Acad::ErrorStatus status = hostkit::setDirectionField(*this, m_direction, direction);
    if (status == Acad::eOk) m_hasDirection = true;
    return withoutColumns(*this, status);
}

double AcDbMText::rotation() const {
    if (!m_hasDirection) return m_rotation;
    const AcGeVector3d local = hostkit::toEntity(m_normal, m_direction);
    return AcGeVector2d(local.x, local.y).angle();
}

Acad::ErrorStatus AcDbMText::setRotation(double angle) {
    const Acad::ErrorStatus status = hostkit::setFiniteField(*this, m_rotation, angle);
    if (status == Acad::eOk) m_hasDirection = false;
    return withoutColumns(*this, status);
}

Acad::ErrorStatus AcDbMText::setWidth(double width) {
    return withoutColumns(*this, hostkit::setNonNegativeField(*this, m_width, width));
}

Acad::ErrorStatus AcDbMText::setTextHeight(double height) {
    return hostkit::setPositiveField(*this, m_textHeight, height);
}

Acad::ErrorStatus AcDbMText::setAttachment(AttachmentPoint attachment) {
    return hostkit::assignIf(attachment >= kTopLeft && attachment <= kBottomRight, *this, m_attachment,
                             static_cast<Adesk::Int16>(attachment));
}

Acad::ErrorStatus AcDbMText::setFlowDirection(FlowDirection direction) {
    const bool isKnown = direction == kLtoR || direction == kTtoB || direction == kByStyle;
    return hostkit::assignIf(isKnown, *this, m_flowDirection, static_cast<Adesk::Int16>(direction));
}

wchar_t* AcDbMText::contents() const { return acutNewString(m_contents.c_str()); }

Acad::ErrorStatus AcDbMText::setContents(const wchar_t* contents) {
    return contents ? hostkit::assignField(*this, m_contents, contents) : Acad::eInvalidInput;
}

std::wstring AcDbMText::plainText() const {
    std::wstring text;
    for (const std::wstring& line : hostkit::visibleLines(m_contents)) (text += line) += L'\n';
    text.pop_back();
    return text;
}

Acad::ErrorStatus AcDbMText::setTextStyle(AcDbObjectId style) {
    return hostkit::setRecordField<AcDbTextStyleTableRecord>(*this, m_styleId, style);
}

Acad::ErrorStatus AcDbMText::setLineSpacingFactor(double factor) {
    return hostkit::assignIf(factor >= kSmallestLineSpacing && factor <= kLargestLineSpacing, *this,
                             m_lineSpacingFactor, factor);
}

hostkit::ParagraphLayout AcDbMText::layout() const {
    return hostkit::laidOut(m_contents, {.textStyle = m_styleId,
                                         .height = m_textHeight,
                                         .width = m_width,
                                         .lineSpacingFactor = m_lineSpacingFactor,
                                         .isSpacingExact = m_lineSpacingStyle == kExactSpacing,
                                         .column = placeOf(m_attachment) % 3});
}

double AcDbMText::topOf(const hostkit::ParagraphLayout& layout) const {
    return layout.height * (placeOf(m_attachment) / 3) / 2.0; // NOLINT(bugprone-integer-division): a row
}

double AcDbMText::actualWidth() const { return layout().width(); }
double AcDbMText::actualHeight() const { return layout().height; }

Acad::ErrorStatus AcDbMText::setBackgroundFill(bool isOn) {
    if (isOn == backgroundFillOn()) return assertWriteEnabled();
    return setFlag(*this, m_ground, isOn ? colorGround : colorGround | drawingGround, isOn);
}

Acad::ErrorStatus AcDbMText::setUseBackgroundColor(bool isUsed) {
    const int chosen = isUsed ? drawingGround : colorGround;
    return assignField(*this, m_ground, (m_ground & ~(colorGround | drawingGround)) | chosen);
}

AcCmColor AcDbMText::backgroundFillColor() const {
    AcCmColor color;
    if (m_groundRgb == noRgb) {
        (void)color.setColorIndex(static_cast<Adesk::UInt16>(m_groundColor));
        return color;
    }
    const auto part = [this](int shift) { return static_cast<Adesk::UInt8>(m_groundRgb >> shift); };
    color.setRGB(part(16), part(8), part(0));
    return color;
}

Acad::ErrorStatus AcDbMText::setBackgroundFillColor(const AcCmColor& color) {
    const auto rgb = static_cast<Adesk::Int32>(color.rgb());
    const Acad::ErrorStatus status = assignField(*this, m_groundRgb, color.isByColor() ? rgb : noRgb);
    if (status == Acad::eOk) m_groundColor = static_cast<Adesk::Int16>(color.colorIndex());
    return status;
}

Acad::ErrorStatus AcDbMText::setBackgroundScaleFactor(double factor) {
    return assignIf(factor >= kSmallestGround && factor <= kLargestGround, *this, m_groundScale, factor);
}

bool AcDbMText::groundBox(AcGePoint3d (&corners)[4]) const {
    return backgroundFillOn() && boxAround((m_groundScale - 1.0) * m_textHeight, corners);
}

bool AcDbMText::boxAround(double margin, AcGePoint3d (&corners)[4]) const {
    const hostkit::ParagraphLayout layout = this->layout();
    if (!(layout.width() > 0.0)) return false;
    const AcGeVector3d x = direction();
    const AcGeVector3d y = m_normal.crossProduct(x);
    const double top = topOf(layout);
    const auto at = [&](double along, double up) { return m_location + x * along + y * up; };
    corners[0] = at(layout.left - margin, top + margin);
    corners[1] = at(layout.right + margin, top + margin);
    corners[2] = at(layout.right + margin, top - layout.height - margin);
    corners[3] = at(layout.left - margin, top - layout.height - margin);
    return true;
}

Acad::ErrorStatus AcDbMText::getGeomExtents(AcDbExtents& extents) const {
    AcGePoint3d corners[4];
    if (!letterBox(corners)) return Acad::eInvalidExtents;
    AcDbExtents box;
    for (const AcGePoint3d& corner : corners) box.addPoint(corner);
    extents = box;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::explode(AcDbVoidPtrArray& parts) const {
    for (auto& part : hostkit::partsOf(*this)) hostkit::handOver(parts, part);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!hostkit::isInvertible(matrix)) return Acad::eInvalidInput;
    const hostkit::FlatMotion motion(matrix, m_normal);
    if (!motion.keepsShape()) return Acad::eCannotScaleNonUniformly;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    m_location.transformBy(matrix);
    if (motion.isShift()) return Acad::eOk;
    const AcGeVector3d moved = matrix * direction();
    m_normal = motion.isMirror() ? -motion.normal() : motion.normal();
    m_direction = moved / moved.length();
    if (!m_hasDirection) {
        const AcGeVector3d local = hostkit::toEntity(m_normal, m_direction);
        m_rotation = AcGeVector2d(local.x, local.y).angle();
    }
    m_textHeight *= motion.scale();
    m_width *= motion.scale();
    m_boxHeight *= motion.scale();
    return Acad::eOk;
}

void AcDbMText::getEcs(AcGeMatrix3d& matrix) const { matrix = hostkit::arbitraryAxisSystem(m_normal); }

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbMText::Filing {
    static constexpr GroupField<AcDbMText> head[] = {
        pointField<&AcDbMText::m_location>(10),
        realField<&AcDbMText::m_textHeight>(40),
        realField<&AcDbMText::m_width>(41),
        realField<&AcDbMText::m_boxHeight>(46, 0.0),
        integerField<&AcDbMText::m_attachment>(71),
        integerField<&AcDbMText::m_flowDirection>(72),
        standardNameField<&AcDbMText::m_styleId, TableKind::kTextStyle>(7),
        normalField<&AcDbMText::m_normal>(),
        integerField<&AcDbMText::m_lineSpacingStyle>(73, 1),
        realField<&AcDbMText::m_lineSpacingFactor>(44, 1.0),
        integerField<&AcDbMText::m_ground>(90, 0),
        integerField<&AcDbMText::m_groundColor>(63, AcCmEntityColor::kACIbyLayer),
        integerField<&AcDbMText::m_groundRgb>(421, noRgb),
        realField<&AcDbMText::m_groundScale>(45, usualGroundScale),
    };
    static constexpr short partCode = 3;
    static constexpr short styleCode = 7;
    static constexpr short lastPartCode = 1;
    static constexpr short directionCode = 11;
    static constexpr short rotationCode = 50;
    static constexpr std::size_t longestPart = 250;

    static bool readGroup(AcDbMText& text, const AcDbDxfGroup& group, const AcDbDxfFiler& filer) {
        switch (group.code) {
        case partCode:
        case lastPartCode:
            text.m_contents += group.text;
            return true;
        case directionCode: {
            const AcGeVector3d direction(group.point[0], group.point[1], group.point[2]);
            if (!(direction.length() > 0.0)) return false;
            text.m_direction = std::abs(direction.length() - 1.0) <= unitRounding
                                   ? direction
                                   : direction / direction.length();
            return text.m_hasDirection = true;
        }
        case rotationCode: // of direction and rotation the later one counts
            text.m_rotation = filer.angleOf(group);
            text.m_hasDirection = false;
            return true;
        default:
            return false;
        }
    }

    static void writeContents(std::wstring_view contents, AcDbDxfFiler& filer) {
        for (; contents.size() > longestPart; contents.remove_prefix(longestPart))
            filer.writeText(partCode, contents.substr(0, longestPart));
        filer.writeText(lastPartCode, contents);
    }
};

Acad::ErrorStatus AcDbMText::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbMText")) return status;
    m_contents.clear();
    DatabaseAccess::dropEmbedded(*this);
    const Acad::ErrorStatus read = readFields(*filer, Filing::head, *this, [&](const AcDbDxfGroup& group) {
        return Filing::readGroup(*this, group, *filer);
    });
    takeStandardRecord(*filer, TableKind::kTextStyle, Filing::styleCode, *this, m_styleId);
    return read;
}

Acad::ErrorStatus AcDbMText::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbMText");
    const auto& [location, height, width, boxHeight, attachment, flow, style, normal, spacing, factor, ground,
                 groundColor, groundRgb, groundScale] = Filing::head;
    for (const auto* field : {&location, &height, &width, &boxHeight, &attachment, &flow})
        field->write(*this, *field, *filer);
    Filing::writeContents(m_contents, *filer);
    style.write(*this, style, *filer);
    normal.write(*this, normal, *filer);
    if (m_hasDirection || m_rotation == 0.0) filer->markDefault();
    filer->writeAngle(Filing::rotationCode, m_rotation);
    if (m_hasDirection) filer->writeItem(Filing::directionCode, m_direction);
    for (const auto* field : {&spacing, &factor}) {
        filer->markSince(AcDb::kDHL_1015);
        field->write(*this, *field, *filer);
    }
    for (const auto* field : {&ground, &groundColor, &groundRgb, &groundScale}) {
        if (!backgroundFillOn()) filer->markDefault();
        filer->markSince(AcDb::kDHL_1018);
        field->write(*this, *field, *filer);
    }
    writeEmbedded(*filer, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbMText)

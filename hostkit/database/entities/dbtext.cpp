#include "dbtext.h"

#include "adsdef.h"
#include "dbaccess.h"
#include "dbattdef.h"
#include "dbattribute.h"
#include "dbtextstyletablerecord.h"
#include "fielditems.h"
#include "fieldsetters.h"
#include "flatmotion.h"
#include "paragraphlook.h"
#include "symbolnames.h"
#include "textmarkup.h"

#include <algorithm>
#include <iterator>
#include <utility>

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbText, AcDbEntity, L"TEXT")

namespace {

/// The format allows no more; letters would lie down.
constexpr double kLargestOblique = 85.0 / 180.0 * AcGe::kPi;

/// The left end and the base line of a text, from what it is aligned at, by its modes.
AcGeVector2d baseOffset(AcDb::TextHorzMode horizontal, AcDb::TextVertMode vertical, double width,
                        double height) {
    AcGeVector2d offset(0.0, 0.0);
    if (horizontal == AcDb::kTextCenter || horizontal == AcDb::kTextMid) offset.x = -width / 2.0;
    if (horizontal == AcDb::kTextRight) offset.x = -width;
    if (horizontal == AcDb::kTextMid || vertical == AcDb::kTextVertMid) offset.y = -height / 2.0;
    if (vertical == AcDb::kTextTop) offset.y = -height;
    return offset;
}

/// The plane of the letters: what a step along the base line and one of a letter's height are in the
/// coordinates of the normal.
struct LetterAxes {
    AcGeVector2d along;
    AcGeVector2d up;

    LetterAxes(double rotation, double oblique, bool isBackward, bool isUpsideDown)
        : along(std::cos(rotation), std::sin(rotation))
        , up(along.perpVector()) {
        if (isBackward) along = -along;
        if (isUpsideDown) up = -up;
        if (oblique != 0.0) up += along * std::tan(oblique);
    }
    AcGePoint3d at(const AcGePoint3d& origin, double x, double y) const {
        const AcGeVector2d step = along * x + up * y;
        return {origin.x + step.x, origin.y + step.y, origin.z};
    }
};

} // namespace

AcDbText::AcDbText(const AcGePoint3d& position, const wchar_t* text, AcDbObjectId style, double height,
                   double rotation)
    : m_ecsPosition(position)
    , m_height(height)
    , m_rotation(rotation)
    , m_styleId(style)
    , m_text(text ? text : L"") {}

AcGePoint3d AcDbText::position() const { return hostkit::toWorld(m_normal, m_ecsPosition); }
AcGePoint3d AcDbText::alignmentPoint() const { return hostkit::toWorld(m_normal, m_ecsAlignment); }

template <typename Field, typename Value>
Acad::ErrorStatus AcDbText::setAndAlign(bool isAcceptable, Field& field, const Value& value) {
    const Acad::ErrorStatus status = hostkit::assignIf(isAcceptable, *this, field, value);
    if (status == Acad::eOk) alignPosition();
    return status;
}

Acad::ErrorStatus AcDbText::setPosition(const AcGePoint3d& position) {
    return hostkit::assignIf(hostkit::isFinite(position), *this, m_ecsPosition,
                             hostkit::toEntity(m_normal, position));
}

Acad::ErrorStatus AcDbText::setAlignmentPoint(const AcGePoint3d& point) {
    const Acad::ErrorStatus status =
        setAndAlign(hostkit::isFinite(point), m_ecsAlignment, hostkit::toEntity(m_normal, point));
    if (status == Acad::eOk) m_hasAlignment = true;
    return status;
}

Acad::ErrorStatus AcDbText::setNormal(const AcGeVector3d& normal) {
    if (!hostkit::isDirection(normal)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const AcGePoint3d start = position();
    const AcGePoint3d alignment = alignmentPoint();
    m_normal = normal.normal();
    m_ecsPosition = hostkit::toEntity(m_normal, start);
    m_ecsAlignment = hostkit::toEntity(m_normal, alignment);
    alignPosition();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setThickness(double thickness) {
    return hostkit::setFiniteField(*this, m_thickness, thickness);
}

Acad::ErrorStatus AcDbText::setOblique(double angle) {
    return setAndAlign(std::abs(angle) <= kLargestOblique, m_oblique, angle);
}

Acad::ErrorStatus AcDbText::setRotation(double angle) {
    return setAndAlign(std::isfinite(angle), m_rotation, angle);
}

Acad::ErrorStatus AcDbText::setHeight(double height) {
    return setAndAlign(std::isfinite(height) && height > 0.0, m_height, height);
}

Acad::ErrorStatus AcDbText::setWidthFactor(double factor) {
    return setAndAlign(std::isfinite(factor) && factor > 0.0, m_widthFactor, factor);
}

wchar_t* AcDbText::textString() const { return acutNewString(m_text.c_str()); }

Acad::ErrorStatus AcDbText::setTextString(const wchar_t* text) {
    if (!text) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = setAndAlign(true, m_text, text);
    // An attribute of several lines has its text a second time, as a paragraph.
    if (status == Acad::eOk) hostkit::DatabaseAccess::dropEmbedded(*this);
    return status;
}

Acad::ErrorStatus AcDbText::setTextStyle(AcDbObjectId style) {
    return hostkit::setRecordField<AcDbTextStyleTableRecord>(*this, m_styleId, style);
}

Acad::ErrorStatus AcDbText::mirrorInX(bool mirrored) {
    return setAndAlign(true, m_generationFlags, mirrored ? m_generationFlags | 2 : m_generationFlags & ~2);
}

Acad::ErrorStatus AcDbText::mirrorInY(bool mirrored) {
    return setAndAlign(true, m_generationFlags, mirrored ? m_generationFlags | 4 : m_generationFlags & ~4);
}

Acad::ErrorStatus AcDbText::setMode(bool isAcceptable, Adesk::Int16& mode, int value) {
    if (!isAcceptable) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    mode = static_cast<Adesk::Int16>(value);
    if (!isDefaultAlignment() && !m_hasAlignment) {
        m_ecsAlignment = m_ecsPosition;
        m_hasAlignment = true;
    }
    alignPosition();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setHorizontalMode(AcDb::TextHorzMode mode) {
    return setMode(mode >= AcDb::kTextLeft && mode <= AcDb::kTextFit, m_horizontalMode, mode);
}

Acad::ErrorStatus AcDbText::setVerticalMode(AcDb::TextVertMode mode) {
    return setMode(mode >= AcDb::kTextBase && mode <= AcDb::kTextTop, m_verticalMode, mode);
}

double AcDbText::estimatedWidth(const std::wstring& wording) const {
    if (isBetweenPoints()) return m_ecsPosition.distanceTo(m_ecsAlignment);
    const hostkit::LetterFace& face = hostkit::faceOfStyle(m_styleId);
    return hostkit::lineWidth(hostkit::visibleText(wording), face) * m_height * m_widthFactor;
}

void AcDbText::alignPosition() {
    if (isDefaultAlignment() || isBetweenPoints()) return;
    const LetterAxes axes(m_rotation, m_oblique, isMirroredInX(), isMirroredInY());
    const AcGeVector2d offset = baseOffset(horizontalMode(), verticalMode(), estimatedWidth(), m_height);
    m_ecsPosition = axes.at(m_ecsAlignment, offset.x, offset.y);
}

bool AcDbText::letterBox(AcGePoint3d (&corners)[4], const std::wstring* wording) const {
    const std::wstring& shown = wording ? *wording : shownText();
    if (hostkit::visibleText(shown).empty()) return false;
    const double width = estimatedWidth(shown);
    AcGePoint3d origin = m_ecsPosition;
    AcGeVector2d offset(0.0, 0.0);
    double rotation = m_rotation;
    bool isBackward = isMirroredInX();
    if (isBetweenPoints()) {
        const AcGeVector3d run = m_ecsAlignment - m_ecsPosition;
        if (run.x != 0.0 || run.y != 0.0) rotation = std::atan2(run.y, run.x);
        if (isBackward) origin = m_ecsAlignment;
    } else if (!isDefaultAlignment()) {
        if (m_hasAlignment) origin = m_ecsAlignment;
        offset = baseOffset(horizontalMode(), verticalMode(), width, m_height);
    }
    const LetterAxes axes(rotation, m_oblique, isBackward, isMirroredInY());
    const AcGeVector2d steps[4] = {{0.0, 0.0}, {width, 0.0}, {width, m_height}, {0.0, m_height}};
    std::transform(std::begin(steps), std::end(steps), corners, [&](const AcGeVector2d& step) {
        return hostkit::toWorld(m_normal, axes.at(origin, offset.x + step.x, offset.y + step.y));
    });
    return true;
}

Acad::ErrorStatus AcDbText::getGeomExtents(AcDbExtents& extents) const {
    AcGePoint3d corners[4];
    if (!letterBox(corners)) return Acad::eInvalidExtents;
    AcDbExtents box;
    for (const AcGePoint3d& corner : corners) box.addPoint(corner);
    extents = box;
    return Acad::eOk;
}

void AcDbText::moveLetters(const hostkit::FlatMotion& motion) {
    const LetterAxes old(m_rotation, m_oblique, isMirroredInX(), isMirroredInY());
    const AcGeVector2d along = motion.vector(old.along);
    const AcGeVector2d up = motion.vector(old.up);
    const bool isBackward = isMirroredInX() != motion.isMirror();
    const AcGeVector2d x = (isBackward ? -along : along) / along.length();
    const double height = std::abs(up.dotProduct(x.perpVector()));
    if (!motion.keepsShape()) {
        m_widthFactor *= along.length() / height;
        m_oblique = std::atan2(up.dotProduct(along) / along.length(), height);
    }
    m_height *= height;
    m_rotation = x.angle();
    if (!motion.isMirror()) return;
    m_generationFlags = static_cast<Adesk::Int16>(m_generationFlags ^ 2);
    // Letters that run backward between two points do so from the second one.
    if (isBetweenPoints()) std::swap(m_ecsPosition, m_ecsAlignment);
}

Acad::ErrorStatus AcDbText::subTransformBy(const AcGeMatrix3d& matrix) {
    if (!hostkit::isInvertible(matrix)) return Acad::eInvalidInput;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    const hostkit::FlatMotion motion(matrix, m_normal);
    m_ecsPosition = motion.point(m_ecsPosition);
    if (m_hasAlignment) m_ecsAlignment = motion.point(m_ecsAlignment);
    if (motion.isShift()) return Acad::eOk;
    moveLetters(motion);
    m_thickness *= motion.normalScale();
    m_normal = motion.normal();
    return Acad::eOk;
}

void AcDbText::getEcs(AcGeMatrix3d& matrix) const { matrix = hostkit::arbitraryAxisSystem(m_normal); }

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbText::Filing {
    static constexpr GroupField<AcDbText> groups[] = {
        realField<&AcDbText::m_thickness>(39, 0.0),
        pointField<&AcDbText::m_ecsPosition>(10),
        realField<&AcDbText::m_height>(40),
        textField<&AcDbText::m_text>(1),
        angleField<&AcDbText::m_rotation>(50, 0.0),
        realField<&AcDbText::m_widthFactor>(41, 1.0),
        angleField<&AcDbText::m_oblique>(51, 0.0),
        standardNameField<&AcDbText::m_styleId, TableKind::kTextStyle>(7),
        integerField<&AcDbText::m_generationFlags>(71, 0),
        integerField<&AcDbText::m_horizontalMode>(72, 0),
        normalField<&AcDbText::m_normal>(),
    };
    /// Stands behind a second mark of the same name; in attributes the code is another's.
    static constexpr GroupField<AcDbText> vertical[] = {
        integerField<&AcDbText::m_verticalMode>(73, 0),
    };
    static constexpr short alignmentCode = 11;
    static constexpr short styleCode = 7;

    static bool isAttribute(const AcDbText& text) {
        return text.isKindOf(AcDbAttribute::desc()) || text.isKindOf(AcDbAttributeDefinition::desc());
    }
};

Acad::ErrorStatus AcDbText::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbText")) return status;
    m_hasAlignment = false;
    status = readFields(*filer, Filing::groups, *this, [this](const AcDbDxfGroup& group) {
        if (group.code != Filing::alignmentCode) return false;
        m_ecsAlignment.set(group.point[0], group.point[1], group.point[2]);
        return m_hasAlignment = true;
    });
    takeStandardRecord(*filer, TableKind::kTextStyle, Filing::styleCode, *this, m_styleId);
    if (status != Acad::eOk || Filing::isAttribute(*this) || !filer->atSubclassData(L"AcDbText"))
        return status;
    return readFields(*filer, Filing::vertical, *this);
}

Acad::ErrorStatus AcDbText::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbText");
    for (const GroupField<AcDbText>& field : Filing::groups) {
        const bool isNormal = &field == std::end(Filing::groups) - 1;
        if (isNormal && (m_hasAlignment || !isDefaultAlignment()))
            filer->writeItem(Filing::alignmentCode, m_ecsAlignment);
        field.write(*this, field, *filer);
    }
    if (Filing::isAttribute(*this)) return filer->filerStatus();
    filer->writeSubclassMark(L"AcDbText");
    writeFields(*filer, Filing::vertical, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbText)

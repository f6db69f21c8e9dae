#include "dbviewport.h"

#include "acgi.h"
#include "dbaccess.h"
#include "dblayertable.h"
#include "extendeddata.h"
#include "fielditems.h"
#include "fieldsetters.h"
#include "fieldtable.h"
#include "flatmotion.h"
#include "symbolnames.h"

#include <algorithm>
#include <cmath>

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbViewport, AcDbEntity, L"VIEWPORT")

// --- The sheet ---------------------------------------------------------------------------------------------

Acad::ErrorStatus AcDbViewport::setCenterPoint(const AcGePoint3d& center) {
    return setFiniteField(*this, m_center, center);
}

Acad::ErrorStatus AcDbViewport::setWidth(double width) { return setPositiveField(*this, m_width, width); }
Acad::ErrorStatus AcDbViewport::setHeight(double height) { return setPositiveField(*this, m_height, height); }

Acad::ErrorStatus AcDbViewport::setNumber(Adesk::Int16 number) {
    return assignIf(number > 0, *this, m_number, number);
}

bool AcDbViewport::isOn() const { return m_status != 0 && (flags() & kOff) == 0; }

Acad::ErrorStatus AcDbViewport::setOn() {
    const Acad::ErrorStatus status = setFlag(kOff, false);
    if (status == Acad::eOk && m_status == 0) m_status = 1;
    return status;
}

// R12 knows the status alone.
Acad::ErrorStatus AcDbViewport::setOff() {
    const Acad::ErrorStatus status = setFlag(kOff, true);
    if (status == Acad::eOk) m_status = 0;
    return status;
}

Acad::ErrorStatus AcDbViewport::setNonRectClipEntityId(AcDbObjectId id) {
    return setRecordField<AcDbEntity>(*this, m_clipId, id);
}

Adesk::Boolean AcDbViewport::worldDraw(AcGiWorldDraw* draw) {
    if (m_number == 1 || isNonRectClipOn()) return Adesk::kTrue;
    const double x = m_width / 2.0, y = m_height / 2.0;
    AcGePoint3d frame[5];
    for (int i = 0; i < 5; ++i) {
        const bool isRight = i % 4 == 1 || i % 4 == 2;
        frame[i] = m_center + AcGeVector3d(isRight ? x : -x, i % 4 >= 2 ? y : -y, 0.0);
    }
    draw->geometry().polyline(5, frame);
    return Adesk::kTrue;
}

// It stays upright: a turn moves its middle alone.
Acad::ErrorStatus AcDbViewport::subTransformBy(const AcGeMatrix3d& matrix) {
    double scale = 1.0;
    if (!isInvertible(matrix)) return Acad::eInvalidInput;
    if (!isUniform(matrix, scale)) return Acad::eCannotScaleNonUniformly;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    m_center.transformBy(matrix);
    m_width *= std::abs(scale);
    m_height *= std::abs(scale);
    return Acad::eOk;
}

// --- The view ----------------------------------------------------------------------------------------------

AcDbViewport::View AcDbViewport::ownView() const {
    return {m_viewCenter, m_target,    m_direction, m_viewHeight, m_twist,
            m_lensLength, m_frontClip, m_backClip,  m_flags,      m_frozen};
}

AcDbViewport::View AcDbViewport::view() const {
    View view = ownView();
    if (!(m_viewHeight > 0.0)) (void)readViewOfR12(view);
    return view;
}

namespace {

constexpr short textCode = 1000, braceCode = 1002, layerCode = 1003, pointCode = 1010, realCode = 1040,
                integerCode = 1070;

/// The values of the data in turn, of the kinds that they must have.
class ViewData {
public:
    ViewData(const GroupBlock& data, std::size_t from)
        : m_walker(data, from) {}
    bool isSound() const { return m_isSound; }
    const AcDbDxfGroup& take(short code) {
        do m_isSound = m_isSound && m_walker.next(m_group);
        while (m_isSound && m_group.code == braceCode);
        m_isSound = m_isSound && m_group.code == code;
        if (!m_isSound) m_group = AcDbDxfGroup();
        return m_group;
    }
    double real() { return take(realCode).real; }
    Adesk::Int32 integer() { return static_cast<Adesk::Int32>(take(integerCode).integer); }
    AcGePoint3d point() {
        const AcDbDxfGroup& group = take(pointCode);
        return {group.point[0], group.point[1], group.point[2]};
    }
    /// The next name of a layer; false at the end of the data.
    bool layer(std::wstring& name) {
        for (AcDbDxfGroup group; m_walker.next(group) && group.code != applicationCode;)
            if (group.code == layerCode) {
                name = group.text;
                return true;
            }
        return false;
    }

private:
    GroupWalker m_walker;
    AcDbDxfGroup m_group;
    bool m_isSound = true;
};

} // namespace

// A version, target, direction, twist, height, middle, lens, clips and modes, then what is not looked at, and
// the names of frozen layers.
bool AcDbViewport::readViewOfR12(View& view) const {
    const GroupBlock* data = extendedData();
    ApplicationSpan span;
    if (!data || !findApplication(*data, L"ACAD", span)) return false;
    GroupWalker walker(*data, span.behindName);
    AcDbDxfGroup mark;
    if (!walker.next(mark) || !mark.isText(textCode, L"MVIEW")) return false;
    ViewData values(*data, walker.position());
    (void)values.integer();
    View read = view;
    read.target = values.point();
    read.direction = values.point().asVector();
    read.twist = values.real() * AcGe::kPi / 180.0;
    read.height = values.real();
    read.center.x = values.real();
    read.center.y = values.real();
    read.lensLength = values.real();
    read.frontClip = values.real();
    read.backClip = values.real();
    read.flags |= values.integer() & 0x1F;
    if (!values.isSound()) return false;
    const auto* layers =
        database() ? DatabaseAccess::objectOf<AcDbLayerTable>(database()->layerTableId()) : nullptr;
    for (std::wstring name; layers && values.layer(name);)
        if (const AcDbObjectId layer = layers->find(name); !layer.isNull()) read.frozen.push_back(layer);
    view = std::move(read);
    return true;
}

namespace {

AcDbDxfGroup groupOf(short code, AcDb::GroupKind kind) {
    AcDbDxfGroup group;
    group.code = code;
    group.kind = kind;
    return group;
}

AcDbDxfGroup realGroup(double value) {
    AcDbDxfGroup group = groupOf(realCode, AcDb::GroupKind::kReal);
    group.real = value;
    return group;
}

template <typename Point>
AcDbDxfGroup pointGroup(const Point& point) {
    AcDbDxfGroup group = groupOf(pointCode, AcDb::GroupKind::kPoint);
    group.dimension = 3;
    for (unsigned int axis = 0; axis < 3; ++axis) group.point[axis] = point[axis];
    return group;
}

} // namespace

// Extended data of R12 follows the fields, so that the drawing can stay in that form.
void AcDbViewport::followInViewOfR12() {
    const GroupBlock* const before = extendedData();
    View unused;
    ApplicationSpan span;
    if (!before || !readViewOfR12(unused) || !findApplication(*before, L"ACAD", span)) return;
    const AcDbDxfGroup values[] = {
        pointGroup(m_target),    pointGroup(m_direction),   realGroup(m_twist * 180.0 / AcGe::kPi),
        realGroup(m_viewHeight), realGroup(m_viewCenter.x), realGroup(m_viewCenter.y),
        realGroup(m_lensLength), realGroup(m_frontClip),    realGroup(m_backClip)};
    GroupBlock after;
    GroupWalker walker(*before);
    std::size_t next = 0;
    int braces = 0;
    for (AcDbDxfGroup group; walker.next(group);) {
        const bool isInside = walker.position() > span.behindName && walker.position() <= span.to;
        const bool isValue = isInside && next < std::size(values) && group.code == values[next].code;
        if (isInside && group.code == layerCode) continue;
        after.append(isValue ? values[next++] : group);
        if (!isInside || !group.isText(braceCode, L"{") || ++braces != 2) continue;
        for (const AcDbObjectId layer : m_frozen) {
            AcDbDxfGroup name = groupOf(layerCode, AcDb::GroupKind::kText);
            name.text = symbolName(layer, L"");
            if (!name.text.empty()) after.append(name);
        }
    }
    (void)setExtendedData(std::move(after));
}

Acad::ErrorStatus AcDbViewport::setView(const View& view) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    m_viewCenter = view.center;
    m_target = view.target;
    m_direction = view.direction;
    m_viewHeight = view.height > 0.0 ? view.height : m_height;
    m_twist = view.twist;
    m_lensLength = view.lensLength;
    m_frontClip = view.frontClip;
    m_backClip = view.backClip;
    m_flags = view.flags;
    m_frozen = view.frozen;
    followInViewOfR12();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::setFlag(Adesk::Int32 flag, bool isSet) {
    View changed = view();
    changed.flags = isSet ? changed.flags | flag : changed.flags & ~flag;
    return setView(changed);
}

Acad::ErrorStatus AcDbViewport::setViewCenter(const AcGePoint2d& center) {
    if (!std::isfinite(center.x) || !std::isfinite(center.y)) return Acad::eInvalidInput;
    View changed = view();
    changed.center = center;
    return setView(changed);
}

Acad::ErrorStatus AcDbViewport::setViewTarget(const AcGePoint3d& target) {
    if (!hostkit::isFinite(target)) return Acad::eInvalidInput;
    View changed = view();
    changed.target = target;
    return setView(changed);
}

Acad::ErrorStatus AcDbViewport::setViewDirection(const AcGeVector3d& direction) {
    if (!isDirection(direction)) return Acad::eInvalidInput;
    View changed = view();
    changed.direction = direction;
    return setView(changed);
}

Acad::ErrorStatus AcDbViewport::setViewHeight(double height) {
    if (!(std::isfinite(height) && height > 0.0)) return Acad::eInvalidInput;
    View changed = view();
    changed.height = height;
    return setView(changed);
}

Acad::ErrorStatus AcDbViewport::setTwistAngle(double angle) {
    if (!std::isfinite(angle)) return Acad::eInvalidInput;
    View changed = view();
    changed.twist = angle;
    return setView(changed);
}

Acad::ErrorStatus AcDbViewport::setLensLength(double length) {
    if (!(std::isfinite(length) && length > 0.0)) return Acad::eInvalidInput;
    View changed = view();
    changed.lensLength = length;
    return setView(changed);
}

double AcDbViewport::customScale() const {
    const double seen = viewHeight();
    return seen > 0.0 ? m_height / seen : 0.0;
}

Acad::ErrorStatus AcDbViewport::setCustomScale(double scale) {
    return scale > 0.0 ? setViewHeight(m_height / scale) : Acad::eInvalidInput;
}

// --- Layers ------------------------------------------------------------------------------------------------

bool AcDbViewport::isLayerFrozenInViewport(AcDbObjectId layer) const {
    const std::vector<AcDbObjectId> frozen = frozenLayers();
    return std::find(frozen.begin(), frozen.end(), layer) != frozen.end();
}

Acad::ErrorStatus AcDbViewport::freezeLayersInViewport(const AcDbObjectIdArray& layers) {
    View changed = view();
    for (const AcDbObjectId layer : layers) {
        if (!DatabaseAccess::objectOf<AcDbLayerTableRecord>(layer) || layer.database() != database())
            return Acad::eNotThatKindOfClass;
        if (std::find(changed.frozen.begin(), changed.frozen.end(), layer) == changed.frozen.end())
            changed.frozen.push_back(layer);
    }
    return setView(changed);
}

Acad::ErrorStatus AcDbViewport::thawLayersInViewport(const AcDbObjectIdArray& layers) {
    View changed = view();
    for (const AcDbObjectId layer : layers)
        changed.frozen.erase(std::remove(changed.frozen.begin(), changed.frozen.end(), layer),
                             changed.frozen.end());
    return setView(changed);
}

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbViewport::Filing {
    static constexpr GroupField<AcDbViewport> frozenField = {
        331, false, 0.0,
        [](AcDbViewport& viewport, const AcDbDxfGroup& group, AcDbDxfFiler& filer) {
            viewport.m_frozen.push_back(filer.objectIdOf(group));
            return true;
        },
        [](const AcDbViewport& viewport, const GroupField<AcDbViewport>& field, AcDbDxfFiler& filer) {
            for (const AcDbObjectId layer : viewport.m_frozen) filer.writeItem(field.code, layer);
        }};
    static constexpr GroupField<AcDbViewport> groups[] = {
        pointField<&AcDbViewport::m_center>(10),    realField<&AcDbViewport::m_width>(40),
        realField<&AcDbViewport::m_height>(41),     integerField<&AcDbViewport::m_status>(68),
        integerField<&AcDbViewport::m_number>(69),  pointField<&AcDbViewport::m_viewCenter>(12),
        pointField<&AcDbViewport::m_direction>(16), pointField<&AcDbViewport::m_target>(17),
        realField<&AcDbViewport::m_lensLength>(42), realField<&AcDbViewport::m_frontClip>(43),
        realField<&AcDbViewport::m_backClip>(44),   realField<&AcDbViewport::m_viewHeight>(45),
        angleField<&AcDbViewport::m_twist>(51),     frozenField,
        integerField<&AcDbViewport::m_flags>(90),   idField<&AcDbViewport::m_clipId>(340),
    };
};

Acad::ErrorStatus AcDbViewport::dxfInFields(AcDbDxfFiler* filer) {
    m_frozen.clear();
    m_viewHeight = 0.0;
    return readSubclass<AcDbEntity>(filer, *this, L"AcDbViewport", Filing::groups);
}

// The view is missing in records of R12, and stays so while it is that of their extended data.
Acad::ErrorStatus AcDbViewport::dxfOutFields(AcDbDxfFiler* filer) const {
    constexpr short lastOfPlace = 69;
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbViewport");
    bool isOfView = false;
    for (const GroupField<AcDbViewport>& field : Filing::groups) {
        if (isOfView && !tellsView()) filer->markDefault();
        if (isOfView) filer->markSince(AcDb::kDHL_1012);
        field.write(*this, field, *filer);
        isOfView |= field.code == lastOfPlace;
    }
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbViewport)

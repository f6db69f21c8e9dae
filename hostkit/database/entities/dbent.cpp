#include "dbent.h"

#include "acgitraits.h"

#include "assignfield.h"
#include "dbaccess.h"
#include "dbapserv.h"
#include "dblayertable.h"
#include "dblinetypetable.h"
#include "displaychanges.h"
#include "embeddedparagraph.h"
#include "extendeddatamotion.h"
#include "lineweights.h"
#include "subentitylist.h"

#include "adsdef.h"
#include "ownedlist.h"
#include "pathgeometry.h"
#include "shapegeometry.h"

#include <cmath>

HOSTKIT_KIT_ABSTRACT_CLASS(AcDbEntity, AcDbObject)

using hostkit::assignField;
using hostkit::DatabaseAccess;

AcDbEntity::AcDbEntity() = default;

AcDbObjectId AcDbEntity::blockId() const {
    // A vertex or attribute stands where the entity that owns it stands.
    constexpr int deepest = 4;
    AcDbObjectId owner = ownerId();
    for (int depth = 0; depth < deepest; ++depth) {
        const AcDbObject* object = DatabaseAccess::object(owner);
        if (!object) return {};
        if (object->isKindOf(AcDbBlockTableRecord::desc())) return owner;
        owner = object->ownerId();
    }
    return {};
}

namespace {

/// Hands a property on to what the entity owns; parts that are open elsewhere keep theirs.
template <typename Setter>
void handOn(AcDbEntity& owner, Setter&& setter) {
    const hostkit::SubentityList* parts = DatabaseAccess::parts(owner);
    for (std::size_t i = 0; parts && i < parts->count(); ++i) {
        AcDbObject* opened = nullptr;
        if (parts->isResident() && hostkit::openPart(opened, parts->idAt(i)) != Acad::eOk) continue;
        AcDbEntity* part = parts->at(i);
        setter(*part);
        if (parts->isResident()) part->close();
    }
}

/// Sets a field, then the parts' by the same setter.
template <typename Field, typename Value, typename Setter>
Acad::ErrorStatus assignAll(AcDbEntity& entity, Field& field, const Value& value, bool doSubents,
                            Setter&& setter) {
    const Acad::ErrorStatus status = assignField(entity, field, value);
    if (status == Acad::eOk && doSubents) handOn(entity, setter);
    return status;
}

} // namespace

// The look.

Acad::ErrorStatus AcDbEntity::setColor(const AcCmColor& color, bool doSubents, AcDbDatabase*) {
    return assignAll(*this, m_color, color.entityColor(), doSubents,
                     [&](AcDbEntity& part) { part.setColor(color, false); });
}

Acad::ErrorStatus AcDbEntity::setColorIndex(Adesk::UInt16 index, bool doSubents) {
    AcCmEntityColor color;
    const Acad::ErrorStatus status = color.setColorIndex(index);
    return status == Acad::eOk ? setColor(color, doSubents) : status;
}

namespace {

wchar_t* recordName(AcDbObjectId id) {
    const auto* record = DatabaseAccess::objectOf<AcDbSymbolTableRecord>(id);
    return record ? acutNewString(record->name().c_str()) : nullptr;
}

template <typename Record>
bool isRecord(AcDbObjectId id) {
    return DatabaseAccess::objectOf<Record>(id) != nullptr;
}

AcDbDatabase* drawingOf(const AcDbEntity& entity) { return hostkit::orWorkingDatabase(entity.database()); }

} // namespace

wchar_t* AcDbEntity::layer() const { return recordName(m_layerId); }

Acad::ErrorStatus AcDbEntity::setLayer(const wchar_t* name, bool doSubents) {
    if (!name) return Acad::eInvalidInput;
    const AcDbDatabase* drawing = drawingOf(*this);
    if (!drawing) return Acad::eNoDatabase;
    const auto* table = DatabaseAccess::objectOf<AcDbLayerTable>(drawing->layerTableId());
    const AcDbObjectId id = table ? table->find(name) : AcDbObjectId();
    return id.isNull() ? Acad::eKeyNotFound : setLayer(id, doSubents);
}

Acad::ErrorStatus AcDbEntity::setLayer(AcDbObjectId id, bool doSubents, bool) {
    if (!isRecord<AcDbLayerTableRecord>(id)) return Acad::eNotThatKindOfClass;
    if (database() && id.database() != database()) return Acad::eInvalidInput;
    return assignAll(*this, m_layerId, id, doSubents, [id](AcDbEntity& part) { part.setLayer(id, false); });
}

wchar_t* AcDbEntity::linetype() const {
    return m_linetypeId.isNull() ? acutNewString(L"ByLayer") : recordName(m_linetypeId);
}

Acad::ErrorStatus AcDbEntity::setLinetype(const wchar_t* name, bool doSubents) {
    if (!name) return Acad::eInvalidInput;
    const AcDbDatabase* drawing = drawingOf(*this);
    if (!drawing) return Acad::eNoDatabase;
    const auto* table = DatabaseAccess::objectOf<AcDbLinetypeTable>(drawing->linetypeTableId());
    const AcDbObjectId id = table ? table->find(name) : AcDbObjectId();
    return id.isNull() ? Acad::eKeyNotFound : setLinetype(id, doSubents);
}

Acad::ErrorStatus AcDbEntity::setLinetype(AcDbObjectId id, bool doSubents) {
    if (!isRecord<AcDbLinetypeTableRecord>(id)) return Acad::eNotThatKindOfClass;
    if (database() && id.database() != database()) return Acad::eInvalidInput;
    return assignAll(*this, m_linetypeId, id, doSubents,
                     [id](AcDbEntity& part) { part.setLinetype(id, false); });
}

Acad::ErrorStatus AcDbEntity::setLinetypeScale(double scale, bool doSubents) {
    if (!std::isfinite(scale) || scale <= 0.0) return Acad::eInvalidInput;
    return assignAll(*this, m_linetypeScale, scale, doSubents,
                     [scale](AcDbEntity& part) { part.setLinetypeScale(scale, false); });
}

Acad::ErrorStatus AcDbEntity::setLineWeight(AcDb::LineWeight weight, bool doSubents) {
    if (!hostkit::isLineWeight(weight)) return Acad::eInvalidInput;
    return assignAll(*this, m_lineWeight, static_cast<Adesk::Int16>(weight), doSubents,
                     [weight](AcDbEntity& part) { part.setLineWeight(weight, false); });
}

Acad::ErrorStatus AcDbEntity::setVisibility(AcDb::Visibility visibility, bool doSubents) {
    return assignAll(*this, m_invisible, visibility == AcDb::kInvisible, doSubents,
                     [visibility](AcDbEntity& part) { part.setVisibility(visibility, false); });
}

Adesk::UInt32 AcDbEntity::setAttributes(AcGiDrawableTraits* traits) {
    if (traits) hostkit::setLook(*traits, *this);
    return kDrawableIsAnEntity | (m_invisible ? kDrawableIsInvisible : kDrawableNone);
}

void AcDbEntity::setDatabaseDefaults(AcDbDatabase* database) {
    const AcDbDatabase* drawing = hostkit::orWorkingDatabase(database ? database : this->database());
    if (!drawing || assertWriteEnabled() != Acad::eOk) return;
    m_layerId = drawing->clayer();
    m_linetypeId = drawing->celtype();
    m_color = drawing->cecolor().entityColor();
    m_lineWeight = static_cast<Adesk::Int16>(drawing->celweight());
    m_linetypeScale = drawing->celtscale();
}

Acad::ErrorStatus AcDbEntity::setPropertiesFrom(const AcDbEntity* other, bool doSubents) {
    if (!other) return Acad::eNullEntityPointer;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    m_invisible = other->m_invisible;
    m_lineWeight = other->m_lineWeight;
    m_color = other->m_color;
    m_layerId = other->m_layerId;
    m_linetypeId = other->m_linetypeId;
    m_linetypeScale = other->m_linetypeScale;
    if (doSubents) handOn(*this, [other](AcDbEntity& part) { part.setPropertiesFrom(other, false); });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::recordGraphicsModified(Adesk::Boolean modified) {
    return modified ? assertWriteEnabled() : Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::draw() {
    const Acad::ErrorStatus status = assertReadEnabled();
    if (status == Acad::eOk && database()) DatabaseAccess::display(*database()).redrawAsked(*this);
    return status;
}

// The geometry, where a kind does not say otherwise.

Acad::ErrorStatus AcDbEntity::getGeomExtents(AcDbExtents& extents) const {
    const hostkit::DrawnExtents drawn = hostkit::drawnExtents(*this);
    if (drawn.box.isEmpty() || drawn.isEndless) return Acad::eInvalidExtents;
    extents = drawn.box;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::subTransformBy(const AcGeMatrix3d&) { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbEntity::explode(AcDbVoidPtrArray&) const { return Acad::eNotApplicable; }
void AcDbEntity::getEcs(AcGeMatrix3d& matrix) const { matrix.setToIdentity(); }

Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d& matrix) {
    if (!hasXData() && !hostkit::DatabaseAccess::embedded(*this)) return subTransformBy(matrix);
    hostkit::ExtendedDataMotion motion(matrix);
    Acad::ErrorStatus status = motion.add(*this);
    if (status == Acad::eOk) status = subTransformBy(matrix);
    if (status != Acad::eOk) return status;
    motion.apply();
    hostkit::moveEmbeddedParagraph(*this, matrix);
    return status;
}

Acad::ErrorStatus AcDbEntity::getTransformedCopy(const AcGeMatrix3d& matrix, AcDbEntity*& copy) const {
    AcDbEntity* moved = cast(clone());
    if (!moved) return Acad::eNotApplicable;
    const Acad::ErrorStatus status = moved->transformBy(matrix);
    if (status == Acad::eOk)
        copy = moved;
    else
        delete moved;
    return status;
}

Acad::ErrorStatus AcDbEntity::intersectWith(const AcDbEntity*, AcDb::Intersect, AcGePoint3dArray&,
                                            Adesk::IntPtr, Adesk::IntPtr) const {
    return Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbEntity::intersectWith(const AcDbEntity*, AcDb::Intersect, const AcGePlane&,
                                            AcGePoint3dArray&, Adesk::IntPtr, Adesk::IntPtr) const {
    return Acad::eNotApplicable;
}

hostkit::SubentityList* AcDbEntity::subentities() { return nullptr; }

void AcDbEntity::listOwned(std::vector<AcDbObjectId>& owned) const {
    const hostkit::SubentityList* const parts = const_cast<AcDbEntity*>(this)->subentities();
    for (std::size_t i = 0; parts && i < parts->count(); ++i) owned.push_back(parts->idAt(i));
}

std::size_t AcDbEntity::takeBack(AcDbObjectId part) {
    hostkit::SubentityList* const parts = subentities();
    return parts ? parts->takeBack(part) : hostkit::notListed;
}

void AcDbEntity::giveBack(AcDbObjectId part, std::size_t place) {
    if (hostkit::SubentityList* const parts = subentities()) parts->giveBack(part, place);
}

#include "sketch.h"

#include "vexoentityfiler.h"

#include "dbfiler.h"
#include "gemat3d.h"

#include <iterator>

ACRX_DXF_DEFINE_MEMBERS(ExampleSketch, AcDbObject, AcDb::kDHL_CURRENT, 0, 0, VEXOSKETCH, SKETCHES)

namespace {

constexpr short countCode = 90;
constexpr wchar_t subclass[] = L"ExampleSketch";

Adesk::Int32 countOf(const ExampleSketch::Entities& entities) {
    return static_cast<Adesk::Int32>(entities.size());
}

/// So many entities, each read by the function; the count is believed as far as it goes well.
template <class Read>
Acad::ErrorStatus readEntities(Adesk::Int32 count, ExampleSketch::Entities& entities, const Read& read) {
    for (; count > 0; --count) {
        AcDbEntity* entity = nullptr;
        const Acad::ErrorStatus status = read(entity);
        std::unique_ptr<AcDbEntity> owned(entity);
        if (status != Acad::eOk) return status;
        if (owned) entities.push_back(std::move(owned));
    }
    return Acad::eOk;
}

} // namespace

Acad::ErrorStatus ExampleSketch::append(Entities entities) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk) return status;
    std::move(entities.begin(), entities.end(), std::back_inserter(m_entities));
    return Acad::eOk;
}

Acad::ErrorStatus ExampleSketch::transformBy(const AcGeMatrix3d& matrix) {
    Entities moved;
    for (const std::unique_ptr<AcDbEntity>& each : m_entities) {
        moved.emplace_back(AcDbEntity::cast(each->clone()));
        const Acad::ErrorStatus status =
            moved.back() ? moved.back()->transformBy(matrix) : Acad::eNotApplicable;
        if (status != Acad::eOk) return status;
    }
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) m_entities = std::move(moved);
    return status;
}

Acad::ErrorStatus ExampleSketch::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus status = AcDbObject::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(subclass)) return status;
    AcDbDxfGroup group;
    if (!filer->readExpected(countCode, group)) return filer->filerStatus();
    Entities read;
    status = readEntities(static_cast<Adesk::Int32>(group.integer), read, [filer](AcDbEntity*& entity) {
        return VEXOEntityFiler::dxfInFieldsEntity(filer, entity);
    });
    if (status != Acad::eOk) return status;
    m_entities = std::move(read);
    // What a later version of this module may file behind them stays in the record.
    while ((status = filer->readItem(group)) == Acad::eOk) filer->rejectItem();
    return status == Acad::eEndOfObject ? Acad::eOk : status;
}

Acad::ErrorStatus ExampleSketch::dxfOutFields(AcDbDxfFiler* filer) const {
    Acad::ErrorStatus status = AcDbObject::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(subclass);
    filer->writeInt32(countCode, countOf(m_entities));
    for (const std::unique_ptr<AcDbEntity>& each : m_entities) {
        status = VEXOEntityFiler::dxfOutFieldsEntity(filer, each.get());
        if (status != Acad::eOk) return status;
    }
    return filer->filerStatus();
}

Acad::ErrorStatus ExampleSketch::dwgInFields(AcDbDwgFiler* filer) {
    Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk) status = AcDbObject::dwgInFields(filer);
    Adesk::Int32 count = 0;
    if (status == Acad::eOk) status = filer->readInt32(&count);
    if (status != Acad::eOk) return status;
    Entities read;
    status = readEntities(count, read, [filer](AcDbEntity*& entity) {
        return VEXOEntityFiler::dwgInFieldsEntity(filer, entity);
    });
    if (status == Acad::eOk) m_entities = std::move(read);
    return status;
}

Acad::ErrorStatus ExampleSketch::dwgOutFields(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus status = AcDbObject::dwgOutFields(filer);
    if (status == Acad::eOk) status = filer->writeInt32(countOf(m_entities));
    for (const std::unique_ptr<AcDbEntity>& each : m_entities)
        if (status == Acad::eOk) status = VEXOEntityFiler::dwgOutFieldsEntity(filer, each.get());
    return status;
}

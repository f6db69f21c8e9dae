#include "dblayertablerecord.h"

#include "assignfield.h"
#include "casefold.h"
#include "dbaccess.h"
#include "dblinetypetablerecord.h"
#include "fielditems.h"
#include "lineweights.h"
#include "symbolnames.h"

#include <cstdlib>

using namespace hostkit;

HOSTKIT_KIT_CLASS(AcDbLayerTableRecord, AcDbSymbolTableRecord, L"LAYER")

using hostkit::assignField;

Acad::ErrorStatus AcDbLayerTableRecord::setIsOff(bool off) { return assignField(*this, m_off, off); }

Acad::ErrorStatus AcDbLayerTableRecord::setIsFrozen(bool frozen) {
    if (frozen && database() && database()->clayer() == objectId()) return Acad::eNotApplicable;
    return assignField(*this, m_frozen, frozen);
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsLocked(bool locked) {
    return assignField(*this, m_locked, locked);
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsPlottable(bool plottable) {
    return assignField(*this, m_plottable, plottable);
}

Acad::ErrorStatus AcDbLayerTableRecord::setVPDFLT(bool frozen) {
    return assignField(*this, m_frozenInNewViewports, frozen);
}

Acad::ErrorStatus AcDbLayerTableRecord::setColor(const AcCmColor& color) {
    const bool isOwn = !color.isByLayer() && !color.isByBlock();
    return hostkit::assignIf(isOwn, *this, m_color, color.entityColor());
}

Acad::ErrorStatus AcDbLayerTableRecord::setLinetypeObjectId(AcDbObjectId id) {
    const AcDbObject* object = hostkit::DatabaseAccess::object(id);
    if (!id.isNull() && (!object || !object->isKindOf(AcDbLinetypeTableRecord::desc())))
        return Acad::eNotThatKindOfClass;
    return assignField(*this, m_linetypeId, id);
}

Acad::ErrorStatus AcDbLayerTableRecord::setLineWeight(AcDb::LineWeight weight) {
    const bool isOwn = weight >= 0 || weight == AcDb::kLnWtByLwDefault;
    return hostkit::assignIf(isOwn && hostkit::isLineWeight(weight), *this, m_lineWeight,
                             static_cast<Adesk::Int16>(weight));
}

Acad::ErrorStatus AcDbLayerTableRecord::subErase(Adesk::Boolean erasing) {
    const bool isCurrent = database() && database()->clayer() == objectId();
    if (erasing && (isCurrent || m_name == L"0")) return Acad::eCannotBeErasedByCaller;
    return AcDbSymbolTableRecord::subErase(erasing);
}

// --- Filing ------------------------------------------------------------------------------------------------

struct AcDbLayerTableRecord::Filing {
    static constexpr GroupField<AcDbLayerTableRecord> groups[] = {
        textField<&AcDbLayerTableRecord::m_name, AcDbLayerTableRecord>(2),
        nameField<&AcDbLayerTableRecord::m_linetypeId, TableKind::kLinetype>(6),
        integerField<&AcDbLayerTableRecord::m_plottable>(290, 1),
        integerField<&AcDbLayerTableRecord::m_lineWeight>(370, AcDb::kLnWtByLwDefault),
        idField<&AcDbLayerTableRecord::m_plotStyleId>(390),
    };
    static constexpr short flagsCode = 70;
    static constexpr short colorCode = 62;
    static constexpr short trueColorCode = 420;
    static constexpr Adesk::Int16 frozenFlag = 1;
    static constexpr Adesk::Int16 frozenInNewViewportsFlag = 2;
    static constexpr Adesk::Int16 lockedFlag = 4;

    static bool readGroup(AcDbLayerTableRecord& layer, const AcDbDxfGroup& group) {
        switch (group.code) {
        case flagsCode:
            layer.m_dxfFlags = static_cast<Adesk::Int16>(group.integer);
            layer.m_frozen = (group.integer & frozenFlag) != 0;
            layer.m_frozenInNewViewports = (group.integer & frozenInNewViewportsFlag) != 0;
            layer.m_locked = (group.integer & lockedFlag) != 0;
            return layer.m_dxfFlags == group.integer;
        case colorCode: // below zero for a layer that is off
            layer.m_off = group.integer < 0;
            if (layer.m_color.isByColor()) return true;
            return layer.m_color.setColorIndex(
                       static_cast<Adesk::UInt16>(std::llabs(group.integer) & 0xFFFF)) == Acad::eOk;
        case trueColorCode:
            layer.m_color.setRGB(static_cast<Adesk::UInt8>(group.integer >> 16 & 0xFF),
                                 static_cast<Adesk::UInt8>(group.integer >> 8 & 0xFF),
                                 static_cast<Adesk::UInt8>(group.integer & 0xFF));
            return true;
        default:
            return false;
        }
    }

    static Adesk::Int64 flagsOf(const AcDbLayerTableRecord& layer) {
        constexpr Adesk::Int16 known = frozenFlag | frozenInNewViewportsFlag | lockedFlag;
        return (layer.m_dxfFlags & ~known) | (layer.m_frozen ? frozenFlag : 0) |
               (layer.m_frozenInNewViewports ? frozenInNewViewportsFlag : 0) |
               (layer.m_locked ? lockedFlag : 0);
    }
};

Acad::ErrorStatus AcDbLayerTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbLayerTableRecord")) return status;
    return readFields(*filer, Filing::groups, *this,
                      [this](const AcDbDxfGroup& group) { return Filing::readGroup(*this, group); });
}

Acad::ErrorStatus AcDbLayerTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbLayerTableRecord");
    const auto& [name, linetype, plottable, weight, plotStyle] = Filing::groups;
    name.write(*this, name, *filer);
    filer->writeInteger(Filing::flagsCode, Filing::flagsOf(*this));
    const Adesk::Int64 index = m_color.colorIndex();
    filer->writeInteger(Filing::colorCode, m_off ? -index : index);
    if (m_color.isByColor()) {
        filer->markSince(AcDb::kDHL_1018);
        filer->writeInteger(Filing::trueColorCode, m_color.rgb());
    }
    if (m_linetypeId.isNull()) filer->markOptional();
    writeRecord(*filer, linetype.code, *this, m_linetypeId, L"CONTINUOUS");
    for (const auto* field : {&plottable, &weight, &plotStyle}) {
        filer->markSince(AcDb::kDHL_1015);
        field->write(*this, *field, *filer);
    }
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbLayerTableRecord)

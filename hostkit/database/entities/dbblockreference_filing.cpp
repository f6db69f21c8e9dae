#include "dbblockreference.h"

#include "fielditems.h"
#include "symbolnames.h"

using namespace hostkit;

struct AcDbBlockReference::Filing {
    static constexpr GroupField<AcDbBlockReference> groups[] = {
        nameField<&AcDbBlockReference::m_blockId, TableKind::kBlock>(2),
        pointField<&AcDbBlockReference::m_ecsPosition>(10),
        angleField<&AcDbBlockReference::m_rotation>(50, 0.0),
        normalField<&AcDbBlockReference::m_normal>(),
    };
    static constexpr short attributesFollowCode = 66;
    static constexpr short firstScaleCode = 41;

    static bool readGroup(AcDbBlockReference& reference, const AcDbDxfGroup& group) {
        switch (group.code) {
        case attributesFollowCode:
            return true; // whether some follow is seen
        case firstScaleCode:
            reference.m_scale.sx = group.real;
            return true;
        case firstScaleCode + 1:
            reference.m_scale.sy = group.real;
            return true;
        case firstScaleCode + 2:
            reference.m_scale.sz = group.real;
            return true;
        default:
            return false;
        }
    }

    static bool hasAttributes(const AcDbBlockReference& reference) {
        const SubentityList& attributes = reference.m_attributes;
        for (std::size_t place = 0; place < attributes.count(); ++place)
            if (!attributes.isErasedAt(place)) return true;
        return false;
    }

    static void writeScale(const AcGeScale3d& scale, AcDbDxfFiler& filer) {
        short code = firstScaleCode;
        for (const double factor : {scale.sx, scale.sy, scale.sz}) {
            if (factor == 1.0) filer.markDefault();
            filer.writeReal(code++, factor);
        }
    }
};

// An array of references bears either mark, by its writer.
Acad::ErrorStatus AcDbBlockReference::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    const std::wstring_view own = subclassMark();
    const wchar_t* const other = own == L"AcDbMInsertBlock" ? L"AcDbBlockReference" : L"AcDbMInsertBlock";
    if (!filer->atEitherSubclass(own.data(), other)) return status;
    return readFields(*filer, Filing::groups, *this, [this, filer](const AcDbDxfGroup& group) {
        return Filing::readGroup(*this, group) || readArrayGroup(group, *filer);
    });
}

Acad::ErrorStatus AcDbBlockReference::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(subclassMark());
    const auto& [block, position, rotation, normal] = Filing::groups;
    const bool hasAttributes = Filing::hasAttributes(*this);
    if (!hasAttributes) filer->markDefault();
    filer->writeInteger(Filing::attributesFollowCode, hasAttributes);
    block.write(*this, block, *filer);
    position.write(*this, position, *filer);
    Filing::writeScale(m_scale, *filer);
    rotation.write(*this, rotation, *filer);
    writeArrayGroups(*filer);
    normal.write(*this, normal, *filer);
    return filer->filerStatus();
}

// A plain reference may say that it is an array of one.
bool AcDbBlockReference::readArrayGroup(const AcDbDxfGroup& group, AcDbDxfFiler&) {
    constexpr short columnsCode = 70;
    constexpr short rowsCode = 71;
    return (group.code == columnsCode || group.code == rowsCode) &&
           (group.integer == 0 || group.integer == 1);
}

void AcDbBlockReference::writeArrayGroups(AcDbDxfFiler& filer) const {
    for (const short code : {70, 71}) {
        filer.markDefault();
        filer.writeInteger(code, 1);
    }
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbBlockReference)

#include "dbent.h"

#include "dbaccess.h"
#include "fielditems.h"
#include "symbolnames.h"

using namespace hostkit;

struct AcDbEntity::Filing {
    static constexpr short paperSpaceCode = 67;
    static constexpr short colorCode = 62;
    static constexpr short trueColorCode = 420;

    static constexpr GroupField<AcDbEntity> layer[] = {
        nameField<&AcDbEntity::m_layerId, TableKind::kLayer>(8),
    };
    static constexpr GroupField<AcDbEntity> linetype[] = {
        nameField<&AcDbEntity::m_linetypeId, TableKind::kLinetype>(6),
    };
    static constexpr GroupField<AcDbEntity> look[] = {
        layer[0],
        linetype[0],
        integerField<&AcDbEntity::m_lineWeight>(370, AcDb::kLnWtByLayer),
        realField<&AcDbEntity::m_linetypeScale>(48, 1.0),
        integerField<&AcDbEntity::m_invisible>(60, 0),
    };

    static bool readGroup(AcDbEntity& entity, const AcDbDxfGroup& group) {
        switch (group.code) {
        case paperSpaceCode:
            return group.integer == 1; // which space it is, the owner tells
        case colorCode:
            // Beside a true colour the index is only the nearest one.
            if (entity.m_color.isByColor()) return true;
            return group.integer >= 0 && entity.m_color.setColorIndex(
                                             static_cast<Adesk::UInt16>(group.integer & 0xFFFF)) == Acad::eOk;
        case trueColorCode:
            entity.m_color.setRGB(static_cast<Adesk::UInt8>(group.integer >> 16 & 0xFF),
                                  static_cast<Adesk::UInt8>(group.integer >> 8 & 0xFF),
                                  static_cast<Adesk::UInt8>(group.integer & 0xFF));
            return true;
        default:
            return false;
        }
    }

    static bool isInPaperSpace(const AcDbEntity& entity) {
        const std::wstring_view space = symbolName(entity.blockId(), L"");
        constexpr std::wstring_view paper = L"*Paper_Space";
        return space.size() >= paper.size() && equalFolded(space.substr(0, paper.size()), paper);
    }

    static void writeColor(const AcCmEntityColor& color, AcDbDxfFiler& filer) {
        if (color.isByLayer()) filer.markDefault();
        filer.writeInteger(colorCode, color.colorIndex());
        if (!color.isByColor()) return;
        filer.markSince(AcDb::kDHL_1018);
        filer.writeInteger(trueColorCode, color.rgb());
    }

    static void writeLinetype(const AcDbEntity& entity, AcDbDxfFiler& filer) {
        constexpr std::wstring_view byLayer = L"BYLAYER";
        const short code = linetype[0].code;
        const bool isUnknown = DatabaseAccess::unknownName(entity, code) != nullptr;
        if (!isUnknown && equalFolded(symbolName(entity.m_linetypeId, byLayer), byLayer)) filer.markDefault();
        writeRecord(filer, code, entity, entity.m_linetypeId, byLayer);
    }
};

Adesk::UInt32 DatabaseAccess::lookBit(short code) {
    constexpr short codes[] = {8, 6, 62, 370, 48, 60, 420};
    for (std::size_t place = 0; place < std::size(codes); ++place)
        if (codes[place] == code) return 1u << place;
    return 0;
}

bool DatabaseAccess::readLook(AcDbEntity& entity, const AcDbDxfGroup& group, AcDbDxfFiler& filer) {
    for (const GroupField<AcDbEntity>& field : AcDbEntity::Filing::look)
        if (field.code == group.code) return field.read(entity, group, filer);
    return AcDbEntity::Filing::readGroup(entity, group);
}

Acad::ErrorStatus AcDbEntity::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbObject::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbEntity")) return status;
    return readFields(*filer, Filing::look, *this,
                      [this](const AcDbDxfGroup& group) { return Filing::readGroup(*this, group); });
}

Acad::ErrorStatus AcDbEntity::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbObject::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbEntity");
    if (Filing::isInPaperSpace(*this)) {
        filer->markOptional();
        filer->writeInteger(Filing::paperSpaceCode, 1);
    }
    if (symbolName(m_layerId, L"0") == L"0") filer->markOptional();
    writeRecord(*filer, Filing::layer[0].code, *this, m_layerId, L"0");
    Filing::writeLinetype(*this, *filer);
    Filing::writeColor(m_color, *filer);
    const auto& [layer, linetype, weight, scale, invisible] = Filing::look;
    filer->markSince(AcDb::kDHL_1015);
    weight.write(*this, weight, *filer);
    filer->markSince(AcDb::kDHL_1012);
    scale.write(*this, scale, *filer);
    invisible.write(*this, invisible, *filer);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbEntity)

#include "dbtext.h"

#include "dbattdef.h"
#include "dbattribute.h"
#include "fielditems.h"
#include "symbolnames.h"

using namespace hostkit;

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

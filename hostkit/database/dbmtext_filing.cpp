#include "dbmtext.h"

#include "fielditems.h"
#include "symbolnames.h"

using namespace hostkit;

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
    const auto& [location, height, width, boxHeight, attachment, flow, style, normal, spacing, factor] =
        Filing::head;
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
    writeEmbedded(*filer, *this);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbMText)

#include "dbdimension.h"

#include "fielditems.h"
#include "symbolnames.h"

using namespace hostkit;

struct AcDbDimension::Filing {
    static constexpr GroupField<AcDbDimension> head[] = {
        nameField<&AcDbDimension::m_blockId, TableKind::kBlock>(2),
        integerField<&AcDbDimension::m_type>(70),
        integerField<&AcDbDimension::m_attachment>(71, 5),
        integerField<&AcDbDimension::m_lineSpacingStyle>(72, 1),
        realField<&AcDbDimension::m_lineSpacingFactor>(41, 1.0),
        integerField<&AcDbDimension::m_isFirstArrowFlipped>(74, 0),
        integerField<&AcDbDimension::m_isSecondArrowFlipped>(75, 0),
        optionalTextField<&AcDbDimension::m_text>(1),
        angleField<&AcDbDimension::m_textRotation>(53, 0.0),
        angleField<&AcDbDimension::m_horizontalRotation>(51, 0.0),
        normalField<&AcDbDimension::m_normal>(),
        nameField<&AcDbDimension::m_styleId, TableKind::kDimStyle>(3),
    };
    /// Of the types' own subclasses, whichever has them.
    static constexpr GroupField<AcDbDimension> ofType[] = {
        angleField<&AcDbDimension::m_rotation>(50, 0.0),
        angleField<&AcDbDimension::m_oblique>(52, 0.0),
        realField<&AcDbDimension::m_leaderLength>(40),
    };
    static constexpr short styleCode = 3;
    static constexpr short firstPointCode = 10;
    static constexpr short lastPointCode = 16;
    static constexpr short firstPointOfTypeCode = 12;
    static constexpr short measurementCode = 42;
    static constexpr Adesk::UInt8 placeInHeadBit = 0x80; ///< of m_hasPoint: the point 12 stands there

    static bool readPoint(AcDbDimension& dimension, const AcDbDxfGroup& group) {
        const int index = group.code - firstPointCode;
        if (index < 0 || group.code > lastPointCode) return false;
        dimension.m_points[index].set(group.point[0], group.point[1], group.point[2]);
        dimension.m_hasPoint = static_cast<Adesk::UInt8>(dimension.m_hasPoint | 1 << index);
        return true;
    }

    /// The place of the dimension's block stands in the part of all dimensions or in that of the type, by the
    /// writer.
    static bool readHeadPoint(AcDbDimension& dimension, const AcDbDxfGroup& group) {
        if (group.code > firstPointOfTypeCode || !readPoint(dimension, group)) return false;
        if (group.code == firstPointOfTypeCode) dimension.m_hasPoint |= placeInHeadBit;
        return true;
    }

    static bool readHead(AcDbDimension& dimension, const AcDbDxfGroup& group) {
        if (group.code != measurementCode) return readHeadPoint(dimension, group);
        dimension.m_measurement = group.real;
        return dimension.m_hasMeasurement = true;
    }

    static void writePoints(const AcDbDimension& dimension, short from, short to, AcDbDxfFiler& filer) {
        for (short code = from; code <= to; ++code)
            if (dimension.m_hasPoint >> (code - firstPointCode) & 1)
                filer.writeItem(code, dimension.m_points[code - firstPointCode]);
    }

    /// The subclasses behind AcDbDimension, by type. A rotated dimension is an aligned one with an angle.
    static const wchar_t* markOf(Type type) {
        switch (type) {
        case kRotated:
        case kAligned:
            return L"AcDbAlignedDimension";
        case kTwoLineAngular:
            return L"AcDb2LineAngularDimension";
        case kDiametric:
            return L"AcDbDiametricDimension";
        case kRadial:
            return L"AcDbRadialDimension";
        case kThreePointAngular:
            return L"AcDb3PointAngularDimension";
        case kOrdinate:
            return L"AcDbOrdinateDimension";
        case kArcLength: // a class of its own
            return nullptr;
        }
        return nullptr;
    }

    static Acad::ErrorStatus readOfType(AcDbDimension& dimension, AcDbDxfFiler& filer) {
        const wchar_t* const mark = markOf(dimension.dimensionType());
        if (!mark || !filer.atSubclassData(mark)) return filer.filerStatus();
        const auto point = [&](const AcDbDxfGroup& group) { return readPoint(dimension, group); };
        const Acad::ErrorStatus status = readFields(filer, ofType, dimension, point);
        if (status != Acad::eOk || dimension.dimensionType() != kRotated || !filer.hasSubclassMarks())
            return status;
        return filer.atSubclassData(L"AcDbRotatedDimension") ? readFields(filer, ofType, dimension, point)
                                                             : status;
    }

    static void writeOfType(const AcDbDimension& dimension, AcDbDxfFiler& filer) {
        const Type type = dimension.dimensionType();
        const wchar_t* const mark = markOf(type);
        if (!mark) return;
        filer.writeSubclassMark(mark);
        const bool placeInHead = (dimension.m_hasPoint & placeInHeadBit) != 0;
        writePoints(dimension, firstPointOfTypeCode + (placeInHead ? 1 : 0), lastPointCode, filer);
        const auto& [rotation, oblique, leader] = ofType;
        if (type == kRadial || type == kDiametric) leader.write(dimension, leader, filer);
        if (type != kRotated && type != kAligned) return;
        rotation.write(dimension, rotation, filer);
        oblique.write(dimension, oblique, filer);
        if (type == kRotated) filer.writeSubclassMark(L"AcDbRotatedDimension");
    }
};

Acad::ErrorStatus AcDbDimension::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbDimension")) return status;
    m_hasPoint = 0;
    m_hasMeasurement = false;
    status = readFields(*filer, Filing::head, *this,
                        [this](const AcDbDxfGroup& group) { return Filing::readHead(*this, group); });
    takeStandardRecord(*filer, TableKind::kDimStyle, Filing::styleCode, *this, m_styleId);
    return status == Acad::eOk ? Filing::readOfType(*this, *filer) : status;
}

Acad::ErrorStatus AcDbDimension::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbDimension");
    const auto& [block, type, attachment, spacing, factor, firstFlip, secondFlip, text, textRotation,
                 horizontal, normal, style] = Filing::head;
    block.write(*this, block, *filer);
    const bool placeInHead = (m_hasPoint & Filing::placeInHeadBit) != 0;
    Filing::writePoints(*this, Filing::firstPointCode, Filing::firstPointOfTypeCode - (placeInHead ? 0 : 1),
                        *filer);
    type.write(*this, type, *filer);
    for (const auto* field : {&attachment, &spacing, &factor}) field->write(*this, *field, *filer);
    if (m_hasMeasurement) filer->writeReal(Filing::measurementCode, m_measurement);
    for (const auto* field : {&firstFlip, &secondFlip, &text, &textRotation, &horizontal, &normal})
        field->write(*this, *field, *filer);
    // Older records do without the standard style's name.
    if (equalFolded(symbolName(m_styleId, L"STANDARD"), L"STANDARD")) filer->markOptional();
    writeRecord(*filer, style.code, *this, m_styleId, L"STANDARD");
    Filing::writeOfType(*this, *filer);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbDimension)

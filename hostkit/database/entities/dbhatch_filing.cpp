#include "dbhatch.h"

#include "fielditems.h"
#include "fieldtable.h"
#include "hatchfiling.h"

#include <utility>

using namespace hostkit;

struct AcDbHatch::Filing {
    static constexpr GroupField<AcDbHatch> head[] = {
        normalField<&AcDbHatch::m_normal>(),           textField<&AcDbHatch::m_patternName>(2),
        integerField<&AcDbHatch::m_solidFill>(70),     integerField<&AcDbHatch::m_associative>(71),
        integerField<&AcDbHatch::m_style>(75),         integerField<&AcDbHatch::m_patternType>(76),
        angleField<&AcDbHatch::m_patternAngle>(52),    realField<&AcDbHatch::m_patternScale>(41),
        integerField<&AcDbHatch::m_patternDouble>(77),
    };
    static constexpr short elevationCode = 10;
    static constexpr short loopCountCode = 91;
    static constexpr short patternLineCountCode = 78;
    static constexpr short pixelSizeCode = 47;
    static constexpr short seedCountCode = 98;
    static constexpr short seedCode = 10;

    static bool isGradientGroup(int code) {
        constexpr short firstGradientCode = 450;
        constexpr short lastGradientCode = 470;
        constexpr short indexColorCode = 63;
        constexpr short trueColorCode = 421;
        return (code >= firstGradientCode && code <= lastGradientCode) || code == indexColorCode ||
               code == trueColorCode;
    }

    static void readElevation(AcDbHatch& hatch, const AcDbDxfGroup& group) {
        hatch.m_elevationX = group.point[0];
        hatch.m_elevationY = group.point[1];
        hatch.m_elevation = group.point[2];
    }

    /// What the table has not. The status is the filer's where a part of the hatch is not as it should be.
    static bool readGroup(AcDbHatch& hatch, const AcDbDxfGroup& group, AcDbDxfFiler& filer,
                          bool& hasElevation) {
        switch (group.code) {
        case elevationCode:
            if (!hasElevation) readElevation(hatch, group);
            return !std::exchange(hasElevation, true);
        case loopCountCode:
            readHatchLoops(filer, group.integer, hatch.m_loops);
            return true;
        case patternLineCountCode:
            readPatternLines(filer, group.integer, hatch.m_patternLines);
            return true;
        case pixelSizeCode:
            hatch.m_pixelSize = group.real;
            return hatch.m_hasPixelSize = true;
        case seedCountCode:
            readSeedPoints(filer, group.integer, hatch.m_seedPoints);
            return true;
        default:
            if (!isGradientGroup(group.code) || !isStorable(group)) return false;
            hatch.m_gradient.append(group);
            return true;
        }
    }

    static void writePattern(const AcDbHatch& hatch, AcDbDxfFiler& filer) {
        const auto& [normal, name, solid, associative, style, type, angle, scale, isDouble] = head;
        for (const auto* field : {&angle, &scale, &isDouble}) {
            if (hatch.m_solidFill) filer.markDefault();
            field->write(hatch, *field, filer);
        }
        if (hatch.m_solidFill && hatch.m_patternLines.empty()) filer.markDefault();
        filer.writeInteger(patternLineCountCode, static_cast<Adesk::Int64>(hatch.m_patternLines.size()));
        writePatternLines(filer, hatch.m_patternLines);
    }

    static void writeTail(const AcDbHatch& hatch, AcDbDxfFiler& filer) {
        if (hatch.m_hasPixelSize) filer.writeReal(pixelSizeCode, hatch.m_pixelSize);
        if (hatch.m_seedPoints.empty()) filer.markOptional();
        filer.writeInteger(seedCountCode, static_cast<Adesk::Int64>(hatch.m_seedPoints.size()));
        for (const AcGePoint2d& seed : hatch.m_seedPoints) filer.writeItem(seedCode, seed);
        writeBlock(filer, hatch.m_gradient, AcDb::kDHL_1018);
    }

    static void clear(AcDbHatch& hatch) {
        hatch.m_loops.clear();
        hatch.m_patternLines.clear();
        hatch.m_seedPoints.clear();
        hatch.m_gradient.clear();
        hatch.m_hasPixelSize = false;
    }
};

Acad::ErrorStatus AcDbHatch::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
    if (status != Acad::eOk || !filer->atSubclassData(L"AcDbHatch")) return status;
    Filing::clear(*this);
    bool hasElevation = false;
    return readFields(*filer, Filing::head, *this, [&](const AcDbDxfGroup& group) {
        return Filing::readGroup(*this, group, *filer, hasElevation);
    });
}

Acad::ErrorStatus AcDbHatch::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbEntity::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeSubclassMark(L"AcDbHatch");
    const auto& [normal, name, solid, associative, style, type, angle, scale, isDouble] = Filing::head;
    filer->writeItem(Filing::elevationCode, AcGePoint3d(m_elevationX, m_elevationY, m_elevation));
    if (isZAxis(m_normal)) filer->markOptional();
    filer->writeItem(normal.code, m_normal);
    for (const auto* field : {&name, &solid, &associative}) field->write(*this, *field, *filer);
    filer->writeInteger(Filing::loopCountCode, static_cast<Adesk::Int64>(m_loops.size()));
    writeHatchLoops(*filer, m_loops);
    style.write(*this, style, *filer);
    type.write(*this, type, *filer);
    Filing::writePattern(*this, *filer);
    Filing::writeTail(*this, *filer);
    return filer->filerStatus();
}

HOSTKIT_FILE_FIELDS_AS_ITEMS(AcDbHatch)

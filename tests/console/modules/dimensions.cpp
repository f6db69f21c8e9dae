// A module for the judges of dimensions: it takes their pictures from all dimensions of a drawing, so that a
// save draws them anew, and it makes a dimension of every kind in each of twelve styles.
#include "acdocman.h"
#include "aced.h"
#include "dbaccess.h"
#include "dbblocktablerecord.h"
#include "dbdatabase.h"
#include "dbdim.h"
#include "dbdimstyletable.h"
#include "dbobjptr.h"
#include "modulecommand.h"
#include "rxdlinkr.h"

#include <functional>
#include <string>
#include <vector>

namespace {

using hostkit::DatabaseAccess;

AcDbDatabase& drawing() { return *acDocManagerPtr()->curDocument()->database(); }

void dropPictures() {
    std::vector<AcDbDimension*> dimensions;
    DatabaseAccess::forEachObject(drawing(), [&](AcDbObject& object) {
        auto* const dimension = AcDbDimension::cast(&object);
        if (dimension && !dimension->isErased()) dimensions.push_back(dimension);
    });
    for (AcDbDimension* const each : dimensions) {
        const AcDbObjectPointer<AcDbDimension> dimension(each->objectId(), AcDb::kForWrite);
        if (dimension.object()) (void)dimension->setDimBlockId(AcDbObjectId::kNull);
    }
}

using Style = AcDbDimStyleTableRecord;

struct NamedStyle {
    const wchar_t* name;
    std::function<void(Style&)> set;
};

void metric(Style& style) {
    style.setDimasz(2.5);
    style.setDimexo(0.625);
    style.setDimexe(1.25);
    style.setDimtxt(2.5);
    style.setDimgap(0.625);
    style.setDimcen(2.5);
    style.setDimtad(1);
    style.setDimtih(false);
    style.setDimtoh(false);
    style.setDimtofl(true);
    style.setDimdec(2);
    style.setDimzin(8);
    style.setDimtolj(0);
    style.setDimdsep(L',');
}

void imperial(Style& style) { style.setDimscale(14.0); }

std::vector<NamedStyle> twelveStyles() {
    return {
        {L"Metric", metric},
        {L"Imperial", imperial},
        {L"Ticks", [](Style& s) { metric(s), s.setDimblk(L"_ArchTick"), s.setDimdle(1.0); }},
        {L"Strokes", [](Style& s) { metric(s), s.setDimtsz(2.0), s.setDimdle(1.0); }},
        {L"Framed", [](Style& s) { metric(s), s.setDimgap(-0.625); }},
        {L"Two arrows",
         [](Style& s) {
             metric(s), s.setDimsah(true), s.setDimblk1(L"_Open90"), s.setDimblk2(L"_Integral");
         }},
        {L"Level", [](Style& s) { metric(s), s.setDimtih(true), s.setDimtoh(true), s.setDimtad(0); }},
        {L"Dots", [](Style& s) { metric(s), s.setDimblk(L"_Dot"), s.setDimtad(0); }},
        {L"Tolerance", [](Style& s) { metric(s), s.setDimtol(true), s.setDimtp(0.05), s.setDimtm(0.02); }},
        {L"Alternate", [](Style& s) { metric(s), s.setDimalt(true), s.setDimaltf(0.0393700787); }},
        {L"Prefix", [](Style& s) { metric(s), s.setDimpost(L"~<> mm"), s.setDimrnd(0.5); }},
        {L"Coloured",
         [](Style& s) {
             metric(s), s.setDimclrd(AcCmEntityColor(255, 0, 0)), s.setDimclrt(AcCmEntityColor(0, 0, 255)),
                 s.setDimclre(AcCmEntityColor(0, 255, 0)), s.setDimlfac(0.1), s.setDimfxlenOn(true),
                 s.setDimfxlen(3.0), s.setDimblk(L"_Open30");
         }},
    };
}

AcDbObjectId addStyle(const NamedStyle& wanted) {
    AcDbDimStyleTable* table = nullptr;
    if (drawing().getDimStyleTable(table, AcDb::kForWrite) != Acad::eOk) return AcDbObjectId::kNull;
    auto* const style = new Style;
    (void)style->setName(wanted.name);
    wanted.set(*style);
    AcDbObjectId id;
    if (table->add(id, style) == Acad::eOk)
        style->close();
    else
        delete style;
    table->close();
    return id;
}

std::vector<AcDbDimension*> everyKind(double x, double y, AcDbObjectId style) {
    const auto at = [&](double right, double up) { return AcGePoint3d(x + right, y + up, 0.0); };
    std::vector<AcDbDimension*> made = {
        new AcDbRotatedDimension(0.0, at(0, 0), at(40, 4), at(40, 14), nullptr, style),
        new AcDbRotatedDimension(1.5707963267948966, at(50, 0), at(55, 30), at(62, 0), nullptr, style),
        new AcDbRotatedDimension(0.0, at(70, 0), at(74.25, 0), at(74.25, 8), nullptr, style),
        new AcDbAlignedDimension(at(95, 0), at(125, 20), at(90, 12), nullptr, style),
        new AcDb2LineAngularDimension(at(140, 0), at(170, 0), at(140, 5), at(160, 30), at(160, 14), nullptr,
                                      style),
        new AcDb3PointAngularDimension(at(180, 0), at(205, 0), at(190, 22), at(200, 14), nullptr, style),
        new AcDbRadialDimension(at(230, 10), at(238, 16), 5.0, nullptr, style),
        new AcDbDiametricDimension(at(275, 22), at(255, 2), 0.0, nullptr, style),
        new AcDbOrdinateDimension(false, at(300, 5), at(320, 12), nullptr, style),
        new AcDbOrdinateDimension(true, at(345, 0), at(345, 16), nullptr, style),
        new AcDbArcDimension(at(370, 0), at(390, 0), at(375, 20), at(385, 15), nullptr, style),
    };
    return made;
}

void makeDimensions() {
    double y = 0.0;
    for (const NamedStyle& wanted : twelveStyles()) {
        const AcDbObjectId style = addStyle(wanted);
        const AcDbObjectPointer<AcDbBlockTableRecord> space(drawing().modelSpaceId(), AcDb::kForWrite);
        for (AcDbDimension* const dimension : everyKind(0.0, y, style)) {
            if (space->appendAcDbEntity(dimension) == Acad::eOk)
                dimension->close();
            else
                delete dimension;
        }
        y -= 60.0;
    }
}

} // namespace

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet) {
    if (message == AcRx::kInitAppMsg) {
        acrxDynamicLinker->unlockApplication(packet);
        acedRegCmds->addCommand(L"DIMENSIONS", L"DROPPICTURES", L"", 0, dropPictures);
        acedRegCmds->addCommand(L"DIMENSIONS", L"MAKEDIMENSIONS", L"", 0, makeDimensions);
    }
    if (message == AcRx::kUnloadAppMsg) acedRegCmds->removeGroup(L"DIMENSIONS");
    return AcRx::kRetOK;
}

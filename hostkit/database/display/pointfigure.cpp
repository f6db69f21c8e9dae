#include "pointfigure.h"

#include "dbdatabase.h"
#include "dbobjptr.h"
#include "dbpoint.h"
#include "dbviewporttable.h"
#include "dbviewporttablerecord.h"
#include "headervariables.h"

#include <numbers>

namespace hostkit {

namespace {

constexpr int figureMask = 7;
constexpr int circleBit = 32;
constexpr int squareBit = 64;
constexpr int nothing = 1;

int modeOf(const AcDbPoint& point) {
    const AcDbDatabase* database = point.database();
    return database ? static_cast<int>(database->header().integer(L"PDMODE")) : 0;
}

double viewHeight(AcDbDatabase& database) {
    const AcDbSymbolTablePointer<AcDbViewportTable> table(&database, AcDb::kForRead);
    AcDbObjectId id;
    if (!table.object() || table->getAt(L"*Active", id) != Acad::eOk) return 0.0;
    const AcDbObjectPointer<AcDbViewportTableRecord> view(id, AcDb::kForRead);
    return view.object() ? view->height() : 0.0;
}

double sizeOf(AcDbDatabase& database) {
    constexpr double usualShare = 0.05;
    const double told = database.header().real(L"PDSIZE");
    if (told > 0.0) return told;
    const double height = viewHeight(database);
    if (!(height > 0.0)) return 1.0;
    return height * (told < 0.0 ? -told / 100.0 : usualShare);
}

void appendStroke(PicturePath& path, double x0, double y0, double x1, double y1) {
    path.moveTo(AcGePoint3d(x0, y0, 0.0));
    path.lineTo(AcGePoint3d(x1, y1, 0.0));
}

// In lengths of half the size.
void appendMark(PicturePath& path, int figure) {
    if (figure == 2) {
        appendStroke(path, -2.0, 0.0, 2.0, 0.0);
        appendStroke(path, 0.0, -2.0, 0.0, 2.0);
    } else if (figure == 3) {
        appendStroke(path, -1.0, -1.0, 1.0, 1.0);
        appendStroke(path, -1.0, 1.0, 1.0, -1.0);
    } else if (figure == 4) {
        appendStroke(path, 0.0, 0.0, 0.0, 1.0);
    }
}

void appendFrames(PicturePath& path, int mode) {
    if (mode & circleBit) {
        PicturePath ring;
        ring.arc(AcGePoint3d(), AcGeVector3d::kXAxis, AcGeVector3d::kYAxis, 0.0, 2.0 * std::numbers::pi);
        ring.close();
        path.append(ring);
    }
    if (mode & squareBit) {
        PicturePath square;
        for (const auto& [x, y] :
             {std::pair(-1.0, -1.0), std::pair(1.0, -1.0), std::pair(1.0, 1.0), std::pair(-1.0, 1.0)})
            square.lineTo(AcGePoint3d(x, y, 0.0));
        square.close();
        path.append(square);
    }
}

} // namespace

bool isPointShown(const AcDbPoint& point) { return modeOf(point) != nothing; }

PicturePath pointFigure(const AcDbPoint& point) {
    PicturePath path;
    const int mode = modeOf(point);
    appendMark(path, mode & figureMask);
    appendFrames(path, mode);
    if (path.isEmpty()) return path;
    AcGeMatrix3d place = AcGeMatrix3d::planeToWorld(point.normal());
    place.postMultBy(AcGeMatrix3d::scaling(sizeOf(*point.database()) / 2.0, AcGePoint3d()));
    place.preMultBy(AcGeMatrix3d::translation(point.position().asVector()));
    path.transformBy(place);
    return path;
}

} // namespace hostkit

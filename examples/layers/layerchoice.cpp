#include "layerchoice.h"

#include "aced.h"
#include "dbapserv.h"
#include "dbdatabase.h"
#include "dblayertable.h"
#include "modulecommand.h"
#include "vexolayertools.h"
#include "vexosmartopen.h"

namespace {

AcDbObjectIdArray layersLike(const CString& wanted, AcDbDatabase& drawing) {
    AcDbObjectIdArray found;
    AcDbObjectId layer;
    // Also a name whose letters would mean something in a pattern.
    if (VEXOLayerTools::existLayer(wanted, layer)) {
        found.append(layer);
        return found;
    }
    CString pattern = wanted;
    pattern.MakeUpper();
    AcDbObjectIdArray all;
    VEXOLayerTools::getAllLayers(all, &drawing);
    for (const AcDbObjectId each : all)
        if (acutWcMatch(nameOf(each).MakeUpper(), pattern) == RTNORM) found.append(each);
    return found;
}

bool refuse(Acad::ErrorStatus status, const CString& reason) {
    hostkit::failCommand(status, reason.view());
    return false;
}

} // namespace

AcDbDatabase* drawingOrFail() {
    AcDbDatabase* const drawing = acdbHostApplicationServices()->workingDatabase();
    if (!drawing) hostkit::failCommand(Acad::eNoDatabase, L"no drawing is open");
    return drawing;
}

bool readLayers(AcDbObjectIdArray& layers) {
    AcDbDatabase* const drawing = drawingOrFail();
    CString text;
    if (!drawing || acedGetString(0, L"Layers: ", text) != RTNORM) return false;
    layers.setLogicalLength(0);
    int start = 0;
    for (CString each = text.Tokenize(L",", start); start != -1; each = text.Tokenize(L",", start)) {
        const AcDbObjectIdArray found = layersLike(each, *drawing);
        if (found.isEmpty()) return refuse(Acad::eKeyNotFound, L"there is no layer \"" + each + L"\"");
        for (const AcDbObjectId layer : found)
            if (!layers.contains(layer)) layers.append(layer);
    }
    return !layers.isEmpty() ||
           refuse(Acad::eInvalidInput, L"the name of a layer is needed, or a pattern such "
                                       L"as WALL*; several stand with commas alone between");
}

CString nameOf(AcDbObjectId layer) {
    const VEXOSmartOpen<AcDbLayerTableRecord> record(layer, AcDb::kForRead, false);
    const wchar_t* name = L"";
    if (record.status() == Acad::eOk) record->getName(name);
    return name;
}

CString namesOf(const AcDbObjectIdArray& layers) {
    CString names;
    for (const AcDbObjectId layer : layers)
        names += (names.IsEmpty() ? L"\"" : L", \"") + nameOf(layer) + L"\"";
    return names;
}

CString countedLayers(int count) {
    CString text;
    text.Format(count == 1 ? L"%d layer" : L"%d layers", count);
    return text;
}

CString countedEntities(long count) {
    CString text;
    text.Format(count == 1 ? L"%ld entity" : L"%ld entities", count);
    return text;
}

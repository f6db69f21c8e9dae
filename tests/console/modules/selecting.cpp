#include "selecting.h"

#include "aced.h"
#include "acedads.h"
#include "dbid.h"
#include "filtertext.h"
#include "modulecommand.h"
#include "vexolayertools.h"

#include <string>

namespace {

void printWhole(const resbuf* filter) {
    ads_name set = {0, 0};
    Adesk::Int32 count = 0;
    if (acedSSGet(L"_X", nullptr, nullptr, filter, set) == RTNORM) acedSSLength(set, &count);
    std::wstring handles;
    for (Adesk::Int32 i = 0; i < count; ++i) {
        ads_name name;
        AcDbObjectId id;
        wchar_t handle[17] = {};
        if (acedSSName(set, i, name) == RTNORM && acdbGetObjectId(id, name) == Acad::eOk)
            id.handle().getIntoAsciiBuffer(handle);
        handles.append(L" ").append(handle);
    }
    acedSSFree(set);
    acutPrintf(L"whole drawing %d:%s\n", count, handles.c_str());
}

AcDbObjectId askedLayer() {
    CString name;
    if (acedGetString(1, L"Layer: ", name) != RTNORM) return {};
    const AcDbObjectId layer = VEXOLayerTools::getLayerId(name);
    if (layer.isNull()) hostkit::failCommand(Acad::eKeyNotFound, L"there is no such layer");
    return layer;
}

} // namespace

void selectWhole() {
    CString text;
    if (acedGetString(1, L"Filter: ", text) != RTNORM) return;
    const hostkit::FilterReading reading = hostkit::readFilterText(text.view());
    if (!reading.isRead()) return hostkit::failCommand(Acad::eInvalidInput, reading.problem);
    printWhole(reading.list.get());
}

void freezeNamed() { VEXOLayerTools::freezeLayer(askedLayer(), true); }

void lockNamed() { VEXOLayerTools::lockLayer(askedLayer(), true); }

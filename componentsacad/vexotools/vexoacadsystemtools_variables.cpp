#include "vexoacadsystemtools.h"

#include "cvxlogentry.h"
#include "vexoacadsystemtools_internal.h"

using namespace vexo;

namespace {

Acad::ErrorStatus setVariable(const wchar_t* name, const resbuf& record) {
    return acedSetVar(name, &record) == RTNORM ? Acad::eOk : Acad::eInvalidInput;
}

} // namespace

int VEXOAcadSystemTools::getSysVar(const wchar_t* name) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::getSysVar");
    const Variable variable(name);
    return variable.has(RTSHORT) ? variable.value().rint : 0;
}

void VEXOAcadSystemTools::getSysVar(const wchar_t* name, double& value) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::getSysVar");
    const Variable variable(name);
    if (variable.has(RTREAL)) value = variable.value().rreal;
}

bool VEXOAcadSystemTools::getSysVar(const wchar_t* name, AcGePoint2d& value) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::getSysVar");
    const Variable variable(name);
    if (!variable.has(RTPOINT)) return false;
    value.set(variable.value().rpoint[0], variable.value().rpoint[1]);
    return true;
}

bool VEXOAcadSystemTools::getSysVar(const wchar_t* name, AcGePoint3d& value) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::getSysVar");
    const Variable variable(name);
    if (!variable.has(RT3DPOINT)) return false;
    const ads_real* const point = variable.value().rpoint;
    value.set(point[0], point[1], point[2]);
    return true;
}

Acad::ErrorStatus VEXOAcadSystemTools::setSysVar(const wchar_t* name, int value) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::setSysVar");
    resbuf record{};
    record.restype = RTSHORT;
    record.resval.rint = static_cast<short>(value);
    return setVariable(name, record);
}

Acad::ErrorStatus VEXOAcadSystemTools::setSysVar(const wchar_t* name, double value) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::setSysVar");
    resbuf record{};
    record.restype = RTREAL;
    record.resval.rreal = value;
    return setVariable(name, record);
}

Acad::ErrorStatus VEXOAcadSystemTools::setSysVar(const wchar_t* name, const AcGePoint2d& value) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::setSysVar");
    resbuf record{};
    record.restype = RTPOINT;
    record.resval.rpoint[0] = value.x;
    record.resval.rpoint[1] = value.y;
    return setVariable(name, record);
}

Acad::ErrorStatus VEXOAcadSystemTools::setSysVar(const wchar_t* name, const AcGePoint3d& value) {
    CVxLogEntry entry(L"VEXOAcadSystemTools::setSysVar");
    resbuf record{};
    record.restype = RT3DPOINT;
    record.resval.rpoint[0] = value.x;
    record.resval.rpoint[1] = value.y;
    record.resval.rpoint[2] = value.z;
    return setVariable(name, record);
}

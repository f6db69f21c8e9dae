#include "barprotocols.h"

#include "bar.h"

#include "dbobjptr.h"
#include "gebndblock3d.h"
#include "vexoboundblockprotocol.h"
#include "vexodomainprotocol.h"

namespace {

class BarDomain : public VEXODomainProtocol {
public:
    Acad::ErrorStatus getDomain(const AcDbEntity*, CString& domain) override {
        domain = L"les éléments de ferraillage";
        return Acad::eOk;
    }
};

class BarBoundBlock : public VEXOBoundBlockProtocol {
public:
    Acad::ErrorStatus getBoundBlock(AcDbObjectId id, AcGeBoundBlock3d& block) override {
        const AcDbObjectPointer<ExampleBar> bar(id, AcDb::kForRead);
        if (!bar.object()) return bar.openStatus();
        AcDbExtents box;
        const Acad::ErrorStatus status = bar->getGeomExtents(box);
        if (status == Acad::eOk) block.set(box.minPoint(), box.maxPoint());
        return status;
    }
};

BarDomain barDomain;
BarBoundBlock barBoundBlock;

} // namespace

void addBarProtocols() {
    ExampleBar::desc()->addX(VEXODomainProtocol::desc(), &barDomain);
    ExampleBar::desc()->addX(VEXOBoundBlockProtocol::desc(), &barBoundBlock);
}

void removeBarProtocols() {
    ExampleBar::desc()->delX(VEXODomainProtocol::desc());
    ExampleBar::desc()->delX(VEXOBoundBlockProtocol::desc());
}

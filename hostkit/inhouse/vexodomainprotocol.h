// Stand-in for the host's in-house protocol of domains. Covers asking an entity's class for its domain; leaves out editing of domains.
#pragma once

#include "acadstrc.h"
#include "afx.h"
#include "rxboiler.h"

class AcDbEntity;

/// What an application adds to its entity classes (AcRxClass::addX) so that commands can tell whose they are.
class VEXODomainProtocol : public AcRxObject {
    ACRX_DECLARE_MEMBERS(VEXODomainProtocol)

public:
    ~VEXODomainProtocol() override;
    /// The name of the part of the application that the entity belongs to, as a sentence would name it. The
    /// entity is open, for notify at least.
    virtual Acad::ErrorStatus getDomain(const AcDbEntity* entity, CString& domain) = 0;
};

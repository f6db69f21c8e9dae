// Stand-in for the host's run-time object. Covers class identity, casts, protocol look-up, clone and copyFrom; leaves out reference counting.
#pragma once

#include "acadstrc.h"
#include "adesk.h"

class AcRxClass;

/// The root of every class that the host knows at run time.
class AcRxObject {
public:
    virtual ~AcRxObject() = default;

    static AcRxClass* desc();
    static void rxInit();
    static AcRxObject* cast(const AcRxObject* object) { return const_cast<AcRxObject*>(object); }
    virtual AcRxClass* isA() const;
    /// True for the object's own class and all classes above it. Takes constant time.
    bool isKindOf(const AcRxClass* wanted) const;
    /// The protocol object that stands for `protocol` on this object's class or the nearest class above; else
    /// null.
    AcRxObject* queryX(const AcRxClass* protocol) const;
    AcRxObject* x(const AcRxClass* protocol) const { return queryX(protocol); }

    /// A copy that belongs to the caller, or null where the class has none.
    virtual AcRxObject* clone() const { return nullptr; }
    virtual Acad::ErrorStatus copyFrom(const AcRxObject*) { return Acad::eNotImplementedYet; }
    virtual bool isEqualTo(const AcRxObject* other) const { return this == other; }

protected:
    AcRxObject() = default;
    AcRxObject(const AcRxObject&) = default;
    AcRxObject& operator=(const AcRxObject&) = default;
};

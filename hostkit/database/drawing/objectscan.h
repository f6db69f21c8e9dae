// Walk over what came into a drawing lately: each object once; leaves out what is made of it.
#pragma once

#include "dbaccess.h"

#include <vector>

namespace hostkit {

/// Shows every object of a drawing once, each time those that are new since the last time. The first call
/// walks the whole drawing, the others what was added meanwhile.
class ObjectScan {
public:
    template <typename Look>
    void lookAtNew(const AcDbDatabase& database, Look&& look) {
        for (AcDbStub* stub : m_late) look(*stub->object);
        m_late.clear();
        for (const std::size_t count = DatabaseAccess::stubCount(database); m_seen < count; ++m_seen)
            if (AcDbObject* object = DatabaseAccess::stubAt(database, m_seen)->object) look(*object);
    }
    /// An object came to an id that had been promised, which a scan may have passed already.
    void cameLate(AcDbStub& stub) {
        if (m_seen > 0) m_late.push_back(&stub);
    }

private:
    std::size_t m_seen = 0;
    std::vector<AcDbStub*> m_late;
};

} // namespace hostkit

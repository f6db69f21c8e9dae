// Entities that explode() or a drawing of its own gave, while nobody has taken them; leaves out those of a
// drawing.
#pragma once

#include "acarray.h"
#include "dbent.h"

#include <memory>
#include <utility>

namespace hostkit {

/// Owns what stands in the list: whatever is not taken goes with it.
class OwnedParts {
public:
    OwnedParts() = default;
    ~OwnedParts() {
        for (void* const part : list) delete static_cast<AcDbEntity*>(part);
    }
    OwnedParts(const OwnedParts&) = delete;
    OwnedParts& operator=(const OwnedParts&) = delete;

    /// The part is the caller's; its place is empty.
    std::unique_ptr<AcDbEntity> take(void*& part) {
        return std::unique_ptr<AcDbEntity>(static_cast<AcDbEntity*>(std::exchange(part, nullptr)));
    }

    AcArray<void*> list{};
};

} // namespace hostkit

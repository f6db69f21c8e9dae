// Stand-in for the host's object ids. Covers identity, handle, database and state of an object by its id; leaves out redirection by external references.
#pragma once

#include "adesk.h"
#include "dbhandle.h"

#include <compare>
#include <functional>

class AcDbDatabase;
class AcDbObject;
class AcDbObjectId;
class AcRxClass;

/// What an id points to: one for each object of a drawing, and never moved or reused while the drawing lives.
/// Stubs stand in chunks that are aligned to their size and begin with the drawing, so that a stub needs no
/// pointer to it.
struct AcDbStub {
    AcDbObject* object;    ///< null until the object is there
    Adesk::UInt64 handle;  ///< zero until one is given
    Adesk::UInt16 readers; ///< open for read that often
    Adesk::UInt8 openMode; ///< hostkit::OpenState bits
    Adesk::UInt8 flags;    ///< hostkit::StubFlag bits
    Adesk::UInt32 epoch;   ///< of the drawing's memory of changes when the object was last remembered
};

namespace hostkit {

/// An object can be open directly, and beside that be held by transactions.
enum OpenState : Adesk::UInt8 { kOpenForWrite = 1, kOpenForNotify = 2, kHeldForRead = 4, kHeldForWrite = 8 };
/// Taken back: the object's coming into the drawing was undone, so that it counts as erased for good.
enum StubFlag : Adesk::UInt8 { kStubErased = 1, kStubErasedWithOwner = 2, kStubTakenBack = 4 };

constexpr std::size_t stubChunkSize = std::size_t{64} * 1024;

struct StubChunkHeader {
    AcDbDatabase* database;
    std::size_t ordinal; ///< chunks of one drawing are counted from 0
};

inline StubChunkHeader* chunkOf(const AcDbStub* stub) {
    return reinterpret_cast<StubChunkHeader*>(reinterpret_cast<std::uintptr_t>(stub) & ~(stubChunkSize - 1));
}

} // namespace hostkit

/// One pointer wide. A default id is null. Ids are good as long as their drawing lives.
class AcDbObjectId {
public:
    constexpr AcDbObjectId() = default;
    constexpr explicit AcDbObjectId(AcDbStub* stub)
        : m_stub(stub) {}

    static const AcDbObjectId kNull;

    constexpr bool isNull() const { return m_stub == nullptr; }
    constexpr void setNull() { m_stub = nullptr; }
    /// Not null and of a drawing.
    bool isValid() const { return m_stub && hostkit::chunkOf(m_stub)->database; }
    bool isResident() const { return m_stub && m_stub->object; }
    bool isErased() const { return m_stub && (m_stub->flags & hostkit::kStubErased); }
    AcDbHandle handle() const { return AcDbHandle(m_stub ? m_stub->handle : 0); }
    AcDbDatabase* database() const { return m_stub ? hostkit::chunkOf(m_stub)->database : nullptr; }
    /// The class of the object behind the id, or null. (Defined by the database layer.)
    AcRxClass* objectClass() const;

    Adesk::IntPtr asOldId() const { return reinterpret_cast<Adesk::IntPtr>(m_stub); }
    void setFromOldId(Adesk::IntPtr id) { m_stub = reinterpret_cast<AcDbStub*>(id); }
    constexpr AcDbStub* stub() const { return m_stub; }
    constexpr auto operator<=>(const AcDbObjectId&) const = default;

private:
    AcDbStub* m_stub = nullptr;
};

inline constexpr AcDbObjectId AcDbObjectId::kNull{};

/// Whether two ids stand for the same record: they are the same, or of one drawing and with the same handle.
/// The second can be without the first only where something outside the drawing's own list made up an id.
inline bool c5ObjIdIsEqualTo(AcDbObjectId one, AcDbObjectId other) {
    if (one == other) return true;
    return !one.isNull() && !other.isNull() && one.database() == other.database() &&
           one.stub()->handle != 0 && one.stub()->handle == other.stub()->handle;
}

template <>
struct std::hash<AcDbObjectId> {
    std::size_t operator()(AcDbObjectId id) const noexcept { return std::hash<AcDbStub*>()(id.stub()); }
};

template <typename T>
class AcArray;
using AcDbObjectIdArray = AcArray<AcDbObjectId>;

// The objects outside of blocks and tables, and what is left to do when all is read.

#include "drawingreading.h"

#include "dbblockreference.h"
#include "dbdictionary.h"

#include <unordered_map>

namespace hostkit {

bool DrawingReading::readObjects(const RawGroup& opening) {
    RawGroup group;
    for (;;) {
        if (!next(group)) return false;
        if (group.code == 999) continue;
        if (group.is(0, "ENDSEC")) return true;
        if (group.code != 0 || group.is(0, "SECTION") || group.is(0, "EOF"))
            return fail(Acad::eBadDxfSequence, opening.start, L"the section of the objects is not closed");
        if (!nextRecord(group)) return false;
        std::unique_ptr<AcDbObject> object = withFields(makeObject(m_record));
        const AcDbObject* const added =
            addRead(std::move(object), DatabaseAccess::reserve(m_database, m_head.owner));
        if (!added) return false;
        ++m_report.objectCount;
        // The root is the first dictionary that nobody owns.
        if (m_hasRoot || m_head.owner != 0 || !added->isKindOf(AcDbDictionary::desc())) continue;
        DatabaseAccess::setNamedObjectsDictionary(m_database, added->objectId());
        m_hasRoot = true;
    }
}

bool DrawingReading::finish() {
    if (!checkBlockCycles()) return false;
    makeRoomForHandles();
    const AcDbHandleValue seed = m_database.header().handle(L"HANDSEED");
    if (seed > m_database.handseed().value()) (void)m_database.setHandseed(AcDbHandle(seed));
    DatabaseAccess::setSource(m_database, m_source, m_report.file);
    DatabaseAccess::completeDrawing(m_database);
    // What the drawing lacked and was given stands in no file; it counts as unchanged until somebody changes
    // it.
    DatabaseAccess::forEachObject(m_database,
                                  [](AcDbObject& object) { DatabaseAccess::markUnchanged(object); });
    return true;
}

// Walks the blocks that blocks refer to, without recursion: a file may nest them as deep as it likes.
bool DrawingReading::checkBlockCycles() {
    enum class State : unsigned char { kOpen, kDone };
    std::unordered_map<const AcDbBlockTableRecord*, State> states;
    std::vector<std::pair<const AcDbBlockTableRecord*, std::size_t>> path;
    const AcDbObjectId tableId = DatabaseAccess::table(m_database, TableKind::kBlock);
    if (tableId.isNull()) return true;
    for (const AcDbObjectId root :
         static_cast<AcDbSymbolTable*>(DatabaseAccess::object(tableId))->records()) {
        const auto* const first = DatabaseAccess::objectOf<AcDbBlockTableRecord>(root);
        if (!first || !states.emplace(first, State::kOpen).second) continue;
        path.push_back({first, 0});
        while (!path.empty()) {
            const AcDbBlockTableRecord* const block = path.back().first;
            if (path.back().second == block->entities().size()) {
                states[block] = State::kDone;
                path.pop_back();
                continue;
            }
            const auto* const reference =
                DatabaseAccess::objectOf<AcDbBlockReference>(block->entities()[path.back().second++]);
            const auto* const inner =
                reference ? DatabaseAccess::objectOf<AcDbBlockTableRecord>(reference->blockTableRecord())
                          : nullptr;
            if (!inner) continue;
            const auto [state, isNew] = states.emplace(inner, State::kOpen);
            if (isNew)
                path.push_back({inner, 0});
            else if (state->second == State::kOpen)
                return fail(Acad::eCyclicReference, nullptr,
                            L"the block " + inner->name() + L" contains itself");
        }
    }
    return true;
}

} // namespace hostkit

// The objects outside of blocks and tables, and what is left to do when all is read.

#include "blockcircles.h"
#include "drawingreading.h"
#include "modelerstore.h"
#include "objectwriting.h"

#include "dbdictionary.h"
#include "dbdimstyletablerecord.h"

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
        std::unique_ptr<AcDbObject> object = withFields(makeObject(m_record, m_applications));
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
    if (seed < handleLimit) (void)m_database.setHandseed(AcDbHandle(seed));
    DatabaseAccess::setSource(m_database, m_source, m_report.file);
    DatabaseAccess::completeDrawing(m_database);
    for (const SourceSection& section : m_source->sections)
        if (section.name == L"ACDSDATA")
            readModelerStore(m_database,
                             std::string_view(m_source->bytes).substr(section.offset, section.length));
    // What the drawing lacked and was given stands in no file; it counts as unchanged until somebody changes
    // it.
    DatabaseAccess::forEachObject(m_database, [](AcDbObject& object) {
        if (object.isA() == AcDbDimStyleTableRecord::desc())
            static_cast<AcDbDimStyleTableRecord&>(object).bindNamedBlocks();
        DatabaseAccess::markUnchanged(object);
    });
    rememberGiven();
    return true;
}

// As a save in the drawing's own form would write it.
void DrawingReading::rememberGiven() {
    DrawingStyle style;
    style.text = m_filer.drawingText();
    style.version = m_version;
    style.newline = m_source->endsLinesWithCrLf ? "\r\n" : "\n";
    ObjectWriting writing(m_database, style, {nullptr, 0, 0.0, 0.0});
    DatabaseAccess::forEachObject(m_database, [&](const AcDbObject& object) {
        if (object.sourceSpan().isEmpty())
            (void)writing.writeNew(object, m_source->given[object.handle().value()]);
    });
}

bool DrawingReading::checkBlockCycles() {
    const AcDbBlockTableRecord* const circle = findBlockInItself(m_database);
    return !circle ||
           fail(Acad::eCyclicReference, nullptr, L"the block " + circle->name() + L" contains itself");
}

} // namespace hostkit

// What holds of a drawing file whatever stands in it; asked by the fuzz target and, of its corpus, by the
// tests.
#pragma once

#include "casefold.h"
#include "dbblocktable.h"
#include "dbblocktablerecord.h"
#include "dbdatabase.h"
#include "dbent.h"
#include "dbobjptr.h"
#include "dbsymboltablerecord.h"
#include "drawingaudit.h"
#include "drawinglisting.h"
#include "drawingreader.h"
#include "drawingwriter.h"
#include "gemat3d.h"
#include "undohistory.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace drawinginvariants {

using namespace hostkit;

enum class Edit { moveAll, eraseEverySecond, renameOne, count };

inline std::unique_ptr<AcDbDatabase> read(const std::string& bytes) {
    ReadOptions options;
    options.tellPort = false;
    return openDrawingFromMemory(bytes, L"fuzz", nullptr, options);
}

/// False where the drawing refuses to be saved so, as it may.
inline bool write(const AcDbDatabase& database, std::string& bytes, bool fromFields = false) {
    WriteOptions options;
    options.tellPort = false;
    options.everythingFromFields = fromFields;
    return writeDrawingToMemory(database, bytes, options) == Acad::eOk;
}

inline std::vector<AcDbObjectId> entitiesOf(AcDbDatabase& database) {
    std::vector<AcDbObjectId> all;
    const AcDbSymbolTablePointer<AcDbBlockTable> blocks(&database, AcDb::kForRead);
    if (!blocks.object()) return all;
    for (const AcDbObjectId id : blocks->records()) {
        const AcDbObjectPointer<AcDbBlockTableRecord> block(id, AcDb::kForRead);
        if (block.object()) all.insert(all.end(), block->entities().begin(), block->entities().end());
    }
    return all;
}

inline void renameOne(AcDbDatabase& database, std::size_t choice) {
    std::vector<AcDbObjectId> records;
    for (const AcDbObjectId tableId :
         {database.layerTableId(), database.linetypeTableId(), database.textStyleTableId(),
          database.blockTableId(), database.dimStyleTableId(), database.regAppTableId()}) {
        const AcDbObjectPointer<AcDbSymbolTable> table(tableId, AcDb::kForRead);
        if (table.object()) records.insert(records.end(), table->records().begin(), table->records().end());
    }
    if (records.empty()) return;
    AcDbObjectPointer<AcDbSymbolTableRecord> record(records[choice % records.size()], AcDb::kForWrite);
    if (record.object()) record->setName(L"Renamed");
}

inline void apply(AcDbDatabase& database, Edit edit, std::size_t choice) {
    if (edit == Edit::renameOne) return renameOne(database, choice);
    bool isErased = choice % 2 == 0;
    for (const AcDbObjectId id : entitiesOf(database)) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        if (!entity.object()) continue;
        if (edit == Edit::moveAll) entity->transformBy(AcGeMatrix3d::translation({10.0, -20.0, 0.0}));
        if (edit == Edit::eraseEverySecond && (isErased = !isErased)) entity->erase();
    }
}

/// Kinds and layers of the entities, in order.
inline std::string entitiesAsText(const AcDbDatabase& database) {
    std::wstring text;
    for (const ListedEntity& each : listDrawing(database).entities)
        text += each.type + L' ' + each.layer + L' ' + each.space + L' ' +
                std::to_wstring(each.vertices.size()) + L'\n';
    return {text.begin(), text.end()};
}

/// What does not hold when the drawing is read, written and written from its fields; empty when all does.
inline std::string brokenBySaving(const std::string& bytes) {
    const AuditReport audit = auditDrawingText(bytes); // of what cannot be read, too
    const auto database = read(bytes);
    if (!database) return {};
    if (database->numOpenObjects() != 0) return "an object is left open";
    (void)listingAsJson(listDrawing(*database));
    if (auditDrawing(*database).faultCount() != audit.faultCount())
        return "the audits of the file and of the drawing differ";
    std::string saved;
    if (!write(*database, saved)) return "the unchanged drawing is not saved";
    if (saved != bytes) return "the unchanged drawing is saved otherwise";
    std::string fromFields;
    if (!write(*database, fromFields, true)) return {};
    const auto again = read(fromFields);
    if (!again) return "what was written from fields is not read";
    if (entitiesAsText(*again) != entitiesAsText(*database))
        return "what was written from fields has other entities";
    std::string twice;
    if (!write(*again, twice, true)) return "what was written from fields is not written so again";
    return twice == fromFields ? "" : "what was written from fields is written otherwise the second time";
}

/// What does not hold when the drawing is written in an older and a newer form and in the other coding.
inline std::string brokenByForms(const std::string& bytes) {
    const auto database = read(bytes);
    if (!database) return {};
    WriteOptions options;
    options.tellPort = false;
    for (const DrawingVersion form : {DrawingVersion::kR12, DrawingVersion::k2000, DrawingVersion::k2018}) {
        options.version = form;
        for (const DrawingCoding coding : {DrawingCoding::kText, DrawingCoding::kBinary}) {
            options.coding = coding;
            std::string other;
            if (writeDrawingToMemory(*database, other, options) != Acad::eOk) continue;
            if (!read(other)) return "what was written in another form is not read";
        }
    }
    return {};
}

/// The same of a drawing that is changed, saved and changed back.
inline std::string brokenByEdit(const std::string& bytes, Edit edit, std::size_t choice) {
    const auto database = read(bytes);
    if (!database) return {};
    database->disableUndoRecording(false);
    beginUndoGroup(*database, L"EDIT");
    apply(*database, edit, choice);
    endUndoGroup(*database);
    std::string edited;
    if (write(*database, edited)) {
        const auto again = read(edited);
        if (!again) return "the changed drawing is saved and not read";
        if (entitiesAsText(*again) != entitiesAsText(*database))
            return "the changed drawing is read with other entities";
    }
    UndoReport report;
    if (undoGroupCount(*database) > 0 && undoLastGroup(*database, report) != Acad::eOk)
        return "the change is not taken back";
    std::string back;
    if (!write(*database, back)) return "the drawing that was changed back is not saved";
    return back == bytes ? "" : "the drawing that was changed back is saved otherwise";
}

} // namespace drawinginvariants

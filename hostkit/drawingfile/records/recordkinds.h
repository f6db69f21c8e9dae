// Which object a record makes, by its kind; the tables of a file by their names.
#pragma once

#include "applicationclasses.h"
#include "drawingrecord.h"

#include "dbaccess.h"

#include <memory>
#include <optional>
#include <string_view>

namespace hostkit {

/// A new object for a record of a block or a space; the kinds that neither the kit nor an application has a
/// class for are opaque.
std::unique_ptr<AcDbEntity> makeEntity(const DrawingRecord& record, const ApplicationClasses& applications);
/// The same for a part that the owner holds (vertices, attributes).
std::unique_ptr<AcDbEntity> makePart(const DrawingRecord& record, const AcDbEntity& owner);
/// A new object for a record outside of blocks and tables.
std::unique_ptr<AcDbObject> makeObject(const DrawingRecord& record, const ApplicationClasses& applications);
/// A new record of a table.
std::unique_ptr<AcDbSymbolTableRecord> makeTableRecord(TableKind kind);
std::unique_ptr<AcDbSymbolTable> makeTable(TableKind kind);
/// By the name of a table in a file ("LAYER", "BLOCK_RECORD").
std::optional<TableKind> tableKindOf(std::string_view name);
std::string_view tableName(TableKind kind);
/// An object of the class of the one that was read, for finding out which groups of its record the class
/// takes.
std::unique_ptr<AcDbObject> makeBlank(const AcDbObject& object, const DrawingRecord& record);

} // namespace hostkit

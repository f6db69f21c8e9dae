#pragma once

#include "drawingparts.h"

#include "dbaccess.h"
#include "groupgatherer.h"
#include "headervariables.h"

#include <bit>
#include <cstdio>

namespace drawingtest {

// All that a drawing holds, as text, to the bit: every object with its fields, ties and standing, what the
// containers say of it by order and by name, and the header. Ids that were taken back are no part of it.

inline void addNumber(std::string& text, Adesk::UInt64 number) {
    char digits[24];
    std::snprintf(digits, sizeof digits, "%llX ", static_cast<unsigned long long>(number));
    text += digits;
}

inline void addText(std::string& text, std::wstring_view wide) { text += narrow(wide) + ' '; }

inline void addGroup(std::string& text, const AcDbDxfGroup& group) {
    addNumber(text, static_cast<Adesk::UInt64>(group.code));
    if (group.kind == AcDb::GroupKind::kText || group.kind == AcDb::GroupKind::kBinary)
        return addText(text, group.text);
    const bool isPoint = group.kind == AcDb::GroupKind::kPoint;
    for (int i = 0; i < (isPoint ? 3 : 1); ++i) addNumber(text, std::bit_cast<Adesk::UInt64>(group.point[i]));
}

inline void addGroups(std::string& text, const hostkit::GroupBlock& groups) {
    hostkit::GroupWalker walker(groups);
    for (AcDbDxfGroup group; walker.next(group);) addGroup(text, group);
}

inline void addContents(std::string& text, const AcDbObject& object) {
    if (const auto* block = AcDbBlockTableRecord::cast(&object))
        for (const AcDbObjectId id : block->entities()) addNumber(text, id.handle().value());
    if (const auto* table = AcDbSymbolTable::cast(&object)) {
        for (const AcDbObjectId id : table->records()) {
            const auto* record = hostkit::DatabaseAccess::objectOf<AcDbSymbolTableRecord>(id);
            addNumber(text, id.handle().value());
            addNumber(text, table->find(record->name()).handle().value());
        }
    }
    if (const auto* dictionary = AcDbDictionary::cast(&object)) {
        const std::unique_ptr<AcDbDictionaryIterator> entries(dictionary->newIterator());
        for (; !entries->done(); entries->next()) {
            AcDbObjectId found;
            dictionary->getAt(entries->name(), found);
            addText(text, entries->name());
            addNumber(text, entries->objectId().handle().value());
            addNumber(text, found.handle().value());
        }
    }
}

inline void addObject(std::string& text, AcDbObject& object) {
    const AcDbStub& stub = *object.objectId().stub();
    addNumber(text, stub.handle);
    addText(text, object.isA()->name());
    addNumber(text, stub.flags & ~hostkit::kStubTakenBack);
    addNumber(text, object.ownerId().handle().value());
    addNumber(text, object.isChangedSinceRead());
    addNumber(text, object.differsFromSource());
    addNumber(text, hostkit::DatabaseAccess::extensionDictionary(object).handle().value());
    for (const AcDbObjectId id : hostkit::DatabaseAccess::persistentReactors(object))
        addNumber(text, id.handle().value());
    hostkit::GroupGatherer groups(object.database());
    object.dxfOut(&groups);
    addGroups(text, groups.groups());
    if (auto* entity = AcDbEntity::cast(&object))
        if (const hostkit::SubentityList* parts = hostkit::DatabaseAccess::parts(*entity))
            for (std::size_t i = 0; i < parts->count(); ++i) addNumber(text, parts->idAt(i).handle().value());
    addContents(text, object);
    text += '\n';
}

inline std::string pictureOf(const AcDbDatabase& database) {
    std::string text;
    hostkit::DatabaseAccess::forEachObject(database, [&](AcDbObject& object) {
        if (!(object.objectId().stub()->flags & hostkit::kStubTakenBack)) addObject(text, object);
    });
    for (const auto& variable : database.header().all()) {
        addText(text, variable.name);
        addNumber(text, variable.modified);
        addGroups(text, variable.groups);
        text += '\n';
    }
    return text;
}

} // namespace drawingtest

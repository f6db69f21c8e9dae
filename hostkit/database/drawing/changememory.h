// Undo records: fields of objects, entries of dictionaries and header variables; leaves out when they are
// made and used.
#pragma once

#include "changelog.h"
#include "dbaccess.h"
#include "displaychanges.h"
#include "headervariables.h"
#include "memorydwgfiler.h"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace hostkit {

struct ChangeLog::Restoring {
    explicit Restoring(ChangeLog& changes)
        : log(changes) {
        log.m_isRestoring = true;
    }
    ~Restoring() {
        log.m_isRestoring = false;
        log.m_display.tellRestored();
    }
    Restoring(const Restoring&) = delete;
    Restoring& operator=(const Restoring&) = delete;

    ChangeLog& log;
};

struct ChangeLog::Memory {
    virtual ~Memory() = default;
};

/// Which parts of two states of one object differ.
struct StateDifference {
    bool fields = false;
    bool extendedData = false;
    bool extensionDictionary = false;
    bool reactors = false;
    bool owner = false;

    bool overlaps(const StateDifference& other) const {
        return (fields && other.fields) || (extendedData && other.extendedData) ||
               (extensionDictionary && other.extensionDictionary) || (reactors && other.reactors) ||
               (owner && other.owner);
    }
};

/// All fields of an object, extended data and owner among them, and whether its record in the source still
/// holds. The kit's classes are copied; what a class of an application adds goes through its filing.
struct ChangeLog::StateMemory : Memory {
    explicit StateMemory(const AcDbObject& object);
    /// False where the fields of an application's class could not be had; then nothing can be put back.
    bool isComplete() const { return values != nullptr; }
    void putBack(AcDbObject& object) const;
    /// Of complete ones. Fields that cannot be compared count as different.
    StateDifference differenceTo(const StateMemory& other) const;
    /// The object counts as changed since it was read.
    void takeParts(const StateMemory& from, const StateDifference& parts);

    std::unique_ptr<AcDbObject> values;
    std::shared_ptr<MemoryDwgFiler> fields; ///< null for classes of the kit
};

struct ChangeLog::SlotMemory : Memory {
    SlotMemory(const AcDbDictionary& dictionary, std::size_t slot);
    /// False, and nothing is done, where another entry has the name meanwhile.
    bool putBack(AcDbDictionary& dictionary) const;

    std::size_t index;
    bool wasOwned = false;                        ///< the dictionary owned what the entry named
    std::optional<AcDbDictionary::Entry> earlier; ///< none: the entry was not there
    AcDbObjectId leaving{};                       ///< for doing again: what the entry named meanwhile,
    AcDbObjectId leavingOwner{};                  ///< and the owner that it had before
};

struct ChangeLog::VariableMemory : Memory {
    /// `records`: of the table of which the variable names the current record, where it does.
    VariableMemory(const HeaderVariables& header, std::wstring_view variable, const AcDbSymbolTable* records);
    void putBack(HeaderVariables& header) const { header.putBack(name, earlier); }

    std::wstring name;
    std::optional<HeaderVariables::Variable> earlier; ///< none: the header lacked it
    const AcDbSymbolTable* table;
    AcDbObjectId meant; ///< the record that it named; null for none
};

/// What the drawing was read from, with each object's standing in it.
struct ChangeLog::SourceMemory : Memory {
    explicit SourceMemory(const AcDbDatabase& database);
    void putBack(AcDbDatabase& database) const;

    std::shared_ptr<const DrawingSource> source;
    std::vector<std::pair<const AcDbStub*, PackedSource>> records;
};

} // namespace hostkit

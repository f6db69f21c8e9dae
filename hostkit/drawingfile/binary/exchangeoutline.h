// What stands where in a drawing of the exchange form: sections, tables, blocks with their entities in order.
#pragma once

#include "drawingrecord.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

/// A record by its place in the text.
struct OutlinedRecord {
    std::size_t offset = 0;
    std::uint32_t length = 0;
    std::uint64_t handle = 0;
    std::uint64_t owner = 0;

    [[nodiscard]] bool isThere() const { return length > 0; }
    [[nodiscard]] std::string_view in(std::string_view text) const { return text.substr(offset, length); }
};

struct OutlinedEntity {
    OutlinedRecord record;
    std::uint32_t firstPart = 0, partCount = 0; ///< attributes, vertices and the end of the sequence
};

struct OutlinedTable {
    std::string name; ///< "LAYER"
    OutlinedRecord head;
    std::vector<OutlinedRecord> records;
};

struct OutlinedBlock {
    std::uint64_t handle = 0; ///< of its record in the table
    OutlinedRecord begin, end;
    std::vector<OutlinedEntity> entities;
};

/// An outline of a sound drawing with handles: one that this kit has written.
struct ExchangeOutline {
    std::string_view text;
    std::size_t headerBegin = 0, headerEnd = 0; ///< of the variables' groups
    std::vector<OutlinedRecord> classes;
    std::vector<OutlinedTable> tables;
    std::vector<OutlinedBlock> blocks;
    std::vector<OutlinedRecord> parts, objects;
    std::vector<OutlinedRecord> strays;              ///< entities that stand in no block
    std::size_t storeBegin = 0, storeEnd = 0;        ///< of the section of bodies
    std::set<std::string, std::less<>> applications; ///< that have extended data, as their names stand there

    explicit ExchangeOutline(std::string_view text);
    /// Of the same drawing with other tables and objects: its blocks and entities are those of the earlier
    /// outline, in another place.
    ExchangeOutline(std::string_view text, const ExchangeOutline& earlier);

    [[nodiscard]] const OutlinedTable* table(std::string_view name) const;
    /// Of the record in the table of blocks; null where no block has it.
    [[nodiscard]] const OutlinedBlock* block(std::uint64_t handle) const;
    /// Whether both spaces have their records and blocks, and there is a dictionary of named objects.
    [[nodiscard]] bool hasSpaces() const;
    /// The records of the spaces that have blocks; 0 where there is none.
    [[nodiscard]] std::uint64_t modelSpace() const { return m_modelSpace; }
    [[nodiscard]] std::uint64_t paperSpace() const { return m_paperSpace; }
    [[nodiscard]] std::uint64_t highestHandle() const { return m_highest; }

private:
    friend class Outlining;
    std::uint64_t m_highest = 0;
    std::uint64_t m_modelSpace = 0, m_paperSpace = 0;
    struct Section {
        std::size_t begin = 0, end = 0;
    };
    Section m_blocks, m_entities;
};

/// The value of the first group of that code in a record's head or parts; empty where there is none.
[[nodiscard]] std::string_view valueIn(std::string_view record, int code);

} // namespace hostkit

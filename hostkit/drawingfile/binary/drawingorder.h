// Which records of a binary drawing stand where: tables, blocks with their entities in drawing order,
// objects.
#pragma once

#include "objectmap.h"
#include "recordtranscription.h"

namespace hostkit {

/// A record by its place in the map of objects.
using MapIndex = std::uint32_t;
constexpr MapIndex noRecord = ~MapIndex(0);

/// What holds others, by the drawing's header. 0 where it tells none; tables are then looked for.
struct DrawingRoots {
    std::uint64_t blocks = 0, layers = 0, styles = 0, linetypes = 0, views = 0, coordinateSystems = 0,
                  viewports = 0, applications = 0, dimensionStyles = 0;
    std::uint64_t dictionary = 0; ///< of named objects
    std::uint64_t modelSpace = 0, paperSpace = 0;
};

struct OrderedTable {
    std::string_view name; ///< "LAYER"
    MapIndex control = noRecord;
    std::vector<MapIndex> records;
};

struct OrderedBlock {
    std::uint64_t handle = 0; ///< of its record in the table
    std::string name;         ///< in full, as anonymous blocks have it in their opening record alone
    MapIndex header = noRecord, begin = noRecord, end = noRecord;
    bool isPaper = false;
    /// Attributes, vertices and the end of a sequence stand behind what they belong to.
    std::vector<MapIndex> entities;
};

/// Each record stands at one place at most: what refers to it a second time, a ring, a list that leads to
/// nothing or to a record of another kind is told in the container. An entity that no list leads to is told
/// and put at the end of the block that it names.
struct DrawingOrder {
    std::vector<ObjectPlace> places;  ///< by ascending handle
    std::vector<std::uint16_t> types; ///< of the records, by place, as typeOf; 0 where none can be read
    std::vector<OrderedTable> tables; ///< in the order of exchange files
    std::vector<OrderedBlock> blocks; ///< model space first, then the active paper space
    std::vector<MapIndex> objects;    ///< the dictionary of named objects first, then by handle
    RecordNames names;

    /// noRecord where the map has none of that handle.
    [[nodiscard]] MapIndex find(std::uint64_t handle) const;
};

[[nodiscard]] DrawingOrder orderOf(BinaryContainer& container, std::span<const BinaryClass> classes,
                                   const DrawingRoots& roots);

/// The number of the record's kind: the fixed one where there is one, whatever number the drawing's classes
/// give it.
[[nodiscard]] unsigned typeOf(const RecordReading& reading, unsigned type);

namespace recordtype {
constexpr unsigned attribute = 2, blockBegin = 4, blockEnd = 5, sequenceEnd = 6, insert = 7, firstVertex = 10,
                   lastVertex = 14, viewport = 34, dictionary = 42, blockControl = 48, blockHeader = 49,
                   viewportHeaderControl = 70, viewportHeader = 71;
/// Written at places of their own.
constexpr bool isPart(unsigned type) {
    return type == blockBegin || type == blockEnd || type == attribute || type == sequenceEnd ||
           (type >= firstVertex && type <= lastVertex);
}
} // namespace recordtype

} // namespace hostkit

// Salvage of a damaged text: its groups as records in the places where they belong, whatever its lines say of
// sections; leaves out what is within the records.
#pragma once

#include "dbhandle.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

/// A group of a record that is being repaired.
struct SalvagedGroup {
    int code = 0;
    std::string_view value;
};
using SalvagedGroups = std::vector<SalvagedGroup>;

enum class SalvagedPlace : unsigned char { kTable, kBlock, kEntities, kObjects };

struct SalvagedRecord {
    std::string_view type;
    std::string_view bytes; ///< from the line of the group 0 on
    std::uint32_t line = 0; ///< of the text that was salvaged; 0 for a record that was made here
    SalvagedPlace place = SalvagedPlace::kEntities;
    unsigned char attempts = 0; ///< how often its content was put right
    bool isGone = false;

    bool isPart() const { return type == "VERTEX" || type == "ATTRIB" || type == "SEQEND"; }
};

/// Records by their place in the vector, so that their order is that of the file.
using SalvagedRecords = std::vector<SalvagedRecord>;

struct SalvagedTable {
    std::string_view name;
    SalvagedRecord head; ///< without bytes where the text had none
    SalvagedRecords records;
};

struct SalvagedBlock {
    SalvagedRecord begin;
    SalvagedRecords entities;
    SalvagedRecord end; ///< without bytes where the text had none
};

/// What was met that is not in the records any more.
struct SalvageLoss {
    std::string_view type; ///< empty where no record can be named
    std::uint32_t line = 0;
    std::wstring text;
    bool isLost = true; ///< else the record was kept as far as it can be read
};

/// A drawing as records. The bytes that it was made of must outlive it.
class SalvagedText {
public:
    explicit SalvagedText(std::string_view bytes);
    SalvagedText(const SalvagedText&) = delete;
    SalvagedText& operator=(const SalvagedText&) = delete;

    SalvagedGroups header; ///< variables, from the first group 9 on
    SalvagedRecords classes;
    std::vector<SalvagedTable> tables;
    std::vector<SalvagedBlock> blocks;
    SalvagedRecords entities;
    SalvagedRecords objects;
    std::vector<std::string_view> otherSections; ///< whole, as they stood
    std::vector<SalvageLoss> losses;
    bool hasClasses = false, hasTables = false, hasBlocks = false, hasEntities = false, hasObjects = false;

    SalvagedTable& table(std::string_view name);
    /// Behind the record's name.
    static SalvagedGroups groupsOf(const SalvagedRecord& record);
    void setGroups(SalvagedRecord& record, const SalvagedGroups& groups);
    SalvagedRecord made(std::string_view type, SalvagedPlace place, const SalvagedGroups& groups);
    /// Keeps a text as long as this lives.
    std::string_view kept(std::string text);
    /// Every record but those of classes: tables' heads, their records, blocks, entities, objects.
    void forEach(const std::function<void(SalvagedRecord&)>& call);

    /// Where a record stands in what text() gave last.
    struct Stand {
        std::uint32_t line;
        SalvagedRecord* record; ///< null for the header and what stands between records
    };
    /// The drawing's text, with every section, table, block and sequence closed; records that are gone are
    /// left out.
    std::string text(std::vector<Stand>* stands = nullptr);

private:
    class Reading;
    class Writing;

    std::string_view m_newline = "\r\n";
    std::string_view m_before; ///< comments before the first section
    std::deque<std::string> m_kept;
};

} // namespace hostkit

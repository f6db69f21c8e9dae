// Map of a drawing file: where sections, tables, blocks and header variables stand; leaves out the records in
// between.
#pragma once

#include "groupscanner.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace hostkit {

/// A stretch of the file by its offsets, from the first byte to the one behind the last.
struct FileSpan {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// What has a name and a closing record: a section (ENDSEC), a table (ENDTAB), a block (ENDBLK).
struct NamedSpan {
    std::string name;        ///< as in the file; empty for a block
    std::size_t begin = 0;   ///< of the opening record
    std::size_t closing = 0; ///< of the closing record: where something can be added
    std::size_t end = 0;     ///< behind the closing record
};

struct DrawingStructure {
    std::vector<NamedSpan> sections;
    std::vector<NamedSpan> tables;
    std::vector<NamedSpan> blocks;
    std::vector<NamedSpan> headerVariables; ///< begin at the "9" group; closing and end are the same
    std::size_t endMark = 0;                ///< of the EOF record

    const NamedSpan* section(std::string_view name) const { return find(sections, name); }
    const NamedSpan* table(std::string_view name) const { return find(tables, name); }
    const NamedSpan* headerVariable(std::string_view name) const { return find(headerVariables, name); }
    /// The block whose BLOCK record begins there.
    const NamedSpan* blockAt(std::size_t begin) const;

private:
    static const NamedSpan* find(const std::vector<NamedSpan>& spans, std::string_view name);
};

/// Maps a drawing that was read without a fatal problem.
DrawingStructure mapDrawing(std::string_view bytes);

} // namespace hostkit

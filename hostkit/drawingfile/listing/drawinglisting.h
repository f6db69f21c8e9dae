// Entity listing: type, layer, handle, space, vertices, text, hatch paths and extended data; leaves out
// objects that are no entities.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <utility>
#include <variant>
#include <vector>

class AcDbDatabase;

namespace hostkit {

/// One value of extended data: its group code and what stands there. Handles, layer names and binary chunks
/// are texts, as in a file.
struct ListedValue {
    int code = 0;
    std::variant<std::wstring, double, long long, std::array<double, 3>> value;
};

/// One entity of a block or a space. Coordinates are those that a drawing file holds: of the entity's own
/// plane for kinds that lie in one, of the world for others.
struct ListedEntity {
    std::wstring type; ///< the record's name: "LWPOLYLINE"
    std::wstring layer;
    std::wstring handle; ///< hexadecimal
    std::wstring space;  ///< the name of the block record: "*Model_Space", "*Paper_Space", or a block's name
    /// x, y, z and bulge. Ends of a line; vertices of polylines; corners of solids, traces and faces; control
    /// points of a spline, or its fit points where it has no others; the centre, insertion point or location
    /// of others; empty for kinds that are known only as bytes.
    std::vector<std::array<double, 4>> vertices;
    std::wstring text;     ///< of text, paragraphs, attributes and dimensions, as filed
    std::wstring name;     ///< of an inserted block, an attribute's tag, a hatch's pattern
    std::size_t paths = 0; ///< boundary paths of a hatch
    std::vector<std::pair<std::wstring, std::vector<ListedValue>>> extendedData; ///< by application
};

struct DrawingListing {
    std::wstring version; ///< "AC1027"
    std::vector<ListedEntity> entities;
};

/// All entities that are not erased: model space, the paper spaces, then the other blocks, each in drawing
/// order, attributes behind their insert. Looks at the objects as they stand, open or not.
DrawingListing listDrawing(const AcDbDatabase& database);

/// As UTF-8 text in the form told in docs/drawing-files.md. Numbers are the shortest that read back to the
/// same double; what is no number becomes null.
std::string listingAsJson(const DrawingListing& listing);

} // namespace hostkit

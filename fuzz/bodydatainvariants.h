// What holds of body data whatever stands in them; asked by the fuzz target and, of its corpus, by the tests.
#pragma once

#include "bodydata.h"
#include "bodyediting.h"
#include "shape.h"

#include <string>
#include <string_view>

namespace bodydatainvariants {

/// Empty, or what does not hold: there is a shape or a reason why not; a shape is written in every version
/// and read again with as many faces, edges and lumps; what was moved has as many records, one more at most.
inline std::string faultOf(std::string_view bytes) {
    using namespace hostkit::modeler;
    const ShapeReading reading = readShape(bytes);
    if (reading.shape.has_value() != reading.fault.empty()) return "neither a shape nor a reason";
    AcGeMatrix3d motion;
    motion.setToTranslation({1, 2, 3});
    if (const auto moved = movedBodyData(bytes, motion)) {
        const std::size_t before = readBodyRecords(bytes).records.size(),
                          after = readBodyRecords(*moved).records.size();
        if (after != before + 1) return "moved data have other records";
    }
    if (!reading.shape) return {};
    const Facets facets =
        facetsOf(*reading.shape, {}, [](const auto&, const auto&, double) { return nullptr; });
    if (facets.polyhedron.has_value() != facets.fault.empty()) return "neither facets nor a reason";
    for (const auto& [form, version] : {std::pair{BodyForm::text, 106},
                                        {BodyForm::text, 400},
                                        {BodyForm::text, 700},
                                        {BodyForm::binary, 21800}}) {
        const ShapeReading again = readShape(writeShape(*reading.shape, form, version));
        // Numbers that are no longer finite are refused.
        if (!again.shape)
            return again.fault.starts_with("a record is damaged") ||
                           again.fault.starts_with("an edge ends") ||
                           again.fault.starts_with("a curve has no extent") ||
                           again.fault.starts_with("a surface has no direction")
                       ? ""
                       : "what is written is not read: " + again.fault;
        if (again.shape->faces.size() != reading.shape->faces.size() ||
            again.shape->edges.size() != reading.shape->edges.size() ||
            again.shape->shellLumps != reading.shape->shellLumps)
            return "written anew it is another";
    }
    return {};
}

} // namespace bodydatainvariants

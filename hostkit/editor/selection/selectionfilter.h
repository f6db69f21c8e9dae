// Which entities a selection takes: record lists of groups, compiled once and asked for each entity; leaves
// out binary groups.
#pragma once

#include "adsdef.h"

#include <memory>
#include <optional>
#include <string>

class AcDbDatabase;
class AcDbEntity;

namespace hostkit {

struct FilterProgram;

/// A filter of a selection, compiled once and then run over entities of one drawing.
///
/// A list of groups, all of which must hold. Each is a group code with the value that an entity must have:
///
/// - Texts (codes of texts and handles, 0 or RTDXF0 for the record's name) are patterns of WildcardPattern,
///   without regard to case. Handles are their hexadecimal texts.
/// - Numbers equal within 1e-10, or within a few units in the last place (AcGe::pointAllowance); integers
///   exactly. Angles are in radians. Points are those that the entity files, in the coordinates it files them
///   in, with z 0 where it files none.
/// - 1001: extended data of an application whose name matches. Several behind a group -3, which may have such
///   a pattern as its text too, are one operand, and data of each must be there.
/// - A group -4 before a number or point is how the two compare: "*" (any value), "=", "!=", "/=", "<>", "<",
///   "<=", ">", ">=", and for integers "&" (any of these bits) and "&=" (all of these bits). For a point one
///   to three of them with commas between, for x, y and z; missing ones hold for any value.
/// - Groups -4 "<and" and "and>", "<or" and "or>" enclose one operand or more, "<xor" and "xor>" two, "<not"
///   and "not>" one; nested up to `deepestNesting`. Operators are read without regard to case.
///
/// An entity may file a group several times (10 of a light polyline): one that holds is enough, for "!=" too.
/// One that it does not file holds for nothing; a value that files leave out because it is the standard one
/// counts as filed. All entities have 0, 5, 6 (else "BYLAYER"), 8, 48 (1.0), 60 (0), 62 (256), 67 (0, or 1 in
/// a paper space), 370 (-1) and, in a space, 410, the name of its sheet; groups of these codes that a class
/// files besides are not asked. 330 finds the owner as well, 100 the subclass marks.
class SelectionFilter {
public:
    static constexpr int deepestNesting = 200;

    /// Null takes every entity. Nothing where the list is no filter, with a sentence in `reason` that says
    /// why: groupings that are empty, do not close or have another number of operands; an operator that is
    /// unknown, does not suit the group behind it or has none; a text that is missing, a number that is none;
    /// codes that are no group of an entity (negative ones, binary chunks, 999 and above).
    ///
    /// Names of layers, linetypes, sheets and classes are looked up here: what is added, renamed or erased
    /// later calls for a new filter.
    static std::optional<SelectionFilter> compile(const resbuf* list, AcDbDatabase& database,
                                                  std::wstring* reason = nullptr);

    SelectionFilter(SelectionFilter&&) noexcept;
    SelectionFilter& operator=(SelectionFilter&&) noexcept;
    ~SelectionFilter();

    /// The entity is of the filter's drawing and not erased; how it is open does not matter.
    bool accepts(const AcDbEntity& entity) const;

private:
    explicit SelectionFilter(std::unique_ptr<const FilterProgram> program);

    std::unique_ptr<const FilterProgram> m_program; ///< null takes everything
};

} // namespace hostkit

// The table of the variables of dimensions: which group holds which member, and what a member may hold.
#pragma once

#include "dimensionvariablelist.h"
#include "dimensionvariables.h"

#include "acadstrc.h"

#include <cmath>
#include <span>
#include <type_traits>
#include <variant>

namespace hostkit {

enum class VariableKind : unsigned char {
    text,
    real,
    angle,
    integer,
    flag,
    color,
    character,
    weight,
    block,
    textStyle,
    linetype
};

using VariableMember = std::variant<std::wstring DimensionVariables::*, double DimensionVariables::*,
                                    Adesk::Int16 DimensionVariables::*, bool DimensionVariables::*,
                                    wchar_t DimensionVariables::*, AcDbObjectId DimensionVariables::*>;

struct DimensionVariable {
    short code; ///< of its group in a style's record, and its name in the overrides of a dimension
    VariableKind kind;
    VariableMember member;
    double least;
    double most;
};

/// More than there are variables.
constexpr std::size_t variableLimit = 80;

/// In the order of a record.
std::span<const DimensionVariable> dimensionVariableTable();
/// Null for a code that is no variable's.
const DimensionVariable* dimensionVariable(short code);

/// Whether the member may have the value: eInvalidInput for what is no number, eOutOfRange beyond what the
/// table allows, eNotThatKindOfClass for the id of another record than the variable names. A null id is none.
Acad::ErrorStatus checkVariable(const DimensionVariable& variable, double value);
Acad::ErrorStatus checkVariable(const DimensionVariable& variable, AcDbObjectId value);
inline Acad::ErrorStatus checkVariable(const DimensionVariable&, const std::wstring&) { return Acad::eOk; }
template <typename Integer>
Acad::ErrorStatus checkVariable(const DimensionVariable& variable,
                                Integer value) requires(std::is_integral_v<Integer>) {
    return checkVariable(variable, static_cast<double>(value));
}

/// A member's value as callers take it.
template <typename Shown, typename Stored>
Shown shownVariable(const Stored& stored) {
    if constexpr (std::is_same_v<Stored, std::wstring>) {
        return stored.c_str();
    } else if constexpr (std::is_same_v<Shown, AcCmColor>) {
        AcCmColor color;
        (void)color.setColorIndex(static_cast<Adesk::UInt16>(stored));
        return color;
    } else {
        return static_cast<Shown>(stored);
    }
}

/// The reverse. An integer that the member cannot hold becomes one that no variable may have.
template <typename Stored, typename Shown>
Stored storedVariable(const Shown& shown) {
    if constexpr (std::is_same_v<Stored, std::wstring>) {
        return shown ? Stored(shown) : Stored();
    } else if constexpr (std::is_same_v<Shown, AcCmColor>) {
        return static_cast<Stored>(shown.colorIndex());
    } else if constexpr (std::is_same_v<Shown, int>) {
        const auto stored = static_cast<Stored>(shown);
        return stored == shown ? stored : std::numeric_limits<Stored>::min();
    } else {
        return static_cast<Stored>(shown);
    }
}

} // namespace hostkit

/// A getter and a setter for each variable, as styles and dimensions have them. The setters give
/// eInvalidInput for what is no number, eOutOfRange for a value that the variable cannot have,
/// eNotThatKindOfClass for the id of another kind of record. Texts that are given live until the next change;
/// of a dimension, until the next text is asked for.
#define HOSTKIT_DECLARE_DIMENSION_VARIABLE(name, Name, code, kind, least, most)                              \
    hostkit::variabletypes::kind name() const;                                                               \
    Acad::ErrorStatus set##Name(hostkit::variabletypes::kind value);

// The header variables of a binary drawing, by name.
#pragma once

#include "binarycontainer.h"
#include "recordvalues.h"

#include <array>
#include <optional>
#include <variant>

namespace hostkit {

/// A reference; what kind of reference it is, its variable tells.
struct HeaderReference {
    std::uint64_t handle = 0;
    friend bool operator==(HeaderReference, HeaderReference) = default;
};

struct HeaderColor {
    std::int32_t index = 256;              ///< where it has one: 0 by block, 256 by layer
    std::uint32_t value = 0;               ///< from 2004 on: method in the highest byte; 0: as the index says
    std::optional<std::string> name, book; ///< of the colour
    friend bool operator==(const HeaderColor&, const HeaderColor&) = default;
};

/// Texts are bytes of the drawing's code page up to 2004, from then on UTF-8; a zero at their end that the
/// file counts with them is kept.
using HeaderValue =
    std::variant<std::int64_t, double, std::array<double, 3>, std::string, HeaderColor, HeaderReference>;

/// Variables by the names of the layout HEADER-VARS: those of the exchange form without $, dates as _day
/// (_days) and _ms, tables as LAYER_CONTROL and its like, dictionaries as DICT_LAYOUTS and its like, FLAGS
/// with the bits of CELWEIGHT and others. key23 to key26 are four numbers without meaning that end the
/// section.
struct BinaryHeader {
    std::map<std::string, HeaderValue, std::less<>> values;

    // The value, or the one given where the variable is missing or of another kind.

    [[nodiscard]] std::int64_t whole(std::string_view name, std::int64_t otherwise = 0) const;
    [[nodiscard]] double real(std::string_view name, double otherwise = 0.0) const;
    [[nodiscard]] std::array<double, 3> point(std::string_view name) const;
    [[nodiscard]] std::string_view text(std::string_view name) const; ///< without zeros at the end
    [[nodiscard]] std::uint64_t handle(std::string_view name) const;
};

/// The variables of the section AcDb:Header; none where it cannot be read. What is damaged in it is told in
/// the container; variables behind the damage are missing.
[[nodiscard]] BinaryHeader readHeader(BinaryContainer& container);

/// The section for a drawing of the container's form. A whole number and a real stand for each other; a
/// variable that is missing, or of another kind, has the value that a new drawing has, references refer to
/// nothing. Variables that the form does not have are passed over.
[[nodiscard]] std::vector<std::uint8_t> writeHeader(const BinaryContainer& form, const BinaryHeader& header);

/// As a new drawing has it; 0 for variables that then are zero, empty or refer to nothing.
[[nodiscard]] HeaderValue standardHeaderValue(std::string_view name);

} // namespace hostkit

// Drawing versions: the forms R12 to 2018; leaves out older forms.
#pragma once

#include <optional>
#include <string_view>

namespace hostkit {

/// In the order of their age, so that they can be compared. The numbers are those of $ACADVER.
enum class DrawingVersion : unsigned short {
    kR12 = 1009,
    kR13 = 1012,
    kR14 = 1014,
    k2000 = 1015,
    k2004 = 1018,
    k2007 = 1021,
    k2010 = 1024,
    k2013 = 1027,
    k2018 = 1032,
};

/// "AC1027" and its like. Forms older than R12 (AC1002 to AC1006) read as R12, which they are parts of; a
/// number between two known ones, or above the last, as the known one before it. Nothing for other text.
std::optional<DrawingVersion> versionFromName(std::string_view name);
std::string_view nameOfVersion(DrawingVersion version);

/// R13 and later mark the parts of a record by class ("100"), and give every object a handle and an owner.
constexpr bool hasSubclassMarkers(DrawingVersion version) { return version >= DrawingVersion::kR13; }
/// From 2007 on all text is UTF-8, whatever code page the header names.
constexpr bool isUtf8(DrawingVersion version) { return version >= DrawingVersion::k2007; }

} // namespace hostkit

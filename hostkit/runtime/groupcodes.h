// Codes of groups that mean the same in every record of a drawing.
#pragma once

namespace hostkit {

inline constexpr short handleCode = 5;
inline constexpr short colorCode = 62;
inline constexpr short subclassMarkCode = 100;
inline constexpr short embeddedObjectCode = 101;
/// Opens and closes the groups of an application: its name in braces.
inline constexpr short applicationGroupCode = 102;
/// The handle of a dimension style, whose 5 is an arrow.
inline constexpr short dimStyleHandleCode = 105;
inline constexpr short ownerCode = 330;
inline constexpr short hardOwnerCode = 360;
inline constexpr short trueColorCode = 420;
inline constexpr short colorNameCode = 430;
inline constexpr short commentCode = 999;

// In record lists alone.
inline constexpr short operatorCode = -4;
inline constexpr short extendedDataCode = -3;

// Extended data.
inline constexpr short firstExtendedCode = 1000;
inline constexpr short applicationCode = 1001;
inline constexpr short extendedLayerCode = 1003;
inline constexpr short extendedLongCode = 1071;

} // namespace hostkit

#pragma once

#include "acadstrc.h"
#include "afx.h"
#include "dbid.h"
#include "dbmaindefs.h"
#include "windows.h"

/// Numbers that meet the host's texts and units: conversion of units, numbers in the program's own key files,
/// fractions, and records by their names.
///
/// A value x is within the tolerance of y when they are at most fabs(y) * 1e-10 + 1e-10 apart. Nothing is
/// shown and nothing is thrown.
class VEXOConversionTools {
public:
    // --- Units and numbers ---------------------------------------------------------------------------------

    /// What one unit is in others, with seven significant digits: a conversion and its inverse do not
    /// multiply to exactly 1. False, with the factor left alone, for codes below 1 (undefined) or above 20.
    static bool getUnitsConversion(AcDb::UnitsValue from, AcDb::UnitsValue to, double& factor);

    /// Digits with at most one other character between or before them, whatever it is, as the decimal
    /// separator. With two of those or more, and for an empty or null text, 0.0. It reads the program's own
    /// key files and is no general parser: a leading sign is the separator, so "-5" is 0.5 and "1e5" is 1.5.
    /// More digits than a double has room for give infinity.
    static double StringToDouble(wchar_t* text);
    static double StringToDouble(CString text);

    /// Truncates, but a value that is short of the next whole number (away from 0) by no more than about
    /// 3e-10 is that number. 0 for what is no number or is beyond the range of int.
    static int DoubleToInt(double value);

    /// Times 48 in an imperial working drawing and times 50 in a metric one; divided by that with `inverse`.
    /// Unchanged without a working drawing.
    static double DwgScale2DisplayValue(const double& value, const bool& inverse);

    /// value as whole + numerator / denominator, the fraction found by continued fractions until it is as
    /// near as the tolerance. whole is never above the value by more than the tolerance, so that a negative
    /// value has a fraction that is added: -2.5 is -3 and 1/2. Numerator 0 and denominator 1 for a value that
    /// is whole within the tolerance. The result is how far the fraction is off, 0.0 where there was nothing
    /// to search for. A tolerance below 0, or that is none, is 0; a value that is no number or beyond 64 bits
    /// is 0 and 0/1.
    static double Double2Fraction(double value, __int64& whole, __int64& numerator, __int64& denominator,
                                  double tolerance);

    // --- Records by name -----------------------------------------------------------------------------------

    /// In the current document's drawing, without regard to case; a null id without a document or the record.
    static AcDbObjectId GetLineTypeId(CString name);
    /// Empty where the record cannot be opened for read.
    static CString GetLineTypeName(AcDbObjectId id);
    /// In the working drawing, case and all; a null id for an empty name, without a drawing or the record.
    static AcDbObjectId GetTextStyleId(CString name);
    static AcDbObjectId GetDimStyleId(CString name);

    // --- Code page -----------------------------------------------------------------------------------------

    /// Each byte of a text in the system's code page, kept as a character of its own, becomes the character
    /// that it stands for there; what is above U+00FF is kept.
    static CString StringAnsiToUnicode(CString text);
    /// Back: each character becomes the byte that it has in the code page; '?' where it has none.
    static CString StringUnicodeToAnsi(CString text);
};

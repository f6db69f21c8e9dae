#pragma once

#include "acadstrc.h"
#include "afx.h"
#include "dbid.h"
#include "dbmaindefs.h"
#include "windows.h"

/// Numbers that meet the host's texts and units: conversion of units, numbers in the program's own key files,
/// fractions, what a dimension says, and records by their names.
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

    // --- Texts of dimensions -------------------------------------------------------------------------------

    /// The contents of the paragraph that a rotated dimension of that length (without its sign) has in the
    /// style, codes and all, with dimlfac 1. The dimension is in no drawing and leaves no trace. 20 when it
    /// cannot be made, else the status of its explosion; `text` is empty where no paragraph came out. A null
    /// style is the standing one.
    static Acad::ErrorStatus getFormatedDimText(double value, const AcDbObjectId& dimStyle, CString& text);
    /// The same with the style's own dimlfac, in another form:
    /// - rounding above 1e-10: dimlfac becomes rounding / scale, and dimdec is lowered so that the value
    /// keeps
    ///   its digits. Otherwise the number counts as multiplied by dimlfac * scale;
    /// - smallValues: without a rounding, a decimal value below the scale is written with rounding 100,
    ///   smallDecimals and the zeros that smallTrailingZeros lets go;
    /// - raisedDigits: decimals beyond those that 1000 / (dimlfac * scale) keeps down stand as a stack of 0.6
    ///   of the height; 1.255 of metres is 1.25 with a raised 5;
    /// - trimZeros: zeros behind a point go, the point stays ("2.000" is "2."), and raised zeros;
    /// - takePrefix: what dimpost has before "<>" goes into `prefix` (left alone where there is none) and not
    ///   into the text. A dimpost without "<>" stands behind the number.
    /// What stands up to the first ";" of the contents counts as codes in front, also where it is a stack of
    /// the number, and is kept.
    static Acad::ErrorStatus getFormatedDimText(double value, const AcDbObjectId& dimStyle, double scale,
                                                double rounding, bool smallValues, int smallDecimals,
                                                bool smallTrailingZeros, bool raisedDigits, CString& text,
                                                bool trimZeros, CString& prefix, bool takePrefix);

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

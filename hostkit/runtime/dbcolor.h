// Stand-in for the host's colours. Covers index, true and by-layer/by-block colours and the index palette; leaves out colour books' look-up.
#pragma once

#include "acadstrc.h"
#include "adesk.h"

/// A colour in 32 bits: how it is meant, and an index or red, green and blue.
class AcCmEntityColor {
public:
    enum ColorMethod : Adesk::UInt8 {
        kByLayer = 0xC0,
        kByBlock = 0xC1,
        kByColor = 0xC2,
        kByACI = 0xC3,
        kNone = 0xC8
    };
    static constexpr Adesk::UInt16 kACIbyBlock = 0;
    static constexpr Adesk::UInt16 kACIforeground = 7;
    static constexpr Adesk::UInt16 kACIbyLayer = 256;

    constexpr AcCmEntityColor() = default;
    constexpr AcCmEntityColor(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue)
        : m_bits(static_cast<Adesk::UInt32>(kByColor) << 24 | red << 16 | green << 8 | blue) {}

    constexpr ColorMethod colorMethod() const { return static_cast<ColorMethod>(m_bits >> 24); }
    constexpr bool isByLayer() const { return colorMethod() == kByLayer; }
    constexpr bool isByBlock() const { return colorMethod() == kByBlock; }
    constexpr bool isByColor() const { return colorMethod() == kByColor; }
    constexpr bool isByACI() const { return colorMethod() == kByACI; }
    /// 0 by block, 256 by layer, else 1 to 255; a true colour gives the nearest index.
    Adesk::UInt16 colorIndex() const;
    /// eOutOfRange above 257; the colour stays as it was.
    Acad::ErrorStatus setColorIndex(Adesk::UInt16 index);
    void setRGB(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue) {
        *this = AcCmEntityColor(red, green, blue);
    }
    /// 0xRRGGBB; of an index colour its palette entry (7 is white here; who draws on paper decides
    /// otherwise), of a by-layer or by-block colour that of index 7.
    Adesk::UInt32 rgb() const;
    Adesk::UInt8 red() const { return static_cast<Adesk::UInt8>(rgb() >> 16); }
    Adesk::UInt8 green() const { return static_cast<Adesk::UInt8>(rgb() >> 8); }
    Adesk::UInt8 blue() const { return static_cast<Adesk::UInt8>(rgb()); }
    constexpr Adesk::UInt32 bits() const { return m_bits; }
    constexpr bool operator==(const AcCmEntityColor&) const = default;

    /// 0xRRGGBB of a palette index 1 to 255; of any other that of 7.
    static Adesk::UInt32 lookUpRGB(Adesk::UInt16 index);
    static Adesk::UInt16 lookUpACI(Adesk::UInt8 red, Adesk::UInt8 green, Adesk::UInt8 blue);

private:
    Adesk::UInt32 m_bits = static_cast<Adesk::UInt32>(kByLayer) << 24;
};

/// The same with the host's other name, as tools hand it about.
class AcCmColor : public AcCmEntityColor {
public:
    constexpr AcCmColor() = default;
    constexpr AcCmColor(const AcCmEntityColor& color)
        : AcCmEntityColor(color) {}
    constexpr AcCmEntityColor entityColor() const { return *this; }
};

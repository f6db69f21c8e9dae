#include "iconresource.h"
#include "wingdi.h"

#include <iterator>

namespace {

using hostkit::IconShape;
using Kind = IconShape::Kind;

constexpr COLORREF wood = RGB(0x8A, 0x5A, 0x2B);
constexpr COLORREF light = RGB(0xF6, 0xEE, 0xD8);
constexpr COLORREF dark = RGB(0x40, 0x40, 0x40);
constexpr COLORREF green = RGB(0x2E, 0x7D, 0x32);

// An open door with an arrow out of it.
const IconShape leaving[] = {
    {Kind::rectangle, light, dark, 1, 2, {3.5F, 3.5F, 19.5F, 28.5F}},
    {Kind::polygon, wood, dark, 1, 4, {3.5F, 3.5F, 13, 7, 13, 31, 3.5F, 28.5F}},
    {Kind::ellipse, light, hostkit::noColor, 0, 2, {9.5F, 17, 11.5F, 19}},
    {Kind::line, hostkit::noColor, green, 2, 2, {16, 16, 28, 16}},
    {Kind::polygon, green, hostkit::noColor, 0, 3, {25, 11, 31, 16, 25, 21}},
};

const HostIcon icons[] = {{20922, 32, 32, leaving, std::size(leaving)}};
const hostkit::IconTable table{icons, std::size(icons)};

} // namespace

/// Icons of the in-house base library.
extern "C" const hostkit::IconTable* getModuleIconTable() { return &table; }

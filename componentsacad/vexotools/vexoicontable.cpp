#include "iconresource.h"
#include "wingdi.h"

#include <iterator>

namespace {

using hostkit::IconShape;
using Kind = IconShape::Kind;

constexpr COLORREF concrete = RGB(0xB8, 0xBC, 0xC0);
constexpr COLORREF edge = RGB(0x50, 0x58, 0x60);
constexpr COLORREF steel = RGB(0xB0, 0x30, 0x20);

// A slab in section with its bars.
const IconShape slab[] = {
    {Kind::rectangle, concrete, edge, 1, 2, {1.5F, 3.5F, 14.5F, 12.5F}},
    {Kind::line, hostkit::noColor, steel, 1, 2, {3, 10.5F, 13, 10.5F}},
    {Kind::ellipse, steel, hostkit::noColor, 0, 2, {3, 7, 5.5F, 9.5F}},
    {Kind::ellipse, steel, hostkit::noColor, 0, 2, {6.75F, 7, 9.25F, 9.5F}},
    {Kind::ellipse, steel, hostkit::noColor, 0, 2, {10.5F, 7, 13, 9.5F}},
};

const HostIcon icons[] = {{14019, 16, 16, slab, std::size(slab)}};
const hostkit::IconTable table{icons, std::size(icons)};

} // namespace

/// The module's icons; 14019 stands in the captions of its windows.
extern "C" const hostkit::IconTable* getModuleIconTable() { return &table; }

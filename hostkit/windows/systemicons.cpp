#include "iconresource.h"
#include "wingdi.h"

#include <iterator>

namespace hostkit {
namespace {

using Kind = IconShape::Kind;

constexpr COLORREF white = RGB(0xFF, 0xFF, 0xFF);
constexpr COLORREF black = RGB(0, 0, 0);
constexpr COLORREF red = RGB(0xC6, 0x28, 0x28);
constexpr COLORREF blue = RGB(0x1E, 0x66, 0xB8);
constexpr COLORREF yellow = RGB(0xFB, 0xC0, 0x2D);
constexpr COLORREF grey = RGB(0x78, 0x82, 0x8C);

const IconShape application[] = {
    {Kind::rectangle, white, grey, 2, 2, {3, 5, 29, 27}},
    {Kind::rectangle, grey, noColor, 0, 2, {3, 5, 29, 11}},
};
const IconShape error[] = {
    {Kind::ellipse, red, noColor, 0, 2, {2, 2, 30, 30}},
    {Kind::line, noColor, white, 3, 2, {10, 10, 22, 22}},
    {Kind::line, noColor, white, 3, 2, {22, 10, 10, 22}},
};
const IconShape question[] = {
    {Kind::ellipse, blue, noColor, 0, 2, {2, 2, 30, 30}},
    {Kind::line, noColor, white, 3, 7, {11, 12, 13, 9, 16, 8, 19, 9, 21, 12, 16, 16, 16, 20}},
    {Kind::ellipse, white, noColor, 0, 2, {14, 22, 18, 26}},
};
const IconShape warning[] = {
    {Kind::polygon, yellow, black, 1, 3, {16, 3, 30, 28, 2, 28}},
    {Kind::line, noColor, black, 3, 2, {16, 11, 16, 20}},
    {Kind::ellipse, black, noColor, 0, 2, {14.2F, 22.2F, 17.8F, 25.8F}},
};
const IconShape information[] = {
    {Kind::ellipse, blue, noColor, 0, 2, {2, 2, 30, 30}},
    {Kind::ellipse, white, noColor, 0, 2, {14, 7, 18, 11}},
    {Kind::line, noColor, white, 3, 2, {16, 14, 16, 25}},
};
const IconShape arrow[] = {
    {Kind::polygon, white, black, 1, 7, {1, 1, 1, 18, 5, 14, 8, 20, 11, 19, 8, 13, 13, 13}},
};
const IconShape beam[] = {{Kind::line, noColor, black, 1, 2, {8, 2, 8, 22}}};
const IconShape wait[] = {{Kind::ellipse, noColor, blue, 3, 2, {4, 4, 20, 20}}};

constexpr int iconSize = 32;
constexpr int cursorSize = 24;
const HostIcon icons[] = {
    {IDI_APPLICATION, iconSize, iconSize, application, std::size(application)},
    {IDI_ERROR, iconSize, iconSize, error, std::size(error)},
    {IDI_QUESTION, iconSize, iconSize, question, std::size(question)},
    {IDI_WARNING, iconSize, iconSize, warning, std::size(warning)},
    {IDI_INFORMATION, iconSize, iconSize, information, std::size(information)},
    {IDC_ARROW, cursorSize, cursorSize, arrow, std::size(arrow)},
    {IDC_IBEAM, cursorSize, cursorSize, beam, std::size(beam)},
    {IDC_WAIT, cursorSize, cursorSize, wait, std::size(wait)},
};
const IconTable table{icons, std::size(icons)};

} // namespace

const IconTable& systemIcons() { return table; }

} // namespace hostkit

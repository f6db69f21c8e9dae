#include "drawingversion.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace hostkit {

namespace {

struct VersionName {
    DrawingVersion version;
    std::string_view name;
};

constexpr std::array<VersionName, 9> versionNames = {{
    {DrawingVersion::kR12, "AC1009"},
    {DrawingVersion::kR13, "AC1012"},
    {DrawingVersion::kR14, "AC1014"},
    {DrawingVersion::k2000, "AC1015"},
    {DrawingVersion::k2004, "AC1018"},
    {DrawingVersion::k2007, "AC1021"},
    {DrawingVersion::k2010, "AC1024"},
    {DrawingVersion::k2013, "AC1027"},
    {DrawingVersion::k2018, "AC1032"},
}};

} // namespace

std::optional<DrawingVersion> versionFromName(std::string_view name) {
    if (name.size() != 6 || (name[0] != 'A' && name[0] != 'a') || (name[1] != 'C' && name[1] != 'c'))
        return {};
    unsigned number = 0;
    const auto [end, error] = std::from_chars(name.data() + 2, name.data() + name.size(), number);
    if (error != std::errc() || end != name.data() + name.size()) return {};
    const auto above =
        std::find_if(versionNames.begin(), versionNames.end(), [number](const VersionName& entry) {
            return static_cast<unsigned>(entry.version) > number;
        });
    return above == versionNames.begin() ? DrawingVersion::kR12 : (above - 1)->version;
}

std::string_view nameOfVersion(DrawingVersion version) {
    const auto found = std::find_if(versionNames.begin(), versionNames.end(),
                                    [version](const VersionName& entry) { return entry.version == version; });
    return found == versionNames.end() ? std::string_view() : found->name;
}

} // namespace hostkit

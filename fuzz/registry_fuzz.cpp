// Whatever stands in a registry file, reading it comes to an end, and what was read survives a round trip.
#include "registrytext.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace hostkit;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    RegistryTree tree;
    readRegistryText(text, tree);
    const std::string written = writeRegistryText(tree);
    RegistryTree again;
    if (!readRegistryText(written, again).empty() || writeRegistryText(again) != written) std::abort();
    return 0;
}

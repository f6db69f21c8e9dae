#include "entityrecordinvariants.h"

#include "runtimeservices.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static hostkit::RuntimeServices services;
    static const hostkit::ScopedRuntimeServices scope(services);
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (!entityrecordinvariants::faultOf(bytes).empty()) std::abort();
    return 0;
}

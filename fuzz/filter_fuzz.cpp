#include "filterinvariants.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static AcDbDatabase drawing;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (!filterinvariants::faultOf(bytes, drawing).empty()) std::abort();
    return 0;
}

#include "styleinvariants.h"

#include "scriptedport.h"

#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // A host of its own, so that what it is told does not grow for ever.
    hostkit::ScriptedPort port;
    const hostkit::ScopedPort current(port);
    styleinvariants::Reader reader;
    const std::string fault = reader.faultOf({reinterpret_cast<const char*>(data), size});
    if (fault.empty()) return 0;
    std::fprintf(stderr, "%s\n", fault.c_str());
    std::abort();
}

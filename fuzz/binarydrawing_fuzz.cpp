// Whatever stands in a binary drawing, opening it comes to an end: there is a text that is read like that of
// any other drawing, or a reason why not. Inputs are files, or sections without a container
// (binarydrawinginvariants.h), which need no checksums of packed pages.
#include "binarydrawinginvariants.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string fault = binarydrawinginvariants::faultOf({data, size});
    if (fault.empty()) return 0;
    std::fprintf(stderr, "%s\n", fault.c_str());
    std::abort();
}

// Whatever stands in a drawing file, checking and reading it come to an end without an object left open; what
// was read can be written, as it is, from its fields and changed, what was written is read again, and undo
// leaves no trace.
#include "drawinginvariants.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

void expectNothing(const std::string& broken) {
    if (broken.empty()) return;
    std::fprintf(stderr, "%s\n", broken.c_str());
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using drawinginvariants::Edit;
    const std::string bytes(data, data + size);
    // The end of the file says how it is changed, so that the fuzzer can try one change after another.
    std::size_t choice = size;
    for (std::size_t i = size; i-- > 0 && i + 8 >= size;) choice += data[i];
    expectNothing(drawinginvariants::brokenBySaving(bytes));
    expectNothing(drawinginvariants::brokenByForms(bytes));
    const auto edit = static_cast<Edit>(choice % static_cast<std::size_t>(Edit::count));
    expectNothing(
        drawinginvariants::brokenByEdit(bytes, edit, choice / static_cast<std::size_t>(Edit::count)));
    return 0;
}

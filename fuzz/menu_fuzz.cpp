// Whatever stands in a menu file, reading it comes to an end: with a group that has a name and toolbars that
// have names, or with a problem that says where.
#include "menufile.h"
#include "menugroup.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    hostkit::MenuGroup group;
    std::wstring problem;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const Acad::ErrorStatus status = hostkit::readMenuText(bytes, L"menu", group, problem);
    if (status == Acad::eOk) {
        if (!problem.empty() || group.name.empty()) std::abort();
        for (const auto& toolbar : group.toolbars)
            if (toolbar->name.empty() || toolbar->id.empty()) std::abort();
    } else if (!problem.starts_with(L"menu:") || problem.size() < 10) {
        std::abort();
    }
    return 0;
}

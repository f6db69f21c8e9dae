#include "librarylocation.h"

#include "runtimeservices.h"
#include "systempath.h"

#include <dlfcn.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::string_view libraryName = "VEXOTools10.so";

std::string folderOf(const std::string& path) { return path.substr(0, path.rfind('/')); }

std::string programFolder() {
    char path[4096];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    return length > 0 ? folderOf(std::string(path, static_cast<std::size_t>(length))) : std::string(".");
}

std::string kitFolder() {
    Dl_info where{};
    const auto function = reinterpret_cast<void*>(&acrxProductKey);
    return dladdr(function, &where) && where.dli_fname ? folderOf(where.dli_fname) : std::string(".");
}

bool isFile(const std::string& path) {
    struct stat found {};
    return stat(path.c_str(), &found) == 0 && S_ISREG(found.st_mode);
}

} // namespace

std::wstring libraryLocation() {
    const std::string beside = programFolder() + '/' + std::string(libraryName);
    for (const std::string& folder : {programFolder(), programFolder() + "/../lib", kitFolder()}) {
        const std::string file = folder + '/' + std::string(libraryName);
        if (isFile(file)) return hostkit::pathFromSystem(file);
    }
    return hostkit::pathFromSystem(beside);
}

#include "drawingfiles.h"

#include <algorithm>
#include <cstdlib>
#include <dirent.h>

namespace drawingtest {

std::string drawingsFolder() {
    const char* const folder = std::getenv("VEXO_DRAWINGS");
    return folder ? folder : VEXO_SOURCE_DIR "/../shared/drawings";
}

std::vector<std::string> drawingFiles() {
    std::vector<std::string> files;
    for (const std::string& folder : {drawingsFolder(), std::string(VEXO_SOURCE_DIR "/examples/slab")}) {
        DIR* const directory = opendir(folder.c_str());
        while (const dirent* const entry = directory ? readdir(directory) : nullptr) {
            const std::string name = entry->d_name;
            if (name.size() > 4 && name.substr(name.size() - 4) == ".dxf")
                files.push_back(folder + "/" + name);
        }
        if (directory) closedir(directory);
    }
    std::sort(files.begin(), files.end());
    return files;
}

bool foldersAreMissing() {
    DIR* const directory = opendir(drawingsFolder().c_str());
    if (directory) closedir(directory);
    return !directory;
}

std::wstring wide(const std::string& text) { return {text.begin(), text.end()}; }

} // namespace drawingtest

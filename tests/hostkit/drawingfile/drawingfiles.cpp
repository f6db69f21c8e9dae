#include "drawingfiles.h"

#include "drawingsofothers.h"

#include <algorithm>
#include <filesystem>

namespace drawingtest {

using namespace hostkit;

std::string group(int code, const std::string& value) {
    std::string text = std::to_string(code);
    if (text.size() < 3) text.insert(0, 3 - text.size(), ' ');
    return text + "\r\n" + value + "\r\n";
}

std::string groups(std::initializer_list<std::pair<int, std::string>> pairs) {
    std::string text;
    for (const auto& [code, value] : pairs) text += group(code, value);
    return text;
}

std::string section(const std::string& name, const std::string& content) {
    return group(0, "SECTION") + group(2, name) + content + group(0, "ENDSEC");
}

std::string header(const std::string& version) {
    return section("HEADER", group(9, "$ACADVER") + group(1, version));
}

std::string line(const std::string& extra) {
    return groups({{0, "LINE"}, {8, "0"}, {10, "1.0"}, {20, "2.0"}, {11, "3.0"}, {21, "4.0"}}) + extra;
}

std::string block(const std::string& name, const std::string& content) {
    return groups({{0, "BLOCK"}, {8, "0"}, {2, name}, {70, "0"}, {10, "0"}, {20, "0"}}) + content +
           group(0, "ENDBLK");
}

std::string entities(const std::string& content) { return section("ENTITIES", content) + group(0, "EOF"); }

std::string saved(const AcDbDatabase& database, const WriteOptions& options, WriteReport* report) {
    std::string bytes;
    EXPECT_EQ(writeDrawingToMemory(database, bytes, options, report), Acad::eOk);
    return bytes;
}

std::string saved(const AcDbDatabase& database, DrawingVersion version) {
    WriteOptions options;
    options.version = version;
    return saved(database, options);
}

std::wstring wide(const std::string& text) { return {text.begin(), text.end()}; }

std::size_t countOf(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t place = 0; (place = text.find(part, place)) != std::string_view::npos; ++place) ++count;
    return count;
}

void DrawingsOfOthers::SetUp() {
    if (!std::filesystem::is_directory(drawingsOfOthers()))
        GTEST_SKIP() << "no drawings in " << drawingsOfOthers();
}

std::vector<std::string> DrawingsOfOthers::files() {
    std::vector<std::string> files;
    for (const std::filesystem::path& folder :
         {drawingsOfOthers(), std::filesystem::path(VEXO_SOURCE_DIR "/examples/slab")})
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            if (entry.path().extension() == ".dxf") files.push_back(entry.path().string());
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace drawingtest

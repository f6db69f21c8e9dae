// What the library exports: the given names, and nothing that another module could meet by accident.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

std::vector<std::string> exportedNames() {
    std::vector<std::string> names;
    std::FILE* const listing =
        popen(VEXO_NM " -DC --defined-only " VEXO_BINARY_DIR "/lib/VEXOTools10.so", "r");
    char line[4096];
    constexpr int afterTypeLetter = 19;
    while (std::fgets(line, sizeof line, listing)) {
        std::string name = std::string(line).substr(afterTypeLetter);
        name.pop_back();
        names.push_back(std::move(name));
    }
    EXPECT_EQ(pclose(listing), 0);
    return names;
}

/// Classes and namespaces that the public headers declare.
std::set<std::string> givenScopes() {
    std::set<std::string> scopes;
    const std::regex declaration(R"((?:^|\n)(?:class|struct|namespace) (VEXO\w+)[^;]*\{)");
    for (const auto& entry :
         std::filesystem::directory_iterator(VEXO_SOURCE_DIR "/componentsacad/vexotools")) {
        const std::string name = entry.path().filename();
        if (entry.path().extension() != ".h" || !name.starts_with("vexo") || name.ends_with("_internal.h"))
            continue;
        std::ifstream stream(entry.path());
        const std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        for (std::sregex_iterator at(text.begin(), text.end(), declaration), end; at != end; ++at)
            scopes.insert((*at)[1]);
    }
    return scopes;
}

const std::set<std::string> entries = {"DllMain",
                                       "acrxEntryPoint",
                                       "getModulePromptsProjectName",
                                       "getModuleStringTable",
                                       "getModuleDialogTable",
                                       "getModuleIconTable"};

/// "VEXOMessageBox" of "vtable for VEXOMessageBox" and of "VEXOMessageBox::DoModal()".
std::string scopeOf(const std::string& name) {
    const std::regex start(R"(^(?:(?:vtable|typeinfo|typeinfo name) for )?(\w+))");
    std::smatch match;
    return std::regex_search(name, match, start) ? match[1].str() : name;
}

} // namespace

TEST(Exports, GivenNamesAndNothingElse) {
    const std::set<std::string> scopes = givenScopes();
    std::set<std::string> found;
    for (const std::string& name : exportedNames()) {
        const std::string scope = scopeOf(name);
        found.insert(scope);
        EXPECT_TRUE(scopes.contains(scope) || entries.contains(name)) << name;
    }
    for (const std::string& entry : entries) EXPECT_TRUE(found.contains(entry)) << entry;
    for (const char* each : {"VEXOGeometryTools", "VEXODatabaseTools", "VEXOAcadSystemTools", "VEXOUITools"})
        EXPECT_TRUE(found.contains(each)) << each;
}

// A customer's module outside the tree: the installed package is found, the module built, loaded and run.
#include "runprogram.h"

#include <gtest/gtest.h>

namespace {

TEST(Package, ATenLineModuleBuildsAgainstTheInstalledLibrary) {
    const TemporaryFolder folder;
    const std::string prefix = folder / "prefix";
    const ProgramResult install = runProgram({"cmake", "--install", VEXO_BINARY_DIR, "--prefix", prefix});
    ASSERT_EQ(install.code, 0) << install.problems;

    folder.write("CMakeLists.txt",
                 "cmake_minimum_required(VERSION 3.25)\n"
                 "project(area LANGUAGES CXX)\n"
                 "find_package(VEXOTools10 10.1 REQUIRED)\n"
                 "vexo_application_module(area area.cpp)\n"
                 "find_package(GTest REQUIRED)\n"
                 "add_executable(area_test area_test.cpp)\n"
                 "target_link_libraries(area_test PRIVATE VEXOTools10::VEXOTools10 VEXOTools10::testing "
                 "GTest::gtest_main)\n");
    folder.write("area_test.cpp",
                 "#include \"hosttest.h\"\n"
                 "#include \"vexodatabasetools.h\"\n"
                 "#include \"dbline.h\"\n"
                 "class Area : public hostkit::HostTest {};\n"
                 "TEST_F(Area, standsInItsBlock) {\n"
                 "    AcDbObjectId id;\n"
                 "    auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0));\n"
                 "    EXPECT_EQ(VEXODatabaseTools::appendEntity(line, L\"Area\", id, &database()), 1);\n"
                 "    line->close();\n"
                 "}\n"
                 "TEST_F(Area, leavesItsLineOpen) {\n"
                 "    AcDbObjectId id;\n"
                 "    auto* line = new AcDbLine(AcGePoint3d(0, 0, 0), AcGePoint3d(1, 0, 0));\n"
                 "    VEXODatabaseTools::appendEntity(line, L\"Area\", id, &database());\n"
                 "}\n");
    folder.write(
        "area.cpp",
        "#include \"aced.h\"\n"
        "#include \"rxdefs.h\"\n"
        "#include \"vexogeometrytools.h\"\n"
        "static void area() {\n"
        "    AcArray<AcGePoint2d> corners;\n"
        "    for (int i = 0; i < 4; ++i) corners.append(AcGePoint2d(i / 2 * 3, (i + 1) / 2 % 2 * 2));\n"
        "    acutPrintf(L\"area %g\\n\", VEXOGeometryTools::getSignedArea(corners));\n"
        "}\n"
        "extern \"C\" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void*) {\n"
        "    if (message == AcRx::kInitAppMsg) acedRegCmds->addCommand(L\"AREA\", L\"AREA\", L\"AREA\", 0, "
        "area);\n"
        "    return AcRx::kRetOK;\n"
        "}\n");
    const ProgramResult configure =
        runProgram({"cmake", "-S", folder / ".", "-B", folder / "build", "-G", VEXO_GENERATOR,
                    "-DCMAKE_PREFIX_PATH=" + prefix, std::string("-DCMAKE_CXX_COMPILER=") + VEXO_COMPILER,
                    std::string("-DCMAKE_CXX_FLAGS=") + VEXO_SANITIZER_FLAGS});
    ASSERT_EQ(configure.code, 0) << configure.output << configure.problems;
    const ProgramResult build = runProgram({"cmake", "--build", folder / "build"});
    ASSERT_EQ(build.code, 0) << build.output << build.problems;

    const ProgramResult run =
        runProgram({prefix + "/bin/vexohost", "--new", "--registry", folder / "registry.txt", "--module",
                    (folder / "build/area.so"), "--command", "AREA"});
    EXPECT_EQ(run.code, 0) << run.problems;
    EXPECT_EQ(run.output, "area -6\n");

    const ProgramResult test = runProgram({folder / "build/area_test"});
    EXPECT_EQ(test.code, 1) << test.output;
    EXPECT_NE(test.output.find("[       OK ] Area.standsInItsBlock"), std::string::npos) << test.output;
    EXPECT_NE(test.output.find("left behind: document 1: AcDbLine"), std::string::npos) << test.output;
}

} // namespace

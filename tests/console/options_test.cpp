#include "options.h"

#include "consoletext.h"
#include "exitcodes.h"
#include "script.h"
#include "systempath.h"

#include <gtest/gtest.h>

namespace {

TEST(Options, FilesCommandsAndFlagsStandInAnyOrder) {
    const auto [options, problem] =
        parseOptions({"--module",      "a.so",         "plan.dxf", "--command=CONTOURS CSV \"a b\"",
                      "--module=b.so", "--command",    "QUIT",     "-o",
                      "out.dxf",       "--overwrite",  "--trace",  "t.json",
                      "--quiet",       "--registry",   "r.txt",    "--library",
                      "l.so",          "--answers",    "a.txt",    "--form",
                      "2000",          "--form=binary"});
    ASSERT_EQ(problem, L"");
    EXPECT_EQ(options.drawing, L"plan.dxf");
    EXPECT_EQ(options.modules, (std::vector<std::wstring>{L"a.so", L"b.so"}));
    EXPECT_EQ(options.commands, (std::vector<std::wstring>{L"CONTOURS CSV \"a b\"", L"QUIT"}));
    EXPECT_EQ(options.output, L"out.dxf");
    EXPECT_EQ(options.forms, (std::vector<std::wstring>{L"2000", L"binary"}));
    EXPECT_EQ(options.trace, L"t.json");
    EXPECT_EQ(options.registry, L"r.txt");
    EXPECT_EQ(options.library, L"l.so");
    EXPECT_EQ(options.answers, L"a.txt");
    EXPECT_TRUE(options.mayOverwrite && options.isQuiet);
    EXPECT_FALSE(options.isNewDrawing || options.wantsHelp);

    EXPECT_EQ(parseOptions({"--", "--new"}).options.drawing, L"--new");
    EXPECT_EQ(parseOptions({"--install", "/opt/x", "--language", "1033"}).options.language, 1033u);
}

TEST(Options, WhatCannotBeMeantIsRefusedByName) {
    const std::pair<std::vector<std::string>, const wchar_t*> cases[] = {
        {{}, L"drawing"},
        {{"a.dxf", "b.dxf"}, L"more than one"},
        {{""}, L"empty"},
        {{"a.dxf", "--modul", "x"}, L"--modul"},
        {{"a.dxf", "--module"}, L"--module"},
        {{"a.dxf", "--module="}, L"--module"},
        {{"a.dxf", "--quiet=1"}, L"--quiet"},
        {{"a.dxf", "--new"}, L"--new"},
        {{"a.dxf", "--form", "2000"}, L"--output"},
        {{"--list-commands", "--form", "2000"}, L"--output"},
        {{"a.dxf", "--keep-going"}, L"--keep-going"},
        {{"a.dxf", "--language", "7"}, L"--install"},
        {{"--install", "d", "a.dxf"}, L"no drawing"},
        {{"--install", "d", "--command", "LAYERS"}, L"command"},
        {{"a.dxf", "--list-commands", "-o", "b.dxf"}, L"output"},
        {{"a.dxf", "-o", "b.dxf", "--form", "R99"}, L"R99"},
        {{"a.dxf", "--script", "s", "--command", "c"}, L"exclude"},
        {{"--install", "d", "--language", "65536"}, L"--language"},
        {{"--install", "d", "--language", "-1"}, L"--language"},
        {{"--install", "d", "--language", "12x"}, L"--language"}};
    for (const auto& [arguments, named] : cases) {
        const std::wstring problem = parseOptions(arguments).problem;
        EXPECT_NE(problem.find(named), std::wstring::npos) << std::string(problem.begin(), problem.end());
    }
}

TEST(Options, NamesOfAnyBytesReachTheFileSystemUnchanged) {
    for (const std::string name : {"pl\xC3\xA4n.dxf", "pl\xE4n.dxf", "a\\b.dxf", "\xFF\xFE"})
        EXPECT_EQ(hostkit::mapPath(parseOptions({name}).options.drawing), name);
    EXPECT_EQ(parseOptions({"x", "--command", "LAYERS \xE9t\xE9"}).options.commands[0], L"LAYERS été");
    EXPECT_EQ(parseOptions({"x", "--command", "LAYERS \xC3\xA9"}).options.commands[0], L"LAYERS é");
}

TEST(Options, HelpTellsEveryExitCode) {
    const std::wstring help = helpText();
    for (const int code :
         {exitcode::ok, exitcode::commandFailed, exitcode::usage, exitcode::drawingUnreadable,
          exitcode::moduleNotLoaded, exitcode::notWritten, exitcode::scriptUnreadable, exitcode::interrupted})
        EXPECT_NE(help.find(L"\n  " + std::to_wstring(code) + L" "), std::wstring::npos) << code;
}

TEST(Script, CommentsAndEmptyLinesCountAsLinesAlone) {
    const auto lines =
        parseScript("\xEF\xBB\xBF; head\r\n\r\n  LIST JSON  \n\t; more\rPLOT \"a;b.svg\"\r\n\nQUIT");
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0].number, 3u);
    EXPECT_EQ(lines[0].text, L"LIST JSON  ");
    EXPECT_EQ(lines[1].number, 5u);
    EXPECT_EQ(lines[1].text, L"PLOT \"a;b.svg\"");
    EXPECT_EQ(lines[2].number, 7u);
    EXPECT_TRUE(parseScript("").empty());
    EXPECT_TRUE(parseScript("\n\n;x").empty());
}

TEST(ConsoleText, TablesKeepTheirColumnsUnderWideAndCombiningCharacters) {
    EXPECT_EQ(columnsOf(L"abc"), 3u);
    EXPECT_EQ(columnsOf(L"\u6F22\u5B57"), 4u);
    EXPECT_EQ(columnsOf(L"e\u0301"), 1u);
    EXPECT_EQ(formatTable({{L"Name", L"No"}, {L"\u6F22", L"7"}, {L"long name", L"12"}}, "lr"),
              L"Name       No\n---------  --\n\u6F22          7\nlong name  12\n");
    EXPECT_EQ(formatTable({}, ""), L"");
    EXPECT_EQ(formatTable({}, "", 10), L"");
    const std::vector<std::vector<std::wstring>> wide = {
        {L"Kind", L"Number", L"Text"}, {L"LINE", L"123456789012", L"\u6F22\u6F22\u6F22\u6F22\u6F22\u6F22"}};
    EXPECT_EQ(formatTable(wide, "lrl", 29), L"Kind        Number  Text\n----  ------------  ---------\n"
                                            L"LINE  123456789012  \u6F22\u6F22\u6F22...\n");
    EXPECT_EQ(formatTable(wide, "lrl", 32), formatTable(wide, "lrl")) << "it fits";
    EXPECT_EQ(formatTable(wide, "lrl", 3), formatTable(wide, "lrl", 28)) << "eight columns at least";
}

TEST(ConsoleText, NumbersReadBackToThemselves) {
    for (const double value : {0.0, -1.5, 0.1, 1e6 + 1.0 / 3.0, 1e300, -2.5e-300, 123456789.125})
        EXPECT_EQ(std::stod(numberText(value)), value);
    EXPECT_EQ(numberText(1e6), L"1000000");
}

} // namespace

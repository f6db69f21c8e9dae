// XDATA: the typed store of an object, shown from a drawing that others wrote.
#include "consoletest.h"

#include <algorithm>

namespace {

// A point (1F) with two applications' data, one (20) without, and a layer.
const std::string drawing =
    "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n0\nENDSEC\n"
    "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nAPPID\n70\n2\n"
    "0\nAPPID\n5\n10\n100\nAcDbSymbolTableRecord\n100\nAcDbRegAppTableRecord\n2\nORDANE\n70\n0\n"
    "0\nAPPID\n5\n11\n100\nAcDbSymbolTableRecord\n100\nAcDbRegAppTableRecord\n2\nOTHER\n70\n0\n"
    "0\nENDTAB\n0\nENDSEC\n"
    "0\nSECTION\n2\nENTITIES\n"
    "0\nPOINT\n5\n1F\n100\nAcDbEntity\n8\n0\n100\nAcDbPoint\n10\n0.0\n20\n0.0\n30\n0.0\n"
    "1001\nORDANE\n1000\nflag\n1000\nnumber\n1070\n7\n1000\narea\n1040\n2.25\n"
    "1000\nname\n1000\nsays \"a\"\n1000\nlist\n1071\n2\n1071\n10\n1071\n-20\n1000\nlong\n1071\n70000\n"
    "1000\nplace\n1010\n1.0\n1020\n2.0\n1030\n3.0\n1000\nlast\n"
    "1001\nOTHER\n1002\n{\n1005\n20\n1002\n}\n"
    "0\nPOINT\n5\n20\n100\nAcDbEntity\n8\n0\n100\nAcDbPoint\n10\n0.0\n20\n0.0\n30\n0.0\n"
    "0\nENDSEC\n0\nEOF\n";

class XDataCommand : public ConsoleTest {
protected:
    std::vector<std::string> command(const std::string& line) const { return {file, "--command", line}; }
    std::string file = writtenFile(folder, "small.dxf", drawing);
};

TEST_F(XDataCommand, EntriesAreShownByApplicationWithTheirKinds) {
    std::string output = outputOf(command("XDATA 1f"));
    const auto areBlank = [](char a, char b) { return a == ' ' && b == ' '; };
    output.erase(std::unique(output.begin(), output.end(), areBlank), output.end());
    expectHas(output,
              {"\nORDANE flag flag\n", "\nORDANE number int 7\n", "\nORDANE area double 2.25\n",
               "\nORDANE name string says \"a\"\n", "\nORDANE list long array 10, -20\n",
               "\nORDANE long long 70000\n", "\nORDANE place point (1, 2, 3)\n", "\nORDANE last flag\n",
               "\nOTHER other {\n", "\nOTHER other 20\n", "POINT 1F: ", " of 16383 bytes"});
}

TEST_F(XDataCommand, JsonHasEntriesAndRecords) {
    const std::string target = folder / "data.json";
    outputOf(command("XDATA 1F JSON " + target));
    const std::string json = readFile(target);
    EXPECT_TRUE(isJson(json)) << json;
    expectHas(json, {"\"handle\":\"1F\"", "\"type\":\"POINT\"",
                     "{\"key\":\"flag\",\"kind\":\"flag\",\"value\":true}",
                     "{\"key\":\"list\",\"kind\":\"long array\",\"value\":[10,-20]}",
                     "\"value\":\"says \\\"a\\\"\"", "\"value\":[1,2,3]",
                     "\"records\":[[1000,\"flag\"],[1000,\"number\"],[1070,7]", "[1005,\"20\"]"});
    expectHas(outputOf(command("XDATA 20 JSON")),
              {"{\"handle\":\"20\",\"type\":\"POINT\",\"bytes\":0,\"applications\":[]}"});
}

TEST_F(XDataCommand, WhatCannotBeShownIsSaid) {
    expectHas(outputOf(command("XDATA 20")), {"POINT 20 has no extended data"});
    const std::pair<const char*, const char*> cases[] = {
        {"XDATA FFFF", "no object with the handle FFFF"},
        {"XDATA point", "\"point\" is none"},
        {"XDATA", "a handle is needed"},
        {"XDATA 1F XML", "TABLE or JSON"},
    };
    for (const auto& [line, said] : cases) expectProblems(command(line), exitcode::commandFailed, {said});
}

} // namespace

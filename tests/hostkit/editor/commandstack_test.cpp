#include "accmd.h"

#include <gtest/gtest.h>

namespace {

void first() {}
void second() {}

TEST(CommandStack, RefusesWhatCannotBeCalled) {
    AcEdCommandStack stack;
    struct {
        const wchar_t* group;
        const wchar_t* name;
        AcRxFunctionPtr function;
    } const cases[] = {{nullptr, L"A", first},  {L"", L"A", first},    {L"G", nullptr, first},
                       {L"G", L"", first},      {L"G", L"A B", first}, {L"G", L"A\t", first},
                       {L"G", L"\"A\"", first}, {L"G", L"A", nullptr}};
    for (const auto& each : cases)
        EXPECT_EQ(stack.addCommand(each.group, each.name, nullptr, 0, each.function), Acad::eInvalidInput)
            << (each.name ? each.name : L"null");
    EXPECT_TRUE(stack.commands().empty());
}

TEST(CommandStack, NamesAreFoundFoldedGlobalOrLocal) {
    AcEdCommandStack stack;
    ASSERT_EQ(stack.addCommand(L"G", L"AREA", L"Élément", ACRX_CMD_MODAL, first), Acad::eOk);
    EXPECT_EQ(stack.addCommand(L"g", L"area", L"other", 0, second), Acad::eDuplicateKey);
    EXPECT_EQ(stack.addCommand(L"g", L"other", L"ÉLÉMENT", 0, second), Acad::eDuplicateKey);

    EXPECT_NE(stack.lookupGlobalCmd(L"Area"), nullptr);
    EXPECT_EQ(stack.lookupGlobalCmd(L"élément"), nullptr);
    EXPECT_NE(stack.lookupLocalCmd(L"ÉLÉMENT"), nullptr);
    EXPECT_EQ(stack.lookupLocalCmd(nullptr), nullptr);

    struct {
        const wchar_t* typed;
        bool isFound;
    } const cases[] = {{L"élément", true}, {L"AREA", true},      {L"_area", true}, {L".area", true},
                       {L"_.AREA", true},  {L"_élément", false}, {L"are", false},  {L"", false}};
    for (const auto& each : cases)
        EXPECT_EQ(stack.lookupTyped(each.typed) != nullptr, each.isFound) << each.typed;
}

TEST(CommandStack, TheNewestOrPoppedGroupAnswers) {
    AcEdCommandStack stack;
    ASSERT_EQ(stack.addCommand(L"OLD", L"X", L"", 0, first), Acad::eOk);
    ASSERT_EQ(stack.addCommand(L"NEW", L"X", L"", 0, second), Acad::eOk);
    EXPECT_EQ(stack.lookupGlobalCmd(L"x")->functionAddr(), &second);
    ASSERT_EQ(stack.popGroupToTop(L"old"), Acad::eOk);
    EXPECT_EQ(stack.lookupGlobalCmd(L"x")->functionAddr(), &first);
    ASSERT_EQ(stack.removeCmd(L"OLD", L"x"), Acad::eOk);
    EXPECT_EQ(stack.lookupGlobalCmd(L"x")->functionAddr(), &second);
    EXPECT_EQ(stack.removeCmd(L"OLD", L"x"), Acad::eKeyNotFound);
    // What was removed can be added anew, under either of its names.
    ASSERT_EQ(stack.addCommand(L"OLD", L"Y", L"X", 0, first), Acad::eOk);
    ASSERT_EQ(stack.removeCmd(L"OLD", L"y"), Acad::eOk);
    ASSERT_EQ(stack.addCommand(L"OLD", L"X", L"Y", 0, first), Acad::eOk);
    ASSERT_EQ(stack.removeCmd(L"OLD", L"X"), Acad::eOk);
    ASSERT_EQ(stack.removeGroup(L"NEW"), Acad::eOk);
    EXPECT_EQ(stack.lookupGlobalCmd(L"x"), nullptr);
    EXPECT_EQ(stack.removeGroup(L"NEW"), Acad::eKeyNotFound);
    EXPECT_EQ(stack.popGroupToTop(L"NEW"), Acad::eKeyNotFound);
}

} // namespace

#include "accmd.h"

#include <gtest/gtest.h>

namespace {

void first() {}
void second() {}

TEST(CommandStack, RefusesWhatCannotBeCalled) {
    AcEdCommandStack stack;
    const std::tuple<const wchar_t*, const wchar_t*, AcRxFunctionPtr> cases[] = {
        {nullptr, L"A", first}, {L"", L"A", first},    {L"G", nullptr, first},  {L"G", L"", first},
        {L"G", L"A B", first},  {L"G", L"A\t", first}, {L"G", L"\"A\"", first}, {L"G", L"A", nullptr}};
    for (const auto& [group, name, function] : cases)
        EXPECT_EQ(stack.addCommand(group, name, nullptr, 0, function), Acad::eInvalidInput)
            << (name ? name : L"null");
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

    const std::pair<const wchar_t*, bool> cases[] = {
        {L"élément", true}, {L"AREA", true},      {L"_area", true}, {L".area", true},
        {L"_.AREA", true},  {L"_élément", false}, {L"are", false},  {L"", false}};
    for (const auto& [typed, isFound] : cases)
        EXPECT_EQ(stack.lookupTyped(typed) != nullptr, isFound) << typed;
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
    ASSERT_EQ(stack.removeGroup(L"NEW"), Acad::eOk);
    EXPECT_EQ(stack.lookupGlobalCmd(L"x"), nullptr);
    EXPECT_EQ(stack.removeGroup(L"NEW"), Acad::eKeyNotFound);
    EXPECT_EQ(stack.popGroupToTop(L"NEW"), Acad::eKeyNotFound);
}

TEST(CommandStack, AGroupIsWalkedInTheOrderOfAddingAndForgetsWhatIsRemoved) {
    AcEdCommandStack stack;
    for (const wchar_t* name : {L"B", L"C", L"A"})
        ASSERT_EQ(stack.addCommand(L"G", name, (std::wstring(L"local") + name).c_str(), 0, first), Acad::eOk);
    ASSERT_EQ(stack.removeCmd(L"G", L"c"), Acad::eOk);
    EXPECT_EQ(stack.lookupLocalCmd(L"localC"), nullptr);
    EXPECT_EQ(stack.addCommand(L"G", L"C", L"LOCALc", 0, first), Acad::eOk) << "its names are free again";
    std::wstring walked;
    const std::unique_ptr<AcEdCommandIterator> walk(stack.iterator());
    for (; !walk->done(); walk->next())
        walked += walk->commandGroup() + std::wstring(walk->command()->globalName());
    EXPECT_EQ(walked, L"GBGAGC");
    EXPECT_EQ(walk->command(), nullptr);
    EXPECT_EQ(walk->commandGroup(), nullptr);
}

} // namespace

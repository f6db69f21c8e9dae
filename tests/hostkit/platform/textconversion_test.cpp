#include "winbase.h"
#include "winnls.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(TextConversion, LengthsAndRoom) {
    wchar_t wide[8] = L".......";
    char bytes[8] = ".......";
    BOOL wasReplaced = FALSE;
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "\x80uro", -1, nullptr, 0), 5);
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "\x80uro", -1, wide, 8), 5);
    EXPECT_EQ(std::wstring(wide), L"\u20ACuro");
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "ab", 1, wide, 8), 1);
    EXPECT_EQ(std::wstring(wide), L"auro");
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"\u20AC\u0141", -1, bytes, 8, nullptr, &wasReplaced), 3);
    EXPECT_EQ(std::string(bytes), "\x80?");
    EXPECT_EQ(wasReplaced, TRUE);
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, L"\u0141", 1, bytes, 8, "_", nullptr), 1);
    EXPECT_EQ(std::string(bytes), "_?");
}

TEST(TextConversion, WhatIsNoneFails) {
    wchar_t wide[2] = L"x";
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "abc", 3, wide, 2), 0);
    EXPECT_EQ(GetLastError(), 122u);
    EXPECT_EQ(MultiByteToWideChar(65001, 0, "a", 1, wide, 2), 0);
    EXPECT_EQ(GetLastError(), 87u);
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 1, "a", 1, wide, 2), 0);
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, nullptr, 1, wide, 2), 0);
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "a", -2, wide, 2), 0);
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, "a", 1, nullptr, 2), 0);
    EXPECT_EQ(std::wstring(wide), L"x");
}

} // namespace

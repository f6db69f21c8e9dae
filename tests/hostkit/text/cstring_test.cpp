#include "cstring.h"
#include "cstringlist.h"
#include "tchar.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdarg>
#include <limits>

namespace {

std::wstring formatted(const wchar_t* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    CString text;
    text.FormatV(format, arguments);
    va_end(arguments);
    return std::wstring(text.view());
}

// Each case goes through both roads, which find their arguments in different ways.
#define EXPECT_FORMAT(expected, ...)                                                                         \
    do {                                                                                                     \
        CString text;                                                                                        \
        text.Format(__VA_ARGS__);                                                                            \
        EXPECT_EQ(std::wstring(text.view()), std::wstring(expected)) << #__VA_ARGS__;                        \
        EXPECT_EQ(formatted(__VA_ARGS__), std::wstring(expected)) << "by list: " << #__VA_ARGS__;            \
    } while (false)

TEST(CStringFormat, ConvertsText) {
    EXPECT_FORMAT(L"é€文𝄞", L"%s", L"é€文𝄞");
    EXPECT_FORMAT(L"é|é|é", L"%s|%ls|%ws", L"é", L"é", L"é");
    EXPECT_FORMAT(L"€é|€é", L"%S|%hs", "\x80\xE9", "\x80\xE9");
    EXPECT_FORMAT(L"[   ab][ab   ][a]", L"[%5s][%-5s][%.1s]", L"ab", L"ab", L"ab");
    EXPECT_FORMAT(L"[  a][b  ]", L"[%*s][%*s]", 3, L"a", -3, L"b");
    EXPECT_FORMAT(L"é€ 100% y", L"%c%C 100%% %y", L'é', 0x80);
    EXPECT_FORMAT(L"(null)(null)", L"%s%S", static_cast<const wchar_t*>(nullptr),
                  static_cast<const char*>(nullptr));
    EXPECT_FORMAT(L"end", L"end%");
    const wchar_t unterminated[3] = {L'a', L'b', L'c'};
    EXPECT_FORMAT(L"ab", L"%.*s", 2, &unterminated[0]);
}

TEST(CStringFormat, ConvertsNumbers) {
    constexpr long long large = std::numeric_limits<long long>::min();
    EXPECT_FORMAT(L"-1 4294967295 ffffffff FFFF 37777777777", L"%d %u %x %hX %o", -1, -1, -1, -1, -1);
    EXPECT_FORMAT(L"-9223372036854775808 -9223372036854775808", L"%I64d %lld", large, large);
    EXPECT_FORMAT(L"5000000000 18446744073709551615", L"%ld %I64u", 5000000000L, -1LL);
    EXPECT_FORMAT(L"-1 44 -56", L"%hhd %hd %hhd", 255, 65580, 200);
    EXPECT_FORMAT(L"+05 0x1f  7 007", L"%+03d %#x %2d %.3d", 5, 31, 7, 7);
    EXPECT_FORMAT(L"0.100000 2.500000000000 1e+20 0.5 1.25E-07", L"%f %.12f %g %g %.2E", 0.1, 2.5, 1e20, 0.5,
                  1.25e-7);
    EXPECT_FORMAT(L"   -1.50|2.00    |", L"%8.2f|%-8.2f|", -1.5, 2.0);
    EXPECT_FORMAT(L"00000000DEADBEEF", L"%p", reinterpret_cast<const void*>(0xDEADBEEFu));
}

TEST(CStringFormat, TakesTextOfAnyLengthAndItself) {
    const std::wstring large(300000, L'é');
    CString text;
    text.Format(L"%s|%400d", large.c_str(), 1);
    EXPECT_EQ(text.GetLength(), 300401);
    text = L"a";
    text.Format(L"%s%s%s", text, L"\\", text);
    EXPECT_EQ(text, L"a\\a");
    text.AppendFormat(L"<%s%d>", text, 2);
    EXPECT_EQ(text, L"a\\a<a\\a2>");
}

TEST(CStringFormat, NeverFollowsAWrongArgument) {
    CString text;
    text.Format(L"%s %d %s", 5, L"text");
    EXPECT_EQ(text, L"? ? ?");
    text.Format(L"%d %f", 2.9, 3);
    EXPECT_EQ(text, L"2 3.000000");
    text.Format(L"a%nb", 1);
    EXPECT_EQ(text, L"ab");
    text.Format(nullptr);
    EXPECT_TRUE(text.IsEmpty());
    const unsigned long wide = 0x1'0000'0005UL;
    text.Format(L"%d %lu", wide, wide);
    EXPECT_EQ(text, L"5 4294967301");
}

TEST(CStringFormat, IsTheSameInEveryLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* locale : {"C", "C.utf8", "de_DE.UTF-8", "tr_TR.UTF-8", "fr_FR.ISO8859-1"}) {
        std::setlocale(LC_ALL, locale); // where it is not installed the locale stays, and so does the answer
        CString text;
        text.Format(L"%s %.1f", L"é", 1.5);
        EXPECT_EQ(text, L"é 1.5") << locale;
        EXPECT_EQ(CString(L"ÉCOLE I Ω Ж").MakeLower(), L"école i ω ж") << locale;
        EXPECT_EQ(CString(L"école i ω ж ÿ ß").MakeUpper(), L"ÉCOLE I Ω Ж Ÿ ß") << locale;
        EXPECT_EQ(CString(L"Dalle À").CompareNoCase(L"dALLE à"), 0) << locale;
        EXPECT_EQ(_wtof(L" -1.5x"), -1.5) << locale;
    }
    std::setlocale(LC_ALL, before.c_str());
}

TEST(CString, FindsAndCuts) {
    const CString text(L"C:\\Support\\Styles\\a.b");
    EXPECT_EQ(text.Find(L"Support"), 3);
    EXPECT_EQ(text.Find(L'\\', 3), 10);
    EXPECT_EQ(text.Find(L"x"), -1);
    EXPECT_EQ(text.Find(L"", 4), 4);
    EXPECT_EQ(text.Find(L"C", 99), -1);
    EXPECT_EQ(text.Find(L"C", -1), -1);
    EXPECT_EQ(text.ReverseFind(L'\\'), 17);
    EXPECT_EQ(text.FindOneOf(L".S"), 3);
    EXPECT_EQ(text.Left(2) + text.Mid(2, 1) + text.Right(1), L"C:\\b");
    EXPECT_EQ(text.Left(-1) + text.Mid(99) + text.Mid(0, -5) + text.Right(-1), L"");
    EXPECT_EQ(text.Right(999), text);
    EXPECT_EQ(text.Mid(-2, 1), L"C");
    EXPECT_EQ(text.SpanExcluding(L"\\"), L"C:");
    EXPECT_EQ(CString(L"0012").SpanIncluding(L"0"), L"00");
    EXPECT_EQ(text[0], L'C');
    EXPECT_EQ(text[-1] + text[99u] + text.GetAt(text.GetLength()), 0);
}

TEST(CString, Edits) {
    CString text(L"a--b--c");
    EXPECT_EQ(text.Replace(L"--", L"-"), 2);
    EXPECT_EQ(text, L"a-b-c");
    EXPECT_EQ(text.Replace(L"", L"x") + text.Replace(nullptr, L"x"), 0);
    EXPECT_EQ(text.Replace(L'-', L'/'), 2);
    EXPECT_EQ(text.Remove(L'/'), 2);
    EXPECT_EQ(text.Insert(1, L"--"), 5);
    EXPECT_EQ(text.Insert(-3, L'<') + text.Insert(99, L">"), 6 + 7);
    EXPECT_EQ(text, L"<a--bc>");
    EXPECT_EQ(text.Delete(2, 2), 5);
    EXPECT_EQ(text.Delete(99) + text.Delete(1, 99), 5 + 1);
    text = L"\t\u00A0 x \r\n";
    EXPECT_EQ(text.Trim(), L"x");
    EXPECT_EQ(CString(L"00100").TrimLeft(L'0'), L"100");
    EXPECT_EQ(CString(L"1.00").TrimRight(L"0."), L"1");
    EXPECT_EQ(CString(L"   ").TrimRight(), L"");
    text = L"abc";
    text = text.GetString() + 1; // its own tail
    EXPECT_EQ(text, L"bc");
    text += text.GetString();
    EXPECT_EQ(text, L"bcbc");
    EXPECT_EQ(L"<" + text + L'>', L"<bcbc>");
    EXPECT_EQ(CString("\x80uro"), L"€uro");
}

TEST(CString, TokenizesUntilNothingIsLeft) {
    const CString text(L",a,,b c,");
    std::vector<std::wstring> tokens;
    int at = 0;
    for (CString token = text.Tokenize(L", ", at); at >= 0; token = text.Tokenize(L", ", at))
        tokens.emplace_back(token.view());
    EXPECT_EQ(tokens, (std::vector<std::wstring>{L"a", L"b", L"c"}));
    EXPECT_EQ(text.Tokenize(L",", at), L"");
    EXPECT_EQ(at, -1);
}

TEST(CString, ComparesAndOrders) {
    EXPECT_LT(CString(L"a").Compare(L"b"), 0);
    EXPECT_GT(CString(L"a").Compare(L"A"), 0);
    EXPECT_EQ(CString().Compare(nullptr), 0);
    EXPECT_LT(CString(L"Éa").CompareNoCase(L"éB"), 0);
    EXPECT_TRUE(CString(L"a") < CString(L"b") && CString(L"a") < L"b" && L"a" != CString(L"b"));
    EXPECT_NE(std::hash<CString>()(CString(L"a")), std::hash<CString>()(CString(L"b")));
}

TEST(CString, LendsItsBuffer) {
    CString text(L"ab");
    wchar_t* buffer = text.GetBuffer(100);
    EXPECT_STREQ(buffer, L"ab");
    lstrcpyW(buffer, L"longer than before");
    text.ReleaseBuffer();
    EXPECT_EQ(text.GetLength(), 18);
    _wcsupr(text.GetBuffer());
    text.ReleaseBuffer(6);
    EXPECT_EQ(text, L"LONGER");
    text.GetBufferSetLength(3);
    text.ReleaseBuffer(99);
    EXPECT_EQ(text, L"LON");
}

TEST(StringCollections, KeepOrderAndPositions) {
    CStringArray array;
    array.Add(L"b");
    array.InsertAt(0, L"a");
    array.SetAtGrow(3, array[1]);
    EXPECT_EQ(array[3] + array[2] + array[0] + array.GetAt(-1) + array.GetAt(9), L"ba");
    array[99] = L"lost";
    EXPECT_EQ(array.GetAt(99), L"");
    array.RemoveAt(1, 99);
    EXPECT_EQ(array.GetSize(), 1);

    CStringList list;
    const POSITION b = list.AddTail(L"b");
    list.AddHead(L"a");
    list.InsertAfter(b, L"c");
    CString all;
    for (POSITION at = list.GetHeadPosition(); at;) all += list.GetNext(at);
    for (POSITION at = list.GetTailPosition(); at;) all += list.GetPrev(at);
    EXPECT_EQ(all, L"abccba");
    list.RemoveAt(b);
    EXPECT_EQ(list.Find(L"b"), nullptr);
    EXPECT_EQ(list.GetAt(list.FindIndex(1)), L"c");
    EXPECT_EQ(list.RemoveTail() + list.RemoveHead() + list.RemoveHead(), L"ca");
    EXPECT_TRUE(list.IsEmpty());
}

TEST(WideRuntime, ReadsNumbers) {
    EXPECT_EQ(_wtoi(L" \t-12x"), -12);
    EXPECT_EQ(_wtoi(L"+7"), 7);
    EXPECT_EQ(_wtoi(L"abc") + _wtoi(L"") + _wtoi(nullptr) + _wtoi(L"- 5"), 0);
    EXPECT_EQ(_wtoi(L"99999999999999999999999"), std::numeric_limits<int>::max());
    EXPECT_EQ(_wtoi(L"-2147483649"), std::numeric_limits<int>::min());
    EXPECT_EQ(_wtoi64(L"-9223372036854775808"), std::numeric_limits<long long>::min());
    EXPECT_EQ(_wtoi64(L"9223372036854775807"), std::numeric_limits<long long>::max());
    EXPECT_EQ(_wtof(L"2.5e3x") + _wtof(L".5") + _wtof(L"5.") + _wtof(L"1d2"), 2500 + 0.5 + 5 + 100);
    EXPECT_EQ(_wtof(L"1e") + _wtof(L"2e+") + _wtof(L"."), 3.0);
    EXPECT_EQ(_wtof(L"nan") + _wtof(L"inf") + _wtof(L"0x10"), 0.0);
    EXPECT_EQ(_wtof(L"-1e999"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(_wtof(L"1e-999"), 0.0);
}

TEST(WideRuntime, SplitsAndMakesPaths) {
    const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*> cases[] = {
        {L"C:\\Prog\\Bin\\a.b.arx", L"C:|\\Prog\\Bin\\|a.b|.arx", L"C:\\Prog\\Bin\\"},
        {L"/opt/x/mod", L"|/opt/x/|mod|", L"/opt/x/"},
        {L"a.b\\c", L"|a.b\\|c|", L"a.b\\"},
        {L"C:x", L"C:||x|", L"C:"},
        {L"", L"|||", L""},
    };
    for (const auto& [whole, parts, withoutName] : cases) {
        wchar_t drive[_MAX_DRIVE], directory[_MAX_DIR], name[_MAX_FNAME], extension[_MAX_EXT],
            path[_MAX_PATH];
        _wsplitpath(whole, drive, directory, name, extension);
        EXPECT_EQ(drive + CString(L"|") + directory + L"|" + name + L"|" + extension, parts);
        _wmakepath(path, drive, directory, nullptr, nullptr);
        EXPECT_STREQ(path, withoutName) << whole;
        _wmakepath(path, drive, directory, name, extension);
        EXPECT_STREQ(path, whole);
    }
    wchar_t path[_MAX_PATH];
    _wmakepath(path, L"D", L"\\a", L"b", L"c");
    EXPECT_STREQ(path, L"D:\\a\\b.c");
    _wsplitpath(std::wstring(5000, L'a').c_str(), nullptr, nullptr, path, nullptr);
    EXPECT_EQ(lstrlenW(path), _MAX_FNAME - 1);
}

} // namespace

#include "platform/profile_text.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/text.h"

namespace platform {
namespace {

using namespace std::string_literals;

std::string After(std::string_view file, std::string_view section, std::string_view key,
                  std::optional<std::string_view> value) {
    ProfileText text(file);
    EXPECT_TRUE(text.SetValue(section, key, value));
    // What the open text gives is what a reader of the file gets.
    EXPECT_EQ(text.Value(section, key), ProfileText(text.Bytes()).Value(section, key));
    return text.Bytes();
}

TEST(ProfileTextTest, ReadsWhatTheRulesPromise) {
    const struct {
        std::string File, Value;
    } cases[] = {
        {"[head]\r\nItEmS = \t 7 \t\r\n", "7"},
        {"[HEAD]\ritems=7\r", "7"},
        {" \t[ Head ] ; text [x]\r\n items=7\r\n", "7"},
        {"\xEF\xBB\xBF[HEAD]\r\nitems=7\r\n", "7"},
        {"\xEF\xBB\xBF[HEAD]\r\nitems=\xE9\r\n", "é"},
        {"[HEAD]\r\nitems=a=b = c\r\n", "a=b = c"},
        {"[HEAD]\r\nitems=1\r\nITEMS=2\r\n[HEAD]\r\nitems=3\r\n", "1"},
        {"[HEAD]\r\n[HEAD]\r\nitems=3\r\n", ""},
        {"items=1\r\n[HEADS]\r\nitems=2\r\n[HEAD\r\nitems=3\r\n", ""},
        {"[OTHER]\nitems=1\n[HEAD]\n;items=2\n =3\n=\n[items=4\n]\nitems\nitems2=5\nitems=6\n", "6"},
        {"[HEAD]\r\nitems=\" a \"\r\n", " a "},
        {"[HEAD]\r\nitems='a'b'\r\n", "a'b"},
        {"[HEAD]\r\nitems=\"\r\n", "\""},
        {"[HEAD]\r\nitems=a \0b\r\n"s, "a"},
        {"[HEAD]\r\nitems=\xC2\xA0x\r\n", "\xC2\xA0x"},
    };
    for (const auto& [file, value] : cases) {
        EXPECT_EQ(ProfileText(file).Value("HEAD", "items"), value) << file;
        EXPECT_EQ(ProfileText(file).Bytes(), file);
    }
}

TEST(ProfileTextTest, CutsLongValuesBetweenCharacters) {
    for (const std::string character : {"a", "é", "𝄞", "\xE9"}) {
        std::string whole;
        for (int i = 0; i < 254; ++i) whole += character;
        for (const std::string& value : {whole, whole + character, "\"" + whole + "\""}) {
            EXPECT_EQ(ProfileText("[s]\nk=" + value).Value("s", "k"), ToUtf8(whole));
        }
    }
}

TEST(ProfileTextTest, ComparesNamesWithoutCaseInManyScripts) {
    ProfileText text("[Größe ÀÞ Ő Żubr Ÿ]\nЁЖЯ Ѣ=1\nἈ=3\nΆΈΌΏ ΣΊΣ=2\n×=4\n");
    EXPECT_EQ(text.Value("gröSSe àþ ő żUBR ÿ", "ёжя ѣ"), "") << "no letter becomes two";
    EXPECT_EQ(text.Value("GRÖßE àþ ő żUBR ÿ", " ёжя ѣ "), "1");
    EXPECT_EQ(text.Value("GRÖßE àþ ő żUBR ÿ", "άέόώ σίς"), "2");
    EXPECT_EQ(text.Value("GRÖßE àþ ő żUBR ÿ", "÷"), "") << "a sign between the letters";
    EXPECT_EQ(ProfileText("[\xC4]\n\x8A=1\n").Value("ä", "š"), "1");
}

TEST(ProfileTextTest, WritesOneLineAndKeepsEveryOtherByte) {
    const std::string rest = "; note\r\n\r\n[x]\r\nk=\"9\"\nnoise\r";
    const struct {
        std::string Before;
        std::optional<std::string> Value;
        std::string After;
    } cases[] = {
        {"", "1", "[s]\r\nk=1\r\n"},
        {rest, "1", rest + "[s]\r\nk=1\r\n"},
        {"[x]\nk=9", "1", "[x]\nk=9\n[s]\nk=1\n"},
        {"\xEF\xBB\xBF", "1", "\xEF\xBB\xBF[s]\r\nk=1\r\n"},
        {"[s]\r\n K = 0 \nj=2\n", "1", "[s]\r\nK=1\nj=2\n"},
        {"[s]\nk=0", "1", "[s]\nk=1"},
        {"[s]", "1", "[s]\r\nk=1\r\n"},
        {"[s]\r", "1", "[s]\rk=1\r"},
        {"[s]\nj=2\n\n \t\n[x]\nk=9\n", "1", "[s]\nj=2\nk=1\n\n \t\n[x]\nk=9\n"},
        {"[s]\nk=0\nk=5\n[s]\nk=6\n", "1", "[s]\nk=1\nk=5\n[s]\nk=6\n"},
        {"[s]\nk=0\n; note\nj=2\nK=5\n[s]\nk=6", {}, "[s]\n; note\nj=2\n[s]\nk=6"},
        {"[s]\nj=2\n", {}, "[s]\nj=2\n"},
        {"[s]\nk=0", " \"a\" ", "[s]\nk= \"a\" "},
    };
    for (const auto& [before, value, after] : cases) {
        EXPECT_EQ(After(before, "s", "k", value), after) << before;
    }
}

TEST(ProfileTextTest, RefusesNamesThatNoLineHolds) {
    const std::string file = "[s]\r\n=1\r\n;c=2\r\n[b=3\r\n[]\r\nk=4\r\n";
    ProfileText text(file);
    for (const char* key : {"", " ", "a=b", "=", ";c", "[b", "a\nb", "a\rb", "\n"}) {
        EXPECT_FALSE(text.SetValue("s", key, "x")) << key;
        EXPECT_EQ(text.Value("s", key), "") << key;
    }
    for (const char* section : {"a]b", "]", "a\nb", "\r"}) EXPECT_FALSE(text.SetValue(section, "k", "x"));
    EXPECT_EQ(text.Bytes(), file);
    EXPECT_EQ(text.Value("", "k"), "4");
}

TEST(ProfileTextTest, KeepsOrWidensTheEncoding) {
    const std::string odd = "; \x81\x8D\x8F\x90\x9D \x80\xFF\r\n";
    const std::string oddUtf8 = "; \u0081\u008D\u008F\u0090\u009D €ÿ\r\n";
    const struct {
        std::string Before, Value, After;
    } cases[] = {
        {"[s]\r\nk=\r\n", "пример", "[s]\r\nk=пример\r\n"},
        {odd + "[s]\r\nk=\r\n", "é€\u0081", odd + "[s]\r\nk=\xE9\x80\x81\r\n"},
        {odd + "[s]\r\nk=\r\n", "ж", oddUtf8 + "[s]\r\nk=ж\r\n"},
        {"é\r\n[s]\r\nk=\r\n", "ж", "é\r\n[s]\r\nk=ж\r\n"},
        {"é\r\n[s]\r\nk=\r\n", "\xE9\x80", "é\r\n[s]\r\nk=é€\r\n"},
        {"[s]\r\nk=\r\n", "\xED\xA0\x80\xC0\xAF", "[s]\r\nk=í\u00A0€À¯\r\n"},
        // In Windows-1252 these would be taken for the UTF-8 of "é" and of nothing special.
        {"[s]\r\nk=\xFF\r\n", "Ã©", "[s]\r\nk=Ã©\r\n"},
        {"\xEF\xBB\xBF\xE9\r\n[s]\r\nk=\r\n", "é", "\xEF\xBB\xBF\xE9\r\n[s]\r\nk=\xE9\r\n"},
        {"\xEF\xBB\xBF\xE9\r\n[s]\r\nk=\r\n", "ж", "\xEF\xBB\xBFé\r\n[s]\r\nk=ж\r\n"},
    };
    for (const auto& [before, value, after] : cases) {
        EXPECT_EQ(After(before, "s", "k", value), after);
    }
    for (const char* broken :
         {"\x80", "\xC1\x81", "\xC3", "\xE0\x9F\xBF", "\xED\xBF\xBF", "\xF4\x90\x80\x80", "\xF5"}) {
        EXPECT_NE(ToUtf8(broken), broken);
        EXPECT_EQ(ToWindows1252(ToUtf8(broken)), broken);
    }
    const std::string valid = "\u0080\u07FF\u0800\uD7FF\uE000\uFFFF\U00010000\U0010FFFF";
    EXPECT_EQ(ToUtf8(valid), valid);
}

// Takes minutes if the cost of a key grows with the square of the file.
TEST(ProfileTextTest, HugeFilesStayCheap) {
    constexpr int kMany = 200'000;
    std::string sections;
    for (int i = 0; i < kMany; ++i) sections += "[s" + std::to_string(i) + "]\nk=" + std::to_string(i) + "\n";
    ProfileText text(sections);
    for (int i = kMany - 1; i >= 0; i -= 3) {
        const std::string name = "S" + std::to_string(i);
        ASSERT_EQ(text.Value(name, "K"), std::to_string(i));
        text.SetValue("new" + name, "k", "0");
    }
    EXPECT_EQ(ProfileText(text.Bytes()).Value("newS1", "k"), "0");
}

}  // namespace
}  // namespace platform

#include "platform/profile_text.h"

#include <gtest/gtest.h>

#include <random>
#include <tuple>

#include "platform/text.h"

using namespace platform;

using namespace std::string_literals;

TEST(ProfileTextTest, ReadsWhatTheRulesPromise) {
    const std::string longest(254, 'a');
    const std::pair<std::string, std::string> cases[] = {
        {"[head]\r\nItEmS = \t 7 \t\r\n", "7"},
        {"[HEAD]\ritems=7\r", "7"},
        {" \t[ Head ] ; text [x]\r\n items=7\r\n", "7"},
        {"\xEF\xBB\xBF[HEAD]\r\nitems=\xE9\x80\r\n", "é€"},
        {"[HEAD]\r\nitems=a=b = c\r\n", "a=b = c"},
        {"[HEAD]\r\nitems=1\r\nITEMS=2\r\n[HEAD]\r\nitems=3\r\n", "1"},
        {"[HEAD]\r\n[HEAD]\r\nitems=3\r\n", ""},
        {"[OTHER]\nitems=1\n[HEAD]\n;items=2\n =3\n=\n[items=4\n]\nitems\nitems2=5\nitems=6\n", "6"},
        {"[HEAD]\r\nitems=\" a \"\r\n", " a "},
        {"[HEAD]\r\nitems='a\"\r\n", "'a\""},
        {"[HEAD]\r\nitems=\"\r\n", "\""},
        {"[HEAD]\r\nitems=a \0b\r\n"s, "a"},
        {"[HEAD]\r\nitems='" + longest + "a'", longest},
        {"[HEAD]\r\nitems=é" + longest, "é" + longest.substr(1)},
    };
    for (const auto& [file, value] : cases)
        EXPECT_EQ(ProfileText(file).Value("HEAD", "items"), value) << file;
    EXPECT_EQ(ProfileText("[GRÖßE Ÿ]\nЁЖЯ=1\n").Value("größe ÿ", " Ёжя "), "1");
}

TEST(ProfileTextTest, WritesOneLineAndKeepsEveryOtherByte) {
    const std::string rest = "; note\r\n\r\n[x]\r\nk=\"9\"\nnoise\r";
    const std::string odd = "; \x81\x8D\x8F\x90\x9D \x80\xFF\r\n[s]\r\nk=";
    const std::string oddUtf8 = "; \u0081\u008D\u008F\u0090\u009D €ÿ\r\n[s]\r\nk=";
    const std::string large = std::string(200'001, '\xE9') + "\r\n[s]\r\nk=";
    const std::tuple<std::string, std::optional<std::string>, std::string> cases[] = {
        {"", "1", "[s]\r\nk=1\r\n"},
        {rest, "1", rest + "[s]\r\nk=1\r\n"},
        {"[x]\nk=9", "1", "[x]\nk=9\n[s]\nk=1\n"},
        {"[s]\r\n K = 0 \nj=2\n", " \"a\" ", "[s]\r\nK= \"a\" \nj=2\n"},
        {"[s]", "1", "[s]\r\nk=1\r\n"},
        {"[s]\r", "1", "[s]\rk=1\r"},
        {"[s]\nj=2\n\n \t\n[x]\nk=9\n", "1", "[s]\nj=2\nk=1\n\n \t\n[x]\nk=9\n"},
        {"[s]\nk=0\nk=5\n[s]\nk=6\n", "1", "[s]\nk=1\nk=5\n[s]\nk=6\n"},
        {"[s]\nk=0\n; note\nj=2\nK=5\n[s]\nk=6", {}, "[s]\n; note\nj=2\n[s]\nk=6"},
        // In the file's encoding as long as that holds it and is taken for itself.
        {odd, "é€\u0081", odd + "\xE9\x80\x81"},
        {odd, "ж", oddUtf8 + "ж"},
        {large, "1", large + "1"},
        {"é\r\n[s]\r\nk=", "\xE9\x80", "é\r\n[s]\r\nk=é€"},
        {"[s]\r\nk=\xFF", "Ã©", "[s]\r\nk=Ã©"},
        {"\xEF\xBB\xBF\xE9\r\n[s]\r\nk=", "é", "\xEF\xBB\xBF\xE9\r\n[s]\r\nk=\xE9"},
    };
    for (const auto& [before, value, after] : cases) {
        ProfileText text(before);
        EXPECT_EQ(text.Bytes(), before);
        EXPECT_TRUE(text.SetValue("s", "k", value));
        EXPECT_EQ(text.Bytes(), after);
    }
}

TEST(ProfileTextTest, RefusesNamesThatNoLineHolds) {
    ProfileText text("[]\r\nk=4");
    for (const char* key : {" ", "a=b", ";c", "[b", "a\nb"})
        EXPECT_FALSE(text.SetValue("s", key, "x")) << key;
    for (const char* section : {"a]b", "a\nb"}) EXPECT_FALSE(text.SetValue(section, "k", "x")) << section;
    EXPECT_EQ(text.Bytes(), "[]\r\nk=4");
    EXPECT_EQ(text.Value("", "k"), "4");
}

// Any bytes as a file, any names and values: one open text takes writes as the file would take them one by
// one. Without a lone CR, which may become a part of CR LF when what is behind it goes.
TEST(ProfileTextTest, WritesTogetherAreWritesOneByOne) {
    const char* marks[] = {
        "[s]\n", "[S]", "\n[t] x\n", "[", "]", "=", "k=", "\nK = ", "j=1\n", "\n",   "\r\n",
        " ",     "\"",  ";",         "s", "k", "é", "ж",  "Ã©",     "𝄞",     "\xE9", "\x81\x80"};
    std::mt19937 random;
    const auto draw = [&](std::size_t most) {
        std::string text;
        for (auto count = random() % most; count > 0; --count) text += marks[random() % std::size(marks)];
        return text;
    };
    for (int i = 0; i < 5'000; ++i) {
        std::string file = draw(9);
        ProfileText open(file);
        for (int writes = 0; writes < 5; ++writes) {
            const std::string section = random() % 3 == 0 ? draw(3) : "s";
            const std::string key = random() % 3 == 0 ? draw(3) : "k";
            const auto value = random() % 6 == 0 ? std::nullopt : std::optional(draw(9));
            SCOPED_TRACE(file + "|" + section + "|" + key + "|" + value.value_or("-"));
            ProfileText single(file);
            ASSERT_TRUE(single.SetValue(section, key, value) || single.Bytes() == file);
            file = single.Bytes();
            open.SetValue(section, key, value);
            // One by one the encoding may widen sooner.
            ASSERT_EQ(ToUtf8(open.Bytes()), ToUtf8(file));
            ASSERT_EQ(open.Value(section, key), ProfileText(file).Value(section, key));
        }
    }
}

// Takes minutes if the cost of a key grows with the file.
TEST(ProfileTextTest, HugeFilesStayCheap) {
    std::string sections;
    for (int i = 0; i < 200'000; ++i)
        sections += "[s" + std::to_string(i) + "]\nk=" + std::to_string(i) + "\n";
    ProfileText text(sections);
    for (int i = 0; i < 200'000; i += 3) {
        const std::string number = std::to_string(i);
        ASSERT_EQ(text.Value("S" + number, "K"), number);
        text.SetValue("new" + number, "k", "0\n[s1]\n[behind" + number + "]\nk=1");
        ASSERT_EQ(text.Value("behind" + number, "k"), "1");
    }
}

// Small texts that arguments and files bring, and how they are understood.
#include "cli/errors.h"
#include "cli/fileschema.h"
#include "cli/idlist.h"
#include "cli/json.h"
#include "cli/key.h"
#include "cli/text.h"
#include "cli/texttable.h"
#include "cli/words.h"
#include "exchange/table/names.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace tarvo::cli;
using namespace tarvo::exchange;
using Words = std::vector<std::string>;
using Bytes = std::vector<std::uint8_t>;

TEST(Arguments, CommandLinesSplitAsInAShell) {
    EXPECT_EQ(splitWords(""), Words{});
    EXPECT_EQ(splitWords("  a  b\tc\n"), (Words{"a", "b", "c"}));
    EXPECT_EQ(splitWords("--f 'a b' \"c 'd'\" e'f g'h"), (Words{"--f", "a b", "c 'd'", "ef gh"}));
    EXPECT_EQ(splitWords(R"('' "" x)"), (Words{"", "", "x"}));
    EXPECT_EQ(splitWords(R"(a\ b "q\"\\\n" 'r\' \')"), (Words{"a b", "q\"\\\\n", "r\\", "'"}));
    EXPECT_THROW(splitWords("a 'b"), UsageError);
    EXPECT_THROW(splitWords("\"a\\\""), UsageError);
}

TEST(Arguments, ListsOfIdsJoinWhatOverlapsAndEndAtTheLargest) {
    IdList list("7, 3-5\n4-6,3");
    EXPECT_EQ(list.count(), 5u);
    std::vector<std::uint64_t> ids;
    list.next(ids, 3);
    EXPECT_EQ(ids, (std::vector<std::uint64_t>{3, 4, 5}));
    list.next(ids, 3);
    EXPECT_EQ(ids, (std::vector<std::uint64_t>{6, 7}));
    list.next(ids, 3);
    EXPECT_TRUE(ids.empty());

    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    IdList wide("0-18446744073709551615,5");
    EXPECT_EQ(wide.count(), most);  // one less than there are: the largest number
    wide.limit(4);
    EXPECT_EQ(wide.count(), 5u);
    IdList ends("4,7,9");
    ends.limit(7);
    EXPECT_EQ(ends.count(), 2u);
    IdList last("18446744073709551615");
    last.next(ids, 2);
    EXPECT_EQ(ids, std::vector<std::uint64_t>{most});
    last.next(ids, 2);
    EXPECT_TRUE(ids.empty());
    for (const char* wrong : {"", " , ", "x", "1-", "-1", "1-2-3", "5-4", "18446744073709551616"}) {
        EXPECT_THROW(IdList{wrong}, UsageError) << wrong;
    }
}

TEST(Arguments, FileNamesTellTheSchemaWithTheLongestExtension) {
    EXPECT_EQ(guessFileSchema("/a/b.qrbx"), "qrbx");
    EXPECT_EQ(guessFileSchema("B.SIDX"), "sidx");
    EXPECT_EQ(guessFileSchema("b.avg.sidx"), "avg.sidx");
    EXPECT_EQ(guessFileSchema("b.sp12"), "sp{C}");
    EXPECT_EQ(guessFileSchema("b.avg.sp1"), "avg.sp{C}");
    EXPECT_EQ(guessFileSchema("b.sp"), "");
    EXPECT_EQ(guessFileSchema("b.txt"), "");
    EXPECT_EQ(guessFileSchema(""), "");
}

TEST(Arguments, TablesAlignWhatIsReadNotTheBytes) {
    TextTable table({{"Name"}, {"N", true}, {"Title"}});
    table.add({"Größe", "7", "a\nb"});
    table.add({"x", "123", "\x1b[1m"});
    EXPECT_EQ(table.text(),
              "Name     N  Title\n"
              "Größe    7  a b\n"
              "x      123  ?[1m\n");
    EXPECT_EQ(labelled("Text", "a\nb"), "Text          a\n              b\n");
    EXPECT_EQ(labelled("Text", ""), "");
    EXPECT_EQ(printable("a\r\t\x7f\xc2\x85\xc3\xa9\n"), "a? ??\xc3\xa9\n");
    // What turns the direction of the text behind it; others of these blocks stay; what is no character does not.
    EXPECT_EQ(printable("\u202a\u202e\u2066\u2069\u200e\u200f\u061c"), "???????");
    EXPECT_EQ(printable("\u202f\u2065\u206a\u200d\u2027\u061b\xe2\x80"),
              "\u202f\u2065\u206a\u200d\u2027\u061b??");
    EXPECT_EQ(oneLine("a\nb\u202e"), "a b?");
}

TEST(Arguments, NamesThatAreNoUtf8AreReadAsLatin1) {
    for (const char* text :
         {"", "a", "\xc3\xa9", "\xef\xbf\xbf", "\xed\x9f\xbf", "\xee\x80\x80", "\xf4\x8f\xbf\xbf"})
        EXPECT_EQ(validUtf8(text), text);
    // Cut off, alone, overlong, surrogates, beyond the last character.
    for (const char* text :
         {"\xc3", "\xe2\x82", "\x80", "a\xff", "\xc0\x80", "\xe0\x9f\xbf", "\xf0\x8f\xbf\xbf",
          "\xed\xa0\x80", "\xed\xbf\xbf", "\xf4\x90\x80\x80"})
        EXPECT_FALSE(isUtf8(text)) << validUtf8(text);
    EXPECT_EQ(validUtf8("h\xf6he"), "h\xc3\xb6he");
    JsonText json;
    json.beginObject();
    json.member("h\xf6he", "\xff");
    json.endObject();
    EXPECT_EQ(json.compact(), "{\"h\xc3\xb6he\":\"\xc3\xbf\"}");
}

TEST(Text, NodeListsThatAreWrongAreWrongUse) {
    EXPECT_EQ(parseNodes("1,3-4"), (std::vector<std::uint32_t>{1, 3, 4}));
    EXPECT_THROW(parseNodes("1-2-3"), UsageError);
}

}  // namespace

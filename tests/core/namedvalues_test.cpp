// Numbers of named values: what doubles can't tell apart stays apart.
#include "core/namedvalues.h"

#include <gtest/gtest.h>

namespace tarvo::core {
namespace {

TEST(NamedValues, WholeNumbersOf64BitsAreExact) {
    const std::string different[] = {"18446744073709551615",
                                     "18446744073709551614",
                                     "18446744073709551616",
                                     "9223372036854775807",
                                     "9223372036854775808",
                                     "-9223372036854775808",
                                     "-9223372036854775809",
                                     "9007199254740993",
                                     "9007199254740992",
                                     "-9007199254740993",
                                     "2",
                                     "-2"};
    std::string text;
    for (const std::string& a : different) {
        text += a + "=" + a + "\n";
        ASSERT_TRUE(namedNumber(a));
        for (const std::string& b : different)
            EXPECT_EQ(namedNumber(a) == namedNumber(b), a == b) << a << " and " << b;
    }
    for (const auto& finding : checkNamedValues(readNamedValues(text), nullptr))
        ADD_FAILURE() << finding.text;
    // Written otherwise they are the same.
    for (const auto& [a, b] :
         {std::pair("2", " 2.0 "), std::pair("9007199254740994", "9007199254740994.0"),
          std::pair("1e300", "10e299"), std::pair("-0", "0")})
        EXPECT_EQ(namedNumber(a), namedNumber(b)) << a;
    EXPECT_EQ(checkNamedValues(readNamedValues("2=two\n2.0=also two\n"), nullptr).size(), 1u);
    EXPECT_FALSE(namedNumber("+2") || namedNumber("two") || namedNumber(""));
}

}  // namespace
}  // namespace tarvo::core

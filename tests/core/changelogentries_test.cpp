#include "core/changelogentries.h"

#include <gtest/gtest.h>

namespace tarvo::core {
namespace {

const std::string log =
    "before\n[#1] Old\nAgent: a\n\n[#12] Twelve\nSignature: 0a\napproved by\n\n"
    "[#1] New\nMessage: see\n    [ #x] and [# 1]\nSignature: zz\n[#2";

std::vector<std::string> texts() {
    std::vector<std::string> found;
    for (const ChangelogEntry& entry : changelogEntries(log))
        found.push_back(std::to_string(entry.number) + "|" +
                        log.substr(entry.begin, entry.end - entry.begin));
    return found;
}

TEST(ChangelogEntries, ReachToTheNextOneWithAllThatStandsBehindTheirSignature) {
    EXPECT_EQ(texts(),
              (std::vector<std::string>{
                  "1|[#1] Old\nAgent: a\n\n", "12|[#12] Twelve\nSignature: 0a\napproved by\n\n",
                  "1|[#1] New\nMessage: see\n    [ #x] and [# 1]\nSignature: zz\n[#2"}));
    EXPECT_TRUE(changelogEntries("").empty());
}

TEST(ChangelogEntries, AreFoundAroundAPosition) {
    EXPECT_FALSE(changelogEntryAt(log, 3));
    EXPECT_EQ(changelogEntryAt(log, log.find("[#1]"))->number, 1u);
    EXPECT_EQ(changelogEntryAt(log, log.find("[#12]") - 1)->number, 1u);
    EXPECT_EQ(changelogEntryAt(log, log.find("approved"))->number, 12u);
    EXPECT_EQ(changelogEntryAt(log, log.size())->begin, log.rfind("[#1]"));
}

TEST(ChangelogEntries, HaveASignatureWhereALineBeginsAsOne) {
    EXPECT_TRUE(hasSignature("[#1] a\nSignature: F0\n"));
    EXPECT_FALSE(hasSignature("[#1] a\nSignature: zz\n"));
    EXPECT_FALSE(hasSignature("[#1] a Signature: 00\n"));
    EXPECT_FALSE(hasSignature("[#1] a\nSignature: "));
}

}  // namespace
}  // namespace tarvo::core

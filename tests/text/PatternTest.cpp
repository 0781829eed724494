#include "text/Pattern.h"

#include <gtest/gtest.h>

namespace zelvreg {
namespace {

struct Case {
  const char* text;
  const char* pattern;
  Match match;
};

class Pattern : public ::testing::TestWithParam<Case> {};

TEST_P(Pattern, FitsTheWholeTextOrNot) {
  const auto& [text, pattern, match] = GetParam();
  EXPECT_EQ(matchesPattern(text, pattern), match) << text << " with " << pattern;
}

constexpr Match yes = Match::Yes;
constexpr Match no = Match::No;
constexpr Match refused = Match::Refused;

INSTANTIATE_TEST_SUITE_P(Plain, Pattern,
                         ::testing::Values(Case{"", "", yes}, Case{"a", "a", yes},
                                           Case{"a", "A", no}, Case{"ab", "a", no},
                                           Case{"a", "ab", no}, Case{"]", "]", yes},
                                           Case{"!a-", "!a-", yes}));

INSTANTIATE_TEST_SUITE_P(
    Wildcards, Pattern,
    ::testing::Values(Case{"a", "?", yes}, Case{"", "?", no}, Case{"", "*", yes},
                      Case{"abc", "a*c", yes}, Case{"abcd", "a*c", no}, Case{"aXbXc", "a*X*c", yes},
                      Case{"7", "#", yes}, Case{"x", "#", no}, Case{"a12", "a##", yes},
                      Case{"0", "#", yes}, Case{"9", "#", yes}, Case{"/", "#", no},
                      Case{":", "#", no}, Case{"", "**", yes}, Case{"", "*?", no},
                      Case{"abab", "*ab", yes}, Case{"aab", "*ab", yes}, Case{"ab", "*b?", no}));

INSTANTIATE_TEST_SUITE_P(
    Lists, Pattern,
    ::testing::Values(Case{"b", "[a-c]", yes}, Case{"d", "[a-c]", no}, Case{"d", "[!a-c]", yes},
                      Case{"b", "[!a-c]", no}, Case{"x", "[xyz]", yes}, Case{"-", "[a-]", yes},
                      Case{"*", "[*]", yes}, Case{"[", "[[]", yes}, Case{"!", "[!]", yes},
                      Case{"ab", "a[]b", yes}, Case{"m", "[a-cm-o]", yes}, Case{"a", "[a-c]", yes},
                      Case{"c", "[a-c]", yes}, Case{"`", "[a-c]", no}, Case{"-", "[a-cm-o]", no},
                      Case{"c", "[c-c]", yes}, Case{"-", "[a-c-e]", yes}, Case{"d", "[a-c-e]", no},
                      Case{"x", "[!]", no}, Case{"a!b", "a[!]b", yes}, Case{"a", "[!!]", yes},
                      Case{"!", "[!!]", no}));

INSTANTIATE_TEST_SUITE_P(OtherScripts, Pattern,
                         ::testing::Values(Case{"ソ", "?", yes}, Case{"ソ", "??", no},
                                           Case{"ソ", "[ア-ン]", yes}, Case{"ソ", "[!ア-ン]", no},
                                           Case{"ソ", "#", no}, Case{"表7", "*#", yes},
                                           Case{"表", "a", no}, Case{"a", "表", no},
                                           Case{"ソ", "[ン-ア]", refused}));

INSTANTIATE_TEST_SUITE_P(Refused, Pattern,
                         ::testing::Values(Case{"a", "[a", refused}, Case{"", "[", refused},
                                           Case{"b", "[c-a]", refused},
                                           Case{"b", "[x-zc-a]", refused}));

// A walk that tried every way would not end in a lifetime.
TEST(Pattern, ManyStarsTakeNoLongerThanTheirNumber) {
  const std::string text(2000, 'a');
  std::string pattern;
  for (int star = 0; star < 200; ++star) {
    pattern += "*a";
  }
  EXPECT_EQ(matchesPattern(text, pattern), yes);
  EXPECT_EQ(matchesPattern(text, pattern + "b"), no);
}

}  // namespace
}  // namespace zelvreg

#include "text/Numbers.h"

#include <gtest/gtest.h>

namespace zelvreg {
namespace {

struct Reading {
  const char* text;
  double number;
};

class LeadingNumber : public ::testing::TestWithParam<Reading> {};

TEST_P(LeadingNumber, IsReadFromTheFrontOfTheText) {
  EXPECT_EQ(leadingNumber(GetParam().text), GetParam().number) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Texts, LeadingNumber,
    ::testing::Values(Reading{"", 0}, Reading{"abc", 0}, Reading{"2", 2}, Reading{"  7 ", 7},
                      Reading{"12 Problem(s) Found", 12}, Reading{"1 2", 12}, Reading{"-5x", -5},
                      Reading{"+5", 5}, Reading{"1.5.2", 1.5}, Reading{".5", 0.5}, Reading{".", 0},
                      Reading{"-", 0}, Reading{"1e3", 1000}, Reading{"1d2", 100}, Reading{"1e", 1},
                      Reading{"1e+", 1}, Reading{"2E-1", 0.2}, Reading{"&H10", 16},
                      Reading{"&hff", 255}, Reading{"&HFFFF", -1}, Reading{"&O17", 15},
                      Reading{"&17", 15}, Reading{"&", 0}, Reading{"&Hxy", 0},
                      Reading{"\t3\n4", 34}, Reading{"3\r4", 34}, Reading{"-.5e1x", -5},
                      Reading{"1D2", 100}, Reading{"1E-", 1}, Reading{"&o17", 15},
                      Reading{"&o8", 0}, Reading{"+", 0}, Reading{"4294967296", 4294967296.0}));

// Digits that fit into 16 bits are those of a 16-bit number, whose first bit is its sign.
INSTANTIATE_TEST_SUITE_P(PrefixedTexts, LeadingNumber,
                         ::testing::Values(Reading{"&H7FFF", 32767}, Reading{"&H8000", -32768},
                                           Reading{"&H10000", 65536},
                                           Reading{"&H7FFFFFFF", 2147483647},
                                           Reading{"&HFFFFFFFF", -1}, Reading{"&H100000000", 0},
                                           Reading{"&O177777", -1}, Reading{"&O200000", 65536}));

class ConvertedNumber : public ::testing::TestWithParam<Reading> {};

TEST_P(ConvertedNumber, IsAllOfTheText) {
  const auto number = convertedNumber(GetParam().text);
  ASSERT_TRUE(number.has_value()) << GetParam().text;
  EXPECT_EQ(*number, GetParam().number) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ConvertedNumber,
    ::testing::Values(Reading{"0", 0}, Reading{"1.0", 1}, Reading{" 7 ", 7}, Reading{"-5", -5},
                      Reading{"5-", -5}, Reading{"+5", 5}, Reading{"(5)", -5}, Reading{"$5", 5},
                      Reading{"-$5", -5}, Reading{"$-5", -5}, Reading{"1,234.5", 1234.5},
                      Reading{"1.", 1}, Reading{".5", 0.5}, Reading{"1e3", 1000},
                      Reading{"1.d2", 100}, Reading{"&H10", 16}, Reading{"&hFF", 255},
                      Reading{"&O17", 15}, Reading{"&17", 15}, Reading{"&o17", 15},
                      Reading{"5+", 5}, Reading{"($5)", -5}, Reading{"1,2,3", 123},
                      Reading{"\t7\r\n", 7}, Reading{"1e-3", 0.001}, Reading{"1e+3", 1000},
                      Reading{"- 5", -5}));

class NotANumber : public ::testing::TestWithParam<const char*> {};

TEST_P(NotANumber, IsATextWithAnythingElse) {
  EXPECT_FALSE(convertedNumber(GetParam()).has_value()) << GetParam();
}

INSTANTIATE_TEST_SUITE_P(Texts, NotANumber,
                         ::testing::Values("", " ", "abc", "1.d", "1.a", "a1", "1 2", "1.2.3", ".",
                                           "-", "--5", "-5-", "(-5)", "(5", "5)", "1e", ",5", "&",
                                           "&H", "&Hxy", "&8", "&O8", "+5-", "$", "()", "1.2,3",
                                           "$$$5", "FX:1",
                                           "{00000000-0000-0000-0000-000000000001}"));

TEST(NumberText, HasAFractionOnlyWhereThereIsOne) {
  EXPECT_EQ(numberText(41), "41");
  EXPECT_EQ(numberText(-3), "-3");
  EXPECT_EQ(numberText(2.5), "2.5");
  EXPECT_EQ(numberText(0.1 + 0.2), "0.3");
}

TEST(NumberText, TurnsToAnExponentAfterFifteenDigits) {
  EXPECT_EQ(numberText(123456789012345), "123456789012345");
  EXPECT_EQ(numberText(1e15), "1E+15");
}

TEST(Decimal, WritesAMinusBelowZero) {
  EXPECT_EQ(decimal(0), "0");
  EXPECT_EQ(decimal(-12), "-12");
}

TEST(DecimalNumber, IsAllOfTheTextInsideItsBounds) {
  EXPECT_EQ(decimalNumber(decimal(-12), -12, 0), -12);
  EXPECT_EQ(decimalNumber("4000", 0, 4000), 4000);
  for (const char* other :
       {"", " 1", "1 ", "+1", "1x", "0x1", "1.0", "4001", "-1", "99999999999999999999"}) {
    EXPECT_EQ(decimalNumber(other, 0, 4000), std::nullopt) << other;
  }
}

TEST(LeadingInteger, IsCutAndStaysInsideThirtyTwoBits) {
  EXPECT_EQ(leadingInteger("12.9 entries"), 12);
  EXPECT_EQ(leadingInteger("-12.9"), -12);
  EXPECT_EQ(leadingInteger("nothing"), 0);
  EXPECT_EQ(leadingInteger("99999999999"), 2147483647);
  EXPECT_EQ(leadingInteger("-1e300"), -2147483647 - 1);
}

}  // namespace
}  // namespace zelvreg

#include "text/CsvField.h"

#include <gtest/gtest.h>

#include "unicode/Unicode.h"

namespace zelvreg {
namespace {

TEST(CsvField, QuotesWhatNeedsIt) {
  EXPECT_EQ(csvField("plain"), "plain");
  EXPECT_EQ(csvField("a,b"), "\"a,b\"");
  EXPECT_EQ(csvField("say \"a\""), "\"say \"\"a\"\"\"");
  EXPECT_EQ(csvField("two\nlines"), "\"two\nlines\"");
  EXPECT_EQ(csvField(""), "");
}

TEST(CsvField, AFormulaBecomesText) {
  for (const char* formula : {"=cmd|'/c calc'!A1", "+1", "-1", "@SUM(A1)", "\tx", "＝1", "＠x"}) {
    EXPECT_EQ(csvField(formula), "'" + std::string(formula));
  }
  EXPECT_EQ(csvField("\r=1,2"), "\"'\r=1,2\"");
  EXPECT_EQ(csvField("a=1"), "a=1");
}

TEST(CsvField, HalfOfAPairIsReplaced) { EXPECT_EQ(csvField(utf8(u"a\xD800")), "a\uFFFD"); }

}  // namespace
}  // namespace zelvreg

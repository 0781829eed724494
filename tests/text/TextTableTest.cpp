#include "text/TextTable.h"

#include <gtest/gtest.h>

#include <string>

namespace zelvreg {
namespace {

const int* known(const TextTable<int>& table, const std::string& text) {
  return table.find(HashedText(text));
}

TEST(TextTableTest, KnowsWhatWasAdded) {
  TextTable<int> table;
  EXPECT_EQ(known(table, "a"), nullptr);
  table.add(HashedText("a"), 1);
  table.add(HashedText(""), 2);
  ASSERT_NE(known(table, "a"), nullptr);
  EXPECT_EQ(*known(table, "a"), 1);
  ASSERT_NE(known(table, ""), nullptr);
  EXPECT_EQ(*known(table, ""), 2);
  EXPECT_EQ(known(table, "A"), nullptr);
}

TEST(TextTableTest, KeepsACopyOfTheText) {
  TextTable<int> table;
  std::string text = "a text that needs memory of its own";
  table.add(HashedText(text), 1);
  text.front() = 'b';
  EXPECT_EQ(known(table, text), nullptr);
  EXPECT_NE(known(table, "a text that needs memory of its own"), nullptr);
}

TEST(TextTableTest, WhatIsKnownStaysWhereItIs) {
  TextTable<int> table;
  const int& first = table.add(HashedText("first"), 0);
  for (int number = 1; number < 1000; ++number) {
    table.add(HashedText(std::to_string(number)), number);
  }
  EXPECT_EQ(&first, known(table, "first"));
  EXPECT_EQ(table.size(), 1000U);
}

TEST(TextTableTest, ForgetsEverythingAtOnce) {
  TextTable<std::string> table;
  table.add(HashedText("a"), std::string(100, 'x'));
  table.forget();
  EXPECT_EQ(table.size(), 0U);
  EXPECT_EQ(table.find(HashedText("a")), nullptr);
  table.add(HashedText("a"), "new");
  EXPECT_EQ(*table.find(HashedText("a")), "new");
}

}  // namespace
}  // namespace zelvreg

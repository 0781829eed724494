#include "machine/security/SecurityTable.h"

#include <gtest/gtest.h>

#include "machine/security/Accounts.h"

namespace zelvreg::machine {
namespace {

Token administrator() { return {{administratorsSid()}}; }
Token guest() { return {{everyoneSid()}}; }

TEST(SecurityTable, AKeyOfWhichNothingIsSaidHasTheDefaultList) {
  const SecurityTable table;
  EXPECT_EQ(table.at(0), defaultKeySecurity());
}

TEST(SecurityTable, EqualListsAreKeptOnce) {
  SecurityTable table;
  const auto first = table.keep(parseSddl("D:(A;;KA;;;BA)"));
  const auto other = table.keep(parseSddl("D:(A;;KR;;;BA)"));
  EXPECT_EQ(table.keep(parseSddl("D:(A;;KA;;;BA)")), first);
  EXPECT_NE(first, other);
  EXPECT_EQ(table.at(other), parseSddl("D:(A;;KR;;;BA)"));
}

TEST(SecurityTable, ADefaultListThatIsSaidOfAKeyHasANumberOfItsOwn) {
  SecurityTable table;
  EXPECT_NE(table.keep(defaultKeySecurity()), 0U);
}

TEST(SecurityTable, ListsThatDifferInOwnerGroupOrControlAreNotTheSame) {
  SecurityTable table;
  const auto plain = table.keep(parseSddl("D:(A;;KA;;;BA)"));
  EXPECT_NE(table.keep(parseSddl("O:BAD:(A;;KA;;;BA)")), plain);
  EXPECT_NE(table.keep(parseSddl("G:BAD:(A;;KA;;;BA)")), plain);
  EXPECT_NE(table.keep(parseSddl("D:P(A;;KA;;;BA)")), plain);
}

TEST(SecurityTable, EachTokenIsGivenWhatItsOwnEntriesSay) {
  SecurityTable table;
  const auto number = table.keep(parseSddl("O:SYD:(A;;KA;;;BA)(A;;KR;;;WD)"));
  const Token admin = administrator();
  const Token other = guest();
  EXPECT_EQ(table.grantedTo(admin, number, KEY_ALL_ACCESS), ACCESS_MASK{KEY_ALL_ACCESS});
  EXPECT_EQ(table.grantedTo(other, number, KEY_ALL_ACCESS), 0U);
  EXPECT_EQ(table.grantedTo(other, number, KEY_READ), ACCESS_MASK{KEY_READ});
  EXPECT_EQ(table.grantedTo(admin, number, MAXIMUM_ALLOWED), ACCESS_MASK{KEY_ALL_ACCESS});
}

TEST(SecurityTable, WithoutAListEverybodyGetsWhatIsAskedFor) {
  SecurityTable table;
  const auto number = table.keep(parseSddl("D:NO_ACCESS_CONTROL"));
  const Token other = guest();
  EXPECT_EQ(table.grantedTo(other, number, KEY_SET_VALUE), ACCESS_MASK{KEY_SET_VALUE});
  EXPECT_EQ(table.grantedTo(other, number, MAXIMUM_ALLOWED), ACCESS_MASK{KEY_ALL_ACCESS});
}

}  // namespace
}  // namespace zelvreg::machine

// Links that a user has created. On Windows and in Wine this takes a call of its own, which the
// program has no use for; here it is a value.
#include "repair/GuardFixture.h"

namespace zelvreg::fixture {
namespace {

const std::string target = "HKEY_LOCAL_MACHINE\\SOFTWARE\\UsersLinkTest";

class UsersLinkTest : public GuardFixture {
 protected:
  // Leads to the target, which only an administrator may change.
  static void makeLink(const std::string& key) {
    std::string bytes;
    for (const char character : std::string("\\Registry\\Machine\\SOFTWARE\\UsersLinkTest")) {
      bytes += {character, '\0'};
    }
    setBytes(key, "SymbolicLinkValue", REG_LINK, bytes);
  }
};

TEST_F(UsersLinkTest, NoValueGoesThroughIt) {
  setText(target, "plugin", deadFile);
  makeLink(userClasses + "UsersLinkTest");
  add({"x", "plugin", "144", "HKEY_CURRENT_USER", "Software\\Classes\\UsersLinkTest", ""});
  runRepair(form);
  EXPECT_EQ(storedText(target, "plugin"), deadFile);
  EXPECT_TRUE(isLeftAlone("HKEY_CURRENT_USER\\Software\\Classes\\UsersLinkTest, value \"plugin\""));
}

TEST_F(UsersLinkTest, NoKeyGoesThroughIt) {
  setText(target + "\\DefaultIcon", "", deadFile);
  makeLink(userClasses + "UsersLinkTest");
  add({"UsersLinkTest", deadFile, "6", "HKEY_CLASSES_ROOT", "\\defaulticon", ""});
  runRepair(form);
  EXPECT_EQ(storedText(target + "\\DefaultIcon", ""), deadFile);
  EXPECT_TRUE(isLeftAlone(userClasses + "UsersLinkTest\\DefaultIcon"));
}

}  // namespace
}  // namespace zelvreg::fixture

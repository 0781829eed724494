#include "desktop/FontChoice.h"

#include <gtest/gtest.h>

namespace zelvreg::desktop {
namespace {

using Names = std::vector<std::string>;

TEST(FontChoice, AFontIsShownAsItselfBeforeTheUsualOne) {
  EXPECT_EQ(facesFor({.name = "Tahoma"}), (Names{"Tahoma", "Segoe UI"}));
  EXPECT_EQ(facesFor({}), (Names{"Segoe UI"}));
}

TEST(FontChoice, AScriptThatTheUsualFontLacksHasFontsOfItsOwn) {
  EXPECT_EQ(facesFor({.charset = 128}),
            (Names{"Segoe UI", "Yu Gothic UI", "Meiryo UI", "MS UI Gothic"}));
  EXPECT_EQ(facesFor({.name = "Tahoma", .charset = 134}),
            (Names{"Tahoma", "Segoe UI", "Microsoft YaHei UI", "Microsoft YaHei"}));
}

}  // namespace
}  // namespace zelvreg::desktop

// What a scan says of keys that its user may not read.
#include <sstream>

#include "console/Commands.h"
#include "console/GivenComputer.h"
#include "scan/SafeguardSources.h"
#include "support/ComputerFixture.h"
#include "support/ParsedJson.h"

namespace zelvreg::console {
namespace {

const std::string list =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths";
const std::string record = list + "\\zelvreg-gone.exe";

// The same as the scanner asks for it.
const std::string asked =
    "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\windows\\currentversion\\app paths\\zelvreg-gone.exe";

class UnseenKeysTest : public fixture::ComputerFixture {
 protected:
  UnseenKeysTest() {
    emptyKey(list);
    setText(record, "", "C:\\zelvreg-gone\\gone.exe");
  }
  ~UnseenKeysTest() override {
    setAccessOfKey(record, "D:P(A;;KA;;;WD)");
    emptyKey(list);
  }

  // The result of a scan of the application paths.
  nlohmann::json result(const std::vector<SafeguardChoice>& choices = {}) {
    Options options;
    options.rows = {3};
    options.format = Format::Json;
    options.safeguardChoices = choices;
    GivenComputer given;
    out.str("");
    runCommand(options, given, {.out = out, .error = error});
    return fixture::parsedJson(out.str());
  }

  std::ostringstream out;
  std::ostringstream error;
};

TEST_F(UnseenKeysTest, AKeyThatMayOnlyBeReadIsScannedLikeAnyOther) {
  const auto before = result();
  setAccessOfKey(record, "D:P(A;;KR;;;WD)(A;;KA;;;SY)");
  const auto object = result();
  EXPECT_FALSE(object["findings"].empty());
  EXPECT_EQ(object["findings"], before["findings"]);
  EXPECT_TRUE(object["unseen"].empty()) << object["unseen"];
  EXPECT_EQ(error.str(), "");
}

TEST_F(UnseenKeysTest, AKeyThatMayNotBeReadIsNamedInTextAndResult) {
  setAccessOfKey(record, "D:P(A;;KA;;;SY)");
  const auto object = result();
  // What cannot be read may be dead or not.
  ASSERT_FALSE(object["findings"].empty());
  EXPECT_EQ(object["findings"][0]["reasons"], nlohmann::json({"access-denied"}));
  EXPECT_FALSE(object["findings"][0]["checked"]);
  // The other view of a 64-bit Windows may show it once more.
  ASSERT_FALSE(object["unseen"].empty());
  EXPECT_EQ(object["unseen"][0], asked);
  EXPECT_TRUE(object["complete"]);
  ASSERT_EQ(object["warnings"].size(), 1U) << object["warnings"];
  const auto line = object["warnings"][0].get<std::string>();
  EXPECT_NE(line.find(asked), std::string::npos) << line;
  EXPECT_TRUE(line.ends_with(" could not be read by this user; an administrator may see more"))
      << line;
  EXPECT_NE(error.str().find(line), std::string::npos) << error.str();
}

TEST_F(UnseenKeysTest, AsDescribedAKeyIsOpenedForChangesOrNotAtAll) {
  setAccessOfKey(record, "D:P(A;;KA;;;SY)");
  const auto object = result(choicesAsDescribed());
  EXPECT_TRUE(object["unseen"].empty()) << object["unseen"];
}

}  // namespace
}  // namespace zelvreg::console

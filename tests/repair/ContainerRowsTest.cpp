#include "form/Form42.h"
#include "keys/Deletion.h"
#include "repair/ContainerRows.h"

namespace zelvreg::fixture {
namespace {

class ContainerRowsTest : public ContainerRowsFixture {
 protected:
  ~ContainerRowsTest() override {
    for (const std::string& place : places) {
      removeKey(place + "\\ContainerTest");
      const std::string hive = place.starts_with("HKEY_CURRENT_USER") ? "HKCU" : "HKLM";
      fDeleteValue(hive, place.substr(place.find('\\') + 1), "ContainerTest");
    }
  }
};

TEST_P(ContainerRowsTest, ARecordWithoutANameTakesNoOther) {
  row.kind.routine(form);
  for (const std::string& place : places) {
    EXPECT_EQ(storedText(place + "\\ContainerTest\\Below", "x"), "y") << place;
    EXPECT_EQ(storedText(place, "ContainerTest"), "stays") << place;
  }
  // None of it was there, so none of it can be gone.
  EXPECT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(form.repairOutcome.refused.empty(), !seeksTheKeyItself());
}

INSTANTIATE_TEST_SUITE_P(Keys, ContainerRowsTest, ::testing::ValuesIn(containerRows()), nameOfRow);

}  // namespace
}  // namespace zelvreg::fixture

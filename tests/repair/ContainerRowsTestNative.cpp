// Takes away what a running Windows lives on.
#include <cstring>

#include "form/Form42.h"
#include "repair/ContainerRows.h"

namespace zelvreg::fixture {
namespace {

class UnprotectedContainerTest : public ContainerRowsFixture {
 protected:
  UnprotectedContainerTest() { form.safeguards.protects = false; }
};

TEST_P(UnprotectedContainerTest, ItGoesWithAllRecordsInThe64BitView) {
  row.kind.routine(form);
  // Without a name before it, the path of a key below a record is none: such a record stays.
  EXPECT_EQ(hasKey(places[0] + "\\ContainerTest"), !seeksTheKeyItself() || row.key.empty());
  // A key right below a root is deleted in the 32-bit view, where CLSID is another; the two others
  // are no keys below another, or hold the views themselves.
  const bool isLeftEmpty =
      row.key.empty() || row.key == scannedKeys::software || row.key == scannedKeys::classIds;
  EXPECT_EQ(hasKey(places[0]), !seeksTheKeyItself() || isLeftEmpty);
  EXPECT_TRUE(form.repairOutcome.refused.empty());
  EXPECT_EQ(form.View2.count(), 0U);
}

TEST_P(UnprotectedContainerTest, ARecordWithoutKeysOfItsOwnGoesFromTheTopToo) {
  removeKey(places[0] + "\\ContainerTest\\Below");
  row.kind.routine(form);
  EXPECT_EQ(hasKey(places[0] + "\\ContainerTest"), !seeksTheKeyItself());
}

INSTANTIATE_TEST_SUITE_P(Keys, UnprotectedContainerTest, ::testing::ValuesIn(containerRows()),
                         nameOfRow);

class OtherViewTest : public UnprotectedContainerTest {};

TEST_P(OtherViewTest, AFileClassAloneTakesOneThatHoldsRecords) {
  row.kind.routine(form);
  const bool goes = std::strcmp(row.kind.code, "7") == 0;
  EXPECT_EQ(hasKey(places[1] + "\\ContainerTest\\Below"), !goes);
}

TEST_P(OtherViewTest, OneWithoutRecordsGoes) {
  removeKey(places[1]);
  setText(places[1], "ContainerTest", "goes");
  row.kind.routine(form);
  EXPECT_EQ(hasKey(places[1]), !seeksTheKeyItself());
}

INSTANTIATE_TEST_SUITE_P(Keys, OtherViewTest, ::testing::ValuesIn(rowsOfBothViews()), nameOfRow);

}  // namespace
}  // namespace zelvreg::fixture

#include "repair/RepairSteps.h"

#include "form/Form42.h"
#include "repair/RepairStepsFixture.h"

namespace zelvreg::fixture {
namespace {

class RepairStepsTest : public RepairStepsFixture {};

// A row with a value that its repair is to delete, and whether it finds it: some kinds take a field
// as it is, with the blanks around it.
struct PaddedRow {
  Finding finding;
  std::string key;
  const char* name;
  bool isFound;
};

class PaddedRows : public RepairStepsTest, public ::testing::WithParamInterface<PaddedRow> {};

TEST_P(PaddedRows, BlanksAreTrimmedOrPartOfTheName) {
  const PaddedRow& row = GetParam();
  setText(row.key, row.name, "x");
  take(row.finding);
  EXPECT_EQ(storedText(row.key, row.name), row.isFound ? "(none)" : "x");
  removeKey(row.key);
}

const std::string user = "HKEY_CURRENT_USER\\Software\\RepairStepsTest";
const std::string users = "HKEY_USERS\\.DEFAULT\\Software\\RepairStepsTest";
constexpr const char* key = " Software\\RepairStepsTest";
constexpr const char* hklm = "HKEY_LOCAL_MACHINE";
constexpr const char* hkcu = "HKEY_CURRENT_USER";

INSTANTIATE_TEST_SUITE_P(
    Kinds, PaddedRows,
    ::testing::Values(PaddedRow{{"", " name ", "3", hklm, key, ""}, machine, "name", true},
                      PaddedRow{{" RepairStepsTest ", "", "9", "", "", ""}, classes, "", true},
                      PaddedRow{{" RepairStepsTest ", "", "10", "", "", ""}, classes, "", true},
                      PaddedRow{
                          {"", " name ", "12", "", " .DEFAULT\\Software\\RepairStepsTest", ""},
                          users,
                          "name",
                          true},
                      PaddedRow{{"", "", "55", "", key, ""}, machine, "HelpTopic", false},
                      PaddedRow{{"", "", "55", "", key, ""}, machine, "LinkedHelpTopics", false},
                      PaddedRow{{"", "name", "56", "", key, ""}, machine, "name", false},
                      PaddedRow{{"", "name", "135", hklm, key, ""}, machine, "name", false},
                      PaddedRow{{"", "name", "144", hklm, key, ""}, machine, "name", false},
                      PaddedRow{{"", "name", "155", "", key, ""}, user, "name", false},
                      PaddedRow{{"", "name", "166", hkcu, key, ""}, user, "name", false},
                      PaddedRow{{"", "name", "771", "HKEY_CLASSES_ROOT", " RepairStepsTest", ""},
                                classes,
                                "name",
                                false}));

// A row with a key that its repair deletes by the system's own call, which takes none with subkeys.
struct LeafRow {
  Finding finding;
  std::string key;
};

class LeafRows : public RepairStepsTest, public ::testing::WithParamInterface<LeafRow> {};

TEST_P(LeafRows, AKeyWithoutSubkeysGoes) {
  setText(GetParam().key, "name", "x");
  take(GetParam().finding);
  EXPECT_FALSE(hasKey(GetParam().key));
}

TEST_P(LeafRows, AKeyWithSubkeysStays) {
  makeKey(GetParam().key + "\\Below");
  take(GetParam().finding);
  EXPECT_TRUE(hasKey(GetParam().key + "\\Below"));
  removeKey(GetParam().key);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, LeafRows,
    ::testing::Values(
        LeafRow{{"RepairStepsTest none", "", "8", "", "RepairStepsTest\\Leaf", ""},
                classes + "\\Leaf"},
        LeafRow{{"RepairStepsTest none", "", "71", "", "RepairStepsTest\\1.0", ""},
                classes + "\\1.0\\HELPDIR"},
        LeafRow{{"", " .repairstepstest ", "122", "", "", ""},
                "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows NT\\CurrentVersion\\Explorer\\"
                "FileExts\\.repairstepstest"}));

TEST_F(RepairStepsTest, TheAnswerToTheSystemsCallIsKept) {
  const Finding row{"RepairStepsTest none", "", "71", "", "RepairStepsTest\\1.0", ""};
  makeKey(classes + "\\1.0\\HELPDIR\\Below");
  take(row);
  EXPECT_EQ(form.keptStatus, ERROR_ACCESS_DENIED);
  removeKey(classes + "\\1.0\\HELPDIR\\Below");
  take(row);
  EXPECT_EQ(form.keptStatus, ERROR_SUCCESS);
}

TEST_F(RepairStepsTest, TheSystemsCallTakesThePathAsItIs) {
  makeKey(classes + "\\1.0\\HELPDIR");
  take({"RepairStepsTest none", "", "8", "", " RepairStepsTest\\1.0\\HELPDIR", ""});
  take({"RepairStepsTest none", "", "71", "", " RepairStepsTest\\1.0", ""});
  EXPECT_TRUE(hasKey(classes + "\\1.0\\HELPDIR"));
}

TEST_F(RepairStepsTest, AMediaTypeKnowsTheClassesRootAlone) {
  setText(classes, "name", "x");
  setText(machine, "name", "x");
  setText(user, "name", "x");
  for (const char* root : {hklm, hkcu, "HKEY_USERS", ""}) {
    take({"", "name", "771", root, "RepairStepsTest", ""});
    take({"", "name", "771", root, "Software\\RepairStepsTest", ""});
  }
  EXPECT_EQ(storedText(machine, "name"), "x");
  EXPECT_EQ(storedText(user, "name"), "x");
  EXPECT_EQ(storedText(classes, "name"), "x");
  take({"", "other", "771", "HKEY_CLASSES_ROOT", "RepairStepsTest", ""});
  take({"", "name", "771", hklm, "RepairStepsTest", ""});
  EXPECT_EQ(storedText(classes, "name"), "(none)");
}

}  // namespace
}  // namespace zelvreg::fixture

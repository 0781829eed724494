// Only the emulated computer can have each code page.
#include "exclusions/ExclusionFile.h"
#include "exclusions/ExclusionList.h"
#include "form/Form42.h"
#include "runtime/FileText.h"
#include "scan/Findings.h"
#include "shell/StartUp.h"
#include "support/MachineFixture.h"

namespace zelvreg {
namespace {

// Second bytes of a Japanese, Chinese or Korean page that are signs elsewhere, and other scripts.
constexpr const char* keys[] = {
    "SOFTWARE\\サーバー",     "SOFTWARE\\表計算ソ", "SOFTWARE\\會育",
    "SOFTWARE\\서버",         "Software\\Сервер",   "Software\\Füße",
    "Software\\שלום",         "Software\\e\u0301",  "Software\\\U0001F600\U00020000",
    "Software\\\xED\xA0\x80",
};

class ExclusionsOfPage : public fixture::MachineFixture,
                         public ::testing::WithParamInterface<const char*> {
 protected:
  ExclusionsOfPage() {
    setting("codepage", GetParam());
    start();
    form.programFolder = "C:\\Own";
    folder("C:\\Own");
    bindClicks(form);
  }

  void addResult(const std::string& subKey) {
    ScannerRun run;
    addRow(form, run, {"location", "bad value", "2", "HKEY_LOCAL_MACHINE", subKey, "a"});
  }

  Form42 form;
};

TEST_P(ExclusionsOfPage, AKeyOfAnyScriptIsExcludedAndNoOther) {
  for (const std::string key : keys) {
    writeExclusions(form, {});
    form.View2.clear();
    addResult(key);
    addResult("Software\\Other");
    form.View2.select(1);
    chameleonButton9_Click(form);
    EXPECT_EQ(readExclusions(form), (std::vector<std::string>{"HKEY_LOCAL_MACHINE\\" + key}));
    addResult(key + "\\Below");
    addResult(key.substr(0, 10));
    Command29(form);
    ASSERT_EQ(form.View2.count(), 2U) << key;
    EXPECT_EQ(form.View2.text(1, subKeyColumn), "Software\\Other");
  }
}

TEST_P(ExclusionsOfPage, AllScriptsMayBeInOneFile) {
  std::vector<std::string> entries;
  for (const std::string key : keys) {
    appendExclusions(form, {"HKEY_LOCAL_MACHINE\\" + key});
    entries.push_back("HKEY_LOCAL_MACHINE\\" + key);
  }
  EXPECT_EQ(readExclusions(form), entries);
  writeExclusions(form, entries);
  EXPECT_EQ(readExclusions(form), entries);
}

TEST_P(ExclusionsOfPage, SeveralEntriesAtOnceGiveTheBytesOfOneAfterTheOther) {
  const std::string mark = "\xEF\xBB\xBF";
  for (const std::string& before :
       {std::string(), std::string("first\r\n"), std::string("no end"), mark + "サ\r\n",
        std::string("half a character \x83"), std::string("half one \x83\r\n\x81")}) {
    for (std::size_t first = 0; first < std::size(keys); ++first) {
      const std::vector<std::string> entries(keys + first, keys + std::size(keys));
      file("C:\\Own\\exregscan.txt", before);
      for (const std::string& entry : entries) {
        appendExclusions(form, {entry});
      }
      const std::string oneByOne = content("C:\\Own\\exregscan.txt");
      file("C:\\Own\\exregscan.txt", before);
      appendExclusions(form, entries);
      EXPECT_EQ(content("C:\\Own\\exregscan.txt"), oneByOne) << before << "|" << entries[0];
    }
  }
}

TEST_P(ExclusionsOfPage, WildcardsWorkWithinAsManyCharactersAsTheEntryHas) {
  addResult("Software\\サーバー1");
  addResult("Software\\серверы");
  addResult("Software\\other");
  writeExclusions(form, {"HKEY_LOCAL_MACHINE\\Software\\サ?バー"});
  Command29(form);
  ASSERT_EQ(form.View2.count(), 2U);
  // "*" matches one character here: no more of the key is compared.
  writeExclusions(form, {"HKEY_LOCAL_MACHINE\\SOFTWARE\\СЕРВ*"});
  Command29(form);
  ASSERT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(form.View2.text(1, subKeyColumn), "Software\\other");
}

INSTANTIATE_TEST_SUITE_P(Pages, ExclusionsOfPage,
                         ::testing::Values("932", "936", "949", "950", "1251", "1252", "1255",
                                           "65001"),
                         [](const auto& page) { return std::string(page.param); });

}  // namespace
}  // namespace zelvreg

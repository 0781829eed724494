#include "shell/Help.h"

#include <set>

#include "scan/CategoryTable.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

class HelpTest : public fixture::ComputerFixture {
 protected:
  HelpTest() { form.safeguards = {}; }

  // A folder of each test's own, because files of one test still exist in the next on Windows.
  void installIn(const std::string& folder) { form.programFolder = "C:\\" + folder; }
  void haveInFolder(const std::string& name) { makeFile(form.programFolder + "\\" + name); }
};

TEST_F(HelpTest, EachPageHasANumberOfItsOwn) {
  std::set<int> numbers;
  for (const HelpPage& page : helpPages) {
    EXPECT_TRUE(numbers.insert(page.context).second) << page.name;
  }
  // Other programs may ask for it as well.
  EXPECT_EQ(HelpTopic("start").page().context, 4);
}

TEST_F(HelpTest, EachCategoryHasAPageOfItsOwn) {
  for (std::size_t row = 1; row <= categories().size(); ++row) {
    EXPECT_EQ(helpOfCategory(row).page().name, categoryAt(row).optionName);
  }
}

TEST_F(HelpTest, TheBookIsInTheLanguageInUseIfThereIsOne) {
  installIn("BookInLanguage");
  form.langTag = "german";
  EXPECT_EQ(helpBook(form), "C:\\BookInLanguage\\zelvhelp.chm");
  haveInFolder("zelvhelp-de.chm");
  EXPECT_EQ(helpBook(form), "C:\\BookInLanguage\\zelvhelp-de.chm");
  form.langTag = "french";
  EXPECT_EQ(helpBook(form), "C:\\BookInLanguage\\zelvhelp.chm");
}

TEST_F(HelpTest, ToTheLetterThereIsOneBook) {
  installIn("BookToTheLetter");
  form.langTag = "german";
  form.safeguards = asDescribed();
  haveInFolder("zelvhelp-de.chm");
  EXPECT_EQ(helpBook(form), "C:\\BookToTheLetter\\zelvhelp.chm");
}

TEST_F(HelpTest, ThePlainPageIsInTheLanguageInUseIfThereIsOne) {
  installIn("PageInLanguage");
  form.langTag = "german";
  EXPECT_EQ(helpFile(form, HelpTopic("results").page()),
            "C:\\PageInLanguage\\manual\\en\\results.html");
  haveInFolder("manual\\de\\results.html");
  EXPECT_EQ(helpFile(form, HelpTopic("results").page()),
            "C:\\PageInLanguage\\manual\\de\\results.html");
}

TEST_F(HelpTest, TheBookOpensAtThePageThatIsAskedFor) {
  installIn("HelpInBook");
  std::string opened;
  form.openHelp = [&opened](const std::string& book, int context) {
    opened = book + " at " + std::to_string(context);
  };
  openHelp(form, "undo");
  EXPECT_EQ(opened,
            "C:\\HelpInBook\\zelvhelp.chm at " + std::to_string(HelpTopic("undo").page().context));
}

class MissingHelpTest : public HelpTest {
 protected:
  MissingHelpTest() {
    installIn("WithoutHelp");
    form.dialogs.show = [this](const UserMessage& message) {
      told = message.text;
      return Answer::Ok;
    };
  }

  std::string told;
};

TEST_F(MissingHelpTest, AMessageNamesThePageThatIsMissing) {
  openHelpPage(form, HelpTopic("undo").page().context);
  EXPECT_EQ(
      told,
      "The help cannot be shown: C:\\WithoutHelp\\manual\\en\\undo.html is not there or cannot be "
      "opened.");
}

TEST_F(MissingHelpTest, ToTheLetterOnlyTheBookIsTried) {
  form.safeguards = asDescribed();
  openHelpPage(form, HelpTopic("undo").page().context);
  EXPECT_EQ(told, "");
}

}  // namespace
}  // namespace zelvreg

// The media types, what is kept of the running total, and Cancel.
#include "form/Form42.h"
#include "scanners/FileClassesFixture.h"

namespace zelvreg::fileClasses {
namespace {

class FileClassesMediaTest : public FileClassesFixture {};

TEST_F(FileClassesMediaTest, AnExtensionThatIsNotRegisteredIsReportedWithItsMediaType) {
  makeKey(classesRoot + className + "1");
  setExtension("a/1", ".FileClassesTest");
  setExtension("a/2", className + "1");
  setExtension("a/3", "");
  makeKey(classesRoot + mediaTypes + "\\a/4");
  setText(classesRoot + mediaTypes + "\\a/5", "", ".unnamed");
  setExtension("a/6", ".FileClassesTest too");
  Command12(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{mediaFinding("a/1", ".FileClassesTest"),
                                            mediaFinding("a/6", ".FileClassesTest too")}));
}

TEST_F(FileClassesMediaTest, AnEmptyListReadsTheExtensionOfTheListItself) {
  setText(classesRoot + mediaTypes, "Extension", ".fileclassestest");
  Command12(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{mediaFinding("", ".fileclassestest")}));
}

TEST_F(FileClassesMediaTest, AMediaTypeIsReadWithoutTheBlanksAroundItsName) {
  setExtension("a/1 ", ".fileclassestest");
  Command12(form);
  EXPECT_EQ(findings(), std::vector<Texts>{});
}

TEST_F(FileClassesMediaTest, AMissingListGivesNothing) {
  removeKey(classesRoot + mediaTypes);
  Command12(form);
  EXPECT_EQ(findings(), std::vector<Texts>{});
}

class FileClassesRunTest : public FileClassesFixture {
 protected:
  // The names of the media types are all listed, or their walk is on.
  bool areMediaTypesListed(int count) const {
    return form.List1.count() == count && form.List1.text(0) == "a/1";
  }
};

TEST_F(FileClassesRunTest, TheRunningTotalIsKeptAfterTheClassesAndAfterTheMediaTypes) {
  form.totalFound = 40;
  setCommand(className + openKey, gone);
  setExtension("a/1", ".fileclassestest");
  setExtension("a/2", ".fileclassestest");
  Texts kept;
  std::string ofClasses;
  form.messages.serveHost = [&] {
    if (form.List1.text(0) == "a/1" && ofClasses.empty()) {
      ofClasses = form.totalFoundText;
    }
    if (kept.empty() || kept.back() != keptTotal()) {
      kept.push_back(keptTotal());
    }
  };
  Command12(form);
  EXPECT_EQ(kept, (Texts{"(none)", ofClasses}));
  EXPECT_EQ(keptTotal(), decimal(40 + form.List2.count()));
  EXPECT_EQ(form.totalFound, 40 + form.List2.count());
}

TEST_F(FileClassesRunTest, WithoutAFindingTheTotalIsKeptAllTheSame) {
  form.totalFoundText = "40";
  form.Text2.setText("2");
  std::string afterClasses;
  form.messages.serveHost = [&] { afterClasses = keptTotal(); };
  Command12(form);
  EXPECT_EQ(afterClasses, "40");
  EXPECT_EQ(keptTotal(), "40");
}

TEST_F(FileClassesRunTest, ATotalOfNothingIsKeptAsANumberToo) {
  form.Text2.setText("2");
  Command12(form);
  EXPECT_EQ(keptTotal(), "0");
}

TEST_F(FileClassesRunTest, TheStatusOfTheLastDeleteIsSetBackAlsoAfterACancel) {
  makeKey(classesRoot + className);
  for (const bool isCancelled : {false, true}) {
    form.cancelRequested = isCancelled;
    form.keptStatus = ERROR_ACCESS_DENIED;
    Command12(form);
    EXPECT_EQ(form.keptStatus, ERROR_SUCCESS) << isCancelled;
  }
}

TEST_F(FileClassesRunTest, AStoppedEnumerationShortensBothLists) {
  setCommand(className + "1" + openKey, gone);
  setCommand(className + "2" + openKey, gone);
  setExtension("a/1", ".fileclassestest");
  form.messages.serveHost = [this] {
    if (form.List1.count() == 1) {
      form.Text2.setText("2");
    }
  };
  Command12(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{programFinding(className + "1", gone)}));
  EXPECT_EQ(keptTotal(), "1");
}

TEST_F(FileClassesRunTest, ACancelEndsTheScanAfterTheCurrentClassAndKeepsNothing) {
  setCommand(className + "1" + openKey, gone);
  setCommand(className + "2" + openKey, gone);
  setExtension("a/1", ".fileclassestest");
  form.cancelRequested = true;
  Command12(form);
  EXPECT_EQ(form.View2.count(), 1U);
  EXPECT_EQ(findings(), (std::vector<Texts>{programFinding(className + "1", gone)}));
  EXPECT_EQ(cell(), "1");
  EXPECT_EQ(form.Text1.text(), "1");
  EXPECT_EQ(form.totalFoundText, "1");
  EXPECT_EQ(keptTotal(), "(none)");
}

TEST_F(FileClassesRunTest, ACancelBeforeAnythingIsFoundShowsZero) {
  makeKey(classesRoot + className);
  form.View2.add("icons");
  form.cancelRequested = true;
  Command12(form);
  EXPECT_EQ(cell(), "0");
  EXPECT_EQ(form.Text1.text(), "1");
}

TEST_F(FileClassesRunTest, ACancelEndsTheScanAfterTheCurrentMediaType) {
  setExtension("a/1", ".fileclassestest");
  setExtension("a/2", ".fileclassestest");
  std::string ofClasses;
  form.messages.serveHost = [&] {
    if (areMediaTypesListed(2)) {
      form.cancelRequested = true;
      ofClasses = keptTotal();
    }
  };
  Command12(form);
  EXPECT_EQ(findings(), (std::vector<Texts>{mediaFinding("a/1", ".fileclassestest")}));
  EXPECT_EQ(cell(), decimal(form.List2.count()));
  EXPECT_EQ(form.Text1.text(), decimal(form.List2.count()));
  EXPECT_NE(form.totalFoundText, ofClasses);
  EXPECT_EQ(keptTotal(), ofClasses);
}

TEST_F(FileClassesRunTest, TheCellIsWrittenAfterEachMediaType) {
  setExtension("a/1", ".fileclassestest");
  setExtension("a/2", ".fileclassestest");
  std::string cellMeanwhile;
  std::string expected;
  form.messages.serveHost = [&] {
    cellMeanwhile = cell();
    expected = decimal(form.List2.count());
  };
  Command12(form);
  // Before the turn of the second media type.
  EXPECT_EQ(cellMeanwhile, expected);
  EXPECT_EQ(cell(), decimal(form.List2.count()));
  EXPECT_NE(cell(), expected);
}

}  // namespace
}  // namespace zelvreg::fileClasses

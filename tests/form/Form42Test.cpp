#include "form/Form42.h"

#include <gtest/gtest.h>

#include <set>

namespace zelvreg {
namespace {

// A text of a new form, by the name of its control.
struct Text {
  const char* name;
  std::string (*get)(const Form42& form);
  const char* expected;
};

template <auto member>
std::string caption(const Form42& form) {
  return (form.*member).caption;
}
template <auto member, std::size_t index>
std::string element(const Form42& form) {
  return (form.*member)[index].caption;
}
template <auto member>
std::string toolTip(const Form42& form) {
  return (form.*member).toolTip;
}

void expectTexts(std::initializer_list<Text> texts) {
  const Form42 form;
  for (const Text& text : texts) {
    EXPECT_EQ(text.get(form), text.expected) << text.name;
  }
}

TEST(Form42Texts, TheTitleSaysWhatTheProgramDoes) {
  expectTexts({
      {"Label1", caption<&Form42::Label1>, "Fix Registry Problems"},
      {"Label8(6)", element<&Form42::Label8, 6>,
       "Select Areas Of registry To Scan For Invalid Informations."},
      {"Label12(0)", element<&Form42::Label12, 0>, ""},
      {"Label12(1)", element<&Form42::Label12, 1>, ""},
      {"Label12(2)", element<&Form42::Label12, 2>, ""},
      {"Label12(3)", element<&Form42::Label12, 3>, ""},
  });
}

// The tool tips of the last two do not say what their buttons do.
TEST(Form42Texts, TheTitleButtonsHaveOnlyToolTips) {
  expectTexts({
      {"chameleonButton4", caption<&Form42::chameleonButton4>, ""},
      {"chameleonButton23", caption<&Form42::chameleonButton23>, ""},
      {"chameleonButton13", caption<&Form42::chameleonButton13>, ""},
      {"chameleonButton18", caption<&Form42::chameleonButton18>, ""},
      {"chameleonButton4", toolTip<&Form42::chameleonButton4>, "Exit"},
      {"chameleonButton23", toolTip<&Form42::chameleonButton23>, ""},
      {"chameleonButton13", toolTip<&Form42::chameleonButton13>, "Close"},
      {"chameleonButton18", toolTip<&Form42::chameleonButton18>, "Minimize"},
  });
}

TEST(Form42Texts, TheCommandBarNamesEachCommand) {
  expectTexts({
      {"cmd_search", caption<&Form42::cmd_search>, "Search Location"},
      {"cmd_exclud", caption<&Form42::cmd_exclud>, "Exclusions"},
      {"cmd_start", caption<&Form42::cmd_start>, "Start"},
      {"cmd_fix", caption<&Form42::cmd_fix>, "Fix Selected"},
      {"cmd_cancel", caption<&Form42::cmd_cancel>, "Cancel"},
      {"cmd_all", caption<&Form42::cmd_all>, "Select All"},
      {"cmd_non", caption<&Form42::cmd_non>, "Select None"},
      {"cmd_report", caption<&Form42::cmd_report>, "Create Report"},
  });
}

TEST(Form42Texts, TheSideBarRepeatsItsLongCaptionsInToolTips) {
  expectTexts({
      {"orubutton4", caption<&Form42::orubutton4>,
       "Select Areas Of registry To Scan For Invalid Informations."},
      {"orubutton4", toolTip<&Form42::orubutton4>,
       "Select Areas Of registry To Scan For Invalid Informations."},
      {"chameleonButton1", caption<&Form42::chameleonButton1>, "Manage undo options"},
      {"chameleonButton1", toolTip<&Form42::chameleonButton1>, "Manage undo options"},
      {"orubutton3", caption<&Form42::orubutton3>, "refresh"},
      {"orubutton3", toolTip<&Form42::orubutton3>, ""},
      {"chameleonButton7", caption<&Form42::chameleonButton7>, "Exclude from search"},
      {"chameleonButton7", toolTip<&Form42::chameleonButton7>, "Exclude from search"},
      {"orubutton1", caption<&Form42::orubutton1>, "Start Scanning your registry"},
      {"orubutton1", toolTip<&Form42::orubutton1>, "Start Scanning your registry"},
      {"chameleonButton10", caption<&Form42::chameleonButton10>, "Next"},
      {"chameleonButton11", caption<&Form42::chameleonButton11>, "Back"},
  });
}

TEST(Form42Texts, TheOptionsPageAndTheProgressOnIt) {
  expectTexts({
      {"Label2(1)", element<&Form42::Label2, 1>, "Registry Scan Options"},
      {"Label2(0)", element<&Form42::Label2, 0>,
       "Select Areas Of registry To Scan For Invalid Informations."},
      {"chameleonButton21", caption<&Form42::chameleonButton21>, "Select All"},
      {"chameleonButton22", caption<&Form42::chameleonButton22>, "Select None"},
      {"chameleonButton12", caption<&Form42::chameleonButton12>, "Cancel"},
      {"chameleonButton12", toolTip<&Form42::chameleonButton12>, "Cancel this operation"},
      {"Label2(5)", element<&Form42::Label2, 5>, "Searching Progress"},
      {"Label2(4)", element<&Form42::Label2, 4>,
       "This processes could take several minutes depending on your registry file size, So please "
       "be patient while it is running."},
      {"Label2(3)", element<&Form42::Label2, 3>, "Searching for invalid Registry information:"},
      {"Label3", caption<&Form42::Label3>, ""},
      {"Label4", caption<&Form42::Label4>, ""},
  });
}

TEST(Form42Texts, TheResultsPage) {
  expectTexts({
      {"Label10", caption<&Form42::Label10>, "Number of invalid entries is "},
      {"Label5", caption<&Form42::Label5>, "No Entry Selected"},
      {"Label6", caption<&Form42::Label6>, "Problem"},
      {"Label7", caption<&Form42::Label7>, "Please Select entry from the list to show details"},
      {"chameleonButton14", caption<&Form42::chameleonButton14>, "Open in registry"},
      {"chameleonButton15", caption<&Form42::chameleonButton15>, "Remove selected item"},
      {"chameleonButton15", toolTip<&Form42::chameleonButton15>, "Remove selected item"},
      {"chameleonButton16", caption<&Form42::chameleonButton16>, "Select All"},
      {"chameleonButton17", caption<&Form42::chameleonButton17>, "Select None"},
      {"orubutton2", caption<&Form42::orubutton2>, "Remove selected problems"},
      {"orubutton2", toolTip<&Form42::orubutton2>, "Remove selected problems"},
      {"chameleonButton9", toolTip<&Form42::chameleonButton9>,
       "Exclude selected path from future scan"},
  });
}

TEST(Form42Texts, TheUndoPageAndTheExclusionsPage) {
  expectTexts({
      {"Frame3", caption<&Form42::Frame3>, "Undo Options"},
      {"Check1", caption<&Form42::Check1>, "Automatically Save Undo Information"},
      {"chameleonButton2", caption<&Form42::chameleonButton2>, "Undo Selected Changes"},
      {"chameleonButton3", caption<&Form42::chameleonButton3>, "Remove Selected Item"},
      {"Frame7", caption<&Form42::Frame7>, "Exclude part of registry keys that start with."},
      {"Label2(2)", element<&Form42::Label2, 2>, "Exclude part of registry keys that start with."},
      {"chameleonButton5", caption<&Form42::chameleonButton5>, "Add Keys"},
      {"chameleonButton6", caption<&Form42::chameleonButton6>, "Remove "},
      {"chameleonButton8", caption<&Form42::chameleonButton8>, "Edit Key"},
  });
}

TEST(Form42Texts, TheSearchControls) {
  expectTexts({
      {"ChKeys", caption<&Form42::ChKeys>, "Keys"},
      {"ChValues", caption<&Form42::ChValues>, "Values"},
      {"ChData", caption<&Form42::ChData>, "Data"},
      {"Frame5", caption<&Form42::Frame5>, "Search Mode"},
      {"ChCase", caption<&Form42::ChCase>, "Match Case"},
      {"Option2", caption<&Form42::Option2>, "Left"},
      {"Option3", caption<&Form42::Option3>, "Right"},
      {"Option4", caption<&Form42::Option4>, "Exact"},
  });
}

TEST(Form42Texts, TheMenuOfTheResultsAndTheIconInTheNotificationArea) {
  expectTexts({
      {"b", caption<&Form42::b>, "Select All"},
      {"c", caption<&Form42::c>, "Select None"},
      {"g", caption<&Form42::g>, "Exclude selected path from future scan"},
      {"i", caption<&Form42::i>, "Remove selected"},
      {"e", caption<&Form42::e>, "Open selected item in registry Editor"},
      {"TrayArea1", toolTip<&Form42::TrayArea1>, "Fix Registry Problems"},
  });
}

TEST(Form42Texts, TheSmallForms) {
  const Form42 form;
  EXPECT_EQ(form.Form1.Label222[1].caption.get(), "Exclude Registry Key From Scan");
  EXPECT_EQ(form.Form1.orubutton1.caption.get(), "Add Key");
  EXPECT_NE(form.Form1.Label1.caption.get(), "");
  EXPECT_EQ(form.frmabout.Label222[1].caption.get(), "About");
}

// Text, width and alignment of each column.
using Columns = std::vector<std::tuple<std::string, int, Alignment>>;

Columns columnsOf(const ListView& list) {
  Columns columns;
  for (const ColumnHeader& header : list.columnHeaders()) {
    columns.emplace_back(header.text, header.width, header.alignment);
  }
  return columns;
}

TEST(Form42Lists, TheCategoriesHaveTheirNumbersAtTheRightAndAStatusWithoutAName) {
  const Form42 form;
  const auto columns = columnsOf(form.View1);
  ASSERT_EQ(columns.size(), 4U);
  const std::array<std::pair<const char*, Alignment>, 4> expected{{
      {"what to scan", Alignment::Left},
      {"Description", Alignment::Left},
      {"# Problems", Alignment::Right},
      {"", Alignment::Left},
  }};
  for (std::size_t column = 0; column < expected.size(); ++column) {
    EXPECT_EQ(std::get<0>(columns[column]), expected[column].first);
    EXPECT_EQ(std::get<Alignment>(columns[column]), expected[column].second) << column;
  }
}

TEST(Form42Lists, TheKindOfAFindingIsInAHiddenColumn) {
  const Form42 form;
  EXPECT_EQ(columnsOf(form.View2), (Columns{{"Invalid Data Location", 10583, Alignment::Left},
                                            {"Bad Reference Value", 7056, Alignment::Left},
                                            {"", 0, Alignment::Left},
                                            {"Registry Key", 3881, Alignment::Left},
                                            {"Registry Sub Key", 15875, Alignment::Left}}));
}

TEST(Form42Lists, UndoEntriesAndExclusionsHaveOneColumn) {
  const Form42 form;
  ASSERT_EQ(form.View3.columnHeaders().size(), 1U);
  EXPECT_EQ(form.View3.columnHeaders().front().text, "Date and Time Of Creation");
  ASSERT_EQ(form.View4.columnHeaders().size(), 1U);
  EXPECT_EQ(form.View4.columnHeaders().front().text, "Registration Key");
}

// The picture `k`, which findings of one kind use, is not among them.
TEST(Form42Pictures, ThreeStatesAndOneForEachCategory) {
  const Form42 form;
  EXPECT_EQ(std::set<std::string>(form.ImageList1.keys.begin(), form.ImageList1.keys.end()),
            (std::set<std::string>{"cl", "ch", "ex", "d", "e", "h", "i", "g", "j", "f", "m", "l",
                                   "c", "b", "a", "re", "ru", "mr", "mui"}));
  EXPECT_EQ(form.ImageList1.keys.size(), 19U);
}

TEST(Form42Pictures, TheToolBarHasGapsBetweenItsGroups) {
  const Form42 form;
  std::vector<std::string> toolTips;
  for (const ToolbarButton& button : form.Toolbar1.buttons) {
    EXPECT_EQ(button.image.empty(), button.toolTip.empty());
    EXPECT_TRUE(button.image.empty() || form.imgtoolbar.holds(button.image)) << button.image;
    toolTips.push_back(button.toolTip);
  }
  EXPECT_EQ(toolTips, (std::vector<std::string>{"Search Location", "Exclusions", "", "Start",
                                                "Fix Selected", "Cancel", "", "Select All",
                                                "Select None", "", "Create Report"}));
}

TEST(Form42Window, HasItsSizeAndNothingToFixYet) {
  const Form42 form;
  EXPECT_EQ(form.window.width, 15390);
  EXPECT_EQ(form.window.height, 9180);
  for (const Button* button : {&form.cmd_fix, &form.cmd_all, &form.cmd_non, &form.cmd_report}) {
    EXPECT_FALSE(button->enabled) << button->caption.get();
  }
  EXPECT_TRUE(form.cmd_start.enabled);
  EXPECT_FALSE(form.TrayArea1.visible);
  EXPECT_FALSE(form.shadow.visible);
  EXPECT_FALSE(form.pictrlang.visible);
  EXPECT_FALSE(form.Gif89a1.visible);
}

}  // namespace
}  // namespace zelvreg

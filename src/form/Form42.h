// The main form: every control and every variable of the program, as plain state. It knows no
// procedure; shell/ binds procedures to its entry points. Controls have the names that they have on
// the form; an element of a control array has an index.
#ifndef ZELVREG_FORM_FORM42_H
#define ZELVREG_FORM_FORM42_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "form/Evidence.h"
#include "form/FilterPass.h"
#include "form/JournalRecord.h"
#include "form/RepairOutcome.h"
#include "form/Safeguards.h"
#include "form/ScanMemory.h"
#include "form/SmallForms.h"
#include "form/UserScope.h"
#include "widgets/Button.h"
#include "widgets/ComboBox.h"
#include "widgets/Dialogs.h"
#include "widgets/FormWindow.h"
#include "widgets/ImageList.h"
#include "widgets/ListBox.h"
#include "widgets/ListView.h"
#include "widgets/MessageQueue.h"
#include "widgets/SimpleControls.h"
#include "widgets/Toolbar.h"

namespace zelvreg {

class RepairPlan;
class StdRegProvPool;

// One entry of the form's context menu.
struct MenuEntry : EntryPoint {
  explicit MenuEntry(std::string text) : caption(std::move(text)) {}

  std::string caption;
  void click() const { run(); }
};

struct Form42 {
  Form42();
  ~Form42() = default;
  Form42(const Form42&) = delete;
  Form42& operator=(const Form42&) = delete;

  // After a change of captions: tips that repeat them.
  void repeatCaptions();

  // Timer1 finishes the opening of the window; Timer2 reports to the suite, in the automatic modes.
  Timer Timer1;
  Timer Timer2;
  MessageQueue messages{{&Timer1, &Timer2}};

  // The window, 15390 by 9180 twips, with its shadow, its icon in the notification area, its menus.
  FormWindow window{15390, 9180};
  Screen screen;
  DropShadow shadow;
  TrayIcon TrayArea1{"Fix Registry Problems"};
  FormMenus menus;
  FormTheme theme;

  // Title and decoration. The last two of Label12 show the year.
  std::array<Label, 7> Label8;
  std::array<Label, 4> Label12;
  Button chameleonButton4;
  Button chameleonButton23;
  Button chameleonButton18;
  // Fills the screen, or goes back to the size before.
  Button MaximizeButton;
  Picture Shape1;
  Picture Shape3;
  Picture Image2;
  Picture Image14;
  std::array<Picture, 6> Image44;
  int leftOfImage44 = 0;

  // Command bar.
  Button cmd_search{"Search Location"};
  Button cmd_exclud{"Exclusions"};
  Button cmd_start{"Start"};
  Button cmd_fix{"Fix Selected"};
  Button cmd_cancel{"Cancel"};
  Button cmd_all{"Select All"};
  Button cmd_non{"Select None"};
  Button cmd_report{"Create Report"};
  ImageList imgtoolbar;
  Toolbar Toolbar1;

  // Side bar.
  Button orubutton4{"Select Areas Of registry To Scan For Invalid Informations."};
  Button chameleonButton1{"Manage undo options"};
  Button orubutton3{"refresh"};
  Button chameleonButton7{"Exclude from search"};
  Button orubutton1{"Start Scanning your registry"};
  Button chameleonButton10{"Next"};
  Button chameleonButton11{"Back"};

  // Language picker. The first entry is there before a list is read.
  Button chameleonButton13;
  Picture imglangselect;
  Frame pictrlang;
  std::vector<std::unique_ptr<Label>> lbllanguage;

  // Options page, and on it the progress of a scan.
  Frame Frame1;
  ImageList ImageList1;
  ListView View1;
  Button chameleonButton21{"Select All"};
  Button chameleonButton22{"Select None"};
  // One of the safeguards, here because it decides what a scan ticks.
  CheckBox CarefulBox{"Careful: tick nothing that is unsure"};
  Frame Frame8;
  Picture Gif89a1;
  ProgressBar Bar1;
  Button chameleonButton12{"Cancel"};
  std::array<Label, 6> Label2;
  Label Label1;
  Label Label3;
  Label Label4;
  // How far the scan is, and how long it will still take once that can be told.
  Label ProgressText;

  // Results page.
  Frame Frame2;
  ListView View2;
  // The text that a row must hold to be shown, and how many are.
  TextBox FilterBox;
  Label FilterText;
  FilterPass filterPass;
  Label Label10{"Number of invalid entries is "};
  // How many rows each category has, by its row of View1 less 1. A press shows only these.
  std::array<Button, 16> CategoryBars;
  // What the last repair has done, in its place, and what undoes that repair.
  Label OutcomeText;
  Button UndoRepair{"Undo this repair"};
  Frame Picture1;
  Label Label5{"No Entry Selected"};
  Label Label6{"Problem"};
  Label Label7{"Please Select entry from the list to show details"};
  // How sure it is, and why; empty without a row.
  Label EvidenceText;
  Picture Image1;
  Picture Image3;
  Button Command28;
  Button chameleonButton14{"Open in registry"};
  Button chameleonButton15{"Remove selected item"};
  Button chameleonButton16{"Select All"};
  Button chameleonButton17{"Select None"};
  Button orubutton2{"Remove selected problems"};
  Button chameleonButton9;

  // Undo page.
  Frame Frame3;
  CheckBox Check1{"Automatically Save Undo Information"};
  // The safeguards in the order of their rules, and last the one that lifts all.
  std::array<CheckBox, 6> SafeguardBoxes{
      CheckBox("Spare what others need"),         CheckBox("Export before each repair"),
      CheckBox("Scan without changing anything"), CheckBox("Ask no network shares"),
      CheckBox("Read 64-bit keys directly"),      CheckBox("Lift all of these safeguards")};
  // Light or dark, or as Windows is; its positions are those of ThemeChoice.
  ComboBox cboTheme{ComboStyle::DropDownList};
  // The commands as small buttons.
  CheckBox ToolbarBox{"Small command buttons"};
  ListView View3;
  Button chameleonButton2{"Undo Selected Changes"};
  Button chameleonButton3{"Remove Selected Item"};
  Button Command21;
  Button Command30;
  Button Command31;

  // Exclusions page.
  Frame Frame7;
  ListView View4;
  Button chameleonButton5{"Add Keys"};
  Button chameleonButton6{"Remove "};
  Button chameleonButton8{"Edit Key"};
  Button Command29;

  // The registry search: where, what and how. cmdFind starts it.
  Frame Frame4;
  CheckBox ChKeys{"Keys"};
  CheckBox ChValues{"Values"};
  CheckBox ChData{"Data"};
  ComboBox cboRoot{ComboStyle::DropDownList};
  Frame Frame5;
  CheckBox ChCase{"Match Case"};
  OptionButton Option1{"Anywhere"};
  OptionButton Option2{"Left"};
  OptionButton Option3{"Right"};
  OptionButton Option4{"Exact"};
  ComboBox cboFind{ComboStyle::Editable};
  Picture PicStatus;
  Button cmdFind{"Find"};
  Button Command24;

  // The dialog of one exclusion, and that about the program.
  ExclusionDialog Form1;
  AboutDialog frmabout;

  // The context menu of View2.
  MenuEntry b{"Select All"};
  MenuEntry c{"Select None"};
  MenuEntry g{"Exclude selected path from future scan"};
  MenuEntry i{"Remove selected"};
  MenuEntry e{"Open selected item in registry Editor"};

  // Never shown. Text1: number of rows of View2 when the last scanner ended. Text2: the run state,
  // "0" idle, "1" scanning, "2" cancel asked. Text3: the row last clicked in View3 or View4. Text4:
  // "1" starts a scan. Text6: "1" rewrites the exclusions.
  TextBox Text1;
  TextBox Text2;
  TextBox Text3;
  TextBox Text4;
  TextBox Text5;
  TextBox Text6;

  // Asks for a file to write.
  CommonDialog dlg1;

  // Work lists: the enumerators fill List1 and List4 to List7, List2 collects bad values, List3
  // keeps names while List1 is filled with the names below them.
  ListBox List1{messages};
  ListBox List2{messages};
  ListBox List3{messages};
  ListBox List4{messages};
  ListBox List5{messages};
  ListBox List6{messages};
  ListBox List7{messages};

  // The scanners, in the order in which the rows run them.
  Button Command1;
  Button Command2;
  Button Command5;
  Button Command7;
  Button Command10;
  Button Command12;
  EntryPoint cln71;
  EntryPoint cln7;
  EntryPoint cln72;
  EntryPoint cln8;
  EntryPoint cln9;
  EntryPoint cln10;
  Button Command32;
  EntryPoint fileext;
  EntryPoint uninstall;
  EntryPoint uninstall32;
  EntryPoint runMRU;
  EntryPoint MRUhist;
  EntryPoint MuiCache;
  // Scanners that no row runs.
  Button Command14;
  Button Command16;
  Button Command18;
  Button Command19;
  Button orubutton18;

  // State of a scan. totalFound adds up the findings of all scans since the start of the program or
  // of the last search. totalFoundText is the same number as text; "reg-count" is written from it.
  bool cancelRequested = false;
  std::int64_t totalFound = 0;
  std::string totalFoundText = "0";
  std::int64_t categoryFound = 0;
  int wizardPage = 0;
  // The category under test, by its row of View1; 0 for what follows the last one, and in a search.
  // Nothing when neither runs.
  std::optional<std::size_t> testedRow;
  // Only while a scan or a search tests entries and touches nothing.
  std::unique_ptr<ScanMemory> memory;
  // How many files the scanners have asked for, and how many of them in each category (by its row).
  std::size_t filesAsked = 0;
  std::array<std::size_t, 17> filesAskedIn{};

  // The category of a search's findings: 1 classes, 2 settings of the current user, 3 of all users,
  // 4 of the computer, any other number none.
  int searchCategory = 0;

  // What the command line asked for: autoMode is 0, 1 (list) or 2 (list and fix); the two others
  // are 0 or 1. commandText is the whole text if it is no automatic mode of the suite.
  bool hasCommandLine = false;
  int autoMode = 0;
  int recheckMode = 0;
  int recheckFix = 0;
  std::string commandText;

  // The row last clicked in View2, and in View1 or View2, from 1.
  std::size_t selectedRow = 0;
  std::size_t lastClickedRow = 0;

  // The journal record being filled. It is used for row after row and keeps what is not set anew.
  JournalRecord journalRecord;

  // The safeguards in force. Once it is bound, `decideSafeguards` decides them at the start of each
  // scan, search and repair, by the computer's policies and settings and by what a caller has
  // chosen.
  Safeguards safeguards;
  EntryPoint decideSafeguards;
  std::vector<SafeguardChoice> safeguardChoices;
  // False for a computer that is being repaired from outside: what it says is data, not an order.
  bool obeysComputer = true;
  // What the second look has found, by the item data of the rows of View2 (evidence/SecondLook.h).
  // `lookAgain` takes that look; `tickByConfidence` ticks what is at least `leastTicked`.
  std::vector<Evidence> evidence;
  EntryPoint lookAgain;
  // Whose findings are listed; without it, all.
  std::optional<UserScope> userScope;
  EntryPoint tickByConfidence;
  Confidence leastTicked = Confidence::Likely;
  // Why much of what a scan has found is implausible, one line each.
  std::vector<std::string> implausible;
  // The name of the last repair's safety export without folder and ".reg"; empty if it has none.
  std::string exportStem;
  // Whether the last journal and its entry could be written.
  bool isJournalKept = true;
  // Whether the last undo has restored nothing, or not all, and has said so.
  bool isUndoRefused = false;
  // Whether there are exclusions that could not be read when View4 was filled.
  bool areExclusionsUnread = false;
  // Whether the last repair was stopped because its safety export could not be written.
  bool isRepairStopped = false;
  // The plan and the outcome of the repair that runs, or of the last one.
  std::shared_ptr<const RepairPlan> repairPlan;
  RepairOutcome repairOutcome;
  // The revision of View2 that OutcomeText tells of.
  std::size_t outcomeRevision = 0;

  // 2 where keys were found under "Windows nt" instead of "Windows".
  std::int32_t ntSpelling = 0;

  // Whether the process runs under the 32-bit emulation of a 64-bit system.
  bool Is64BitOS = false;
  // The program path that the last firewall rule named, or empty.
  std::string FirewallPath;
  // 0 after GrantKeyAccess worked, 1 after it failed.
  int GrantKeyStatus = 0;
  // The system's error code for the last delete of a single key; Command12 sets it back to 0.
  std::int32_t keptStatus = 0;
  // The handle for the root of the last full key path; a path that is refused does not change it.
  std::uint32_t parsedHive = 0;

  // The language: charset number, file tag, number in the picker, file name.
  int langCode = 0;
  std::string langTag;
  int langIndex = 0;
  std::string langFileName;
  // What the program says beside the captions, in that language (languages/Texts.h).
  std::vector<std::string> texts;
  // Whether that language is read from right to left.
  bool readsFromRight = false;
  // Whether the language's charset is that of the system, so that the system can draw its menus.
  bool languageMatchesSystem = false;

  // The folder of the program's own files, without a backslash at the end.
  std::string programFolder;

  Dialogs dialogs;
  // Opens a compiled help file at one of its contexts.
  std::function<void(const std::string& file, int context)> openHelp;
  // What the front end does after the captions of another language were given to the form.
  std::function<void()> onLanguage;
  // What the front end does when the program ends its process.
  std::function<void()> onProcessEnd;
  // Connections to the registry provider, made when first needed and kept between calls.
  std::shared_ptr<StdRegProvPool> providers;
  // Whether a call of the provider has failed since a scanner began with its current entry. Such an
  // entry looks empty without being so, and is not reported.
  bool isProviderSilent = false;
};

}  // namespace zelvreg

#endif

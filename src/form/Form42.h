// The main form: every control and every variable of the program, as plain state. It knows no
// procedure; shell/ binds procedures to its entry points. Controls bear their names of the form;
// an element of a control array is reached by its index.
#ifndef ZELVREG_FORM_FORM42_H
#define ZELVREG_FORM_FORM42_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "form/JournalRecord.h"
#include "form/RepairOutcome.h"
#include "form/Safeguards.h"
#include "form/SmallForms.h"
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

  // The window itself, 15390 by 9180 twips, and what stands around it.
  FormWindow window{15390, 9180};
  Screen screen;
  DropShadow shadow;
  TrayIcon TrayArea1{"Fix Registry Problems"};
  FormMenus menus;

  // Title and decoration. Label12 shows the year in its last two.
  std::array<Label, 7> Label8;
  std::array<Label, 4> Label12;
  Button chameleonButton4;
  Button chameleonButton23;
  Button chameleonButton18;
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

  // Language picker. The first entry stands there before any list is read.
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
  Frame Frame8;
  Picture Gif89a1;
  ProgressBar Bar1;
  Button chameleonButton12{"Cancel"};
  std::array<Label, 6> Label2;
  Label Label1;
  Label Label3;
  Label Label4;

  // Results page.
  Frame Frame2;
  ListView View2;
  Label Label10{"Number of invalid entries is "};
  Frame Picture1;
  Label Label5{"No Entry Selected"};
  Label Label6{"Problem"};
  Label Label7{"Please Select entry from the list to show details"};
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

  // Work lists: List1 and List4 to List7 are filled by the enumerators, List2 collects bad values,
  // List3 keeps names while List1 is filled with what is below them.
  ListBox List1;
  ListBox List2;
  ListBox List3;
  ListBox List4;
  ListBox List5;
  ListBox List6;
  ListBox List7;

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

  // State of a scan. totalFound goes on counting over all scans of one run of the program;
  // totalFoundText is the same number as text, which "reg-count" is written from.
  bool cancelRequested = false;
  std::int64_t totalFound = 0;
  std::string totalFoundText = "0";
  std::int64_t categoryFound = 0;
  int wizardPage = 0;

  // What a search adds its findings as: 2 the current user's settings, 3 all users', 4 the
  // computer's, 1 classes, any other nothing that is known.
  int searchCategory = 0;

  // What the command line asked for: autoMode is 0, 1 (list) or 2 (list and fix); the two others 0
  // or 1. commandText is the whole of a text that is no automatic mode of the suite's.
  bool hasCommandLine = false;
  int autoMode = 0;
  int recheckMode = 0;
  int recheckFix = 0;
  std::string commandText;

  // The row last clicked in View2, and in View1 or View2, from 1.
  std::size_t selectedRow = 0;
  std::size_t lastClickedRow = 0;

  // The journal record under work; it goes from row to row.
  JournalRecord journalRecord;

  // In force. `decideSafeguards` decides them anew at the start of each scan, search and repair,
  // once it is bound, by what the computer's policies and settings say and a caller has chosen.
  Safeguards safeguards;
  EntryPoint decideSafeguards;
  std::vector<SafeguardChoice> safeguardChoices;
  // False for a computer that is being repaired from outside: what it says is data, not an order.
  bool obeysComputer = true;
  // The name of the last repair's safety export without folder and ".reg"; empty if it has none.
  std::string exportStem;
  // Whether the journal that was asked for last, and its entry, could be written.
  bool isJournalKept = true;
  // Whether the last undo has restored nothing, or not all, and has said so.
  bool isUndoRefused = false;
  // Whether the last repair was stopped because its safety export could not be written.
  bool isRepairStopped = false;
  // What the repair that runs, or the last one, set out to do, and what came of it.
  std::shared_ptr<const RepairPlan> repairPlan;
  RepairOutcome repairOutcome;

  // 2 where keys were found under "Windows nt" instead of "Windows".
  std::int32_t ntSpelling = 0;

  // Whether the process runs under the 32-bit emulation of a 64-bit system.
  bool Is64BitOS = false;
  // The program path that the last firewall rule named, or empty.
  std::string FirewallPath;
  // 0 after GrantKeyAccess worked, 1 after it failed.
  int GrantKeyStatus = 0;
  // What the system answered to the last delete of a single key, as its error code; Command12 sets
  // it back to 0.
  std::int32_t keptStatus = 0;
  // The handle that the last full key path named; a path that is refused leaves it standing.
  std::uint32_t parsedHive = 0;

  // The language: charset number, file tag, number in the picker, file name.
  int langCode = 0;
  std::string langTag;
  int langIndex = 0;
  std::string langFileName;
  // Whether the language's charset is that of the system, so that the system can draw its menus.
  bool languageMatchesSystem = false;

  // Where the program's own files lie, without a backslash at the end.
  std::string programFolder;

  Dialogs dialogs;
  // Opens a compiled help file at one of its contexts.
  std::function<void(const std::string& file, int context)> openHelp;
  // Timer1 finishes the opening of the window; Timer2 reports to the suite, in the automatic modes.
  Timer Timer1;
  Timer Timer2;
  MessageQueue messages{{&Timer1, &Timer2}};
  // What the front end does when the program ends itself.
  std::function<void()> onProcessEnd;
  // Connections to the registry provider that are kept between calls; made when first asked for.
  std::shared_ptr<StdRegProvPool> providers;
  // Whether a call of the provider has failed since a scanner turned to its present entry. What it
  // holds then looks empty without being so, and no finding is made of it.
  bool isProviderSilent = false;
};

}  // namespace zelvreg

#endif

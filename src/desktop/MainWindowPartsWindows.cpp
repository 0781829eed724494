// The peers of the main window.

#include "desktop/MainWindow.h"
#include "evidence/Reasons.h"
#include "evidence/SecondLook.h"
#include "exclusions/ExclusionList.h"
#include "form/Form42.h"
#include "languages/Texts.h"
#include "reports/EntryDetails.h"
#include "scan/CategoryTable.h"
#include "scan/Findings.h"
#include "scan/OutcomeLine.h"
#include "shell/Languages.h"
#include "shell/Navigation.h"
#include "shell/ResultsFilter.h"
#include "shell/WindowEvents.h"
#include "undo/UndoPage.h"

namespace zelvreg::desktop {
namespace {

// The ground of a label that is on the window itself.
Tone groundAt(const Place& place) { return place.top < titleHeight ? Tone::Accent : Tone::Surface; }

// Whether it is a page without a label for its title.
bool isPage(const Form42& form, const Frame& frame) { return &frame == &form.Frame3; }

bool isGroup(const Form42& form, const Frame& frame) { return &frame == &form.Frame5; }

Tone groundOf(const Form42& form, const FramePlace& place, const Frame& frame) {
  if (place.isCard) {
    return Tone::Surface;
  }
  return &frame == &form.Frame4 || &frame == &form.Frame5 ? Tone::SideBar : Tone::Ground;
}

struct ListEntry {
  ListView Form42::*list;
  Frame Form42::*page;
  const char* key;  // in the settings
  TextKey name;
  ListOptions options;
  void (*itemClick)(Form42& form, std::size_t row);
  void (*doubleClick)(Form42& form);  // null for none
};

std::vector<ListEntry> listEntries() {
  return {
      {&Form42::View1,
       &Form42::Frame1,
       "view1",
       "name-categories",
       {.hasChecks = true,
        .hasIcons = true,
        .selectsSeveral = false,
        .columnWidths = {categoryColumnWidths.begin(), categoryColumnWidths.end()}},
       View1_ItemClick,
       View1_DblClick},
      {&Form42::View2,
       &Form42::Frame2,
       "view2",
       "name-findings",
       {.hasChecks = true,
        .hasIcons = true,
        .hasMarks = true,
        .selectsSeveral = true,
        .canBeSorted = true,
        .columnWidths = {findingColumnWidths.begin(), findingColumnWidths.end()}},
       View2_ItemClick,
       View2_DblClick},
      {&Form42::View3,
       &Form42::Frame3,
       "view3",
       "name-journals",
       {.hasChecks = false, .hasIcons = false, .selectsSeveral = false, .columnWidths = {786}},
       View3_ItemClick,
       nullptr},
      {&Form42::View4,
       &Form42::Frame7,
       "view4",
       "name-exclusions",
       {.hasChecks = false, .hasIcons = false, .selectsSeveral = true, .columnWidths = {786}},
       View4_ItemClick,
       nullptr},
  };
}

}  // namespace

HWND MainWindow::parentOf(Frame* frame) {
  if (frame == nullptr) {
    return window;
  }
  for (const auto& peer : frames) {
    if (Peer::of(peer->hwnd()) != nullptr && &peer->shownFrame() == frame) {
      return peer->hwnd();
    }
  }
  return window;
}

void MainWindow::addFrames() {
  for (const FramePlace& place : framePlaces()) {
    Frame& frame = place.frame(form);
    auto peer = std::make_unique<FramePeer>(desk, parentOf(place.parent(form)), frame,
                                            FrameOptions{.ground = groundOf(form, place, frame),
                                                         .isCard = place.isCard,
                                                         .behind = Tone::Ground,
                                                         .hasTitle = isPage(form, frame),
                                                         .hasCaption = isGroup(form, frame)});
    peer->onVisible = [this, opened = &frame] {
      if (opened == &form.pictrlang && form.pictrlang.visible) {
        pickerKeys.begin();
      }
      arrangeLater();
    };
    frames.push_back(std::move(peer));
  }
  for (const auto& peer : frames) {
    Frame& frame = peer->shownFrame();
    if (&frame == &form.Frame8) {
      peer->placeOf = [this] { return progressPanelPlace(form); };
    } else if (&frame == &form.Frame3) {
      // The translated name of this page is the caption of a hidden button, which once opened it.
      peer->titleOf = [this] { return form.Command21.caption.get(); };
    } else if (&frame == &form.pictrlang) {
      peer->onMouseMove = [this] { pictrlang_MouseMove(form); };
      peer->onKey = [this](WPARAM key) { return pickerKey(key); };
    }
    peer->showAll();
  }
}

void MainWindow::addLabels() {
  for (const LabelPlace& place : labelPlaces()) {
    Frame* parent = place.parent(form);
    const bool isOnCard = parent == &form.Frame8 || parent == &form.Picture1;
    const Tone ground = parent == nullptr ? groundAt(place.place)
                        : isOnCard        ? Tone::Surface
                                          : Tone::Ground;
    labels.push_back(
        std::make_unique<LabelPeer>(desk, parentOf(parent), place.label(form), place.look, ground));
    // How far a scan is, what it has found, what a repair has done, and how sure a row is.
    if (&place.label(form) == &form.Label4 || &place.label(form) == &form.Label10 ||
        &place.label(form) == &form.OutcomeText || &place.label(form) == &form.EvidenceText) {
      labels.back()->readAloud();
    }
    // Only the labels before values: the values themselves change with every entry of a scan.
    const Label* label = &place.label(form);
    if (label == &form.Label2[3] || label == &form.Label2[5] || label == &form.ProgressText ||
        label == &form.Label6 || label == &form.Label10 || label == &form.OutcomeText) {
      labels.back()->onText = [this] { arrangeLater(); };
    } else if (label == &form.EvidenceText) {
      labels.back()->onText = [this] { form.Image3.refresh(); };
    }
  }
}

void MainWindow::addButtons() {
  for (const ButtonPlace& place : buttonPlaces()) {
    buttons.push_back(std::make_unique<ButtonPeer>(desk, parentOf(place.parent(form)),
                                                   place.button(form), place.role, place.icon));
    buttons.back()->onChanged = [this] { arrangeLater(); };
    nameButton(*buttons.back());
  }
}

// The tips of two of the title's buttons are known to users, but say something else.
void MainWindow::nameButton(ButtonPeer& peer) {
  struct Name {
    const Button& button;
    TextKey text;
  };
  for (const Name& each :
       {Name{form.chameleonButton13, "name-language"}, Name{form.chameleonButton18, "name-about"},
        Name{form.chameleonButton23, "name-minimize"}}) {
    if (&each.button == &peer.button()) {
      peer.nameOf = [this, text = each.text] { return textOf(form, text); };
    }
  }
}

void MainWindow::addFilter() {
  auto peer = std::make_unique<EditPeer>(desk, parentOf(&form.Frame2), form.FilterBox);
  peer->nameOf = [this] { return textOf(form, "name-filter"); };
  peer->cueOf = [this] { return textOf(form, "filter-cue") + " (Ctrl+F)"; };
  filter = peer->hwnd();
  others.push_back(std::move(peer));
}

void MainWindow::addLists() {
  for (const ListEntry& entry : listEntries()) {
    ListView& list = form.*entry.list;
    auto peer =
        std::make_unique<ListViewPeer>(desk, parentOf(&(form.*entry.page)), list, entry.options);
    peer->onItemClick = [this, click = entry.itemClick](std::size_t row) { click(form, row); };
    peer->nameOf = [this, name = entry.name] { return textOf(form, name); };
    peer->useColumnWidths(readColumnWidths(entry.key, entry.options.columnWidths));
    peer->onColumns = [key = entry.key](const std::vector<int>& widths) {
      keepColumnWidths(key, widths);
    };
    if (entry.doubleClick != nullptr) {
      peer->onDoubleClick = [this, click = entry.doubleClick] { click(form); };
    }
    if (&list == &form.View1) {
      peer->placeOf = [this] { return categoryListPlace(form); };
      peer->shownAs = [this](std::size_t column, const std::string& cell) {
        return column == statusColumn ? translated(form, cell) : cell;
      };
      peer->tipOf = lockedRowTip(list);
    } else if (&list == &form.View4) {
      peer->tipOf = lockedRowTip(list);
    } else if (&list == &form.View2) {
      peer->onMenu = [this](POINT onScreen) { openMenu(onScreen); };
      peer->onRows = [this] {
        dropOldOutcome(form);
        followResults(form);
        arrangeLater();
      };
      peer->onSelection = [this] { arrangeLater(); };
      peer->isGrowing = [this] { return form.Gif89a1.visible.get(); };
      peer->markOf = [this](std::size_t row) -> std::string {
        const Evidence* evidence = evidenceOf(form, row);
        return evidence == nullptr ? std::string() : codeOf(evidence->confidence);
      };
      peer->tipOf = [this](std::size_t row) { return evidenceText(form, row); };
      // Of some categories every row has the same text there.
      peer->shownAs = [this](std::size_t column, const std::string& cell) {
        return column == locationColumn ? translated(form, cell) : cell;
      };
    }
    peer->showAll();
    others.push_back(std::move(peer));
  }
  auto bar = std::make_unique<ProgressPeer>(desk, parentOf(&form.Frame8), form.Bar1);
  bar->nameOf = [this] { return form.Label2[5].caption.get(); };
  progress = bar.get();
  others.push_back(std::move(bar));
}

void MainWindow::addOptions() {
  auto ofScan = policyBox(form.CarefulBox, parentOf(&form.Frame1));
  ofScan->onText = [this] { arrangeLater(); };
  ofScan->onValue = [this] { form.Image14.visible = form.CarefulBox.value; };
  careful = ofScan.get();
  others.push_back(std::move(ofScan));
  HWND page = parentOf(&form.Frame3);
  others.push_back(policyBox(form.Check1, page));
  auto ofToolbar = std::make_unique<CheckPeer>(desk, page, form.ToolbarBox, Tone::Ground);
  ofToolbar->onValue = [this] { arrangeLater(); };
  others.push_back(std::move(ofToolbar));
  addCombo(form.cboTheme, page, "name-theme", Translated::Yes);
  for (CheckBox& box : form.SafeguardBoxes) {
    others.push_back(policyBox(box, page));
  }
}

// A box that a policy may decide.
std::unique_ptr<CheckPeer> MainWindow::policyBox(CheckBox& box, HWND parent) {
  auto peer = std::make_unique<CheckPeer>(desk, parent, box, Tone::Ground);
  peer->descriptionOf = [this, &box] {
    return box.isLocked ? textOf(form, "set-by-policy") : std::string();
  };
  return peer;
}

std::function<std::string(std::size_t row)> MainWindow::lockedRowTip(const ListView& list) const {
  return [this, &list](std::size_t row) {
    return list.isLocked(row) ? textOf(form, "set-by-policy") + "." : std::string();
  };
}

void MainWindow::addCombo(ComboBox& box, HWND parent, TextKey name, Translated translates) {
  std::function<std::string(const std::string&)> translate;
  if (translates == Translated::Yes) {
    translate = [this](const std::string& entry) { return translated(form, entry); };
  }
  auto peer = std::make_unique<ComboPeer>(desk, parent, box, std::move(translate));
  peer->nameOf = [this, name] { return textOf(form, name); };
  others.push_back(std::move(peer));
}

void MainWindow::addSearchControls() {
  HWND where = parentOf(&form.Frame4);
  HWND how = parentOf(&form.Frame5);
  addCombo(form.cboFind, window, "name-find-text", Translated::No);
  addCombo(form.cboRoot, where, "name-find-root", Translated::Yes);
  for (CheckBox* box : {&form.ChKeys, &form.ChValues, &form.ChData}) {
    others.push_back(std::make_unique<CheckPeer>(desk, where, *box, Tone::SideBar));
  }
  others.push_back(std::make_unique<CheckPeer>(desk, how, form.ChCase, Tone::SideBar));
  for (OptionButton* option : {&form.Option1, &form.Option2, &form.Option3, &form.Option4}) {
    const auto choose = [this, option] {
      for (OptionButton* each : {&form.Option1, &form.Option2, &form.Option3, &form.Option4}) {
        each->value = each == option;
      }
    };
    others.push_back(std::make_unique<CheckPeer>(desk, how, *option, choose,
                                                 option == &form.Option1, Tone::SideBar));
  }
}

void MainWindow::addPictures() {
  others.push_back(std::make_unique<PicturePeer>(
      desk, window, form.Image2,
      PictureOptions{
          .icon = "emblem", .length = 32, .ground = Tone::Accent, .tone = Tone::OnAccent}));
  auto help = std::make_unique<PicturePeer>(desk, window, form.Image44[0],
                                            PictureOptions{.icon = "help",
                                                           .canBePressed = true,
                                                           .length = 16,
                                                           .ground = Tone::Accent,
                                                           .tone = Tone::OnAccent});
  help->onClick = [this] { Image44_Click(form); };
  help->setName([this] { return textOf(form, "name-help"); });
  others.push_back(std::move(help));
  others.push_back(std::make_unique<PicturePeer>(desk, parentOf(&form.Picture1), form.Image1,
                                                 PictureOptions{.icon = "problem",
                                                                .length = 24,
                                                                .ground = Tone::Surface,
                                                                .hasDisc = true,
                                                                .disc = Tone::ProblemDisc}));
  others.push_back(std::make_unique<PicturePeer>(desk, parentOf(&form.Frame8), form.Gif89a1,
                                                 PictureOptions{.ground = Tone::Surface}));
  auto safe = std::make_unique<PicturePeer>(
      desk, window, form.Image14,
      PictureOptions{.icon = "safe", .length = 20, .ground = Tone::Accent, .tone = Tone::OnAccent});
  safe->setName([this] { return form.CarefulBox.caption.get(); });
  others.push_back(std::move(safe));
  auto confidence = std::make_unique<PicturePeer>(desk, parentOf(&form.Picture1), form.Image3,
                                                  PictureOptions{.ground = Tone::Surface});
  confidence->iconOf = [this]() -> std::string {
    const Evidence* evidence = evidenceOf(form, form.selectedRow);
    return evidence == nullptr || form.EvidenceText.caption.get().empty()
               ? std::string()
               : codeOf(evidence->confidence);
  };
  others.push_back(std::move(confidence));
  others.push_back(std::make_unique<PicturePeer>(
      desk, parentOf(&form.pictrlang), form.imglangselect,
      PictureOptions{.icon = "ch", .length = 16, .ground = Tone::Surface}));
}

void MainWindow::addLanguages() {
  HWND parent = parentOf(&form.pictrlang);
  for (std::size_t entry = 0; entry < form.lbllanguage.size(); ++entry) {
    Label& label = *form.lbllanguage[entry];
    label.left = form.lbllanguage.front()->left;
    label.width = form.lbllanguage.front()->width;
    labels.push_back(
        std::make_unique<LabelPeer>(desk, parent, label, LabelLook::Plain, Tone::Surface));
    labels.back()->onClick = [this, entry] { lbllanguage_Click(form, entry); };
    labels.back()->onMouseMove = [this, entry] {
      pictrlang_MouseMove(form);
      lbllanguage_MouseMove(form, entry);
    };
  }
  arrange();
}

}  // namespace zelvreg::desktop

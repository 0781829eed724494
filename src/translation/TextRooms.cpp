#include "translation/TextRooms.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>

#include "form/Form42.h"
#include "layout/DialogPlaces.h"
#include "layout/Layout.h"
#include "layout/TranslatorPlaces.h"
#include "scan/CategoryTable.h"
#include "shell/Captions.h"
#include "translation/TranslatorTexts.h"

namespace zelvreg {
namespace {

using desktop::ButtonRole;
using desktop::LabelLook;
using desktop::Place;

constexpr int lineHeight = 16;
// What a button has at both sides of its caption, and between that and its icon.
constexpr int buttonMargins = 24;
constexpr int iconAndGap = 24;
// The mark of a check box, and what is beside it.
constexpr int boxMark = 26;
constexpr int cellMargins = 16;
constexpr int tickAndIcon = 60;
// A name that grows still has to leave this for the value behind it.
constexpr int leastValue = 60;

constexpr double tolerance = 1.06;

TextSize sizeOf(LabelLook look) {
  switch (look) {
    case LabelLook::ProgramTitle:
      return {.points = 13, .isBold = true};
    case LabelLook::WindowTitle:
      return {.points = 10.5, .isBold = true};
    case LabelLook::PageTitle:
    case LabelLook::Counter:
    case LabelLook::Outcome:
      return {.points = 12, .isBold = true};
    case LabelLook::Strong:
      return {.isBold = true};
    default:
      return {};
  }
}

TextRoom labelRoom(const Place& place, LabelLook look) {
  const bool wraps = look == LabelLook::Wrapped || look == LabelLook::Explanation;
  return {.width = place.width,
          .lines = wraps ? std::max(1, place.height / lineHeight) : 1,
          .size = sizeOf(look)};
}

TextRoom buttonRoom(const Place& place, bool hasIcon) {
  return {.width = place.width - buttonMargins - (hasIcon ? iconAndGap : 0),
          .lines = std::max(1, place.height / lineHeight)};
}

class Rooms {
 public:
  Rooms() {
    // Each control says which key it shows.
    for (const auto& table : {captions(), furtherCaptions()}) {
      for (const Caption& caption : table) {
        caption.set(form, std::string(caption.key));
      }
    }
    desktop::layOut(form);
    addLabels();
    addButtons();
    addBoxes();
    addColumns(form.View1, desktop::categoryColumnWidths);
    addColumns(form.View2, desktop::findingColumnWidths);
    addCategories();
    addDialogs();
    addTranslator();
  }

  [[nodiscard]] std::optional<TextRoom> find(std::string_view section, std::string_view key) const {
    const auto found = rooms.find(nameOf(section, key));
    return found == rooms.end() ? std::nullopt : std::optional(found->second);
  }
  [[nodiscard]] std::optional<KeyPage> findPage(std::string_view section,
                                                std::string_view key) const {
    const auto found = pages.find(nameOf(section, key));
    return found == pages.end() ? std::nullopt : std::optional(found->second);
  }

 private:
  static std::string nameOf(std::string_view section, std::string_view key) {
    return std::string(section).append("/").append(key);
  }

  void add(std::string_view key, const TextRoom& room) {
    if (!key.empty()) {
      rooms.emplace(nameOf("Form42", key), room);
    }
  }

  void addLabels() {
    for (const desktop::LabelPlace& each : desktop::labelPlaces()) {
      const Label& label = each.label(form);
      // The number of the findings follows the counter, whose room depends on the buttons.
      if (each.look != LabelLook::Counter) {
        add(label.caption.get(), labelRoom(roomOf(label, each.place), each.look));
      }
    }
  }

  // A name may grow into the place of the value that follows it.
  Place roomOf(const Label& name, const Place& place) {
    struct Pair {
      const Label* name;
      const Label* value;
    };
    const std::array pairs{Pair{&form.Label2[5], &form.Label4}, Pair{&form.Label2[3], &form.Label3},
                           Pair{&form.Label6, &form.Label5}};
    const auto* pair = std::ranges::find(pairs, &name, &Pair::name);
    if (pair == pairs.end()) {
      return place;
    }
    const Place value = desktop::placeFor(form, *pair->value);
    return {place.left, place.top, value.left + value.width - leastValue - place.left,
            place.height};
  }

  KeyPage pageOf(const Frame* frame) {
    if (frame == &form.Frame1 || frame == &form.Frame8) {
      return KeyPage::Options;
    }
    if (frame == &form.Frame2 || frame == &form.Picture1) {
      return KeyPage::Results;
    }
    return frame == &form.Frame3   ? KeyPage::Undo
           : frame == &form.Frame7 ? KeyPage::Exclusions
                                   : KeyPage::Every;
  }

  void addPage(const std::string& key, KeyPage page) { pages.emplace(nameOf("Form42", key), page); }

  void addButtons() {
    // All others are as wide as their captions, or show none.
    const std::array<const Button*, 4> fixed{&form.cmdFind, &form.chameleonButton10,
                                             &form.chameleonButton11, &form.Command28};
    for (const desktop::ButtonPlace& each : desktop::buttonPlaces()) {
      const Button& button = each.button(form);
      addPage(button.caption, pageOf(each.parent(form)));
      const bool isFixed =
          each.role == ButtonRole::SideBar || std::ranges::find(fixed, &button) != fixed.end();
      if (isFixed) {
        add(button.caption.get(), buttonRoom(each.place, *each.icon != '\0'));
      }
    }
  }

  void addBoxes() {
    const auto addBox = [this](const CheckBox& box) {
      add(box.caption.get(), {.width = box.width / desktop::twipsPerPixel - boxMark});
    };
    for (const CheckBox& box : form.SafeguardBoxes) {
      addBox(box);
    }
    for (const CheckBox* box : {&form.Check1, &form.ToolbarBox, &form.ChCase}) {
      addBox(*box);
    }
    for (const CheckBox& box : form.SafeguardBoxes) {
      addPage(box.caption, KeyPage::Undo);
    }
    addPage(form.Check1.caption, KeyPage::Undo);
    addPage(form.ToolbarBox.caption, KeyPage::Undo);
    addPage(form.CarefulBox.caption, KeyPage::Options);
    for (const CheckBox* box : {&form.ChKeys, &form.ChValues, &form.ChData, &form.ChCase}) {
      addPage(box->caption, KeyPage::Every);
    }
    for (const OptionButton* option :
         {&form.Option1, &form.Option2, &form.Option3, &form.Option4}) {
      addPage(option->caption, KeyPage::Every);
    }
    addPage("yes", KeyPage::Question);
    addPage("no", KeyPage::Question);
  }

  void addColumns(const ListView& list, std::span<const int> widths) {
    for (std::size_t column = 0; column < widths.size(); ++column) {
      add(list.columnHeaders()[column].text,
          {.width = widths[column] - cellMargins, .size = {.isBold = true}});
    }
  }

  void addCategories() {
    for (const Category& category : categories()) {
      add(category.nameKey, {.width = desktop::categoryColumnWidths[0] - tickAndIcon});
      add(category.textKey, {.width = desktop::categoryColumnWidths[1] - cellMargins});
    }
  }

  void addDialogs() {
    using namespace desktop;
    rooms["Form1/Label222(1)"] = labelRoom(dialogTitle, LabelLook::WindowTitle);
    rooms["Form1/Label1"] = labelRoom(exclusionPrompt, LabelLook::Plain);
    rooms["Form1/orubutton1"] = buttonRoom(addExclusion, false);
    rooms["Form1/orubutton10"] = buttonRoom(cancelExclusion, false);
    rooms["frmabout/Label222(1)"] = labelRoom(dialogTitle, LabelLook::WindowTitle);
    rooms["frmabout/Label2(0)"] = labelRoom(aboutSummary, LabelLook::Wrapped);
    for (const char* key : {"frmabout/Label2(3)", "frmabout/Label2(2)", "frmabout/Label2(1)"}) {
      rooms[key] = labelRoom(aboutWords(0), LabelLook::Plain);
    }
  }

  void addTranslator() {
    namespace places = desktop::translatorPlaces;
    const auto give = [this](const char* key, const TextRoom& room) {
      rooms.emplace(nameOf(translatorSection, key), room);
    };
    give("title", labelRoom(places::title, LabelLook::WindowTitle));
    give("language", labelRoom(places::languageWord, LabelLook::Plain));
    give("charset", labelRoom(places::charsetWord, LabelLook::Plain));
    give("name", labelRoom(places::nameWord, LabelLook::Plain));
    give("count", labelRoom(places::count, LabelLook::SecondaryRight));
    give("new-file", labelRoom(places::fileInfo, LabelLook::Secondary));
    // As the heading of a column it has more room.
    give("english", labelRoom(places::englishWord, LabelLook::Strong));
    give("translation", labelRoom(places::translationWord, LabelLook::Strong));
    give("open", buttonRoom(places::open, false));
    give("new", buttonRoom(places::create, false));
    give("next", buttonRoom(places::next, false));
    give("save", buttonRoom(places::save, false));
    give("save-as", buttonRoom(places::saveAs, false));
    give("only-work", {.width = places::onlyWork.width - boxMark});
    give("utf8", {.width = places::utf8.width - boxMark});
  }

  Form42 form;
  std::map<std::string, TextRoom, std::less<>> rooms;
  std::map<std::string, KeyPage, std::less<>> pages;
};

const Rooms& rooms() {
  static const Rooms all;
  return all;
}

}  // namespace

std::optional<TextRoom> roomOfText(std::string_view section, std::string_view key) {
  return rooms().find(section, key);
}

std::optional<KeyPage> pageOfText(std::string_view section, std::string_view key) {
  return rooms().findPage(section, key);
}

bool areTogether(KeyPage one, KeyPage other) {
  const bool isQuestion = one == KeyPage::Question || other == KeyPage::Question;
  return one == other || (!isQuestion && (one == KeyPage::Every || other == KeyPage::Every));
}

bool isTooLong(std::string_view text, const TextRoom& room) {
  if (room.lines == 1) {
    return textWidth(text, room.size) > room.width * tolerance;
  }
  return linesOf(text, room.size, room.width * tolerance) > room.lines;
}

}  // namespace zelvreg

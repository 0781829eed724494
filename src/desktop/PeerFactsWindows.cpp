// What each peer says of itself to those who do not see it.
#include <windows.h>

// This one needs <windows.h> before it.
#include <oleacc.h>

#include <algorithm>

#include "desktop/FramePeer.h"
#include "desktop/ListViewPeer.h"
#include "desktop/PicturePeer.h"
#include "desktop/SimplePeers.h"

namespace zelvreg::desktop {
namespace {

// Without the "&" that marks an access key, and without a letter that is there only to be one.
std::string plain(std::string caption) {
  constexpr std::size_t added = 4;  // "(&Y)"
  if (caption.size() > added && caption.ends_with(')') &&
      caption.compare(caption.size() - added, 2, "(&") == 0) {
    caption.resize(caption.size() - added);
  }
  std::string text;
  for (std::size_t at = 0; at < caption.size(); ++at) {
    const bool isMark = caption[at] == '&' && at + 1 < caption.size();
    text += caption[isMark ? ++at : at];
  }
  return text;
}

std::string percent(double share) {
  constexpr int whole = 100;
  return std::to_string(static_cast<int>(share * whole)) + " %";
}

}  // namespace

AccessibleFacts LabelPeer::facts() const {
  return {.role = look == LabelLook::Link ? ROLE_SYSTEM_LINK : ROLE_SYSTEM_STATICTEXT,
          .states = look == LabelLook::Link ? STATE_SYSTEM_LINKED : STATE_SYSTEM_READONLY,
          .name = label.caption,
          .value = {},
          .description = {}};
}

AccessibleFacts ButtonPeer::facts() const {
  return {.role = ROLE_SYSTEM_PUSHBUTTON,
          .states = (chameleon.properties().Value ? STATE_SYSTEM_PRESSED : 0) |
                    (isNext ? STATE_SYSTEM_DEFAULT : 0),
          .name = plain(spokenName()),
          .value = {},
          .description = {}};
}

AccessibleFacts CheckPeer::facts() const {
  return {.role = box != nullptr ? ROLE_SYSTEM_CHECKBUTTON : ROLE_SYSTEM_RADIOBUTTON,
          .states = isOn() ? STATE_SYSTEM_CHECKED : 0,
          .name = plain(caption()),
          .value = {},
          .description = descriptionOf ? descriptionOf() : std::string()};
}

AccessibleFacts EditPeer::facts() const {
  return {.role = ROLE_SYSTEM_TEXT,
          .states = 0,
          .name = nameOf ? nameOf() : std::string(),
          .value = box.text(),
          .description = {}};
}

AccessibleFacts ComboPeer::facts() const {
  const bool isTypedText = box.listIndex() < 0;
  return {.role = ROLE_SYSTEM_COMBOBOX,
          .states = 0,
          .name = nameOf ? nameOf() : std::string(),
          .value = isTypedText ? box.text() : entryText(box.listIndex()),
          .description = {}};
}

AccessibleFacts ProgressPeer::facts() const {
  return {.role = ROLE_SYSTEM_PROGRESSBAR,
          .states = STATE_SYSTEM_READONLY,
          .name = nameOf ? nameOf() : std::string(),
          .value = percent(share()),
          .description = {}};
}

AccessibleFacts FramePeer::facts() const {
  return {.role = options.hasTitle ? ROLE_SYSTEM_PROPERTYPAGE : ROLE_SYSTEM_GROUPING,
          .states = 0,
          .name = titleOf ? titleOf() : frame.caption.get(),
          .value = {},
          .description = {}};
}

AccessibleFacts PicturePeer::facts() const {
  return {.role = onClick ? ROLE_SYSTEM_PUSHBUTTON : ROLE_SYSTEM_GRAPHIC,
          .states = 0,
          .name = nameOf ? nameOf() : std::string(),
          .value = {},
          .description = {}};
}

AccessibleFacts ListViewPeer::facts() const {
  return {.role = ROLE_SYSTEM_LIST,
          .states = 0,
          .name = nameOf ? nameOf() : std::string(),
          .value = {},
          .description = {}};
}

// The first column is its name. The others follow with their headings, after how sure it is.
std::optional<AccessibleFacts> ListViewPeer::factsOfRow(std::size_t shownRow) const {
  const std::size_t row = shownRow < 1 ? 0 : order.rowAt(shownRow - 1);
  if (row == 0) {
    return std::nullopt;
  }
  std::string description = tipOf ? tipOf(row) : std::string();
  for (std::size_t column = 1; column < list.columnHeaders().size(); ++column) {
    const std::string cell = cellText(row, column);
    if (!cell.empty() && options.columnWidths[column] > 0) {
      const std::string& heading = list.columnHeaders()[column].text;
      description +=
          (description.empty() ? "" : " ") + heading + (heading.empty() ? "" : ": ") + cell + ".";
    }
  }
  return AccessibleFacts{
      .role = ROLE_SYSTEM_LISTITEM,
      .states = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE |
                (list.isSelected(row) ? STATE_SYSTEM_SELECTED : 0) |
                (list.isLocked(row) ? STATE_SYSTEM_READONLY : 0) |
                (options.hasChecks && list.isChecked(row) ? STATE_SYSTEM_CHECKED : 0),
      .name = cellText(row, 0),
      .value = {},
      .description = description};
}

}  // namespace zelvreg::desktop

// Gives the menus of a form a look of their own, with pictures and a soft highlight.
#ifndef ZELVREG_CONTROLS_COOL_MENU_H
#define ZELVREG_CONTROLS_COOL_MENU_H

#include <windows.h>

// This one needs <windows.h> before it.
#include <commctrl.h>

#include <optional>
#include <string>
#include <vector>

#include "controls/GdiObjects.h"
#include "controls/MenuEntry.h"
#include "controls/MenuItemData.h"

namespace zelvreg::controls {

class PaintBuffer;

// The control that holds the pictures. An entry has the picture whose key is its plain caption.
struct MenuPictures {
  HIMAGELIST hImageList = nullptr;  // not owned; must outlive the menus' use of it
  std::vector<std::string> ListImages;

  [[nodiscard]] int Count() const { return static_cast<int>(ListImages.size()); }
};

struct MenuSettings {
  int dpi = 96;
  std::optional<BYTE> charset;  // for captions in another script than the system's
  std::optional<MenuColors> colors;
};

class CoolMenu {
 public:
  explicit CoolMenu(MenuPictures shown, const MenuSettings& settings = {});
  CoolMenu(const CoolMenu&) = delete;
  CoolMenu& operator=(const CoolMenu&) = delete;
  ~CoolMenu() { uninstall(); }

  // Installs the entries of a menu bar with all menus that open from it, or those of a context
  // menu. A null menu is ignored. The entries keep their captions, so access keys and screen
  // readers find them. Call it again for a menu that has new entries.
  void installBar(HMENU menu);
  void installPopup(HMENU menu);
  // The system draws all entries again.
  void uninstall();

  [[nodiscard]] const CMyItemDatas& items() const { return datas; }

  // Answer the requests to the form's window procedure; false for a request about something else.
  bool measure(LPARAM request) const;
  bool draw(LPARAM request) const;
  // The answer to an access key that the system did not find: its entry is run, or the next of
  // several is chosen.
  [[nodiscard]] std::optional<LRESULT> findKey(HMENU menu, char16_t key) const;

 private:
  void installEntry(HMENU menu, int position, bool isMain);
  [[nodiscard]] const CMyItemData* recordOf(ULONG_PTR itemData) const;
  [[nodiscard]] int pictureOf(const std::string& menuText) const;
  [[nodiscard]] MenuMetrics metrics() const;
  void drawEntry(const PaintBuffer& buffer, const CMyItemData& entry, UINT state) const;
  [[nodiscard]] MenuColors colorsNow(bool isBar) const;
  void drawPicture(const PaintBuffer& buffer, const CMyItemData& entry,
                   const MenuEntryPlaces& places, UINT state) const;

  MenuPictures pictures;
  int resolution;
  std::optional<MenuColors> colors;
  FontHandle font;
  BrushHandle groundBrush;
  CMyItemDatas datas;
  std::vector<HMENU> menus;
};

// Draws an image embossed, as the system draws what cannot be chosen, stretched to a place.
void drawDisabledPicture(HDC target, HIMAGELIST images, int index, const Rectangle& place);

}  // namespace zelvreg::controls

#endif

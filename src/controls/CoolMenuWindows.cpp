#include "controls/CoolMenu.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "controls/PaintBuffer.h"
#include "text/Wide.h"

namespace zelvreg::controls {
namespace {

// The layout that the requests of a 32-bit program have.
static_assert(sizeof(MEASUREITEMSTRUCT) == 24);
static_assert(sizeof(DRAWITEMSTRUCT) == 48);

// The font of the system's menus at a resolution.
FontHandle menuFont(int dpi, std::optional<BYTE> charset) {
  const WindowContext screen(nullptr);
  NONCLIENTMETRICSW system{};
  // Without the newest field, which old systems do not know.
  system.cbSize = sizeof system - sizeof system.iPaddedBorderWidth;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, system.cbSize, &system, 0);
  const FontHandle likeSystem(CreateFontIndirectW(&system.lfMenuFont));
  const Selection selected(screen.get(), likeSystem.get());
  std::array<char16_t, LF_FACESIZE> face{};
  GetTextFaceW(screen.get(), static_cast<int>(face.size()), roomIn(face));
  TEXTMETRICW text{};
  GetTextMetricsW(screen.get(), &text);

  LOGFONTW description{};
  const int systemDpi = GetDeviceCaps(screen.get(), LOGPIXELSY);
  description.lfHeight = -MulDiv(text.tmHeight - text.tmInternalLeading, dpi, systemDpi);
  description.lfWeight = text.tmWeight;
  description.lfItalic = text.tmItalic;
  description.lfCharSet = charset.value_or(text.tmCharSet);
  std::ranges::copy(face, std::begin(description.lfFaceName));
  return FontHandle(CreateFontIndirectW(&description));
}

Size measured(HDC dc, std::string_view text) {
  RECT box{};
  DrawTextW(dc, Wide(text).get(), -1, &box, DT_SINGLELINE | DT_CALCRECT);
  return text.empty() ? Size() : Size{static_cast<int>(box.right), static_cast<int>(box.bottom)};
}

// A typed character as a caption may hold it.
std::u32string bothCases(char16_t key) {
  std::array<char16_t, 2> cases{key, key};
  CharLowerBuffW(roomIn(cases), 1);
  CharUpperBuffW(roomIn(cases) + 1, 1);
  return {cases.begin(), cases.end()};
}

ULONG_PTR dataOf(HMENU menu, int position) {
  MENUITEMINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_DATA;
  GetMenuItemInfoW(menu, static_cast<UINT>(position), TRUE, &info);
  return info.dwItemData;
}

}  // namespace

CoolMenu::CoolMenu(MenuPictures shown, const MenuSettings& settings)
    : pictures(std::move(shown)),
      resolution(settings.dpi),
      colors(settings.colors),
      font(menuFont(settings.dpi, settings.charset)),
      groundBrush(colors ? CreateSolidBrush(colorRef(colors->ground)) : nullptr) {}

void CoolMenu::installBar(HMENU menu) {
  const int count = GetMenuItemCount(menu);
  for (int position = 0; position < count; ++position) {
    installEntry(menu, position, true);
    installPopup(GetSubMenu(menu, position));
  }
  menus.push_back(menu);
}

void CoolMenu::installPopup(HMENU menu) {
  if (groundBrush != nullptr) {
    MENUINFO info{};
    info.cbSize = sizeof info;
    info.fMask = MIM_BACKGROUND;
    info.hbrBack = groundBrush.get();
    SetMenuInfo(menu, &info);
  }
  const int count = GetMenuItemCount(menu);
  for (int position = 0; position < count; ++position) {
    installEntry(menu, position, false);
    installPopup(GetSubMenu(menu, position));
  }
  menus.push_back(menu);
}

void CoolMenu::installEntry(HMENU menu, int position, bool isMain) {
  std::array<char16_t, 128> text{};
  MENUITEMINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_TYPE | MIIM_DATA;
  info.dwTypeData = roomIn(text);
  info.cch = static_cast<UINT>(text.size());
  if (GetMenuItemInfoW(menu, static_cast<UINT>(position), TRUE, &info) == 0 ||
      (info.fType & MFT_OWNERDRAW) != 0) {
    return;
  }
  // Not every system ends a caption that fills the buffer.
  text.back() = u'\0';
  std::string caption = utf8(text.data());
  const int picture = pictureOf(caption);
  CMyItemData& data = datas.Add({isMain, picture, info.fType, std::move(caption)});
  // Written back without its text, so that the entry keeps the one it has.
  info.fMask = MIIM_FTYPE | MIIM_DATA;
  info.fType |= MFT_OWNERDRAW;
  info.dwItemData = reinterpret_cast<ULONG_PTR>(&data);
  SetMenuItemInfoW(menu, static_cast<UINT>(position), TRUE, &info);
}

int CoolMenu::pictureOf(const std::string& menuText) const {
  const auto found = std::ranges::find(pictures.ListImages, plainCaption(menuText));
  const auto index = static_cast<int>(found - pictures.ListImages.begin());
  return index < pictures.Count() ? index : -1;
}

void CoolMenu::uninstall() {
  for (HMENU menu : menus) {
    const int count = GetMenuItemCount(menu);
    for (int position = 0; position < count; ++position) {
      if (const CMyItemData* data = recordOf(dataOf(menu, position))) {
        MENUITEMINFOW info{};
        info.cbSize = sizeof info;
        info.fMask = MIIM_FTYPE | MIIM_DATA;
        info.fType = data->fType;
        SetMenuItemInfoW(menu, static_cast<UINT>(position), TRUE, &info);
      }
    }
  }
  menus.clear();
  datas = CMyItemDatas();
}

const CMyItemData* CoolMenu::recordOf(ULONG_PTR itemData) const {
  const auto* wanted = reinterpret_cast<const CMyItemData*>(itemData);
  const auto all = datas.NewEnum();
  return std::ranges::find(all, wanted) != all.end() ? wanted : nullptr;
}

MenuMetrics CoolMenu::metrics() const {
  const WindowContext screen(nullptr);
  const int systemDpi = GetDeviceCaps(screen.get(), LOGPIXELSY);
  return {resolution,
          MulDiv(GetSystemMetrics(SM_CYMENU), resolution, systemDpi),
          {scaled(16, resolution), scaled(16, resolution)}};
}

bool CoolMenu::measure(LPARAM request) const {
  MEASUREITEMSTRUCT record{};
  std::memcpy(&record, reinterpret_cast<const void*>(request), sizeof record);
  const CMyItemData* data = record.CtlType == ODT_MENU ? recordOf(record.itemData) : nullptr;
  if (data == nullptr) {
    return false;
  }
  const WindowContext screen(nullptr);
  const Selection selected(screen.get(), font.get());
  const MenuCaption caption = splitCaption(data->sMenuText);
  const Size size = entrySize(*data, measured(screen.get(), caption.text),
                              measured(screen.get(), caption.keys), metrics());
  record.itemWidth = static_cast<UINT>(size.width);
  record.itemHeight = static_cast<UINT>(size.height);
  std::memcpy(reinterpret_cast<void*>(request), &record, sizeof record);
  return true;
}

std::optional<LRESULT> CoolMenu::findKey(HMENU menu, char16_t key) const {
  std::vector<const CMyItemData*> entries;
  int chosen = -1;
  const int count = GetMenuItemCount(menu);
  for (int position = 0; position < count; ++position) {
    entries.push_back(recordOf(dataOf(menu, position)));
    if ((GetMenuState(menu, static_cast<UINT>(position), MF_BYPOSITION) & MF_HILITE) != 0) {
      chosen = position;
    }
  }
  const std::vector<int> found = entriesWithKey(entries, bothCases(key));
  if (found.empty()) {
    return std::nullopt;
  }
  if (found.size() == 1) {
    return MAKELRESULT(found[0], MNC_EXECUTE);
  }
  const auto next = std::ranges::upper_bound(found, chosen);
  return MAKELRESULT(next != found.end() ? *next : found[0], MNC_SELECT);
}

}  // namespace zelvreg::controls

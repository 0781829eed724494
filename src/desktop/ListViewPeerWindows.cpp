#include "desktop/ListViewPeer.h"

#include <algorithm>
#include <utility>

#include "controls/Units.h"

namespace zelvreg::desktop {
namespace {

constexpr UINT_PTR subclassId = 1;
// More than a screenful.
constexpr std::size_t mostSingleRows = 64;
constexpr UINT checkedImage = 2;
constexpr UINT uncheckedImage = 1;

// As much as there is room for, which counts the NUL at the end.
void giveText(const std::string& text, LPWSTR place, int room) {
  if (room > 0) {
    const std::u16string whole = utf16(text);
    const auto shown = controls::firstUnits(whole, static_cast<std::size_t>(room) - 1);
    *std::ranges::copy(shown, place).out = L'\0';
  }
}

}  // namespace

ListViewPeer::ListViewPeer(Desk& sharedDesk, HWND parent, ListView& shownList,
                           ListOptions listOptions)
    : Peer(sharedDesk, shownList),
      list(shownList),
      options(std::move(listOptions)),
      widths(options.columnWidths) {
  widths.back() = 0;
  const DWORD selection = options.selectsSeveral ? 0 : LVS_SINGLESEL;
  own(makeChild(parent, WC_LISTVIEWW,
                WS_TABSTOP | WS_BORDER | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS |
                    LVS_SHAREIMAGELISTS | selection |
                    (options.canBeSorted ? 0 : LVS_NOSORTHEADER)));
  const DWORD checks = options.hasChecks ? LVS_EX_CHECKBOXES : 0;
  ListView_SetExtendedListViewStyle(hwnd(), LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | checks);
  ListView_SetCallbackMask(hwnd(), options.hasChecks ? LVIS_STATEIMAGEMASK : 0);
  SetWindowSubclass(hwnd(), procedure, subclassId, reinterpret_cast<DWORD_PTR>(this));
  colorBorder(hwnd(), desk());
  upright = std::make_unique<ScrollCover>(desk(), hwnd(), ScrollSide::Right);
  level = std::make_unique<ScrollCover>(desk(), hwnd(), ScrollSide::Bottom);
  header = ListView_GetHeader(hwnd());
  tip = std::make_unique<CellTip>(desk(), hwnd());
  tip->textOf = [this](int item, int column) { return tipText(item, column); };
  SetWindowSubclass(header, headerProcedure, subclassId, reinterpret_cast<DWORD_PTR>(this));
  for (std::size_t column = 0; column < list.columnHeaders().size(); ++column) {
    LVCOLUMNW description{};
    description.mask = LVCF_WIDTH | LVCF_FMT | LVCF_SUBITEM;
    description.fmt =
        list.columnHeaders()[column].alignment == Alignment::Right ? LVCFMT_RIGHT : LVCFMT_LEFT;
    description.iSubItem = static_cast<int>(column);
    ListView_InsertColumn(hwnd(), static_cast<int>(column), &description);
  }
  stale.rows = true;
  stale.columns = true;
  ListViewPeer::showAll();
}

ListViewPeer::~ListViewPeer() {
  if (rowHeights != nullptr) {
    ImageList_Destroy(rowHeights);
  }
}

void ListViewPeer::showAll() {
  if (rowHeights != nullptr) {
    ImageList_Destroy(rowHeights);
  }
  // A row is as high as its pictures.
  rowHeights = ImageList_Create(1, rowPixels() - 1, ILC_COLOR32, 1, 0);
  ListView_SetImageList(hwnd(), rowHeights, LVSIL_SMALL);
  Peer::showAll();
  catchUp();
}

void ListViewPeer::showText() {
  stale.columns = true;
  desk().later(this, [this] { catchUp(); });
}

void ListViewPeer::showLook() {
  Peer::showLook();
  // A heading that can be pressed is drawn flat, too.
  if (list.hasFlatHeader && !options.canBeSorted) {
    SetWindowLongPtrW(header, GWL_STYLE, GetWindowLongPtrW(header, GWL_STYLE) & ~HDS_BUTTONS);
  }
  ListView_SetBkColor(hwnd(), controls::colorRef(desk().color(Tone::Surface)));
  InvalidateRect(header, nullptr, FALSE);
  tip->showLook(desk().font(list.font));
  upright->repaint();
  level->repaint();
}

void ListViewPeer::showPlace() {
  if (placeOf) {
    moveTo(placeOf());
  } else {
    Peer::showPlace();
  }
  fitColumns();
}

void ListViewPeer::showRows(Change what, std::size_t row) {
  switch (what) {
    case Change::Selection:
      if (isTelling) {
        return;
      }
      stale.selection = true;
      break;
    case Change::Scroll:
      stale.inView = list.rowInView();
      break;
    case Change::Row:
    case Change::Checks:
      if (row > 0 && stale.single.size() < mostSingleRows) {
        stale.single.insert(row);
        break;
      }
      [[fallthrough]];
    default:
      stale.rows = true;
      break;
  }
  desk().later(this, [this] { catchUp(); });
}

void ListViewPeer::catchUp() {
  isShowing = true;
  const Stale changes = std::exchange(stale, {});
  if (changes.columns) {
    for (std::size_t column = 0; column < list.columnHeaders().size(); ++column) {
      std::u16string text = utf16(list.columnHeaders()[column].text);
      LVCOLUMNW description{};
      description.mask = LVCF_TEXT;
      description.pszText = roomIn(text);
      SendMessageW(hwnd(), LVM_SETCOLUMNW, column, reinterpret_cast<LPARAM>(&description));
    }
  }
  if (changes.rows) {
    followRows();
    fitColumns();
    repaint();
    if (onRows) {
      onRows();
    }
  } else {
    if (changes.widths) {
      fitColumns();
    }
    for (const std::size_t row : changes.single) {
      if (const int item = itemOf(row); item >= 0) {
        ListView_RedrawItems(hwnd(), item, item);
      }
    }
  }
  if (changes.selection || changes.rows) {
    showSelection();
    if (onSelection) {
      onSelection();
    }
  }
  if (const int item = itemOf(changes.inView); item >= 0) {
    ListView_EnsureVisible(hwnd(), item, FALSE);
  }
  continueSorting();
  isShowing = false;
  if (list.isSelected(changes.lastChosen)) {
    onItemClick(changes.lastChosen);
  }
}

void ListViewPeer::followScrolling() const {
  upright->follow();
  level->follow();
}

std::optional<LRESULT> ListViewPeer::notice(NMHDR& told) {
  switch (told.code) {
    case LVN_GETDISPINFOW:
      giveItem(reinterpret_cast<NMLVDISPINFOW&>(told).item);
      return 0;
    case LVN_ODFINDITEMW:
      return findItem(reinterpret_cast<NMLVFINDITEMW&>(told));
    case LVN_ITEMCHANGED:
      itemChanged(reinterpret_cast<NMLISTVIEW&>(told));
      return 0;
    case LVN_ODSTATECHANGED: {
      const auto& range = reinterpret_cast<NMLVODSTATECHANGE&>(told);
      if (!isShowing) {
        itemsHighlighted(static_cast<std::size_t>(range.iFrom), static_cast<std::size_t>(range.iTo),
                         (range.uNewState & LVIS_SELECTED) != 0);
      }
      return 0;
    }
    case LVN_COLUMNCLICK:
      sortByColumn(static_cast<std::size_t>(reinterpret_cast<NMLISTVIEW&>(told).iSubItem));
      return 0;
    case NM_CLICK:
      clicked(reinterpret_cast<NMITEMACTIVATE&>(told).iItem);
      return 0;
    case NM_DBLCLK:
      doubleClicked(reinterpret_cast<NMITEMACTIVATE&>(told).iItem);
      return 0;
    case NM_RCLICK: {
      const DWORD where = GetMessagePos();
      if (onMenu) {
        onMenu({static_cast<short>(LOWORD(where)), static_cast<short>(HIWORD(where))});
      }
      return 1;
    }
    case NM_CUSTOMDRAW:
      return drawItem(reinterpret_cast<NMLVCUSTOMDRAW&>(told));
    default:
      return std::nullopt;
  }
}

std::string ListViewPeer::cellText(std::size_t row, std::size_t column) const {
  const std::string& cell = list.text(row, column);
  return shownAs ? shownAs(column, cell) : cell;
}

void ListViewPeer::giveItem(LVITEMW& item) const {
  const std::size_t row = rowOf(item.iItem);
  if ((item.mask & LVIF_TEXT) != 0) {
    giveText(cellText(row, static_cast<std::size_t>(item.iSubItem)), item.pszText, item.cchTextMax);
  }
  if ((item.mask & LVIF_STATE) != 0 && options.hasChecks) {
    item.state = INDEXTOSTATEIMAGEMASK(list.isChecked(row) ? checkedImage : uncheckedImage);
    item.stateMask = LVIS_STATEIMAGEMASK;
  }
}

LRESULT CALLBACK ListViewPeer::procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                         UINT_PTR id, DWORD_PTR reference) {
  auto* peer = reinterpret_cast<ListViewPeer*>(reference);
  const POINT where{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
  switch (message) {
    case WM_NCDESTROY:
      RemoveWindowSubclass(hwnd, procedure, id);
      break;
    case WM_PAINT:
    case WM_NCPAINT:
    case WM_WINDOWPOSCHANGED:
    case WM_SHOWWINDOW:
    case WM_HSCROLL:
    case WM_VSCROLL: {
      const LRESULT result = DefSubclassProc(hwnd, message, wParam, lParam);
      peer->followScrolling();
      if (message == WM_HSCROLL || message == WM_VSCROLL) {
        peer->tip->hide();
      }
      return result;
    }
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      if (peer->pressed(where)) {
        return 0;
      }
      break;
    case WM_GETDLGCODE: {
      const auto* key = reinterpret_cast<const MSG*>(lParam);
      if (key != nullptr && key->message == WM_KEYDOWN && key->wParam == VK_RETURN) {
        return DLGC_WANTMESSAGE;
      }
      break;
    }
    case WM_KEYDOWN:
      if (peer->keyPressed(wParam)) {
        return 0;
      }
      break;
    case WM_CONTEXTMENU:
      // The mouse has a notification of its own (NM_RCLICK).
      if (lParam == -1) {
        peer->menuOfKeyboard();
      }
      return 0;
    case WM_MOUSEMOVE:
      peer->tip->follow(where);
      break;
    case WM_NOTIFY: {
      auto& told = *reinterpret_cast<NMHDR*>(lParam);
      if (told.hwndFrom != peer->header) {
        break;
      }
      if (told.code == NM_CUSTOMDRAW) {
        return peer->drawHeader(reinterpret_cast<NMCUSTOMDRAW&>(told));
      }
      // The second of two quick clicks counts like any other.
      if (told.code == HDN_ITEMDBLCLICKW && peer->options.canBeSorted) {
        peer->sortByColumn(static_cast<std::size_t>(reinterpret_cast<NMHEADERW&>(told).iItem));
        return 0;
      }
      if (const auto answer = peer->headerNotice(reinterpret_cast<NMHEADERW&>(told))) {
        return *answer;
      }
      break;
    }
    default:
      break;
  }
  return DefSubclassProc(hwnd, message, wParam, lParam);
}

LRESULT CALLBACK ListViewPeer::headerProcedure(HWND hwnd, UINT message, WPARAM wParam,
                                               LPARAM lParam, UINT_PTR id, DWORD_PTR reference) {
  const auto* peer = reinterpret_cast<ListViewPeer*>(reference);
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(hwnd, headerProcedure, id);
  } else if (message == HDM_LAYOUT) {
    const LRESULT result = DefSubclassProc(hwnd, message, wParam, lParam);
    const auto& layout = *reinterpret_cast<HDLAYOUT*>(lParam);
    layout.pwpos->cy = peer->desk().pixels(headerHeight);
    layout.prc->top = layout.pwpos->y + layout.pwpos->cy;
    return result;
  }
  return DefSubclassProc(hwnd, message, wParam, lParam);
}

}  // namespace zelvreg::desktop

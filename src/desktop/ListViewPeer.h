// The window of a list: the system's list view in its virtual mode. It asks for a row when it draws
// the row, so 100,000 rows cost no more than a screenful.
#ifndef ZELVREG_DESKTOP_LIST_VIEW_PEER_H
#define ZELVREG_DESKTOP_LIST_VIEW_PEER_H

#include <windows.h>

// This one needs <windows.h> before it.
#include <commctrl.h>

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "controls/PaintBuffer.h"
#include "desktop/CellTip.h"
#include "desktop/Peer.h"
#include "desktop/RowOrder.h"
#include "desktop/ScrollCover.h"
#include "widgets/ListView.h"

namespace zelvreg::desktop {

struct ListOptions {
  bool hasChecks = false;
  bool hasIcons = false;
  bool hasMarks = false;  // between tick and icon
  bool selectsSeveral = false;
  bool canBeSorted = false;  // by a click on a heading, or Ctrl and the number of the column
  // Pixels at 96 dpi, in the order of the columns; the last takes what is left, and at least that
  // much. A column of width 0 is hidden.
  std::vector<int> columnWidths;
};

class ListViewPeer : public Peer {
 public:
  ListViewPeer(Desk& sharedDesk, HWND parent, ListView& shownList, ListOptions listOptions);
  ~ListViewPeer() override;

  std::optional<LRESULT> notice(NMHDR& header) override;
  void showAll() override;
  [[nodiscard]] AccessibleFacts facts() const override;
  [[nodiscard]] std::optional<AccessibleFacts> factsOfRow(std::size_t shownRow) const override;

  // Called when the user chooses a row, double-clicks it, or opens its menu. Any may be empty.
  std::function<void(std::size_t row)> onItemClick;
  std::function<void()> onDoubleClick;
  std::function<void(POINT onScreen)> onMenu;
  // Called when rows that have come or gone are shown, and when other rows are highlighted. Both
  // may be empty.
  std::function<void()> onRows;
  std::function<void()> onSelection;
  // Whether rows are still being added, which are sorted only afterwards; may be empty.
  std::function<bool()> isGrowing;
  // The icon that is a row's mark, and the text that is shown while the mouse rests on the row; the
  // empty text for none. The list is drawn again when its rows change, not when these do.
  std::function<std::string(std::size_t row)> markOf;
  std::function<std::string(std::size_t row)> tipOf;
  // Widths of the columns that the user has given them, in pixels at 96 dpi, 0 for a last column
  // that takes what is left; and a call when the user changes them. Both may be empty.
  void useColumnWidths(std::vector<int> wanted);
  std::function<void(const std::vector<int>& widths)> onColumns;
  // What is told of a cell, counted from 0: its whole text if it is cut, and then the row's tip.
  [[nodiscard]] std::u16string tipText(int item, int column) const;
  // Instead of the control's own place; may be empty.
  std::function<Place()> placeOf;
  // The name that a screen reader reads, and a cell as the user reads it, where the list holds
  // data. Both may be empty.
  std::function<std::string()> nameOf;
  std::function<std::string(std::size_t column, const std::string& cell)> shownAs;

 protected:
  void showText() override;
  void showLook() override;
  void showPlace() override;
  void showRows(Change what, std::size_t row) override;

 private:
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR reference);
  static LRESULT CALLBACK headerProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                          UINT_PTR id, DWORD_PTR reference);

  // What has changed since the rows were last shown.
  struct Stale {
    bool rows = false;
    bool selection = false;
    bool columns = false;
    bool widths = false;
    std::size_t inView = 0;
    // Rows that the user has highlighted: whether the first was clicked, and the last of the
    // others.
    bool isClicked = false;
    std::size_t lastChosen = 0;
    // Only these, because drawing a screenful at each step of a scan would take longer than the
    // step.
    std::set<std::size_t> single;
  };
  void catchUp();
  void followScrolling() const;
  void showSelection();
  void clearSelection();

  // The columns: as wide as the user wants them. The user drags the line behind one, or clicks it
  // twice.
  void fitColumns();
  void followRows();
  [[nodiscard]] std::size_t rowOf(int item) const;  // 0 for none
  [[nodiscard]] int itemOf(std::size_t row) const;  // -1 if it is not shown
  [[nodiscard]] std::size_t focusedRow() const;
  void sortByColumn(std::size_t column);
  void sortByShownColumn(std::size_t position);
  void continueSorting();
  void showOrder(std::size_t focused);
  std::optional<LRESULT> headerNotice(NMHEADERW& told);
  void setColumnWidth(std::size_t column, int pixels);
  [[nodiscard]] int fittingWidth(std::size_t column) const;
  [[nodiscard]] int cellWidth(std::size_t row, std::size_t column) const;
  // What a cell keeps free to the left of its text.
  [[nodiscard]] int cellInset(std::size_t row, std::size_t column) const;

  [[nodiscard]] std::string cellText(std::size_t row, std::size_t column) const;
  void giveItem(LVITEMW& item) const;
  [[nodiscard]] LRESULT findItem(const NMLVFINDITEMW& search) const;
  void itemChanged(const NMLISTVIEW& change);
  void itemsHighlighted(std::size_t firstItem, std::size_t lastItem, bool are);
  bool pressed(POINT where);
  bool keyPressed(WPARAM key);
  void menuOfKeyboard() const;
  void clicked(int item);
  void doubleClicked(int item);
  void toggle(std::size_t row);
  void toggleFocused();

  // What one drawing asks the windows once, not for each of its rows.
  struct Sheet {
    std::vector<RECT> columns;
    std::size_t focused = 0;  // the row with the focus; 0 when the list does not have it
  };
  Sheet readSheet() const;
  LRESULT drawItem(NMLVCUSTOMDRAW& request);
  void drawRow(const controls::PaintBuffer& buffer, std::size_t row) const;
  void drawCell(const controls::PaintBuffer& buffer, std::size_t row, std::size_t column,
                RECT cell) const;
  LRESULT drawHeader(NMCUSTOMDRAW& request) const;
  [[nodiscard]] std::optional<Tone> iconTone(std::size_t row) const;
  [[nodiscard]] Rgb cellColor(std::size_t row, std::size_t column) const;
  // Rounded down, so that all rows fit.
  [[nodiscard]] int rowPixels() const { return rowHeight * desk().resolution() / 96; }
  [[nodiscard]] int iconLeft() const;
  [[nodiscard]] int checkRight() const { return options.hasChecks ? desk().pixels(30) : 0; }

  ListView& list;
  ListOptions options;
  RowOrder order;
  HWND header = nullptr;
  std::unique_ptr<ScrollCover> upright;
  std::unique_ptr<ScrollCover> level;
  std::unique_ptr<CellTip> tip;
  std::vector<int> widths;
  bool isDragging = false;  // then the columns are the user's
  HIMAGELIST rowHeights = nullptr;
  Stale stale;
  bool isShowing = false;  // then we ourselves cause the notifications
  bool isTelling = false;  // then the window already shows what the list tells of
  Sheet sheet;
  std::unique_ptr<controls::PaintBuffer> rowBuffer;
  // What the window has highlighted, by its items. To ask it for each row would take too long.
  std::vector<bool> highlighted;
};

}  // namespace zelvreg::desktop

#endif

// A scroll bar in the colors of the window. It lies over that of a list, which stays: the keyboard,
// the wheel and screen readers use the list's own.
#ifndef ZELVREG_DESKTOP_SCROLL_COVER_H
#define ZELVREG_DESKTOP_SCROLL_COVER_H

#include <windows.h>

#include "desktop/Desk.h"
#include "desktop/ScrollThumb.h"

namespace zelvreg::desktop {

enum class ScrollSide : std::uint8_t { Right, Bottom };

class ScrollCover {
 public:
  // The desk must outlive it, and the list must be a report with lines of equal height.
  ScrollCover(Desk& sharedDesk, HWND coveredList, ScrollSide coveredSide);
  ScrollCover(const ScrollCover&) = delete;
  ScrollCover& operator=(const ScrollCover&) = delete;
  ~ScrollCover();

  // Shows what the list's own bar would show, where that is.
  void follow();
  // In other colors.
  void repaint() const { InvalidateRect(window, nullptr, FALSE); }

 private:
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
  void paint();
  void seize(int at);
  void drag(int at);
  void release();
  void page();
  void scrollTo(int position);
  void setHovered(bool is);
  [[nodiscard]] ScrollRange rangeNow() const;
  [[nodiscard]] ThumbPlace thumb() const;
  [[nodiscard]] int track() const;
  [[nodiscard]] int least() const;
  [[nodiscard]] int along(LPARAM where) const;
  [[nodiscard]] bool isUpright() const { return side == ScrollSide::Right; }

  Desk& desk;
  HWND list;
  HWND window = nullptr;
  ScrollSide side;
  ScrollRange shown;
  bool isHovered = false;
  // How far from the thumb's start the user holds it; -1 while nobody does.
  int held = -1;
  int pagedAt = 0;
};

}  // namespace zelvreg::desktop

#endif

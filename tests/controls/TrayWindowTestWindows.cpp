// A window receives the notifications.
#include "controls/TrayWindow.h"

#include <gtest/gtest.h>

#include <vector>

namespace zelvreg::controls {
namespace {

TEST(TrayWindow, NotificationsOfTheSystemAreEventsOfTheControl) {
  TrayWindow tray;
  std::vector<TrayNotice> heard;
  tray.area().onNotice = [&](TrayNotice notice) { heard.push_back(notice); };
  for (const LPARAM number : {512, 513, 514, 515, 516, 517, 518, 600}) {
    SendMessageW(tray.hwnd(), 512, 1, number);
  }
  EXPECT_EQ(heard, (std::vector<TrayNotice>{{TrayEvent::MouseMove, 0},
                                            {TrayEvent::MouseDown, 1},
                                            {TrayEvent::MouseUp, 1},
                                            {TrayEvent::DoubleClick, 0},
                                            {TrayEvent::MouseDown, 2},
                                            {TrayEvent::MouseUp, 2},
                                            {TrayEvent::DoubleClick, 0}}));
}

TEST(TrayWindow, APressOnANoticeIsToldAndNoEventOfTheControl) {
  constexpr LPARAM noticePressed = 0x405;
  TrayWindow tray;
  int pressed = 0;
  int events = 0;
  tray.area().onNotice = [&](TrayNotice) { ++events; };
  SendMessageW(tray.hwnd(), 512, 1, noticePressed);
  tray.onNoticeClick = [&] { ++pressed; };
  SendMessageW(tray.hwnd(), 512, 1, noticePressed);
  EXPECT_EQ(pressed, 1);
  EXPECT_EQ(events, 0);
  // Without an icon there is nothing to show it at.
  tray.showNotice("title", "text");
  EXPECT_FALSE(tray.area().isShown());
}

TEST(TrayWindow, AtDesignTimeNoIconIsShown) {
  TrayWindow tray(false);
  tray.area().setVisible(true);
  EXPECT_FALSE(tray.area().isShown());
}

}  // namespace
}  // namespace zelvreg::controls

// The taskbar and the notification area exist only on Windows.
#include "controls/TrayArea.h"
#include "desktop/MainWindowFixture.h"
#include "languages/Texts.h"

// This one needs <windows.h> before it.
#include <shellapi.h>

namespace zelvreg::desktop {
namespace {

struct Shown {
  std::vector<TaskProgress> tasks;
  HWND window = nullptr;
};

class NotedTaskbar : public Taskbar {
 public:
  explicit NotedTaskbar(Shown& shown) : noted(shown) {}
  void show(HWND window, const TaskProgress& task) override {
    noted.window = window;
    noted.tasks.push_back(task);
  }

 private:
  Shown& noted;
};

class MainWindowProgressTest : public MainWindowTest {
 protected:
  MainWindowProgressTest() {
    window.makeTaskbar = [this] { return std::make_unique<NotedTaskbar>(shown); };
    form.View1.add("row");
    form.View1.add("row");
    form.View1.setChecked(1, true);
    form.View1.setChecked(2, true);
    form.Bar1.setMaximum(2);
  }

  void buttonIsMade() const {
    SendMessageW(window.hwnd(), RegisterWindowMessageW(L"TaskbarButtonCreated"), 0, 0);
  }
  void test(std::size_t row) {
    form.testedRow = row;
    serve();
  }
  // Without keeping its times.
  void cancel() {
    form.Text2.setText("2");
    serve();
    form.testedRow.reset();
    serve();
  }

  Shown shown;
};

TEST_F(MainWindowProgressTest, TheTaskbarShowsAScanOnceItHasAButton) {
  test(1);
  EXPECT_TRUE(shown.tasks.empty());
  buttonIsMade();
  EXPECT_EQ(shown.window, window.hwnd());
  EXPECT_EQ(shown.tasks, (std::vector<TaskProgress>{{TaskState::Normal, 0}}));
  form.Bar1.setValue(1);
  test(2);
  EXPECT_EQ(shown.tasks.back(), (TaskProgress{TaskState::Normal, 500}));
  cancel();
  EXPECT_EQ(shown.tasks.back(), TaskProgress());
}

TEST_F(MainWindowProgressTest, APressOnCancelIsSeenBeforeTheFormGoesOn) {
  form.chameleonButton12.bind([this] { form.Text2.setText("2"); });
  buttonIsMade();
  test(1);
  PostMessageW(windowOf(form.chameleonButton12, L"Button"), BM_CLICK, 0, 0);
  serve();
  form.Text2.setText("1");
  test(0);
  EXPECT_EQ(shown.tasks.back().state, TaskState::Paused);
  cancel();
}

TEST_F(MainWindowProgressTest, WithoutATaskbarThatShowsItAScanGoesOn) {
  window.makeTaskbar = [] { return nullptr; };
  buttonIsMade();
  test(1);
  EXPECT_EQ(form.ProgressText.caption.get(), "1 of 2");
  cancel();
  EXPECT_EQ(form.ProgressText.caption.get(), "");
}

TEST_F(MainWindowProgressTest, TheSystemsOwnTaskbarTakesEveryState) {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  if (const auto taskbar = systemTaskbar()) {
    for (const TaskState state : {TaskState::Endless, TaskState::Normal, TaskState::Paused,
                                  TaskState::Failed, TaskState::None}) {
      taskbar->show(window.hwnd(), {.state = state, .perMille = 500});
    }
  }
  CoUninitialize();
  EXPECT_TRUE(IsWindow(window.hwnd()));
}

TEST_F(MainWindowProgressTest, ScreenReadersHearHowFarItIs) {
  test(1);
  form.Bar1.setValue(1);
  test(2);
  const Peer* bar = Peer::of(windowOf(form.Bar1, PROGRESS_CLASSW));
  EXPECT_EQ(bar->facts().value, "50 %");
  cancel();
  form.Bar1.setValue(2);
  EXPECT_EQ(bar->facts().value, "100 %");
}

TEST_F(MainWindowProgressTest, TheTimeHasItsRoomAndTheCategoryTheRest) {
  const auto end = [](const Control& control) { return control.left + control.width; };
  test(1);
  form.Label4.caption = zelvreg::textOf(form, "c1");
  form.ProgressText.caption = "1 of 2";
  serve();
  const int before = form.ProgressText.left;
  form.ProgressText.caption = "1 of 2  \xC2\xB7  Less than 10 seconds left";
  // Beside a scan a slow drawing is followed by a rest, which is longer on a busy computer.
  for (int rests = 0; rests < 50 && form.ProgressText.left >= before; ++rests) {
    Sleep(600);
    serve();
  }
  EXPECT_LT(form.ProgressText.left, before);
  EXPECT_EQ(end(form.ProgressText) / twipsPerPixel, 776);
  EXPECT_LT(end(form.Label4), form.ProgressText.left);
  EXPECT_GT(form.Label4.left, end(form.Label2[5]));
  cancel();
}

BOOL CALLBACK findReceiver(HWND candidate, LPARAM found) {
  wchar_t name[64] = {};
  GetClassNameW(candidate, name, 64);
  if (std::wstring(name) == L"Static") {
    *reinterpret_cast<HWND*>(found) = candidate;
  }
  return TRUE;
}

TEST_F(MainWindowProgressTest, APressOnANoticeBringsTheWindowBack) {
  HWND receiver = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), findReceiver, reinterpret_cast<LPARAM>(&receiver));
  ASSERT_NE(receiver, nullptr);
  ShowWindow(window.hwnd(), SW_SHOW);
  ShowWindow(window.hwnd(), SW_MINIMIZE);
  form.TrayArea1.visible = false;
  ASSERT_TRUE(IsIconic(window.hwnd()));
  SendMessageW(receiver, controls::trayCallback, 1, NIN_BALLOONUSERCLICK);
  EXPECT_FALSE(IsIconic(window.hwnd()));
}

}  // namespace
}  // namespace zelvreg::desktop

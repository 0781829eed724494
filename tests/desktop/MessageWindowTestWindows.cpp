// A message needs a window.
#include <algorithm>
#include <functional>

#include "desktop/MainWindowFixture.h"
#include "desktop/SystemScreen.h"
#include "form/Form42.h"
#include "shell/Help.h"

namespace zelvreg::desktop {
namespace {

constexpr const wchar_t* messageClass = L"ZelvregMessageWindow";

// What the message is sent as soon as it is there; its text and the captions of its buttons.
WORD pressed = 0;
std::vector<std::wstring> captions;
std::wstring title;
// What is done with it before that.
std::function<void(HWND)> look;

BOOL CALLBACK noteCaption(HWND child, LPARAM /*parameter*/) {
  wchar_t text[256] = {};
  GetWindowTextW(child, text, 256);
  if (IsWindowVisible(child) != FALSE && *text != L'\0') {
    captions.emplace_back(text);
  }
  return TRUE;
}

void CALLBACK answer(HWND hwnd, UINT /*message*/, UINT_PTR timer, DWORD /*time*/) {
  HWND message = FindWindowW(messageClass, nullptr);
  if (message != nullptr && IsWindowVisible(message) != FALSE) {
    KillTimer(hwnd, timer);
    captions.clear();
    wchar_t text[256] = {};
    GetWindowTextW(message, text, 256);
    title = text;
    EnumChildWindows(message, noteCaption, 0);
    if (look) {
      look(message);
    }
    PostMessageW(message, WM_COMMAND, pressed, 0);
  }
}

class MessageWindowTest : public MainWindowTest {
 protected:
  Answer answered(const UserMessage& message, WORD by) {
    pressed = by;
    SetTimer(window.hwnd(), 77, 10, answer);
    return form.dialogs.ask(message);
  }
  static bool hasButton(const std::wstring& caption) {
    return std::ranges::find(captions, caption) != captions.end();
  }
};

TEST_F(MessageWindowTest, EnterAnswersYesAndEscapeNo) {
  const UserMessage question{
      .text = "Really?", .icon = MessageIcon::Question, .isQuestion = true, .title = "Remove"};
  EXPECT_EQ(answered(question, IDOK), Answer::Yes);
  EXPECT_TRUE(hasButton(L"&Yes"));
  EXPECT_TRUE(hasButton(L"&No"));
  EXPECT_EQ(title, L"Remove");
  EXPECT_EQ(answered(question, IDCANCEL), Answer::No);
  EXPECT_EQ(FindWindowW(messageClass, nullptr), nullptr);
}

TEST_F(MessageWindowTest, F1OpensTheHelpOfMessages) {
  int opened = 0;
  form.openHelp = [&opened](const std::string&, int context) { opened = context; };
  look = [](HWND message) {
    SendMessageW(FindWindowExW(message, nullptr, L"Button", nullptr), pressedF1, 0, 0);
  };
  answered({.text = "Done.", .icon = {}, .isQuestion = false, .title = {}}, IDOK);
  look = nullptr;
  EXPECT_EQ(opened, HelpTopic("messages").page().context);
}

TEST_F(MessageWindowTest, WhatIsNoQuestionHasOneButton) {
  const UserMessage told{.text = "Done.", .icon = {}, .isQuestion = false, .title = {}};
  EXPECT_EQ(answered(told, IDCANCEL), Answer::Ok);
  EXPECT_TRUE(hasButton(L"OK"));
  EXPECT_EQ(title, L"Fix Registry Problems");
  EXPECT_FALSE(hasButton(L"&No"));
}

TEST_F(MessageWindowTest, ItSpeaksTheLanguageOfTheForm) {
  form.texts.assign(texts.size(), "");
  form.texts[TextKey("yes").number()] = "&Ja";
  const UserMessage question{
      .text = "Wirklich?", .icon = MessageIcon::Question, .isQuestion = true, .title = {}};
  EXPECT_EQ(answered(question, IDOK), Answer::Yes);
  EXPECT_TRUE(hasButton(L"&Ja"));
  EXPECT_TRUE(hasButton(L"&No"));
}

TEST_F(MessageWindowTest, ALongTextIsWholeAtEachResolution) {
  UserMessage told{.text = {}, .icon = {}, .isQuestion = false, .title = {}};
  for (int word = 0; word < 60; ++word) {
    told.text += std::string(1 + static_cast<std::size_t>(word) % 7, 'w') + " ";
  }
  const Wide wide(told.text);
  look = [this, &wide](HWND message) {
    HWND text = FindWindowExW(message, nullptr, nullptr, wide.get());
    ASSERT_NE(text, nullptr);
    for (const int resolution : {96, 108, 120, 144, 168, 192, 288}) {
      const RECT suggested{};
      SendMessageW(message, resolutionChanged, MAKEWPARAM(resolution, resolution),
                   reinterpret_cast<LPARAM>(&suggested));
      Desk desk(resolution);
      const controls::WindowContext screen(nullptr);
      const controls::Selection selected(screen.get(), desk.font(form.View1.font));
      RECT room{};
      GetClientRect(text, &room);
      RECT needed{0, 0, room.right, 0};
      DrawTextW(screen.get(), wide.get(), -1, &needed, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
      EXPECT_LE(needed.bottom, room.bottom) << resolution;
    }
  };
  RECT before{};
  RECT roomy{0, 0, 4000, 3000};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &before, 0);
  SystemParametersInfoW(SPI_SETWORKAREA, 0, &roomy, 0);
  EXPECT_EQ(answered(told, IDOK), Answer::Ok);
  SystemParametersInfoW(SPI_SETWORKAREA, 0, &before, 0);
  look = nullptr;
}

}  // namespace
}  // namespace zelvreg::desktop

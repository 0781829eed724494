// A message needs a window.
#include <algorithm>

#include "desktop/MainWindowFixture.h"
#include "form/Form42.h"

namespace zelvreg::desktop {
namespace {

constexpr const wchar_t* messageClass = L"ZelvregMessageWindow";

// What the message is sent as soon as it is there; its text and the captions of its buttons.
WORD pressed = 0;
std::vector<std::wstring> captions;
std::wstring title;

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

}  // namespace
}  // namespace zelvreg::desktop

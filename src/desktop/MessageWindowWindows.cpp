#include "desktop/MessageWindow.h"

#include <algorithm>

#include "controls/PaintBuffer.h"
#include "desktop/SmallWindow.h"
#include "form/Form42.h"
#include "languages/Texts.h"
#include "shell/WindowEvents.h"

namespace zelvreg::desktop {
namespace {

// In pixels at 96 dpi.
constexpr int width = 520;
constexpr int textLeft = 76;
constexpr int textTop = 64;
constexpr int textWidth = width - textLeft - 24;
constexpr int leastTextHeight = 40;
constexpr int buttonWidth = 110;
constexpr int buttonHeight = 32;
constexpr int margin = 20;

struct MessageForm {
  FormWindow window{0, 0};
  DropShadow shadow;
  Label title;
  Label text;
  Picture icon;
  Button accept;
  Button refuse;
  Button close;
  bool isOpen = true;
  Answer answer = Answer::Ok;

  void end(Answer given) {
    answer = given;
    isOpen = false;
  }
};

struct MessageLook {
  const char* icon;
  Tone tone;
  UINT sound;
};

MessageLook lookOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::Question:
      return {"unsure", Tone::Mark, MB_ICONQUESTION};
    case MessageIcon::Exclamation:
      return {"problem", Tone::Testing, MB_ICONEXCLAMATION};
    default:
      return {"about", Tone::Mark, MB_ICONINFORMATION};
  }
}

// At another resolution letters may be a little wider, and a line may break earlier.
constexpr int measuredWidth = textWidth * 97 / 100;

int heightOf(Desk& desk, const Label& text) {
  const controls::WindowContext screen(nullptr);
  const controls::Selection selected(screen.get(), desk.font(text.font));
  const std::u16string content = utf16(text.caption.get());
  RECT box{0, 0, desk.pixels(measuredWidth), 0};
  DrawTextW(screen.get(), wideText(content), static_cast<int>(content.size()), &box,
            DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX | DT_EDITCONTROL);
  return std::max(leastTextHeight, MulDiv(box.bottom, 96, desk.resolution()) + 2);
}

// Over the middle of its owner, or of the screen.
void place(const Desk& desk, FormWindow& window, const Screen& screen, HWND owner) {
  RECT around{};
  if (owner == nullptr || GetWindowRect(owner, &around) == FALSE) {
    centerOnScreen(window, screen);
    return;
  }
  window.left = desk.toTwips((around.left + around.right) / 2) - window.width / 2;
  window.top = desk.toTwips((around.top + around.bottom) / 2) - window.height / 2;
}

void bindAnswers(MessageForm& shown, bool isQuestion) {
  shown.accept.bind([&shown, isQuestion] { shown.end(isQuestion ? Answer::Yes : Answer::Ok); });
  for (Button* button : {&shown.refuse, &shown.close}) {
    button->bind([&shown, isQuestion] { shown.end(isQuestion ? Answer::No : Answer::Ok); });
  }
}

}  // namespace

Answer showMessageWindow(Desk& desk, Form42& form, HWND owner, const UserMessage& message) {
  MessageForm shown;
  for (Control* control :
       {static_cast<Control*>(&shown.title), static_cast<Control*>(&shown.text),
        static_cast<Control*>(&shown.accept), static_cast<Control*>(&shown.refuse)}) {
    control->font = form.View1.font.get();
  }
  shown.title.caption = message.title.empty() ? form.Label1.caption.get() : message.title;
  shown.text.caption = message.text;
  shown.accept.caption = message.isQuestion ? textOf(form, "yes") : textOf(form, "ok");
  shown.refuse.caption = textOf(form, "no");
  shown.close.toolTip = textOf(form, "close");
  bindAnswers(shown, message.isQuestion);

  const int textHeight = heightOf(desk, shown.text);
  const int buttonTop = textTop + textHeight + margin;
  shown.window.width = width * twipsPerPixel;
  shown.window.height = (buttonTop + buttonHeight + margin) * twipsPerPixel;
  place(desk, shown.window, form.screen, owner);
  const MessageLook look = lookOf(message.icon);

  SmallWindow window(desk, shown.window, shown.shadow, owner, [&shown] { shown.close.click(); },
                     {.windowClass = L"ZelvregMessageWindow", .title = shown.title.caption});
  window.add(shown.title, {18, 10, width - 90, 24}, LabelLook::WindowTitle);
  window.add(shown.icon, {24, textTop, 32, 32},
             {.icon = look.icon, .length = 32, .ground = Tone::Surface, .tone = look.tone});
  window.add(shown.text, {textLeft, textTop, textWidth, textHeight}, LabelLook::Explanation);
  const int right = width - margin - buttonWidth;
  if (message.isQuestion) {
    window.add(shown.accept, {right - buttonWidth - 10, buttonTop, buttonWidth, buttonHeight},
               ButtonRole::Primary, "");
    window.add(shown.refuse, {right, buttonTop, buttonWidth, buttonHeight}, ButtonRole::Plain, "");
  } else {
    window.add(shown.accept, {right, buttonTop, buttonWidth, buttonHeight}, ButtonRole::Primary,
               "");
  }
  window.add(shown.close, {width - 44, 6, 36, 32}, ButtonRole::Title, "exit");
  drawShadow(shown.shadow);
  MessageBeep(look.sound);
  window.runModal(form.messages, shown.isOpen);
  return shown.answer;
}

}  // namespace zelvreg::desktop

#include "desktop/MessageWindow.h"

#include <algorithm>

#include "controls/PaintBuffer.h"
#include "desktop/SmallWindow.h"
#include "form/Form42.h"
#include "languages/Texts.h"
#include "shell/Help.h"
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
  int textHeight = leastTextHeight;  // in pixels at 96 dpi
  bool isQuestion = false;
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

int heightOf(Desk& desk, const Label& text) {
  const controls::WindowContext screen(nullptr);
  const controls::Selection selected(screen.get(), desk.font(text.font));
  const std::u16string content = utf16(text.caption.get());
  RECT box{0, 0, desk.pixels(textWidth), 0};
  DrawTextW(screen.get(), wideText(content), static_cast<int>(content.size()), &box,
            DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX | DT_EDITCONTROL);
  return std::max(leastTextHeight, desk.fromPixels(box.bottom) + 2);
}

Place textPlace(const MessageForm& shown) {
  return {textLeft, textTop, textWidth, shown.textHeight};
}

int buttonTop(const MessageForm& shown) { return textTop + shown.textHeight + margin; }

Place refusePlace(const MessageForm& shown) {
  return {width - margin - buttonWidth, buttonTop(shown), buttonWidth, buttonHeight};
}

Place acceptPlace(const MessageForm& shown) {
  Place place = refusePlace(shown);
  if (shown.isQuestion) {
    place.left -= buttonWidth + 10;
  }
  return place;
}

// At another resolution letters may be wider or narrower, and lines break elsewhere.
void arrange(MessageForm& shown, Desk& desk) {
  shown.textHeight = heightOf(desk, shown.text);
  shown.window.height = (buttonTop(shown) + buttonHeight + margin) * twipsPerPixel;
  put(shown.text, textPlace(shown));
  put(shown.accept, acceptPlace(shown));
  put(shown.refuse, refusePlace(shown));
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

void bindAnswers(MessageForm& shown) {
  const bool isQuestion = shown.isQuestion;
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
  shown.isQuestion = message.isQuestion;
  bindAnswers(shown);

  shown.window.width = width * twipsPerPixel;
  arrange(shown, desk);
  place(desk, shown.window, form.screen, owner);
  const MessageLook look = lookOf(message.icon);

  SmallWindow window(desk, shown.window, shown.shadow, owner, [&shown] { shown.close.click(); },
                     {.windowClass = L"ZelvregMessageWindow",
                      .title = shown.title.caption,
                      .arrange = [&shown](Desk& own) { arrange(shown, own); },
                      .help = [&form] { openHelp(form, "messages"); }});
  window.add(shown.title, {18, 10, width - 90, 24}, LabelLook::WindowTitle);
  window.add(shown.icon, {24, textTop, 32, 32},
             {.icon = look.icon, .length = 32, .ground = Tone::Surface, .tone = look.tone});
  window.add(shown.text, textPlace(shown), LabelLook::Explanation);
  window.add(shown.accept, acceptPlace(shown), ButtonRole::Primary, "");
  if (message.isQuestion) {
    window.add(shown.refuse, refusePlace(shown), ButtonRole::Plain, "");
  }
  window.add(shown.close, {width - 44, 6, 36, 32}, ButtonRole::Title, "exit");
  drawShadow(shown.shadow);
  MessageBeep(look.sound);
  window.runModal(form.messages, shown.isOpen);
  return shown.answer;
}

}  // namespace zelvreg::desktop

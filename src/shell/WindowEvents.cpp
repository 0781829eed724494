#include "shell/WindowEvents.h"

#include "form/Form42.h"
#include "scan/ScanDriver.h"
#include "shell/Help.h"

namespace zelvreg {
namespace {

constexpr int openingStep = 1000;  // twips

}  // namespace

void drawShadow(DropShadow& shadow) {
  constexpr std::uint32_t gray = 0x808080;
  constexpr int depth = 10;
  shadow.draw(gray, depth);
}

void centerOnScreen(FormWindow& window, const Screen& screen) {
  window.left = (screen.width - window.width) / 2;
  window.top = (screen.height - window.height) / 2;
}

void Timer1_Timer(Form42& form) {
  const int place = (form.screen.height - form.window.height) / 2;
  if (form.window.top < place) {
    form.window.top = form.window.top + openingStep;
    return;
  }
  form.window.top = place;
  form.window.visible = true;
  form.Timer1.enable(false);
}

void Form_Activate(Form42& form) {
  if (!form.hasCommandLine) {
    drawShadow(form.shadow);
  }
}

void Form_Paint(Form42& form) {
  form.View1.refresh();
  form.View2.refresh();
  form.Frame2.refresh();
}

void Form_Resize(Form42& form) {
  if (form.window.windowState == WindowState::Minimized) {
    form.shadow.remove();
    form.window.visible = false;
    form.TrayArea1.visible = true;
  }
}

void Form_Unload(Form42& form) { saveSelection(form); }

void chameleonButton23_Click(Form42& form) { form.window.windowState = WindowState::Minimized; }

void MaximizeButton_Click(Form42& form) {
  form.window.windowState = form.window.windowState == WindowState::Maximized
                                ? WindowState::Normal
                                : WindowState::Maximized;
}

void TrayArea1_Click(Form42& form) {
  form.window.visible = true;
  drawShadow(form.shadow);
  form.TrayArea1.visible = false;
  form.window.windowState = WindowState::Normal;
  form.window.visible = true;
}

void Image44_Click(Form42& form) { openHelp(form, "start"); }

}  // namespace zelvreg

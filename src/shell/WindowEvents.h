// What the main form does when its window opens, is painted, is minimized to the notification area
// and comes back.
#ifndef ZELVREG_SHELL_WINDOW_EVENTS_H
#define ZELVREG_SHELL_WINDOW_EVENTS_H

#include "widgets/FormWindow.h"

namespace zelvreg {

struct Form42;

// Half the difference of the sizes of screen and window, for both sides.
void centerOnScreen(FormWindow& window, const Screen& screen);

// A tick while the window opens: it moves down to its place and is shown there.
void Timer1_Timer(Form42& form);

// The front end calls these when the window is activated, painted, resized and closed.
void Form_Activate(Form42& form);
void Form_Paint(Form42& form);
void Form_Resize(Form42& form);
void Form_Unload(Form42& form);

// Minimizes the window.
void chameleonButton23_Click(Form42& form);
// Maximizes the window, or gives it back its size.
void MaximizeButton_Click(Form42& form);
// A press on the icon in the notification area: the window comes back.
void TrayArea1_Click(Form42& form);

// Opens the help at its start.
void Image44_Click(Form42& form);

// Draws the shadow that every form of the program has.
void drawShadow(DropShadow& shadow);

}  // namespace zelvreg

#endif

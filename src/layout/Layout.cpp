#include "layout/Layout.h"

#include <array>
#include <initializer_list>

#include "form/Form42.h"
#include "form/Version.h"

namespace zelvreg::desktop {
namespace {

template <auto member>
auto& of(Form42& form) {
  return form.*member;
}
template <auto member, std::size_t index>
auto& element(Form42& form) {
  return (form.*member)[index];
}
Frame* noFrame(Form42& /*form*/) { return nullptr; }
template <Frame Form42::*member>
Frame* in(Form42& form) {
  return &(form.*member);
}

constexpr Anchors wide{.across = Follows::Stretches};
constexpr Anchors whole{.across = Follows::Stretches, .down = Follows::Stretches};
constexpr Anchors toRight{.across = Follows::Moves};
constexpr Anchors toBottom{.down = Follows::Moves};
constexpr Anchors toCorner{.across = Follows::Moves, .down = Follows::Moves};
constexpr Anchors wideAtBottom{.across = Follows::Stretches, .down = Follows::Moves};

constexpr Place page{216, 124, 790, 450};
constexpr int panelHeight = 104;
constexpr int gap = 10;
constexpr int listTop = 50;

constexpr std::array frames{
    FramePlace{of<&Form42::Frame1>, noFrame, page, false, whole},
    FramePlace{of<&Form42::Frame2>, noFrame, page, false, whole},
    FramePlace{of<&Form42::Frame3>, noFrame, page, false, whole},
    FramePlace{of<&Form42::Frame7>, noFrame, page, false, whole},
    FramePlace{of<&Form42::Frame8>,
               in<&Form42::Frame1>,
               {0, page.height - panelHeight, page.width, panelHeight},
               true,
               wideAtBottom},
    FramePlace{of<&Form42::Picture1>, in<&Form42::Frame2>, {0, 312, 790, 138}, true, wideAtBottom},
    FramePlace{of<&Form42::Frame4>, noFrame, {10, 364, 176, 50}, false},
    FramePlace{of<&Form42::Frame5>, noFrame, {10, 416, 176, 82}, false},
    FramePlace{of<&Form42::pictrlang>, noFrame, {722, 58, 200, 40}, true, toRight},
};

constexpr std::array labels{
    LabelPlace{of<&Form42::Label1>, noFrame, {64, 9, 600, 24}, LabelLook::ProgramTitle, wide},
    LabelPlace{
        element<&Form42::Label8, 6>, noFrame, {64, 33, 630, 18}, LabelLook::ProgramText, wide},
    LabelPlace{
        element<&Form42::Label12, 0>, noFrame, {16, 590, 12, 18}, LabelLook::Secondary, toBottom},
    LabelPlace{
        element<&Form42::Label12, 2>, noFrame, {30, 590, 60, 18}, LabelLook::Secondary, toBottom},
    LabelPlace{element<&Form42::Label12, 1>,
               noFrame,
               {940, 590, 62, 18},
               LabelLook::SecondaryRight,
               toCorner},
    LabelPlace{element<&Form42::Label12, 3>,
               noFrame,
               {880, 590, 54, 18},
               LabelLook::SecondaryRight,
               toCorner},
    LabelPlace{
        element<&Form42::Label2, 1>, in<&Form42::Frame1>, {0, 0, 560, 24}, LabelLook::PageTitle},
    LabelPlace{
        element<&Form42::Label2, 0>, in<&Form42::Frame1>, {0, 27, 480, 18}, LabelLook::Secondary},
    LabelPlace{
        element<&Form42::Label2, 5>, in<&Form42::Frame8>, {78, 10, 250, 18}, LabelLook::Strong},
    LabelPlace{
        of<&Form42::Label4>, in<&Form42::Frame8>, {330, 10, 246, 18}, LabelLook::Secondary, wide},
    LabelPlace{of<&Form42::ProgressText>,
               in<&Form42::Frame8>,
               {576, 10, 200, 18},
               LabelLook::SecondaryRight,
               toRight},
    LabelPlace{
        element<&Form42::Label2, 3>, in<&Form42::Frame8>, {78, 45, 280, 18}, LabelLook::Secondary},
    LabelPlace{
        of<&Form42::Label3>, in<&Form42::Frame8>, {360, 45, 320, 18}, LabelLook::Plain, wide},
    LabelPlace{element<&Form42::Label2, 4>,
               in<&Form42::Frame8>,
               {78, 64, 602, 34},
               LabelLook::Wrapped,
               wide},
    LabelPlace{element<&Form42::Label2, 2>,
               in<&Form42::Frame7>,
               {0, 4, 790, 26},
               LabelLook::PageTitle,
               wide},
    LabelPlace{of<&Form42::Label10>, in<&Form42::Frame2>, {0, 4, 240, 26}, LabelLook::Counter},
    LabelPlace{of<&Form42::OutcomeText>, in<&Form42::Frame2>, {0, 4, 240, 26}, LabelLook::Outcome},
    LabelPlace{
        of<&Form42::FilterText>, in<&Form42::Frame2>, {282, 40, 200, 18}, LabelLook::Secondary},
    LabelPlace{of<&Form42::Label6>, in<&Form42::Picture1>, {70, 12, 90, 18}, LabelLook::Strong},
    LabelPlace{
        of<&Form42::Label5>, in<&Form42::Picture1>, {164, 12, 480, 18}, LabelLook::Problem, wide},
    LabelPlace{
        of<&Form42::Label7>, in<&Form42::Picture1>, {70, 38, 706, 54}, LabelLook::Wrapped, wide},
    LabelPlace{of<&Form42::EvidenceText>,
               in<&Form42::Picture1>,
               {70, 96, 706, 36},
               LabelLook::Explanation,
               wide},
};

constexpr std::array buttons{
    // From right to left.
    ButtonPlace{of<&Form42::chameleonButton4>,
                noFrame,
                {974, 13, 40, 34},
                ButtonRole::Title,
                "exit",
                toRight},
    ButtonPlace{of<&Form42::chameleonButton23>,
                noFrame,
                {930, 13, 40, 34},
                ButtonRole::Title,
                "minimize",
                toRight},
    ButtonPlace{of<&Form42::chameleonButton18>,
                noFrame,
                {886, 13, 40, 34},
                ButtonRole::Title,
                "about",
                toRight},
    ButtonPlace{of<&Form42::chameleonButton13>,
                noFrame,
                {842, 13, 40, 34},
                ButtonRole::Title,
                "language",
                toRight},
    ButtonPlace{of<&Form42::MaximizeButton>,
                noFrame,
                {754, 13, 40, 34},
                ButtonRole::Title,
                "maximize",
                toRight},
    // As wide as their captions, from left to right.
    ButtonPlace{of<&Form42::cmd_search>, noFrame, {16, 68, 130, 36}, ButtonRole::Command, "search"},
    ButtonPlace{
        of<&Form42::cmd_exclud>, noFrame, {150, 68, 110, 36}, ButtonRole::Command, "exclude"},
    ButtonPlace{of<&Form42::cmd_start>, noFrame, {276, 68, 80, 36}, ButtonRole::Command, "start"},
    ButtonPlace{of<&Form42::cmd_fix>, noFrame, {360, 68, 110, 36}, ButtonRole::Command, "fix"},
    ButtonPlace{of<&Form42::cmd_cancel>, noFrame, {474, 68, 90, 36}, ButtonRole::Command, "cancel"},
    ButtonPlace{of<&Form42::cmd_all>, noFrame, {580, 68, 100, 36}, ButtonRole::Command, "all"},
    ButtonPlace{of<&Form42::cmd_non>, noFrame, {684, 68, 110, 36}, ButtonRole::Command, "none"},
    ButtonPlace{
        of<&Form42::cmd_report>, noFrame, {810, 68, 120, 36}, ButtonRole::Command, "report"},
    ButtonPlace{
        of<&Form42::orubutton4>, noFrame, {8, 118, 180, 58}, ButtonRole::SideBar, "options"},
    ButtonPlace{
        of<&Form42::chameleonButton7>, noFrame, {8, 178, 180, 34}, ButtonRole::SideBar, "exclude"},
    ButtonPlace{
        of<&Form42::chameleonButton1>, noFrame, {8, 214, 180, 34}, ButtonRole::SideBar, "undo"},
    ButtonPlace{of<&Form42::orubutton1>, noFrame, {8, 250, 180, 42}, ButtonRole::SideBar, "start"},
    ButtonPlace{
        of<&Form42::orubutton3>, noFrame, {8, 294, 180, 32}, ButtonRole::SideBar, "refresh"},
    ButtonPlace{of<&Form42::cmdFind>, noFrame, {10, 502, 176, 28}, ButtonRole::Plain, "search"},
    ButtonPlace{of<&Form42::chameleonButton11>,
                noFrame,
                {10, 546, 86, 32},
                ButtonRole::Plain,
                "",
                toBottom},
    ButtonPlace{of<&Form42::chameleonButton10>,
                noFrame,
                {102, 546, 84, 32},
                ButtonRole::Plain,
                "",
                toBottom},
    ButtonPlace{of<&Form42::chameleonButton21>,
                in<&Form42::Frame1>,
                {570, 0, 105, 27},
                ButtonRole::Plain,
                ""},
    ButtonPlace{of<&Form42::chameleonButton22>,
                in<&Form42::Frame1>,
                {685, 0, 105, 27},
                ButtonRole::Plain,
                ""},
    ButtonPlace{of<&Form42::chameleonButton12>,
                in<&Form42::Frame8>,
                {692, 36, 84, 32},
                ButtonRole::Plain,
                "",
                toRight},
    // As wide as their captions, from the right end of the page.
    ButtonPlace{of<&Form42::chameleonButton15>,
                in<&Form42::Frame2>,
                {640, 0, 150, 32},
                ButtonRole::Primary,
                ""},
    ButtonPlace{of<&Form42::chameleonButton17>,
                in<&Form42::Frame2>,
                {540, 0, 92, 32},
                ButtonRole::Plain,
                ""},
    ButtonPlace{of<&Form42::chameleonButton16>,
                in<&Form42::Frame2>,
                {452, 0, 80, 32},
                ButtonRole::Plain,
                ""},
    ButtonPlace{of<&Form42::chameleonButton14>,
                in<&Form42::Frame2>,
                {326, 0, 118, 32},
                ButtonRole::Plain,
                "registry"},
    ButtonPlace{of<&Form42::chameleonButton9>,
                in<&Form42::Frame2>,
                {290, 0, 32, 32},
                ButtonRole::IconOnly,
                "exclude"},
    ButtonPlace{of<&Form42::orubutton2>,
                in<&Form42::Frame2>,
                {250, 0, 32, 32},
                ButtonRole::IconOnly,
                "fix"},
    ButtonPlace{of<&Form42::UndoRepair>,
                in<&Form42::Frame2>,
                {640, 36, 150, 28},
                ButtonRole::Plain,
                "undo"},
    ButtonPlace{of<&Form42::Command28>,
                in<&Form42::Picture1>,
                {656, 7, 120, 28},
                ButtonRole::Plain,
                "",
                toRight},
    ButtonPlace{of<&Form42::chameleonButton2>,
                in<&Form42::Frame3>,
                {0, 416, 180, 32},
                ButtonRole::Plain,
                "undo",
                toBottom},
    ButtonPlace{of<&Form42::chameleonButton3>,
                in<&Form42::Frame3>,
                {190, 416, 180, 32},
                ButtonRole::Plain,
                "",
                toBottom},
    ButtonPlace{of<&Form42::chameleonButton5>,
                in<&Form42::Frame7>,
                {0, 416, 120, 32},
                ButtonRole::Primary,
                "",
                toBottom},
    ButtonPlace{of<&Form42::chameleonButton8>,
                in<&Form42::Frame7>,
                {130, 416, 120, 32},
                ButtonRole::Plain,
                "",
                toBottom},
    ButtonPlace{of<&Form42::chameleonButton6>,
                in<&Form42::Frame7>,
                {260, 416, 120, 32},
                ButtonRole::Plain,
                "",
                toBottom},
};

template <auto member>
Control& control(Form42& form) {
  return form.*member;
}

constexpr std::array controls{
    ControlPlace{control<&Form42::cboFind>, {10, 334, 176, 24}},
    ControlPlace{control<&Form42::cboRoot>, {0, 0, 176, 24}},
    ControlPlace{control<&Form42::ChKeys>, {0, 30, 54, 18}},
    ControlPlace{control<&Form42::ChValues>, {57, 30, 62, 18}},
    ControlPlace{control<&Form42::ChData>, {122, 30, 54, 18}},
    ControlPlace{control<&Form42::ChCase>, {0, 20, 176, 18}},
    ControlPlace{control<&Form42::Option1>, {0, 41, 90, 18}},
    ControlPlace{control<&Form42::Option2>, {94, 41, 82, 18}},
    ControlPlace{control<&Form42::Option3>, {0, 62, 90, 18}},
    ControlPlace{control<&Form42::Option4>, {94, 62, 82, 18}},
    ControlPlace{control<&Form42::View1>, {0, listTop, page.width, page.height - listTop}, whole},
    ControlPlace{control<&Form42::FilterBox>, {0, 38, 270, 22}},
    ControlPlace{control<&Form42::View2>, {0, 67, page.width, 235}, whole},
    ControlPlace{control<&Form42::View3>, {0, 116, page.width, 290}, whole},
    ControlPlace{control<&Form42::View4>, {0, 36, page.width, 370}, whole},
    ControlPlace{control<&Form42::CarefulBox>, {490, 27, 300, 20}},
    // In line with the boxes below, the first as wide as two of them.
    ControlPlace{control<&Form42::Check1>, {0, 36, 520, 22}},
    ControlPlace{control<&Form42::ToolbarBox>, {530, 36, 260, 22}},
    ControlPlace{control<&Form42::cboTheme>, {580, 4, 210, 24}, toRight},
    ControlPlace{control<&Form42::Bar1>, {78, 33, 602, 8}, wide},
    ControlPlace{control<&Form42::Image2>, {20, 14, 32, 32}},
    ControlPlace{
        [](Form42& form) -> Control& { return form.Image44[0]; }, {798, 13, 40, 34}, toRight},
    ControlPlace{control<&Form42::Image14>, {708, 13, 36, 34}, toRight},
    ControlPlace{control<&Form42::Image1>, {16, 22, 40, 40}},
    ControlPlace{control<&Form42::Image3>, {24, 95, 24, 24}},
    ControlPlace{control<&Form42::Gif89a1>, {14, 24, 48, 48}},
    ControlPlace{control<&Form42::Shape1>, {0, titleHeight - 3, windowWidth, 3}, wide},
    ControlPlace{control<&Form42::Shape3>, {0, 0, windowWidth, titleHeight}, wide},
    ControlPlace{control<&Form42::imglangselect>, {12, 8, 16, 24}},
};

// In two rows below the undo option.
void putSafeguardBoxes(Form42& form) {
  constexpr int columns = 3;
  constexpr int pitch = 265;
  int index = 0;
  for (CheckBox& box : form.SafeguardBoxes) {
    put(box, {index % columns * pitch, 62 + index / columns * 24, pitch - gap, 22});
    ++index;
  }
}

// What other programs and the form's own procedures may still use, but no user needs to see, and
// what is shown only at times.
void hideTheRest(Form42& form) {
  for (Control* control : std::initializer_list<Control*>{
           &form.Toolbar1, &form.PicStatus, &form.Frame2, &form.Frame3, &form.Frame7, &form.Frame8,
           &form.Picture1, &form.Gif89a1, &form.pictrlang}) {
    control->visible = false;
  }
}

}  // namespace

void put(Control& control, const Place& place) {
  control.left = place.left * twipsPerPixel;
  control.top = place.top * twipsPerPixel;
  control.width = place.width * twipsPerPixel;
  control.height = place.height * twipsPerPixel;
}

std::span<const FramePlace> framePlaces() { return frames; }
std::span<const LabelPlace> labelPlaces() { return labels; }
std::span<const ButtonPlace> buttonPlaces() { return buttons; }
std::span<const ControlPlace> controlPlaces() { return controls; }

Place progressPanelPlace(Form42& form) { return placeFor(form, form.Frame8); }

Place categoryListPlace(const Form42& form) {
  const int bottom = form.Frame8.visible ? page.height - panelHeight - gap : page.height;
  return placeIn({0, listTop, page.width, bottom - listTop}, whole, growthOf(form));
}

Place barPlace(const Form42& form, std::size_t number) {
  constexpr int perLine = 4;
  constexpr int border = 10;
  constexpr int height = 28;
  const int width =
      (page.width + growthOf(form).width - 2 * border - (perLine - 1) * gap) / perLine;
  const int index = static_cast<int>(number);
  return {border + index % perLine * (width + gap), 9 + index / perLine * (height + 3), width,
          height};
}

void layOut(Form42& form) {
  for (const FramePlace& each : frames) {
    put(each.frame(form), each.place);
  }
  for (const LabelPlace& each : labels) {
    put(each.label(form), each.place);
  }
  for (const ButtonPlace& each : buttons) {
    put(each.button(form), each.place);
  }
  for (const ControlPlace& each : controls) {
    put(each.control(form), each.place);
  }
  putSafeguardBoxes(form);
  hideTheRest(form);
  form.Label12[0].caption = "\xC2\xA9";
  form.Label12[1].caption = programVersion();
  // The first entry of the picker; the others follow below it.
  put(*form.lbllanguage.front(), {36, 8, 156, 24});
}

}  // namespace zelvreg::desktop

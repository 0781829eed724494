#include "shell/Captions.h"

#include <array>

#include "form/Form42.h"

namespace zelvreg {
namespace {

// A control, or a menu entry, with a caption of its own.
template <auto member>
constexpr Caption caption(std::string_view key) {
  return {key, [](Form42& form, const std::string& text) { (form.*member).caption = text; },
          [](const Form42& form) -> std::string { return (form.*member).caption; }};
}

template <auto member, std::size_t index>
constexpr Caption element(std::string_view key) {
  return {key, [](Form42& form, const std::string& text) { (form.*member)[index].caption = text; },
          [](const Form42& form) -> std::string { return (form.*member)[index].caption; }};
}

// A column header; columns count from 1.
template <auto member, std::size_t column>
constexpr Caption header(std::string_view key) {
  return {
      key,
      [](Form42& form, const std::string& text) { (form.*member).setColumnHeader(column, text); },
      [](const Form42& form) { return (form.*member).columnHeaders()[column - 1].text; }};
}

constexpr std::array table{
    caption<&Form42::cmd_search>("cmd_search"),
    caption<&Form42::chameleonButton5>("chameleonButton5"),
    caption<&Form42::chameleonButton6>("chameleonButton6"),
    caption<&Form42::chameleonButton8>("chameleonButton8"),
    header<&Form42::View4, 1>("View4.ColumnHeaders.Item(1)"),
    caption<&Form42::Command28>("Command28"),
    caption<&Form42::Label5>("Label5"),
    caption<&Form42::Label6>("Label6"),
    caption<&Form42::Label7>("Label7"),
    header<&Form42::View2, 1>("View2.ColumnHeaders.Item(1)"),
    header<&Form42::View2, 2>("View2.ColumnHeaders.Item(2)"),
    header<&Form42::View2, 4>("View2.ColumnHeaders.Item(4)"),
    header<&Form42::View2, 5>("View2.ColumnHeaders.Item(5)"),
    caption<&Form42::Label10>("Label10"),
    caption<&Form42::chameleonButton12>("chameleonButton12"),
    element<&Form42::Label2, 5>("Label2(5)"),
    element<&Form42::Label2, 4>("Label2(4)"),
    element<&Form42::Label2, 3>("Label2(3)"),
    header<&Form42::View1, 1>("View1.ColumnHeaders.Item(1)"),
    header<&Form42::View1, 2>("View1.ColumnHeaders.Item(2)"),
    header<&Form42::View1, 3>("View1.ColumnHeaders.Item(3)"),
    caption<&Form42::chameleonButton21>("chameleonButton21"),
    caption<&Form42::chameleonButton22>("chameleonButton22"),
    element<&Form42::Label2, 1>("Label2(1)"),
    element<&Form42::Label2, 0>("Label2(0)"),
    header<&Form42::View3, 1>("View3.ColumnHeaders.Item(1)"),
    caption<&Form42::chameleonButton2>("chameleonButton2"),
    caption<&Form42::chameleonButton3>("chameleonButton3"),
    caption<&Form42::Command21>("Command21"),
    caption<&Form42::orubutton3>("orubutton3"),
    caption<&Form42::chameleonButton14>("chameleonButton14"),
    caption<&Form42::chameleonButton16>("chameleonButton16"),
    caption<&Form42::chameleonButton17>("chameleonButton17"),
    caption<&Form42::cmd_exclud>("cmd_exclud"),
    caption<&Form42::cmd_start>("cmd_start"),
    caption<&Form42::cmd_fix>("cmd_fix"),
    caption<&Form42::cmd_cancel>("cmd_cancel"),
    caption<&Form42::cmd_all>("cmd_all"),
    caption<&Form42::cmd_non>("cmd_non"),
    caption<&Form42::cmd_report>("cmd_report"),
    element<&Form42::Label8, 6>("Label8(6)"),
    caption<&Form42::b>("b"),
    caption<&Form42::c>("c"),
    caption<&Form42::g>("g"),
    caption<&Form42::i>("i"),
    caption<&Form42::e>("e"),
    // The page and the line above its list say the same.
    Caption{"frame7",
            [](Form42& form, const std::string& text) {
              form.Frame7.caption = text;
              form.Label2[2].caption = text;
            },
            [](const Form42& form) { return std::string(form.Frame7.caption); }},
    element<&Form42::SafeguardBoxes, 0>("SafeguardBoxes(0)"),
    element<&Form42::SafeguardBoxes, 1>("SafeguardBoxes(1)"),
    element<&Form42::SafeguardBoxes, 2>("SafeguardBoxes(2)"),
    element<&Form42::SafeguardBoxes, 3>("SafeguardBoxes(3)"),
    element<&Form42::SafeguardBoxes, 4>("SafeguardBoxes(4)"),
    element<&Form42::SafeguardBoxes, 5>("SafeguardBoxes(5)"),
    caption<&Form42::CarefulBox>("CarefulBox"),
};

template <auto member>
constexpr Caption toolTip(std::string_view key) {
  return {key, [](Form42& form, const std::string& text) { (form.*member).toolTip = text; },
          [](const Form42& form) -> std::string { return (form.*member).toolTip; }};
}

constexpr std::array further{
    caption<&Form42::Label1>("Label1"),
    toolTip<&Form42::TrayArea1>("TrayArea1.ToolTip"),
    caption<&Form42::orubutton4>("orubutton4"),
    caption<&Form42::chameleonButton7>("chameleonButton7"),
    caption<&Form42::chameleonButton1>("chameleonButton1"),
    caption<&Form42::orubutton1>("orubutton1"),
    caption<&Form42::chameleonButton10>("chameleonButton10"),
    caption<&Form42::chameleonButton11>("chameleonButton11"),
    caption<&Form42::chameleonButton15>("chameleonButton15"),
    caption<&Form42::orubutton2>("orubutton2"),
    caption<&Form42::UndoRepair>("UndoRepair"),
    caption<&Form42::Check1>("Check1"),
    caption<&Form42::ToolbarBox>("ToolbarBox"),
    caption<&Form42::ChKeys>("ChKeys"),
    caption<&Form42::ChValues>("ChValues"),
    caption<&Form42::ChData>("ChData"),
    caption<&Form42::ChCase>("ChCase"),
    caption<&Form42::Frame5>("Frame5"),
    caption<&Form42::Option1>("Option1"),
    caption<&Form42::Option2>("Option2"),
    caption<&Form42::Option3>("Option3"),
    caption<&Form42::Option4>("Option4"),
    caption<&Form42::cmdFind>("cmdFind"),
    toolTip<&Form42::chameleonButton4>("chameleonButton4.ToolTipText"),
    toolTip<&Form42::chameleonButton12>("chameleonButton12.ToolTipText"),
    toolTip<&Form42::chameleonButton13>("chameleonButton13.ToolTipText"),
    toolTip<&Form42::chameleonButton18>("chameleonButton18.ToolTipText"),
};

}  // namespace

std::span<const Caption> captions() { return table; }
std::span<const Caption> furtherCaptions() { return further; }

}  // namespace zelvreg

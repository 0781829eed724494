// The windows of the controls that hold one value.
#ifndef ZELVREG_DESKTOP_SIMPLE_PEERS_H
#define ZELVREG_DESKTOP_SIMPLE_PEERS_H

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "controls/chameleonButton.h"
#include "desktop/Hover.h"
#include "desktop/Peer.h"
#include "widgets/ComboBox.h"
#include "widgets/SimpleControls.h"

namespace zelvreg::desktop {

// A static control that draws its text with smooth edges on a ground of one color.
class LabelPeer : public Peer {
 public:
  LabelPeer(Desk& sharedDesk, HWND parent, Label& shownLabel, LabelLook labelLook,
            Tone labelGround);

  void draw(const DRAWITEMSTRUCT& request) override;
  // Has screen readers read it aloud when it changes.
  void readAloud();
  // The width of the text in pixels of the screen.
  [[nodiscard]] int textWidth() const;
  [[nodiscard]] AccessibleFacts facts() const override;

  [[nodiscard]] Label& shownLabel() const { return label; }

  // Called after a change of the text, for a press and for mouse moves. Each may be empty.
  std::function<void()> onText;
  std::function<void()> onClick;
  std::function<void()> onMouseMove;

 protected:
  void showText() override;

 private:
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR reference);
  void drawCounter(const controls::PaintBuffer& buffer, const std::u16string& caption,
                   RECT place) const;
  [[nodiscard]] std::u16string text() const;
  [[nodiscard]] HFONT fontInUse() const;
  [[nodiscard]] bool isMarked() const;
  [[nodiscard]] Rgb groundColor() const;
  [[nodiscard]] Rgb textColor() const;

  Label& label;
  LabelLook look;
  Tone ground;
  std::u16string read;  // by screen readers
  bool isLive = false;
};

class ButtonPeer : public Peer {
 public:
  ButtonPeer(Desk& sharedDesk, HWND parent, Button& shownButton, ButtonRole buttonRole,
             const char* iconKey);

  void showAll() override;
  // Changes between a button with a caption and a square with only the picture.
  void setRole(ButtonRole newRole);
  [[nodiscard]] bool isSquare() const { return role == ButtonRole::IconOnly; }
  [[nodiscard]] bool hasCaption() const {
    return role != ButtonRole::Title && role != ButtonRole::IconOnly && role != ButtonRole::Tool;
  }
  // Who chooses an access key before whom: the command bar, then pages, then the side bar.
  [[nodiscard]] int keyRank() const {
    return role == ButtonRole::Command ? 0 : role == ButtonRole::SideBar ? 2 : 1;
  }
  void setIcon(const char* iconKey);
  // Whether it is the next step that a user would take.
  void setPrimary(bool isPrimary);
  // Whether its page is shown, which the side bar highlights.
  void setCurrent(bool isCurrent);
  // The width of picture and caption, in pixels of the screen.
  [[nodiscard]] int naturalWidth() const;
  // The same with a caption that wraps at each blank.
  [[nodiscard]] int narrowestWidth() const;
  [[nodiscard]] Button& button() const { return shownButton; }
  [[nodiscard]] AccessibleFacts facts() const override;

  // The caption with the mark of its access key, until the caption changes.
  void setMarked(const std::string& caption);

  // Called after the caption changes, or the button is enabled or disabled; may be empty.
  std::function<void()> onChanged;
  // The name that a screen reader reads, instead of caption or tip; may be empty.
  std::function<std::string()> nameOf;

  void changed(const Control& control, Change what, std::size_t row) override;

 protected:
  void showText() override;
  void showLook() override;

 private:
  [[nodiscard]] int widthOf(const std::u16string& text) const;
  [[nodiscard]] std::string spokenName() const;
  [[nodiscard]] std::u16string drawnCaption() const;

  Button& shownButton;
  ButtonRole role;
  std::string icon;
  std::string marked;
  bool isNext = false;
  controls::chameleonButton chameleon;
};

// A check box or an option button of the system's class, drawn to match the window.
class CheckPeer : public Peer {
 public:
  CheckPeer(Desk& sharedDesk, HWND parent, CheckBox& box, Tone checkGround);
  // `choose` selects this option of its group. `isFirst` begins a group.
  CheckPeer(Desk& sharedDesk, HWND parent, OptionButton& option, std::function<void()> choose,
            bool isFirst, Tone checkGround);

  void command(int code) override;
  // The width of mark and caption, in pixels of the screen.
  [[nodiscard]] int naturalWidth() const;
  [[nodiscard]] AccessibleFacts facts() const override;
  [[nodiscard]] const std::string& caption() const;
  // The caption with the mark of its access key, until the caption changes.
  void setMarked(const std::string& caption);

  // Called after a change of the caption and of the value; each may be empty.
  std::function<void()> onText;
  std::function<void()> onValue;
  // What a screen reader reads behind the name; may be empty.
  std::function<std::string()> descriptionOf;

 protected:
  void showText() override;
  void showValue() override;

 private:
  void make(HWND parent, DWORD style);
  void paint();
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR reference);
  [[nodiscard]] bool isOn() const;

  CheckBox* box = nullptr;
  OptionButton* option = nullptr;
  std::string marked;
  std::function<void()> onChoose;
  Tone ground;
  Hover hover;
};

// A one-line text that the user types.
class EditPeer : public Peer {
 public:
  EditPeer(Desk& sharedDesk, HWND parent, TextBox& box);
  void command(int code) override;
  std::optional<LRESULT> colors(HDC context) override;
  [[nodiscard]] AccessibleFacts facts() const override;

  // The name that a screen reader reads, and what is shown as long as nothing is typed. Both may be
  // empty.
  std::function<std::string()> nameOf;
  std::function<std::string()> cueOf;

 protected:
  void showText() override;
  void showLook() override;

 private:
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR reference);
  // The class writes at the top; so only the middle of the window is the class's own.
  void leaveMargins(RECT& inner) const;
  void paintEdge() const;
  void paintCue() const;

  TextBox& box;
  bool isTyped = false;
  Hover hover;
};

class ComboPeer : public Peer {
 public:
  // `translate` gives an entry as the user reads it; what the box holds may be data.
  ComboPeer(Desk& sharedDesk, HWND parent, ComboBox& box,
            std::function<std::string(const std::string& entry)> translate = nullptr);
  void command(int code) override;
  void draw(const DRAWITEMSTRUCT& request) override;
  [[nodiscard]] AccessibleFacts facts() const override;

  // The name that a screen reader reads; may be empty.
  std::function<std::string()> nameOf;

 protected:
  void showText() override;
  void showLook() override;
  void showPlace() override;
  void showRows(Change what, std::size_t row) override;

 private:
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR reference);
  // Of the text field in an editable box.
  static LRESULT CALLBACK textProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                        UINT_PTR id, DWORD_PTR reference);
  // Draws edge and arrow over those of the class.
  void drawEdge() const;
  [[nodiscard]] int arrowWidth() const;
  // The field of an editable box, or null; it is put into the middle.
  [[nodiscard]] HWND field() const;
  void placeField() const;
  [[nodiscard]] std::string entryText(int position) const;

  ComboBox& box;
  std::function<std::string(const std::string& entry)> shownAs;
  std::vector<std::string> shownTexts;
  bool isTyped = false;
  Hover hover;
  Hover hoverOfText;
};

class ProgressPeer : public Peer {
 public:
  ProgressPeer(Desk& sharedDesk, HWND parent, ProgressBar& bar);
  [[nodiscard]] AccessibleFacts facts() const override;

  // How far it is, from 0 to 1, if that is known better than by the value of the bar.
  void showShare(std::optional<double> told);

  // The name that a screen reader reads; may be empty.
  std::function<std::string()> nameOf;

 protected:
  void showValue() override;

 private:
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR reference);
  void paint();
  [[nodiscard]] double share() const;

  ProgressBar& bar;
  std::optional<double> known;
};

}  // namespace zelvreg::desktop

#endif

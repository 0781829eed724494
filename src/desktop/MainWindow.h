// The main window: a peer for every control of the form, the frame around them, and the message
// queue, which is served during a scan as well.
#ifndef ZELVREG_DESKTOP_MAIN_WINDOW_H
#define ZELVREG_DESKTOP_MAIN_WINDOW_H

#include <windows.h>

#include <array>
#include <chrono>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "controls/CMWndProc.h"
#include "controls/TransForm.h"
#include "controls/TrayWindow.h"
#include "desktop/BarPeer.h"
#include "desktop/Desk.h"
#include "desktop/DrawPace.h"
#include "desktop/FramePeer.h"
#include "desktop/Keyboard.h"
#include "desktop/ListViewPeer.h"
#include "desktop/PicturePeer.h"
#include "desktop/SimplePeers.h"
#include "desktop/Taskbar.h"
#include "desktop/WindowEdges.h"
#include "languages/Texts.h"
#include "shell/ScanFollower.h"
#include "shell/WindowMemory.h"
#include "widgets/Dialogs.h"

namespace zelvreg {
struct Form42;
}  // namespace zelvreg

namespace zelvreg::desktop {

class MainWindow : private ControlPeer, private ScanSigns {
 public:
  // Makes the window, hidden, and attaches a peer to each control. The form must outlive it.
  explicit MainWindow(Form42& shownForm);
  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;
  ~MainWindow() override;

  // After the load of the form, which fills the picker.
  void addLanguages();
  // Serves the message queue; the process ends from there.
  [[noreturn]] void run();

  [[nodiscard]] HWND hwnd() const { return window; }
  [[nodiscard]] Desk& sharedDesk() { return desk; }

  // Called when the window's button in the taskbar has been made; null for none.
  std::function<std::unique_ptr<Taskbar>()> makeTaskbar = systemTaskbar;

 private:
  static LRESULT CALLBACK procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
  LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
  void changed(const Control& control, Change what, std::size_t row) override;

  // Size and place. No value for messages that have nothing to do with them.
  std::optional<LRESULT> handleSize(UINT message, WPARAM wParam, LPARAM lParam);
  [[nodiscard]] Place leastPlace() const;
  void placeAt(const Place& place);
  [[nodiscard]] LRESULT hitAt(POINT onScreen) const;
  bool isClickOnTitle(WPARAM hit, LPARAM onScreen) const;
  void seizeEdge(Edge edge, POINT pressed);
  void dragEdge();
  void limitSize(MINMAXINFO& limits) const;
  void sizeChanged(WPARAM kind);
  void showMaximized();
  void nameMaximize();
  void showShadow();
  void restorePlace();
  void returnToScreen();
  // At another resolution it has the size of the screen as before.
  void staysMaximized();
  void notePlace();
  void keepPlace();

  void makeWindow();
  void addFrames();
  void addLabels();
  void addButtons();
  void addFilter();
  void addBars();
  void addToolbar();
  void addLists();
  void addOptions();
  std::unique_ptr<CheckPeer> policyBox(CheckBox& box, HWND parent);
  [[nodiscard]] std::function<std::string(std::size_t row)> lockedRowTip(
      const ListView& list) const;
  enum class Translated : std::uint8_t { No, Yes };
  void addCombo(ComboBox& box, HWND parent, TextKey name, Translated translates);
  void addSearchControls();
  void nameButton(ButtonPeer& peer);
  void addPictures();
  void attachWindowParts();
  void connectForm();

  // What the window shows apart from its controls.
  void showWindow(Change what);
  void showTray();
  void showMenus();
  void showColor();
  void showTitleLine();
  void paintGround(HDC context) const;
  void paintGrip(controls::Canvas& canvas, const RECT& place) const;
  // Puts the size of the main screen into the form, in twips.
  void readScreen();
  void changeResolution(int resolution, const RECT* suggested);
  // Of the window, and in the notification area.
  void showIcons();
  void showAll();
  // The form has the captions of another language.
  void changeLanguage();
  // The user has changed the system's colors, fonts, or the screen.
  void changeSettings();
  [[nodiscard]] Theme themeInUse() const;
  void activate(bool isActive);
  // The shell has been restarted and has lost its icons.
  void renewTrayIcon();

  // Places and looks that follow from what is shown: the next step, the current page, widths of
  // captions.
  void arrange();
  void arrangeLater();
  void giveAccessKeys();
  void arrangeCommandBar();
  // Whether the tool bar is shown in the place of the command buttons.
  bool arrangeToolbar();
  void showSeparators(std::vector<int> places);
  void arrangeRows();
  // Returns the place after the last, in pixels of the screen.
  int flow(std::initializer_list<Button*> row, int start, bool isFromRight);
  void arrangeCareful(int pageWidth);
  void arrangeResultsTitle(int pageWidth);
  void arrangeTexts();
  void arrangeBars();
  void countCategories();
  void arrangeSearch();
  // What a check box or an option needs for its caption, in pixels at 96 dpi.
  [[nodiscard]] int captionWidth(const Control& control);
  ButtonPeer* peerOf(const Button& button);
  LabelPeer* peerOf(const Label& label);

  // Serves the system's own messages, at most every few milliseconds: loops of a scan call it for
  // every entry. It draws less often than it answers.
  void serve();
  void followScan(std::chrono::steady_clock::time_point now);
  void taskbarButtonMade();
  void showTask(const TaskProgress& told) override;
  bool isInFront() override;
  void showNotice(const std::string& title, const std::string& text) override;
  void comeToFront();
  // Handles those of some kinds (PM_QS_INPUT and so on; 0 for all).
  void dispatch(UINT kinds);
  // The keys of a dialog.
  [[nodiscard]] FocusArea focusArea() const;
  // Whether it is one of the main window that no control knows.
  bool shortcut(const MSG& message);
  void enter();
  void escape();
  bool pickerKey(WPARAM key);
  void openMenu(POINT onScreen);
  Answer showMessage(const UserMessage& message);
  HWND parentOf(Frame* frame);

  Form42& form;
  Desk desk;
  HWND window = nullptr;
  std::unique_ptr<controls::TransForm> outline;
  std::unique_ptr<controls::CMWndProc> menuHolder;
  std::array<controls::IconHandle, 2> icons;  // by ICON_SMALL and ICON_BIG
  controls::TrayWindow tray;
  PickerKeys pickerKeys;
  std::vector<std::unique_ptr<FramePeer>> frames;
  std::vector<std::unique_ptr<LabelPeer>> labels;
  std::vector<std::unique_ptr<ButtonPeer>> buttons;
  std::vector<std::unique_ptr<Peer>> others;
  // A small button of the tool bar, and the command that it stands for.
  struct Tool {
    std::unique_ptr<Button> button;
    const Button& command;
    bool beginsGroup;
  };
  std::vector<Tool> tools;
  std::vector<std::unique_ptr<ButtonPeer>> toolPeers;
  CheckPeer* careful = nullptr;      // one of the others
  ProgressPeer* progress = nullptr;  // another of them
  std::vector<int> separators;       // in the command bar, pixels of the screen
  // The tick count of the system changes only every 16 ms.
  using Clock = DrawPace::Clock;
  Clock::time_point servedAt;
  DrawPace pace;
  // How many rows each category had when the results last had another number of them.
  std::array<std::size_t, 16> counts{};
  std::size_t countedRevision = 0;
  std::vector<BarPeer*> bars;  // others, too
  HWND filter = nullptr;       // the field above the results
  HWND lastFocus = nullptr;    // while another window is active
  // The edge that the user holds, and where it all began.
  struct Seized {
    Edge edge = Edge::None;
    Place start{};
    POINT from{};
  };
  Seized seized;
  WindowMemory memory;
  bool hasOpened = false;
  bool looksMaximized = false;
  bool isTelling = false;  // then the window already is as the form is told
  UINT taskBarCreated = 0;
  UINT taskbarButtonCreated = 0;
  ScanFollower follower{form, *this};
  std::unique_ptr<Taskbar> taskbar;
  TaskProgress task;
};

}  // namespace zelvreg::desktop

#endif

// What the form asks or tells the user outside its own pages. The front end says how.
#ifndef ZELVREG_WIDGETS_DIALOGS_H
#define ZELVREG_WIDGETS_DIALOGS_H

#include <cstdint>
#include <functional>
#include <string>

namespace zelvreg {

enum class MessageIcon : std::uint8_t { None, Information, Question, Exclamation };
enum class Answer : std::uint8_t { Ok, Yes, No };

struct UserMessage {
  std::string text;
  MessageIcon icon = MessageIcon::None;
  bool isQuestion = false;  // Yes and No instead of OK
  std::string title;
};

// The system's dialog for a file name. `show` is the front end's and gives the name that was
// chosen, or the empty text.
struct CommonDialog {
  std::string filter;
  std::string defaultExtension;
  std::string title;
  std::string fileName;
  std::function<std::string(const CommonDialog&)> show;

  // Asks for a name to save under and keeps it in `fileName`.
  void showSave() { fileName = show ? show(*this) : std::string(); }
};

class Dialogs {
 public:
  // Shows a message and waits for the answer. Without a front end a message is ignored and a
  // question is answered No.
  [[nodiscard]] Answer ask(const UserMessage& message) const {
    if (show) {
      return show(message);
    }
    return message.isQuestion ? Answer::No : Answer::Ok;
  }
  void tell(std::string text, MessageIcon icon = MessageIcon::None) const {
    static_cast<void>(
        ask({.text = std::move(text), .icon = icon, .isQuestion = false, .title = {}}));
  }

  std::function<Answer(const UserMessage&)> show;
};

}  // namespace zelvreg

#endif

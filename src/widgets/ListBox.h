// A list of plain texts.
#ifndef ZELVREG_WIDGETS_LIST_BOX_H
#define ZELVREG_WIDGETS_LIST_BOX_H

#include <string>
#include <vector>

#include "widgets/Control.h"
#include "widgets/MessageQueue.h"

namespace zelvreg {

// A list in the order of adding. Positions count from 0.
class ListBox : public Control {
 public:
  // The queue frees many entries that are cleared. It is not owned and must outlive the list.
  explicit ListBox(MessageQueue& queueInUse) : queue(queueInUse) {}

  [[nodiscard]] int count() const { return static_cast<int>(entries.size()); }
  // The empty text outside the list.
  [[nodiscard]] const std::string& text(int position) const;

  // An entry ends at its first NUL.
  void add(std::string_view text);
  void clear();

 private:
  MessageQueue& queue;
  std::vector<std::string> entries;
};

}  // namespace zelvreg

#endif

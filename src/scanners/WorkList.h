// The walk over a work list that most scanners share.
#ifndef ZELVREG_SCANNERS_WORK_LIST_H
#define ZELVREG_SCANNERS_WORK_LIST_H

#include <string>
#include <string_view>

#include "form/Form42.h"
#include "registry/SubkeyEnumerators.h"

namespace zelvreg {

// The last entry of a walk, counted from the last one of the list. An entry beyond the list is the
// empty text.
enum class LastTurn { OneBeforeTheLast = -1, TheLast = 0, OneAfterTheLast = 1 };

// Serves the message queue and calls `turn(index, entry)` for each entry, at least once even for an
// empty list. A click on Cancel ends the walk.
template <typename Turn>
void walkEntries(Form42& form, const ListBox& list, LastTurn last, Turn&& turn) {
  int index = 0;
  do {
    form.messages.doEvents();
    form.isProviderSilent = false;
    // A copy, since a turn may clear the list.
    const std::string entry(std::string_view(list.text(index)));
    turn(index, entry);
    ++index;
  } while (!isStopAsked(form) && index < list.count() + static_cast<int>(last));
}

}  // namespace zelvreg

#endif

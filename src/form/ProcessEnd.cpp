#include "form/ProcessEnd.h"

namespace zelvreg {

void endProcess(const Form42& form) {
  if (form.onProcessEnd) {
    form.onProcessEnd();
  }
  throw ProcessEnd{};
}

}  // namespace zelvreg

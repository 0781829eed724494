#include "form/ProcessEnd.h"

#include "form/Form42.h"

namespace zelvreg {

void endProcess(const Form42& form) {
  if (form.onProcessEnd) {
    form.onProcessEnd();
  }
  throw ProcessEnd{};
}

}  // namespace zelvreg

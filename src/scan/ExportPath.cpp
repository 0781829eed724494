#include "scan/ExportPath.h"

#include "form/Form42.h"

namespace zelvreg {

std::string exportPath(const Form42& form, const std::string& stem) {
  return form.programFolder + "\\backup\\registry\\" + stem + ".reg";
}

}  // namespace zelvreg

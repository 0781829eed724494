#include "scan/OwnPaths.h"

#include "form/Form42.h"

namespace zelvreg {

std::string exportPath(const Form42& form, const std::string& stem) {
  return form.programFolder + "\\backup\\registry\\" + stem + ".reg";
}

std::string exclusionPath(const Form42& form) { return form.programFolder + "\\exregscan.txt"; }

}  // namespace zelvreg

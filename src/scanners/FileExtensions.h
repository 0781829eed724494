// Row 12: file extensions of the user for which no program is offered.
#ifndef ZELVREG_SCANNERS_FILE_EXTENSIONS_H
#define ZELVREG_SCANNERS_FILE_EXTENSIONS_H

namespace zelvreg {

struct Form42;

// Reports each extension whose OpenWithProgids key is missing or has no named value. It looks for
// no file. Without the registry provider it reports every extension.
void fileext(Form42& form);

}  // namespace zelvreg

#endif

// The parts of the page, which lie beside in page/; the build puts them into the program.
#ifndef ZELVREG_FLEET_PAGE_PARTS_H
#define ZELVREG_FLEET_PAGE_PARTS_H

namespace zelvreg::fleet::pageParts {

// {{NAMES}} in it stand for what a report fills in.
extern const char* const html;
extern const char* const css;
extern const char* const js;

}  // namespace zelvreg::fleet::pageParts

#endif

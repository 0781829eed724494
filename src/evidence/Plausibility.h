// Whether so much looks dead that a disk or a folder is rather missing than the files.
#ifndef ZELVREG_EVIDENCE_PLAUSIBILITY_H
#define ZELVREG_EVIDENCE_PLAUSIBILITY_H

namespace zelvreg {

struct Form42;
class TextLook;

// Looks at the evidence of all rows together. Rows that look dead only because of such a gap become
// unsure; `form.implausible` gets one line for each gap.
void weighTogether(Form42& form, TextLook& texts);

}  // namespace zelvreg

#endif

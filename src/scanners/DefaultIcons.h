// Row 5: icons of classes whose file is gone.
#ifndef ZELVREG_SCANNERS_DEFAULT_ICONS_H
#define ZELVREG_SCANNERS_DEFAULT_ICONS_H

namespace zelvreg {

struct Form42;

// Reports each class whose defaulticon key names a missing file by a path on a drive. Once started,
// only fEnumKey can stop it.
void Command10(Form42& form);

}  // namespace zelvreg

#endif

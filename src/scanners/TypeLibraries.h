// Row 7, too: help folders and files of type libraries, and the libraries that classes name.
#ifndef ZELVREG_SCANNERS_TYPE_LIBRARIES_H
#define ZELVREG_SCANNERS_TYPE_LIBRARIES_H

namespace zelvreg {

struct Form42;

// Reports the help folder of the first version of each library when neither folder nor file is
// there. The user is given access to every help folder's key.
void cln71(Form42& form);

// Reports the library that a class names when no library and no class has that name. It walks the
// classes that List1 holds, as the scanner before it leaves them. The user is given access to every
// library reference's key.
void cln72(Form42& form);

}  // namespace zelvreg

#endif

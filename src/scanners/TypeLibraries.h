// Also row 7: help folders of type libraries, and the libraries that classes name.
#ifndef ZELVREG_SCANNERS_TYPE_LIBRARIES_H
#define ZELVREG_SCANNERS_TYPE_LIBRARIES_H

namespace zelvreg {

struct Form42;

// Reports the help folder of the first version of each library if there is neither a folder nor a
// file. The user is given access to every help folder's key.
void cln71(Form42& form);

// Reports the library that a class names if no library and no class has that name. It walks the
// classes in List1, which the scanner before it has listed. The user is given access to the key of
// every reference.
void cln72(Form42& form);

}  // namespace zelvreg

#endif

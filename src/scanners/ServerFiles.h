// Rows 7 to 10: COM classes whose server file is missing, one scanner for each place that has
// classes. The count continues from one row to the next.
#ifndef ZELVREG_SCANNERS_SERVER_FILES_H
#define ZELVREG_SCANNERS_SERVER_FILES_H

namespace zelvreg {

struct Form42;

// The classes root. The user is given access to every server key; a class where that fails is
// skipped. List1 keeps the classes for the next scanner.
void cln7(Form42& form);
// The current user.
void cln8(Form42& form);
// The first classes hive among the users.
void cln9(Form42& form);
// The machine.
void cln10(Form42& form);

}  // namespace zelvreg

#endif

// Row 13: dead records of the list of installed programs.
#ifndef ZELVREG_SCANNERS_UNINSTALL_RECORDS_H
#define ZELVREG_SCANNERS_UNINSTALL_RECORDS_H

namespace zelvreg {

struct Form42;

// Report records that are empty, and values of records that name a path that does not exist. A list
// that is missing or empty counts as one record without a name, which is reported.

// The machine's list and the user's. The user is given access to every record.
void uninstall(Form42& form);
// The machine's list of the 32-bit view. Its count replaces the other one's in the row.
void uninstall32(Form42& form);

}  // namespace zelvreg

#endif

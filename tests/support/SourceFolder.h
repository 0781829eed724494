#ifndef TESTS_SUPPORT_SOURCEFOLDER_H
#define TESTS_SUPPORT_SOURCEFOLDER_H

#include <string>

// The folder of the checkout in the form that the running system understands, without a separator
// at its end: tests find tests/fixtures, demo/machine and assets in it, with '/' between names.
// The environment variable ZELVREG_SOURCE_DIR, where set, says it instead of the build.
std::string sourceFolder();

#endif

#include "support/SourceFolder.h"

#include <cstdlib>

std::string sourceFolder() {
  const char* folder = std::getenv("ZELVREG_SOURCE_DIR");
  return folder != nullptr ? folder : ZELVREG_SOURCE_DIR;
}

// The text of security.txt and attributes.txt: one record a line, the path, a tab and the list or
// the number. UTF-8.
#ifndef ZELVREG_MACHINE_COMPUTER_RECORD_FILES_H
#define ZELVREG_MACHINE_COMPUTER_RECORD_FILES_H

#include <string>
#include <string_view>

namespace zelvreg::machine {

class Drives;
class Registry;

// Paths that begin with a root of the registry are keys', the others files'. Reading throws
// MachineError ("security.txt:3: …") for a line that is not understood.
void readSecurities(std::string_view content, Registry& registry, Drives& drives);
std::string writeSecurities(const Registry& registry, Drives& drives);

void readAttributes(std::string_view content, Drives& drives);
std::string writeAttributes(Drives& drives);

}  // namespace zelvreg::machine

#endif

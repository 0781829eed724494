// What this installation can do, each fact in one line.
#ifndef ZELVREG_CONSOLE_DOCTOR_H
#define ZELVREG_CONSOLE_DOCTOR_H

#include <functional>
#include <string>
#include <vector>

#include "console/Commands.h"

namespace zelvreg::console {

// What was found, or what is missing and what to do about it.
struct Fact {
  bool isThere = false;
  std::string text;
};

struct DoctorProbe {
  const char* name;
  bool isNeeded;  // without it the installation is broken
  std::function<Fact()> ask;
};

// Those of this system, ten at most. `streams` outlive them.
std::vector<DoctorProbe> doctorProbes(const Streams& streams);

// What a caller must know of an empty text of a check: that nothing is missing.
Fact factOf(const std::string& whatIsMissing, const char* whatIsThere);

// Facts that every system has.
DoctorProbe versionProbe();
DoctorProbe languagesProbe();
DoctorProbe terminalProbe(const Streams& streams);
Fact languagesFact(const std::string& folder, const std::vector<std::string>& files);
Fact memoryFact(unsigned long long bytes, unsigned long long bytesAtHand);

// Asks them all and prints what they say. Gives the exit status: a failure only if something that
// is needed is missing. A probe that throws has found out why something is missing.
int runDoctor(const std::vector<DoctorProbe>& probes, Format format, const Streams& streams);

}  // namespace zelvreg::console

#endif

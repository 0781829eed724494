// What is to become of which call.
#ifndef ZELVREG_TESTS_FAULTS_INJECTOR_PLAN_H
#define ZELVREG_TESTS_FAULTS_INJECTOR_PLAN_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "FileCalls.h"

namespace zelvreg::faults {

struct Deed {
  enum class What { Nothing, Fail, Shorten, End, KillBefore, KillAfter, KillOne };
  What what = What::Nothing;
  std::int64_t number = 0;  // the error, or how many bytes are left of what was asked for
};

class Plan {
 public:
  // An option of the command line; false if there is none of this name or it makes no sense.
  bool take(const std::string& option, const std::string& value);
  // Of a call that is the `number`th of its kind. To be asked once for each call.
  Deed next(const FileCall& call, std::uint64_t number);

 private:
  bool takeOne(const std::string& value);
  Deed onFullDisk(const FileCall& call);

  std::map<std::pair<std::string, std::uint64_t>, std::string> deeds;
  std::optional<std::uint64_t> room;
  std::uint64_t callsOnDisk = 0;
  std::uint64_t goneFrom = UINT64_MAX;
  std::int64_t goneWith = 0;
};

}  // namespace zelvreg::faults

#endif

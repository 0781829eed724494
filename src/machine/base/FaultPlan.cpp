#include "machine/base/FaultPlan.h"

namespace zelvreg::machine {

namespace {

std::size_t indexOf(ApiCall call) { return static_cast<std::size_t>(call); }

}  // namespace

void FaultPlan::fail(ApiCall call, std::uint64_t n, LONG code) {
  Kind& kind = kinds[indexOf(call)];
  kind.planned[kind.calls + n] = code;
}

void FaultPlan::failFrom(ApiCall call, std::uint64_t n, LONG code) {
  Kind& kind = kinds[indexOf(call)];
  kind.lastSound = kind.calls + n - 1;
  kind.lasting = code;
}

void FaultPlan::clear() { kinds = {}; }

std::uint64_t FaultPlan::calls(ApiCall call) const { return kinds[indexOf(call)].calls; }

std::optional<LONG> FaultPlan::fault(Kind& kind) {
  if (kind.calls > kind.lastSound) return kind.lasting;
  const auto found = kind.planned.find(kind.calls);
  if (found == kind.planned.end()) return std::nullopt;
  const LONG code = found->second;
  kind.planned.erase(found);
  return code;
}

}  // namespace zelvreg::machine

#include "machine/hive/HiveLogs.h"

namespace zelvreg::machine {
namespace {

std::string counted(std::size_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string whatWasTaken(const ReplayOutcome& replay) {
  return counted(replay.entries, "entry", "entries") + " with " +
         counted(replay.pages, "page", "pages") + " of its logs were taken over";
}

}  // namespace

const char* codeOf(HiveState state) {
  switch (state) {
    case HiveState::Clean:
      return "clean";
    case HiveState::Replayed:
      return "replayed";
    case HiveState::Unreplayable:
      return "unreplayable";
    case HiveState::LeftAsIs:
      return "as-is";
    case HiveState::Hibernated:
      return "hibernated";
  }
  return "";
}

bool isBehindItsLogs(const HiveFile& hive) {
  const HiveState state = hive.replay().state;
  return state != HiveState::Clean && state != HiveState::Replayed;
}

std::string whyNotWhole(const HiveFile& hive) {
  const ReplayOutcome& replay = hive.replay();
  if (replay.state == HiveState::Unreplayable) {
    return "its logs cannot be taken over: " + replay.why;
  }
  if (replay.state == HiveState::LeftAsIs) {
    return "its logs were left alone, as --as-is asks for";
  }
  return hive.pendingFile() ? "transactions may wait in " + hive.pendingFile()->string() : "";
}

std::optional<std::string> logNotice(const HiveFile& hive) {
  const HiveState state = hive.replay().state;
  if (state == HiveState::Clean || state == HiveState::Hibernated) {
    return std::nullopt;
  }
  const std::string why = whyNotWhole(hive);
  const std::string line = hive.path().string() + ": was not shut down cleanly; ";
  if (state != HiveState::Replayed) {
    return line + why + "; it is read without them";
  }
  return line + whatWasTaken(hive.replay()) + (why.empty() ? "" : "; " + why);
}

std::optional<std::string> whyUnclean(const HiveFile& hive) {
  const std::string why = whyNotWhole(hive);
  if (why.empty()) {
    return std::nullopt;
  }
  const bool isLeftAlone = hive.replay().state == HiveState::LeftAsIs;
  return hive.path().string() + ": was not shut down cleanly, and " + why + "; " +
         (isLeftAlone ? "leave --as-is out"
                      : "start that Windows once and shut it down (not with fast start-up)") +
         ", or only scan this disk";
}

}  // namespace zelvreg::machine

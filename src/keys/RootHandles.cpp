#include "keys/RootHandles.h"

#include "keys/ActingUser.h"
#include "runtime/Directory.h"

namespace zelvreg {
namespace {

// A request on these two fails like one on an unknown hive.
bool isRefused(HiveHandle hive) {
  return hive == HiveHandle::CurrentConfig || hive == HiveHandle::DynData;
}

}  // namespace

HKEY systemKey(HiveHandle hive) {
  if (longName(hive).empty()) {
    return nullptr;
  }
  if (const ActingUser* user = actingUser(); user != nullptr && hive == HiveHandle::ClassesRoot) {
    return user->classes;
  }
  // The system's headers widen the first number to a pointer; the others follow it.
  const auto first = reinterpret_cast<ULONG_PTR>(HKEY_CLASSES_ROOT);
  const auto place = static_cast<ULONG>(hive) - static_cast<ULONG>(HiveHandle::ClassesRoot);
  return reinterpret_cast<HKEY>(first + place);
}

HiveHandle GetHiveHandle(std::string_view name) {
  const HiveHandle hive = rootWithLongName(name);
  return name == longName(hive) ? hive : HiveHandle::Unknown;
}

HiveHandle HiveFromName(std::string_view name) { return GetHiveHandle(name); }

HiveHandle HiveFromShortName(const std::string& name, Shares shares) {
  const HiveHandle hive = rootWithShortName(name);
  if (hive != HiveHandle::Unknown) {
    return isRefused(hive) ? HiveHandle::Unknown : hive;
  }
  return Dir(name, shares).empty() ? HiveHandle::Unknown : HiveHandle::hINI;
}

}  // namespace zelvreg

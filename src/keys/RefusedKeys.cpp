#include "keys/RefusedKeys.h"

#include "keys/RootHandles.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

RefusedKeys* inForce = nullptr;

constexpr REGSAM views = KEY_WOW64_64KEY | KEY_WOW64_32KEY;

}  // namespace

RefusedKeys::RefusedKeys() { inForce = this; }

RefusedKeys::~RefusedKeys() { inForce = nullptr; }

void RefusedKeys::note(HiveHandle hive, LPCWSTR path) {
  const std::string below = utf8(untilNul(path));
  refused.insert(std::string(longName(hive)) + (below.empty() ? "" : "\\") + below);
}

LONG openNotingRefusal(HiveHandle hive, LPCWSTR path, DWORD options, REGSAM access, HKEY& key) {
  LONG status = RegOpenKeyExW(systemKey(hive), path, options, access, &key);
  if (status != ERROR_ACCESS_DENIED || inForce == nullptr) {
    return status;
  }
  const REGSAM reading = access & (KEY_READ | views);
  if (reading != access && (reading & KEY_QUERY_VALUE) != 0) {
    status = RegOpenKeyExW(systemKey(hive), path, options, reading, &key);
  }
  if (status == ERROR_ACCESS_DENIED) {
    inForce->note(hive, path);
  }
  return status;
}

}  // namespace zelvreg

#include "scan/Settings.h"

#include "registry/Hives.h"

namespace zelvreg {

std::string readSetting(const char* key, const std::string& name) {
  std::string text;
  GetRegString(HiveHandle::LocalMachine, key, name, text);
  return text;
}

bool keepSetting(const char* key, const std::string& name, const std::string& text) {
  return SaveRegString(HiveHandle::LocalMachine, key, name, text);
}

}  // namespace zelvreg

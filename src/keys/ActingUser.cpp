#include "keys/ActingUser.h"

namespace zelvreg {
namespace {

std::string& standIn() {
  static std::string sid;
  return sid;
}

}  // namespace

const std::string& actingUser() { return standIn(); }

void setActingUser(const std::string& sid) { standIn() = sid; }

}  // namespace zelvreg

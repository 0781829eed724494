#include "keys/ActingUser.h"

#include <utility>

namespace zelvreg {
namespace {

std::optional<ActingUser>& standIn() {
  static std::optional<ActingUser> user;
  return user;
}

}  // namespace

const ActingUser* actingUser() { return standIn() ? &*standIn() : nullptr; }

void setActingUser(std::optional<ActingUser> user) { standIn() = std::move(user); }

}  // namespace zelvreg

// One process at a time works on the registry of the running computer. Windows alone has one.
#ifndef ZELVREG_RUNTIME_SINGLE_INSTANCE_H
#define ZELVREG_RUNTIME_SINGLE_INSTANCE_H

#include <windows.h>

namespace zelvreg {

// Keeps all others out for as long as it lives, in whichever session and for whichever user they
// run: the computer's part of the registry is one for all of them.
class SingleInstance {
 public:
  SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;
  ~SingleInstance();

  // False when another one was there first, or when that cannot be known.
  [[nodiscard]] bool isFirst() const { return mutex != nullptr; }

 private:
  HANDLE mutex;
};

}  // namespace zelvreg

#endif

// Lets only one process at a time work on the registry of the running computer. Windows only.
#ifndef ZELVREG_RUNTIME_SINGLE_INSTANCE_H
#define ZELVREG_RUNTIME_SINGLE_INSTANCE_H

#include <windows.h>

namespace zelvreg {

// Keeps all other processes out while it lives, in every session and of every user: they share the
// computer's part of the registry. What keeps them out is a file in the Windows folder: a name of a
// mutex could be taken first by anybody. A process without the rights of an administrator keeps out
// those of its user that have none either.
class SingleInstance {
 public:
  SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;
  ~SingleInstance();

  // False if another process was first, or if that cannot be found out.
  [[nodiscard]] bool isFirst() const { return lock != INVALID_HANDLE_VALUE; }

 private:
  HANDLE lock;
};

}  // namespace zelvreg

#endif

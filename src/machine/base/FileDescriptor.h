// An open file of this system, closed when its owner is gone.
#ifndef ZELVREG_MACHINE_BASE_FILE_DESCRIPTOR_H
#define ZELVREG_MACHINE_BASE_FILE_DESCRIPTOR_H

#include <unistd.h>

#include <utility>

namespace zelvreg::machine {

class FileDescriptor {
 public:
  // Takes over a descriptor; a negative one stands for none.
  explicit FileDescriptor(int descriptor = -1) : number(descriptor) {}
  ~FileDescriptor() {
    if (number >= 0) close(number);
  }
  FileDescriptor(FileDescriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(number, other.number);
    return *this;
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;

  [[nodiscard]] bool isOpen() const { return number >= 0; }
  [[nodiscard]] int get() const { return number; }

 private:
  int number;
};

}  // namespace zelvreg::machine

#endif

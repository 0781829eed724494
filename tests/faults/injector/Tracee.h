// A process that has stopped at the begin of a call to the system. For amd64 only, whose registers
// it reads.
#ifndef ZELVREG_TESTS_FAULTS_INJECTOR_TRACEE_H
#define ZELVREG_TESTS_FAULTS_INJECTOR_TRACEE_H

#include <sys/types.h>
#include <sys/user.h>

#include <cstdint>
#include <string>

namespace zelvreg::faults {

class Tracee {
 public:
  explicit Tracee(pid_t stopped);

  [[nodiscard]] std::uint64_t call() const { return registers.orig_rax; }
  // From 0.
  [[nodiscard]] std::uint64_t argument(int index) const;
  void setArgument(int index, std::uint64_t value);
  // The call is not made; it gives this, an error as its negative number.
  void answer(std::int64_t result);
  // At the end of a call: what it gives.
  void setResult(std::int64_t result);

  // The path of the program that it runs.
  [[nodiscard]] std::string program() const;
  // A text in its memory.
  [[nodiscard]] std::string text(std::uint64_t address) const;
  // Where a descriptor leads to; AT_FDCWD is its present folder.
  [[nodiscard]] std::string pathOf(int descriptor) const;
  // A path as a call names it, made absolute.
  [[nodiscard]] std::string pathFrom(int folder, std::uint64_t address) const;

 private:
  void write() const;

  pid_t process;
  user_regs_struct registers{};
};

}  // namespace zelvreg::faults

#endif

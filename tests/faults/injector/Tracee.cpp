#include "Tracee.h"

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/uio.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>

namespace zelvreg::faults {
namespace {

constexpr std::array places{&user_regs_struct::rdi, &user_regs_struct::rsi, &user_regs_struct::rdx,
                            &user_regs_struct::r10, &user_regs_struct::r8,  &user_regs_struct::r9};

}  // namespace

Tracee::Tracee(pid_t stopped) : process(stopped) {
  ptrace(PTRACE_GETREGS, process, nullptr, &registers);
}

void Tracee::write() const {
  user_regs_struct written = registers;
  ptrace(PTRACE_SETREGS, process, nullptr, &written);
}

std::uint64_t Tracee::argument(int index) const {
  return registers.*places.at(static_cast<std::size_t>(index));
}

void Tracee::setArgument(int index, std::uint64_t value) {
  registers.*places.at(static_cast<std::size_t>(index)) = value;
  write();
}

void Tracee::answer(std::int64_t result) {
  registers.orig_rax = UINT64_MAX;  // no call has this number
  registers.rax = static_cast<std::uint64_t>(result);
  write();
}

void Tracee::setResult(std::int64_t result) {
  registers.rax = static_cast<std::uint64_t>(result);
  write();
}

std::string Tracee::program() const {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/" + std::to_string(process) + "/exe", error).string();
}

std::string Tracee::text(std::uint64_t address) const {
  constexpr std::uint64_t page = 4096;  // the next one may not be there
  std::string result;
  while (address != 0 && result.find('\0') == std::string::npos) {
    std::string part(page - address % page, '\0');
    iovec here{.iov_base = part.data(), .iov_len = part.size()};
    iovec there{.iov_base = reinterpret_cast<void*>(address), .iov_len = part.size()};
    if (process_vm_readv(process, &here, 1, &there, 1, 0) <= 0) {
      break;
    }
    result += part;
    address += part.size();
  }
  return result.substr(0, result.find('\0'));
}

std::string Tracee::pathOf(int descriptor) const {
  const std::string own = "/proc/" + std::to_string(process);
  std::error_code error;
  return std::filesystem::read_symlink(
             descriptor == AT_FDCWD ? own + "/cwd" : own + "/fd/" + std::to_string(descriptor),
             error)
      .string();
}

std::string Tracee::pathFrom(int folder, std::uint64_t address) const {
  const std::string name = text(address);
  if (name.starts_with('/')) {
    return std::filesystem::path(name).lexically_normal().string();
  }
  const std::string start = pathOf(folder);
  return name.empty() ? start
                      : std::filesystem::path(start).append(name).lexically_normal().string();
}

}  // namespace zelvreg::faults

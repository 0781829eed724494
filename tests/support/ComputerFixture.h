// A Windows computer for one test, described and asked through the Windows API alone, so that the
// same test runs on the emulated computer and as a Windows program.
//
// Both start from tests/fixtures/conformance/registry.reg: natively as the machine's registry, on
// Windows imported into a prefix that is thrown away. There, other keys of the system are about as
// well, so a test empties the keys that it is about. Paths are whole ("HKEY_LOCAL_MACHINE\…"), of
// the 64-bit view; names and texts are narrow.
#ifndef ZELVREG_TESTS_SUPPORT_COMPUTER_FIXTURE_H
#define ZELVREG_TESTS_SUPPORT_COMPUTER_FIXTURE_H

#include <gtest/gtest.h>
#include <windows.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "form/Form42.h"

namespace zelvreg::fixture {

// What answers the calls during one test.
class RunningComputer {
 public:
  // `bits` is that of the emulated computer; on Windows it is what the prefix has.
  static std::unique_ptr<RunningComputer> start(int bits);
  virtual ~RunningComputer() = default;
};

// One entry of an access list.
struct AccessRecord {
  int type = 0;
  int flags = 0;
  DWORD mask = 0;
  std::vector<BYTE> sid;

  bool operator==(const AccessRecord&) const = default;
};

class ComputerFixture : public ::testing::Test {
 protected:
  explicit ComputerFixture(int bits = 64);
  ~ComputerFixture() override;

  // Makes a key with all above it, does away with one and all below it, or both in turn.
  static void makeKey(const std::string& path);
  static void removeKey(const std::string& path);
  static void emptyKey(const std::string& path);
  static bool hasKey(const std::string& path);

  // Set a value, making the key. A text is kept with its terminator.
  static void setText(const std::string& path, const std::string& name, std::string_view text,
                      DWORD type = REG_SZ);
  static void setNumber(const std::string& path, const std::string& name, DWORD number);
  static void setBytes(const std::string& path, const std::string& name, DWORD type,
                       std::string_view bytes);
  // The bytes of a value, or its text without the terminator; "(none)" if it is not there.
  static std::string bytesOf(const std::string& path, const std::string& name);
  static std::string storedText(const std::string& path, const std::string& name);

  // Plain files and folders with the folders above them.
  static void makeFile(const std::string& path, std::string_view content = "x");
  static void makeFolder(const std::string& path);

  // The entries of a key's or a file's list, in order.
  static std::vector<AccessRecord> accessOfKey(const std::string& path);
  static std::vector<AccessRecord> accessOfFile(const std::string& path);
  // Sets a key's list from its text form.
  static void setAccessOfKey(const std::string& path, const std::string& sddl);

  static std::string userName();

  std::unique_ptr<RunningComputer> computer;
  // With all safeguards lifted: a test of one sets it, or all of them with `form.safeguards = {}`.
  Form42 form;
};

// The same on a 32-bit computer, which only the emulated one can be.
class Computer32Fixture : public ComputerFixture {
 protected:
  Computer32Fixture() : ComputerFixture(32) {}
};

// The texts of a list of entries.
std::vector<std::string> entriesOf(const ListBox& list);
// The cells of one row of the results: location, bad value, kind, root, key, icon.
std::vector<std::string> findingOf(const Form42& form, std::size_t row);

}  // namespace zelvreg::fixture

#endif

#include "support/ComputerFixture.h"

#include <sddl.h>
#include <shlwapi.h>

#include "keys/RootHandles.h"
#include "roots/ValueTypes.h"
#include "runtime/Environment.h"
#include "scan/Findings.h"
#include "scan/Resolver.h"
#include "text/Wide.h"

namespace zelvreg::fixture {
namespace {

struct KeyName {
  HKEY root;
  std::string path;
};

KeyName split(const std::string& path) {
  const auto backslash = path.find('\\');
  const HKEY root = systemKey(GetHiveHandle(path.substr(0, backslash)));
  return {root, backslash == std::string::npos ? "" : path.substr(backslash + 1)};
}

// A key of the 64-bit view, opened with all rights that it gives.
class OpenKey {
 public:
  OpenKey(const std::string& path, REGSAM access) {
    const KeyName name = split(path);
    status = RegOpenKeyExW(name.root, Wide(name.path).get(), 0, access | KEY_WOW64_64KEY, &key);
  }
  OpenKey(const OpenKey&) = delete;
  OpenKey& operator=(const OpenKey&) = delete;
  ~OpenKey() {
    if (status == ERROR_SUCCESS) {
      RegCloseKey(key);
    }
  }
  [[nodiscard]] bool isOpen() const { return status == ERROR_SUCCESS; }
  [[nodiscard]] HKEY get() const { return key; }

 private:
  HKEY key = nullptr;
  LONG status = ERROR_SUCCESS;
};

std::vector<AccessRecord> recordsOf(std::vector<BYTE>& descriptor) {
  std::vector<AccessRecord> records;
  PACL acl = nullptr;
  BOOL isPresent = FALSE;
  BOOL isDefaulted = FALSE;
  if (GetSecurityDescriptorDacl(descriptor.data(), &isPresent, &acl, &isDefaulted) == FALSE ||
      isPresent == FALSE || acl == nullptr) {
    return records;
  }
  for (DWORD index = 0; index < acl->AceCount; ++index) {
    void* entry = nullptr;
    GetAce(acl, index, &entry);
    auto* ace = static_cast<ACCESS_ALLOWED_ACE*>(entry);
    const auto* sid = reinterpret_cast<const BYTE*>(&ace->SidStart);
    records.push_back({ace->Header.AceType,
                       ace->Header.AceFlags,
                       ace->Mask,
                       {sid, sid + GetLengthSid(&ace->SidStart)}});
  }
  return records;
}

}  // namespace

ComputerFixture::ComputerFixture(int bits) : computer(RunningComputer::start(bits)) {
  form.Is64BitOS = runsOn64BitWindows();
  form.programFolder = programFolder();
  form.safeguards = asDescribed();
}

ComputerFixture::~ComputerFixture() = default;

void ComputerFixture::makeKey(const std::string& path) {
  const KeyName name = split(path);
  HKEY key = nullptr;
  ASSERT_EQ(RegCreateKeyExW(name.root, Wide(name.path).get(), 0, nullptr, 0,
                            KEY_ALL_ACCESS | KEY_WOW64_64KEY, nullptr, &key, nullptr),
            ERROR_SUCCESS)
      << path;
  RegCloseKey(key);
}

void ComputerFixture::removeKey(const std::string& path) {
  const auto backslash = path.rfind('\\');
  const OpenKey parent(path.substr(0, backslash), KEY_ALL_ACCESS);
  if (parent.isOpen()) {
    SHDeleteKeyW(parent.get(), Wide(path.substr(backslash + 1)).get());
  }
}

void ComputerFixture::emptyKey(const std::string& path) {
  removeKey(path);
  makeKey(path);
}

bool ComputerFixture::hasKey(const std::string& path) {
  return OpenKey(path, KEY_QUERY_VALUE).isOpen();
}

void ComputerFixture::setText(const std::string& path, const std::string& name,
                              std::string_view text, DWORD type) {
  setBytes(path, name, type, std::string(text) + '\0');
}

void ComputerFixture::setNumber(const std::string& path, const std::string& name, DWORD number) {
  setBytes(path, name, REG_DWORD, {reinterpret_cast<const char*>(&number), sizeof(number)});
}

void ComputerFixture::setBytes(const std::string& path, const std::string& name, DWORD type,
                               std::string_view bytes) {
  makeKey(path);
  const OpenKey key(path, KEY_SET_VALUE);
  // The system takes along a terminator that stands after the data, so something else stands
  // there.
  const std::u16string units = isText(type) ? utf16(bytes) : u"";
  const std::string_view data = isText(type)
                                    ? std::string_view(reinterpret_cast<const char*>(units.data()),
                                                       units.size() * sizeof(char16_t))
                                    : bytes;
  const std::string guarded = std::string(data) + "!!";
  ASSERT_EQ(RegSetValueExW(key.get(), Wide(name).get(), 0, type,
                           reinterpret_cast<const BYTE*>(guarded.data()),
                           static_cast<DWORD>(data.size())),
            ERROR_SUCCESS)
      << path << " " << name;
}

std::string ComputerFixture::bytesOf(const std::string& path, const std::string& name) {
  const OpenKey key(path, KEY_QUERY_VALUE);
  std::vector<BYTE> data(16384);
  auto size = static_cast<DWORD>(data.size());
  DWORD type = REG_NONE;
  if (!key.isOpen() || RegQueryValueExW(key.get(), Wide(name).get(), nullptr, &type, data.data(),
                                        &size) != ERROR_SUCCESS) {
    return "(none)";
  }
  data.resize(size);
  return isText(type) ? utf8(unitsOf(data)) : std::string(data.begin(), data.end());
}

std::string ComputerFixture::storedText(const std::string& path, const std::string& name) {
  std::string text = bytesOf(path, name);
  if (text.ends_with('\0')) {
    text.pop_back();
  }
  return text;
}

void ComputerFixture::makeFolder(const std::string& path) {
  for (auto end = path.find('\\', 3); end != std::string::npos; end = path.find('\\', end + 1)) {
    CreateDirectoryW(Wide(path.substr(0, end)).get(), nullptr);
  }
  CreateDirectoryW(Wide(path).get(), nullptr);
}

void ComputerFixture::makeFile(const std::string& path, std::string_view content) {
  makeFolder(path.substr(0, path.rfind('\\')));
  SetFileAttributesW(Wide(path).get(), FILE_ATTRIBUTE_NORMAL);
  HANDLE file = CreateFileW(Wide(path).get(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(file, INVALID_HANDLE_VALUE) << path;
  DWORD written = 0;
  WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
  CloseHandle(file);
}

std::vector<AccessRecord> ComputerFixture::accessOfKey(const std::string& path) {
  const OpenKey key(path, READ_CONTROL);
  DWORD size = 0;
  RegGetKeySecurity(key.get(), DACL_SECURITY_INFORMATION, nullptr, &size);
  std::vector<BYTE> descriptor(size);
  EXPECT_EQ(RegGetKeySecurity(key.get(), DACL_SECURITY_INFORMATION, descriptor.data(), &size),
            ERROR_SUCCESS)
      << path;
  return recordsOf(descriptor);
}

std::vector<AccessRecord> ComputerFixture::accessOfFile(const std::string& path) {
  DWORD size = 0;
  GetFileSecurityW(Wide(path).get(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<BYTE> descriptor(size);
  EXPECT_NE(
      GetFileSecurityW(Wide(path).get(), DACL_SECURITY_INFORMATION, descriptor.data(), size, &size),
      FALSE)
      << path;
  return recordsOf(descriptor);
}

void ComputerFixture::setAccessOfKey(const std::string& path, const std::string& sddl) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  ASSERT_NE(ConvertStringSecurityDescriptorToSecurityDescriptorW(Wide(sddl).get(), SDDL_REVISION_1,
                                                                 &descriptor, nullptr),
            FALSE);
  const OpenKey key(path, WRITE_DAC);
  EXPECT_EQ(RegSetKeySecurity(key.get(), DACL_SECURITY_INFORMATION, descriptor), ERROR_SUCCESS);
  LocalFree(descriptor);
}

std::string ComputerFixture::userName() { return environmentVariable("USERNAME"); }

std::vector<std::string> entriesOf(const ListBox& list) {
  std::vector<std::string> entries;
  for (int index = 0; index < list.count(); ++index) {
    entries.push_back(list.text(index));
  }
  return entries;
}

std::vector<std::string> findingOf(const Form42& form, std::size_t row) {
  return {form.View2.text(row, locationColumn), form.View2.text(row, badValueColumn),
          form.View2.text(row, kindCodeColumn), form.View2.text(row, rootNameColumn),
          form.View2.text(row, subKeyColumn),   form.View2.smallIcon(row)};
}

}  // namespace zelvreg::fixture

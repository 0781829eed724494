#include "runtime/FileText.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <random>
#include <vector>

#include "runtime/FileSecurity.h"
#include "runtime/PrivateFiles.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

// A name that nobody can foresee, so that nobody can take it first.
std::string nameBeside(const std::string& path) {
  std::random_device random;
  return path + "." + std::to_string(random()) + std::to_string(random()) + ".new";
}

// A new file beside `path`, under a name that no file has. Gives its name in `beside`;
// INVALID_HANDLE_VALUE if it cannot be created.
HANDLE makeBeside(const std::string& path, std::string& beside,
                  const SECURITY_ATTRIBUTES* security) {
  constexpr int mostTries = 100;
  HANDLE file = INVALID_HANDLE_VALUE;
  for (int tries = 0; file == INVALID_HANDLE_VALUE && tries < mostTries; ++tries) {
    beside = nameBeside(path);
    // The call only reads the attributes, though its type does not say so.
    file = CreateFileW(Wide(beside).get(), GENERIC_WRITE, 0,
                       const_cast<SECURITY_ATTRIBUTES*>(security), CREATE_NEW,
                       FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (file == INVALID_HANDLE_VALUE && GetLastError() != ERROR_FILE_EXISTS) {
      break;
    }
  }
  return file;
}

// Gives `file`, which nobody else can open yet, the access list of the file at `path`, if there is
// one and its disk has lists. False if one would be lost.
bool keepList(const std::string& path, const std::string& file) {
  std::vector<BYTE> list = fileSecurity(path, DACL_SECURITY_INFORMATION);
  if (list.empty()) {
    return GetLastError() != ERROR_ACCESS_DENIED;
  }
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  DWORD revision = 0;
  // A list counts as inherited by rule only if the one who sets it asks for that.
  if (GetSecurityDescriptorControl(list.data(), &control, &revision) != FALSE &&
      (control & SE_DACL_AUTO_INHERITED) != 0) {
    SetSecurityDescriptorControl(list.data(), SE_DACL_AUTO_INHERIT_REQ, SE_DACL_AUTO_INHERIT_REQ);
  }
  return setFileSecurity(file, DACL_SECURITY_INFORMATION, list.data());
}

bool writeWhole(HANDLE file, std::string_view bytes) {
  const auto size = static_cast<DWORD>(bytes.size());
  DWORD written = 0;
  return WriteFile(file, bytes.data(), size, &written, nullptr) != FALSE && written == size &&
         FlushFileBuffers(file) != FALSE;
}

}  // namespace

std::optional<std::string> readFileText(const std::string& path) {
  HANDLE file = CreateFileW(Wide(path).get(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                            nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return std::nullopt;
  }
  std::string text;
  std::array<char, 65536> block{};
  DWORD count = 0;
  BOOL isRead = ReadFile(file, block.data(), static_cast<DWORD>(block.size()), &count, nullptr);
  while (isRead != FALSE && count > 0) {
    text.append(block.data(), count);
    isRead = ReadFile(file, block.data(), static_cast<DWORD>(block.size()), &count, nullptr);
  }
  CloseHandle(file);
  return isRead != FALSE ? std::optional(std::move(text)) : std::nullopt;
}

bool replaceFileText(const std::string& path, std::string_view bytes, FileReaders readers) {
  const bool isPrivate = readers == FileReaders::Administrators;
  const PrivateSecurity security(PrivateSecurity::Of::File);
  if (isPrivate && security.get() == nullptr) {
    return false;
  }
  std::string beside;
  HANDLE file = makeBeside(path, beside, isPrivate ? security.get() : nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return false;
  }
  const bool isWritten = (isPrivate || keepList(path, beside)) && writeWhole(file, bytes);
  CloseHandle(file);
  if (isWritten && MoveFileExW(Wide(beside).get(), Wide(path).get(),
                               MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != FALSE) {
    return true;
  }
  DeleteFileW(Wide(beside).get());
  return false;
}

bool isSurelyMissing(const std::string& path) {
  if (GetFileAttributesW(Wide(path).get()) != INVALID_FILE_ATTRIBUTES) {
    return false;
  }
  const DWORD error = GetLastError();
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

bool deleteFile(const std::string& path) {
  return DeleteFileW(Wide(path).get()) != FALSE || isSurelyMissing(path);
}

std::optional<std::string> contentToKeep(const std::string& path) {
  auto content = readFileText(path);
  if (!content && isSurelyMissing(path)) {
    content.emplace();
  }
  return content;
}

}  // namespace zelvreg

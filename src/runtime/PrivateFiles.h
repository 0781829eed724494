// Files and folders that administrators and the system alone may read and write, and whether
// somebody else could have written one.
#ifndef ZELVREG_RUNTIME_PRIVATE_FILES_H
#define ZELVREG_RUNTIME_PRIVATE_FILES_H

#include <windows.h>

#include <string>

namespace zelvreg {

// What makes a new file or folder private from its first moment on: Administrators own it and have
// full control, as SYSTEM has; nothing for others, nothing taken over from the folder above. Who is
// no administrator, or runs without an administrator's rights, cannot make one.
class PrivateSecurity {
 public:
  enum class Of { File, Folder };
  explicit PrivateSecurity(Of kind);
  ~PrivateSecurity();
  PrivateSecurity(const PrivateSecurity&) = delete;
  PrivateSecurity& operator=(const PrivateSecurity&) = delete;

  // Null if the system cannot make it.
  [[nodiscard]] const SECURITY_ATTRIBUTES* get() const;

 private:
  SECURITY_ATTRIBUTES attributes{sizeof(SECURITY_ATTRIBUTES), nullptr, FALSE};
};

// Makes a private folder. One that is there already stays as it is, unless others own it or may
// write in it: then its owner and its access list are replaced.
void makePrivateFolder(const std::string& path);

// Whether the owner or the access list of a file or of its folder lets somebody write who is
// neither Administrators, SYSTEM, the installer of Windows nor the user of this process; true also
// if that cannot be told.
bool couldOthersWrite(const std::string& path);

}  // namespace zelvreg

#endif

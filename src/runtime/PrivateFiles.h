// Files and folders that only Administrators and SYSTEM may read and write, and whether somebody
// else could have written one.
#ifndef ZELVREG_RUNTIME_PRIVATE_FILES_H
#define ZELVREG_RUNTIME_PRIVATE_FILES_H

#include <windows.h>

#include <string>

namespace zelvreg {

// The security attributes that make a new file or folder private when it is created. Administrators
// own it. Administrators and SYSTEM have full control, others no access, and nothing is inherited
// from the folder above. Only a process with administrator rights can create one. The object owns
// the descriptor and must outlive the call that uses it.
class PrivateSecurity {
 public:
  enum class Of { File, Folder };
  explicit PrivateSecurity(Of kind);
  ~PrivateSecurity();
  PrivateSecurity(const PrivateSecurity&) = delete;
  PrivateSecurity& operator=(const PrivateSecurity&) = delete;

  // Null if the system cannot build the descriptor.
  [[nodiscard]] const SECURITY_ATTRIBUTES* get() const;

 private:
  SECURITY_ATTRIBUTES attributes{sizeof(SECURITY_ATTRIBUTES), nullptr, FALSE};
};

// Creates a private folder. If there is one already, it stays as it is, unless others own it or may
// write to it: then its owner and its access list are replaced. Failures are not reported.
void makePrivateFolder(const std::string& path);

// Whether the owner or the access list of a file, or of its folder, lets anybody write but
// Administrators, SYSTEM, the installer of Windows and the user of this process. Also true if that
// cannot be found out.
bool couldOthersWrite(const std::string& path);

}  // namespace zelvreg

#endif

// What a Windows file has and a file of this system has not: attributes and an access list. Kept
// beside the drives, in the files attributes.txt and security.txt of a machine folder.
#ifndef ZELVREG_MACHINE_FILES_FILE_RECORDS_H
#define ZELVREG_MACHINE_FILES_FILE_RECORDS_H

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "machine/security/Security.h"

namespace zelvreg::machine {

// Files are named by their true paths in UTF-8 ("C:\Windows\x.txt"), without regard to case. A file
// need not be there to have a record.
class FileRecords {
 public:
  // FILE_ATTRIBUTE_NORMAL if none is set. Unless something is said, a file has archive; the bit of
  // a folder comes with being one.
  [[nodiscard]] DWORD attributes(std::string_view path, bool isFolder) const;
  [[nodiscard]] bool hasAnyAttributes() const { return !attributesOf.empty(); }
  // Keeps those that can be set.
  void setAttributes(std::string_view path, bool isFolder, DWORD attributes);

  // The default list unless one is said.
  [[nodiscard]] const SecurityDescriptor& security(std::string_view path) const;
  [[nodiscard]] bool hasSecurity(std::string_view path) const;
  [[nodiscard]] bool hasAnySecurity() const { return !securityOf.empty(); }
  void setSecurity(std::string_view path, SecurityDescriptor descriptor);

  // A deleted file loses its record; a moved file or folder takes those of all below it along.
  void remove(std::string_view path);
  void move(std::string_view from, std::string_view to);

  // In path order. Attributes are those that differ from the default.
  [[nodiscard]] std::vector<std::pair<std::string, DWORD>> allAttributes() const;
  [[nodiscard]] std::vector<std::pair<std::string, SecurityDescriptor>> allSecurities() const;

  [[nodiscard]] bool attributesChanged() const { return attributesDiffer; }
  [[nodiscard]] bool securityChanged() const { return securityDiffers; }
  // What is there now counts as loaded.
  void markSaved();

 private:
  template <typename Value>
  struct Named {
    std::string path;  // as it was written first
    Value value;
  };
  template <typename Value>
  using Records = std::map<std::u16string, Named<Value>>;  // by upper-case path

  template <typename Value>
  static bool removeRecord(Records<Value>& records, std::string_view path);
  template <typename Value>
  static bool moveRecords(Records<Value>& records, std::string_view from, std::string_view to);

  Records<DWORD> attributesOf;
  Records<SecurityDescriptor> securityOf;
  bool attributesDiffer = false;
  bool securityDiffers = false;
};

}  // namespace zelvreg::machine

#endif

// Where Windows finds a program or a library that is named without its folder.
#ifndef ZELVREG_EVIDENCE_SEARCH_PATH_H
#define ZELVREG_EVIDENCE_SEARCH_PATH_H

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "evidence/FileLook.h"
#include "evidence/OwnerVariables.h"

namespace zelvreg {

class SearchPath {
 public:
  // Both must outlive this.
  SearchPath(FileLook& fileLook, OwnerVariables& ownerVariables)
      : files(fileLook), variables(ownerVariables) {}

  // The first file that a name without a folder, or a path that begins at none, leads to, in the
  // folders of the system for both views, those of the variable PATH of the owner, and the lists of
  // application paths. std::nullopt if there is none. No other computer is asked.
  std::optional<std::string> find(const std::string& name, const std::u16string& owner);

 private:
  const std::vector<std::string>& foldersOf(const std::u16string& owner);
  std::optional<std::string> findInLists(const std::string& name, const std::u16string& owner);
  FileIs ask(const std::string& path);
  bool isFile(const std::string& path);
  bool isFolder(const std::string& path);

  FileLook& files;
  OwnerVariables& variables;
  std::map<std::u16string, std::vector<std::string>> folders;  // by owner
  std::map<std::u16string, std::map<std::string, std::optional<std::string>>> known;
};

}  // namespace zelvreg

#endif

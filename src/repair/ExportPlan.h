// What a safety export contains: collected row by row, each key once, then written.
#ifndef ZELVREG_REPAIR_EXPORT_PLAN_H
#define ZELVREG_REPAIR_EXPORT_PLAN_H

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "evidence/TruePlaces.h"
#include "keys/RegistryTextWriter.h"

namespace zelvreg {

class ExportPlan {
 public:
  // A key with everything below it, in both views.
  void addTree(HiveHandle hive, const std::string& key);
  // A value, in the 64-bit view. The default value's name is empty.
  void addValue(HiveHandle hive, const std::string& key, const std::string& name);
  // The default value in both views, or the fact that there is none.
  void addDefault(HiveHandle hive, const std::string& key);
  // Owner, group and access list of a key, in the 64-bit view. A tree has those of all its keys
  // anyway.
  void addSecurity(HiveHandle hive, const std::string& key);

  // Keys in the order in which they were added, values in the order in which the system lists them.
  // False, and the text is incomplete, if something cannot be read that could still be deleted or
  // changed, or if the format cannot represent it.
  [[nodiscard]] bool write(RegistryTextWriter& writer) const;

 private:
  using NameSet = std::set<std::u16string, NameOrder>;

  struct Entry {
    TruePlace place;
    bool isTree = false;
    bool hasSecurity = false;
    NameSet names;  // of single values
  };

  Entry& entryOf(const TruePlace& place);
  [[nodiscard]] bool isCovered(const std::u16string& fullPath) const;
  [[nodiscard]] bool writeTree(RegistryTextWriter& writer, const TruePlace& place) const;
  [[nodiscard]] bool writeSingles(RegistryTextWriter& writer, const Entry& entry) const;
  // `secured` is null for a key whose access list stays out.
  [[nodiscard]] static bool beginKey(RegistryTextWriter& writer, const TruePlace& place,
                                     const WideKey* secured);
  [[nodiscard]] bool writeValues(RegistryTextWriter& writer, const TruePlace& place,
                                 const std::vector<WideValue>& values,
                                 const std::function<bool(const WideValue&)>& isWanted) const;

  TruePlaces places;
  std::vector<Entry> entries;
  std::map<std::u16string, std::size_t> indexes;  // of entries, by full path
  std::set<std::u16string> defaults;  // full paths of keys whose default value is written over
};

}  // namespace zelvreg

#endif

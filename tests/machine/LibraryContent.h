// What is in a hive file, as libhivex reads it.
#ifndef ZELVREG_TESTS_MACHINE_LIBRARY_CONTENT_H
#define ZELVREG_TESTS_MACHINE_LIBRARY_CONTENT_H

#include <hivex.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace zelvreg::fixture {

// Keys by path ("\\Vendor\\Product"), and values as path, "|" and name, each with its type and
// bytes.
using HiveContent = std::map<std::string, std::string>;

inline void addContent(HiveContent& content, hive_h* hive, hive_node_h node,
                       const std::string& path) {
  content[path];
  hive_value_h* values = hivex_node_values(hive, node);
  for (const hive_value_h* value = values; value != nullptr && *value != 0; ++value) {
    hive_type type = hive_t_none;
    std::size_t size = 0;
    char* name = hivex_value_key(hive, *value);
    char* bytes = hivex_value_value(hive, *value, &type, &size);
    std::uint32_t number = 0;
    std::memcpy(&number, &type, sizeof number);
    content[path + "|" + name] = std::to_string(number) + ":" + std::string(bytes, size);
    free(name);
    free(bytes);
  }
  free(values);
  hive_node_h* children = hivex_node_children(hive, node);
  for (const hive_node_h* child = children; child != nullptr && *child != 0; ++child) {
    char* name = hivex_node_name(hive, *child);
    addContent(content, hive, *child, path + "\\" + name);
    free(name);
  }
  free(children);
}

// None if the file is no hive.
inline std::optional<HiveContent> libraryContent(const std::filesystem::path& file) {
  hive_h* hive = hivex_open(file.c_str(), 0);
  if (hive == nullptr) {
    return std::nullopt;
  }
  HiveContent content;
  addContent(content, hive, hivex_root(hive), "");
  hivex_close(hive);
  return content;
}

}  // namespace zelvreg::fixture

#endif

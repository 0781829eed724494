#include "machine/files/FileRecords.h"

#include "machine/base/CaseFold.h"
#include "unicode/Unicode.h"

namespace zelvreg::machine {

namespace {

// Read-only, hidden, system, archive, temporary, offline and not indexed.
constexpr DWORD settableAttributes = 0x3127;

std::u16string keyOf(std::string_view path) { return upperCase(utf16(path)); }

DWORD defaultAttributes(bool isFolder) { return isFolder ? 0 : FILE_ATTRIBUTE_ARCHIVE; }

}  // namespace

DWORD FileRecords::attributes(std::string_view path, bool isFolder) const {
  DWORD known = defaultAttributes(isFolder);
  if (!attributesOf.empty()) {
    const auto found = attributesOf.find(keyOf(path));
    if (found != attributesOf.end()) known = found->second.value & settableAttributes;
  }
  if (isFolder) known |= FILE_ATTRIBUTE_DIRECTORY;
  return known == 0 ? FILE_ATTRIBUTE_NORMAL : known;
}

void FileRecords::setAttributes(std::string_view path, bool isFolder, DWORD attributes) {
  const DWORD kept = attributes & settableAttributes;
  const DWORD told = kept | (isFolder ? FILE_ATTRIBUTE_DIRECTORY : 0);
  if ((told == 0 ? FILE_ATTRIBUTE_NORMAL : told) == this->attributes(path, isFolder)) return;
  attributesDiffer = true;
  const std::u16string key = keyOf(path);
  if (kept == defaultAttributes(isFolder)) {
    attributesOf.erase(key);
    return;
  }
  const DWORD value = kept == 0 ? FILE_ATTRIBUTE_NORMAL : kept;
  attributesOf.try_emplace(key, Named<DWORD>{std::string(path), 0}).first->second.value = value;
}

const SecurityDescriptor& FileRecords::security(std::string_view path) const {
  if (securityOf.empty()) return defaultFileSecurity();
  const auto found = securityOf.find(keyOf(path));
  return found == securityOf.end() ? defaultFileSecurity() : found->second.value;
}

bool FileRecords::hasSecurity(std::string_view path) const {
  return !securityOf.empty() && securityOf.contains(keyOf(path));
}

void FileRecords::setSecurity(std::string_view path, SecurityDescriptor descriptor) {
  if (security(path) == descriptor) return;
  securityDiffers = true;
  const Named<SecurityDescriptor> empty{std::string(path), {}};
  securityOf.try_emplace(keyOf(path), empty).first->second.value = std::move(descriptor);
}

template <typename Value>
bool FileRecords::removeRecord(Records<Value>& records, std::string_view path) {
  return !records.empty() && records.erase(keyOf(path)) != 0;
}

template <typename Value>
bool FileRecords::moveRecords(Records<Value>& records, std::string_view from, std::string_view to) {
  if (records.empty()) return false;
  const std::u16string start = keyOf(from);
  Records<Value> moved;
  std::erase_if(records, [&](const auto& record) {
    const std::u16string_view key = record.first;
    const bool belongs =
        key.starts_with(start) && (key.size() == start.size() || key[start.size()] == u'\\');
    if (!belongs) return false;
    const std::u16string below = utf16(record.second.path).substr(start.size());
    const std::string path = std::string(to) + utf8(below);
    moved.insert_or_assign(keyOf(path), Named<Value>{path, record.second.value});
    return true;
  });
  const bool any = !moved.empty();
  for (auto& [key, record] : moved) records.insert_or_assign(key, std::move(record));
  return any;
}

void FileRecords::remove(std::string_view path) {
  attributesDiffer = removeRecord(attributesOf, path) || attributesDiffer;
  securityDiffers = removeRecord(securityOf, path) || securityDiffers;
}

void FileRecords::move(std::string_view from, std::string_view to) {
  remove(to);
  attributesDiffer = moveRecords(attributesOf, from, to) || attributesDiffer;
  securityDiffers = moveRecords(securityOf, from, to) || securityDiffers;
}

std::vector<std::pair<std::string, DWORD>> FileRecords::allAttributes() const {
  std::vector<std::pair<std::string, DWORD>> all;
  for (const auto& [key, record] : attributesOf) all.emplace_back(record.path, record.value);
  return all;
}

std::vector<std::pair<std::string, SecurityDescriptor>> FileRecords::allSecurities() const {
  std::vector<std::pair<std::string, SecurityDescriptor>> all;
  for (const auto& [key, record] : securityOf) all.emplace_back(record.path, record.value);
  return all;
}

void FileRecords::markSaved() {
  attributesDiffer = false;
  securityDiffers = false;
}

}  // namespace zelvreg::machine

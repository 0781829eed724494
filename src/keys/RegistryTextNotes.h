// What a safety export says beyond the registry editor's format: comments, which that editor passes
// over. docs/safety-export.md tells each.
#ifndef ZELVREG_KEYS_REGISTRY_TEXT_NOTES_H
#define ZELVREG_KEYS_REGISTRY_TEXT_NOTES_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zelvreg::notes {

inline constexpr std::u16string_view prefix = u";zelvreg ";
// Before the first key: this file is a safety export, so that access lists do not keep it out.
inline constexpr std::u16string_view safetyExport = u"safety export";
// The same: whose HKEY_CURRENT_USER it has the keys of.
inline constexpr std::u16string_view user = u"user=";
// After a key: its owner, group and access list, and the places of its values.
inline constexpr std::u16string_view security = u"security=hex:";
inline constexpr std::u16string_view order = u"order=";

// "0-3,7": rising numbers, those that follow each other as the first and the last.
std::u16string positionsText(const std::vector<std::size_t>& numbers);
// The same read. False, and `positions` without meaning, for any other text.
bool readPositions(std::u16string_view text, std::vector<std::size_t>& positions);

}  // namespace zelvreg::notes

#endif

// Paths through the registry as a program sees it: the two views, links, and HKEY_CLASSES_ROOT,
// which lays the user's classes over the machine's.
#ifndef ZELVREG_MACHINE_REGISTRY_REGISTRY_WALK_H
#define ZELVREG_MACHINE_REGISTRY_REGISTRY_WALK_H

#include <windows.h>

#include <optional>
#include <string_view>

#include "machine/registry/Registry.h"

namespace zelvreg::machine {

// The next name of a path, taken off it; backslashes around it are passed over. Empty at the end.
std::u16string_view takeComponent(std::u16string_view& path);

// ERROR_SUCCESS, or what opening this path answers before a key is looked for: a backslash in
// front is a bad path name, a name that no key can have an invalid parameter.
LONG checkPath(std::u16string_view path);

// The root of this long name ("HKEY_LOCAL_MACHINE", any case); none for any other text.
std::optional<KeyPlace> rootPlace(Registry& registry, std::u16string_view name, View view);
// The same by predefined handle; none for any other handle, and where the root is a link that
// leads nowhere (HKEY_CURRENT_CONFIG).
std::optional<KeyPlace> rootPlace(Registry& registry, HKEY root, View view);

// Whether to open a link itself, where it is the last of a path, or what it leads to.
enum class LastLink { Follow, Open };

// The key that `path` leads to from `from`, in `view`, if there is one.
std::optional<KeyPlace> walk(Registry& registry, const KeyPlace& from, std::u16string_view path,
                             View view, LastLink lastLink = LastLink::Follow);

// The real key that a place shows and changes: of a merged one the user's if it is there, else
// the machine's. Null if it was deleted, or if the view has no such key.
RegistryKey* shownKey(Registry& registry, const KeyPlace& place);

struct CreatedKey {
  LONG status = ERROR_SUCCESS;  // when it is not ERROR_SUCCESS the rest has no meaning
  KeyPlace place;
  bool isNew = false;
};

// Who makes keys, and whether in any key or only where the list of the key above gives
// KEY_CREATE_SUB_KEY.
struct KeyMaker {
  const Token& token;
  bool makesAnywhere = false;
};

// Opens the key or makes it with all its missing parents, which take over inheritable entries of
// access lists. `path` must have passed checkPath(). In HKEY_CLASSES_ROOT a new key is the
// machine's.
CreatedKey create(Registry& registry, const KeyPlace& from, std::u16string_view path, View view,
                  const KeyMaker& by);

// For loading: the same in the 64-bit view without access lists. Null where a name leads through a
// link to nowhere, or the path is too deep.
RegistryKey* makeKey(Registry& registry, RegistryKey& from, std::u16string_view path);

// The subkeys and values of a place by index, merged where the place is: subkeys in name order,
// the user's values first, without doubles. Null after the last one. `cursor` may be kept for the
// next index of the same place.
RegistryKey* subkeyAt(Registry& registry, const KeyPlace& place, std::size_t index,
                      MergeCursor& cursor);
const RegistryValue* valueAt(Registry& registry, const KeyPlace& place, std::size_t index);
// By name; the user's first where the place is merged.
const RegistryValue* findValue(Registry& registry, const KeyPlace& place, std::u16string_view name);

}  // namespace zelvreg::machine

#endif

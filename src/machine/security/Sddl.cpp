// The text form of access lists.
#include <array>
#include <charconv>
#include <stdexcept>

#include "machine/base/MachineError.h"
#include "machine/security/AccessList.h"
#include "machine/security/Accounts.h"
#include "machine/security/Security.h"

namespace zelvreg::machine {

namespace {

constexpr std::string_view noAccessControl = "NO_ACCESS_CONTROL";
constexpr std::size_t largestAcl = 0xFFFF;

struct NamedBits {
  std::string_view letters;
  DWORD bits;
};

// Rights that have letters for the whole mask. Of two names for one mask the first is written.
constexpr auto namedRights = std::to_array<NamedBits>({
    {"KA", KEY_ALL_ACCESS},
    {"KR", KEY_READ},
    {"KW", KEY_WRITE},
    {"KX", KEY_READ},
    {"FA", 0x1F01FF},
    {"FR", 0x120089},
    {"FW", 0x120116},
    {"FX", 0x1200A0},
    {"GA", GENERIC_ALL},
    {"GR", GENERIC_READ},
    {"GW", GENERIC_WRITE},
    {"GX", GENERIC_EXECUTE},
    {"RC", READ_CONTROL},
    {"SD", DELETE_ACCESS},
    {"WD", WRITE_DAC},
    {"WO", WRITE_OWNER},
    {"CC", 0x1},
    {"DC", 0x2},
    {"LC", 0x4},
    {"SW", 0x8},
    {"RP", 0x10},
    {"WP", 0x20},
    {"DT", 0x40},
    {"LO", 0x80},
    {"CR", 0x100},
});
// The names that follow belong to another kind of object; they are read but never written.
constexpr std::size_t writtenRights = 16;

constexpr auto entryFlags = std::to_array<NamedBits>({
    {"OI", OBJECT_INHERIT_ACE},
    {"CI", CONTAINER_INHERIT_ACE},
    {"NP", NO_PROPAGATE_INHERIT_ACE},
    {"IO", INHERIT_ONLY_ACE},
    {"ID", INHERITED_ACE},
});

constexpr auto listFlags = std::to_array<NamedBits>({
    {"P", SE_DACL_PROTECTED},
    {"AR", SE_DACL_AUTO_INHERIT_REQ},
    {"AI", SE_DACL_AUTO_INHERITED},
});

[[noreturn]] void refuse(std::string_view what, std::string_view part) {
  throw MachineError("access list: " + std::string(what) + " \"" + std::string(part) + "\"");
}

// Takes names off the head of `text` as long as one of the table stands there.
template <std::size_t size>
DWORD takeBits(std::string_view& text, const std::array<NamedBits, size>& table) {
  DWORD bits = 0;
  for (bool found = true; found && !text.empty();) {
    found = false;
    for (const NamedBits& named : table) {
      if (!text.starts_with(named.letters)) continue;
      bits |= named.bits;
      text.remove_prefix(named.letters.size());
      found = true;
      break;
    }
  }
  return bits;
}

template <std::size_t size>
std::string lettersOf(DWORD bits, const std::array<NamedBits, size>& table) {
  std::string text;
  for (const NamedBits& named : table) {
    if ((bits & named.bits) != 0) text += named.letters;
  }
  return text;
}

Bytes parseSid(std::string_view text) {
  const auto sid = sidFromText(text);
  if (!sid) refuse("no such account", text);
  return *sid;
}

ACCESS_MASK parseRights(std::string_view text) {
  if (!text.empty() && text[0] >= '0' && text[0] <= '9') {
    const bool hex = text.starts_with("0x") || text.starts_with("0X");
    const std::string_view digits = hex ? text.substr(2) : text;
    ACCESS_MASK mask = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), mask, hex ? 16 : 10);
    if (error != std::errc() || end != digits.data() + digits.size()) refuse("bad rights", text);
    return mask;
  }
  std::string_view rest = text;
  const ACCESS_MASK mask = takeBits(rest, namedRights);
  if (!rest.empty()) refuse("unknown rights", rest);
  return mask;
}

// "type;flags;rights;;;account"
AccessEntry parseEntry(std::string_view text) {
  std::array<std::string_view, 6> fields;
  std::string_view rest = text;
  for (std::size_t at = 0; at < fields.size(); ++at) {
    const std::size_t end = rest.find(';');
    if ((end == std::string_view::npos) != (at + 1 == fields.size())) {
      refuse("an entry has six fields, not", text);
    }
    fields[at] = rest.substr(0, end);
    rest.remove_prefix(std::min(rest.size(), fields[at].size() + 1));
  }
  AccessEntry entry;
  if (fields[0] != "A" && fields[0] != "D") refuse("unknown kind of entry", text);
  entry.type = fields[0] == "A" ? ACCESS_ALLOWED_ACE_TYPE : ACCESS_DENIED_ACE_TYPE;
  entry.flags = static_cast<BYTE>(takeBits(fields[1], entryFlags));
  if (!fields[1].empty()) refuse("unknown flags", fields[1]);
  entry.mask = parseRights(fields[2]);
  if (!fields[3].empty() || !fields[4].empty()) refuse("object entries are not kept", text);
  entry.sid = parseSid(fields[5]);
  return entry;
}

// What stands between "D:" and the next part.
void parseList(std::string_view text, SecurityDescriptor& descriptor) {
  descriptor.control |= SE_DACL_PRESENT;
  const DWORD flags = takeBits(text, listFlags);
  descriptor.control = static_cast<SECURITY_DESCRIPTOR_CONTROL>(descriptor.control | flags);
  if (text == noAccessControl) return;
  std::vector<AccessEntry> entries;
  while (!text.empty()) {
    const std::size_t end = text.find(')');
    if (text[0] != '(' || end == std::string_view::npos) refuse("an entry stands in ( ):", text);
    entries.push_back(parseEntry(text.substr(1, end - 1)));
    text.remove_prefix(end + 1);
  }
  descriptor.hasDacl = true;
  descriptor.dacl = aclOf(entries);
  if (sizeof(ACL) + entries.size() * sizeof(ACCESS_ALLOWED_ACE) > largestAcl) {
    refuse("too many entries", std::to_string(entries.size()));
  }
}

// Where the next part ("O:", "G:", "D:", "S:") begins; no account's letters hold a colon.
std::size_t endOfPart(std::string_view text) {
  const std::size_t colon = text.find(':', 2);
  return colon == std::string_view::npos ? text.size() : colon - 1;
}

std::string rightsText(ACCESS_MASK mask) {
  for (std::size_t at = 0; at < writtenRights; ++at) {
    if (namedRights[at].bits == mask) return std::string(namedRights[at].letters);
  }
  std::array<char, 8> digits{};
  const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), mask, 16);
  return "0x" + std::string(digits.data(), written.ptr);
}

}  // namespace

SecurityDescriptor parseSddl(std::string_view text) {
  SecurityDescriptor descriptor;
  while (!text.empty()) {
    if (text.size() < 2 || text[1] != ':') refuse("a part begins with O:, G: or D:, not", text);
    const char kind = text[0];
    const std::size_t end = endOfPart(text);
    const std::string_view part = text.substr(2, end - 2);
    text.remove_prefix(end);
    if (kind == 'O') {
      descriptor.owner = parseSid(part);
    } else if (kind == 'G') {
      descriptor.group = parseSid(part);
    } else if (kind == 'D') {
      parseList(part, descriptor);
    } else {
      refuse("a part begins with O:, G: or D:, not", std::string_view(&kind, 1));
    }
  }
  return descriptor;
}

std::string formatSddl(const SecurityDescriptor& descriptor) {
  std::string text;
  if (!descriptor.owner.empty()) text += "O:" + sidText(descriptor.owner.data());
  if (!descriptor.group.empty()) text += "G:" + sidText(descriptor.group.data());
  if (!descriptor.hasDacl && (descriptor.control & SE_DACL_PRESENT) == 0) return text;
  text += "D:" + lettersOf(descriptor.control, listFlags);
  if (!descriptor.hasDacl) return text += noAccessControl;
  for (const AccessEntry& entry : entriesOf(descriptor.dacl)) {
    if (entry.sid.empty()) continue;
    text += entry.type == ACCESS_ALLOWED_ACE_TYPE ? "(A;" : "(D;";
    text += lettersOf(entry.flags, entryFlags) + ";" + rightsText(entry.mask) + ";;;" +
            sidText(entry.sid.data()) + ")";
  }
  return text;
}

}  // namespace zelvreg::machine

#include "machine/security/Accounts.h"

#include <array>
#include <charconv>
#include <cstring>
#include <utility>

#include "machine/base/CaseFold.h"

namespace zelvreg::machine {

namespace {

struct NamedSid {
  std::string_view letters;
  std::string_view text;
};

// The two-letter names of the Windows security descriptor language.
constexpr auto namedSids = std::to_array<NamedSid>({
    {"WD", "S-1-1-0"},      {"CO", "S-1-3-0"},      {"CG", "S-1-3-1"},      {"OW", "S-1-3-4"},
    {"NU", "S-1-5-2"},      {"IU", "S-1-5-4"},      {"SU", "S-1-5-6"},      {"AN", "S-1-5-7"},
    {"ED", "S-1-5-9"},      {"PS", "S-1-5-10"},     {"AU", "S-1-5-11"},     {"RC", "S-1-5-12"},
    {"SY", "S-1-5-18"},     {"LS", "S-1-5-19"},     {"NS", "S-1-5-20"},     {"WR", "S-1-5-33"},
    {"BA", "S-1-5-32-544"}, {"BU", "S-1-5-32-545"}, {"BG", "S-1-5-32-546"}, {"PU", "S-1-5-32-547"},
    {"AO", "S-1-5-32-548"}, {"SO", "S-1-5-32-549"}, {"PO", "S-1-5-32-550"}, {"BO", "S-1-5-32-551"},
    {"RE", "S-1-5-32-552"}, {"RU", "S-1-5-32-554"}, {"RD", "S-1-5-32-555"}, {"NO", "S-1-5-32-556"},
    {"MU", "S-1-5-32-558"}, {"LU", "S-1-5-32-559"}, {"AC", "S-1-15-2-1"},   {"LW", "S-1-16-4096"},
    {"ME", "S-1-16-8192"},  {"HI", "S-1-16-12288"}, {"SI", "S-1-16-16384"},
});

constexpr std::size_t mostSubAuthorities = 15;

// The number up to the next "-" or the end; both are taken off `text`.
std::optional<std::uint64_t> takeNumber(std::string_view& text) {
  const std::string_view digits = text.substr(0, text.find('-'));
  text.remove_prefix(std::min(text.size(), digits.size() + 1));
  std::uint64_t number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  const bool whole = error == std::errc() && end == digits.data() + digits.size();
  if (!whole) return std::nullopt;
  return number;
}

std::optional<Bytes> sidFromNumbers(std::string_view text) {
  const auto authority = takeNumber(text);
  if (!authority || *authority > 0xFFFFFFFFFFFF) return std::nullopt;
  Bytes sid{1, 0};
  for (int shift = 40; shift >= 0; shift -= 8)
    sid.push_back(static_cast<BYTE>(*authority >> shift));
  std::size_t count = 0;
  while (!text.empty()) {
    const auto part = takeNumber(text);
    if (!part || *part > 0xFFFFFFFF || ++count > mostSubAuthorities) return std::nullopt;
    for (int shift = 0; shift < 32; shift += 8) sid.push_back(static_cast<BYTE>(*part >> shift));
  }
  sid[1] = static_cast<BYTE>(count);
  return sid;
}

std::string numbersOf(const BYTE* sid) {
  std::uint64_t authority = 0;
  for (int at = 2; at < 8; ++at) authority = authority << 8 | sid[at];
  std::string text = "S-1-" + std::to_string(authority);
  for (std::size_t part = 0; part < sid[1]; ++part) {
    DWORD number = 0;
    std::memcpy(&number, sid + 8 + part * 4, sizeof number);
    text += "-" + std::to_string(number);
  }
  return text;
}

Bytes knownSid(std::string_view text) { return sidFromText(text).value(); }

}  // namespace

std::optional<Bytes> sidFromText(std::string_view text) {
  for (const NamedSid& named : namedSids) {
    if (text == named.letters) return sidFromNumbers(named.text.substr(4));
  }
  if (!text.starts_with("S-1-")) return std::nullopt;
  return sidFromNumbers(text.substr(4));
}

std::string sidText(const BYTE* sid) {
  std::string numbers = numbersOf(sid);
  for (const NamedSid& named : namedSids) {
    if (numbers == named.text) return std::string(named.letters);
  }
  return numbers;
}

std::size_t sidLength(const BYTE* sid) { return 8 + std::size_t{4} * sid[1]; }

Bytes sidBytes(const void* sid) {
  const BYTE* start = static_cast<const BYTE*>(sid);
  return {start, start + sidLength(start)};
}

const Bytes& everyoneSid() {
  static const Bytes sid = knownSid("WD");
  return sid;
}

const Bytes& administratorsSid() {
  static const Bytes sid = knownSid("BA");
  return sid;
}

const Bytes& usersSid() {
  static const Bytes sid = knownSid("BU");
  return sid;
}

const Bytes& systemSid() {
  static const Bytes sid = knownSid("SY");
  return sid;
}

const Bytes& creatorOwnerSid() {
  static const Bytes sid = knownSid("CO");
  return sid;
}

const Bytes& folderUserSid() {
  static const Bytes sid = knownSid("S-1-5-21-1-1-1-1001");
  return sid;
}

Accounts::Accounts(std::u16string userName, Bytes userSid) {
  user.sids = {userSid, everyoneSid(), administratorsSid(), usersSid()};
  known.push_back({std::move(userName), u"COMPUTER", std::move(userSid), SidTypeUser});
  known.push_back({u"Everyone", u"", everyoneSid(), SidTypeWellKnownGroup});
  known.push_back({u"Administrators", u"BUILTIN", administratorsSid(), SidTypeAlias});
  known.push_back({u"Users", u"BUILTIN", usersSid(), SidTypeAlias});
  known.push_back({u"SYSTEM", u"NT AUTHORITY", systemSid(), SidTypeWellKnownGroup});
}

const Account* Accounts::find(std::u16string_view name) const {
  for (const Account& account : known) {
    if (isSameName(name, account.name)) return &account;
    if (account.domain.empty()) continue;
    if (isSameName(name, account.domain + u"\\" + account.name)) return &account;
  }
  return nullptr;
}

}  // namespace zelvreg::machine

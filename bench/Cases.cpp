#include "Cases.h"

#include <algorithm>
#include <set>
#include <tuple>

#include "ToolFiles.h"

namespace zelvreg::bench {
namespace {

bool has(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

bool isAnyOf(std::string_view text, std::initializer_list<std::string_view> parts) {
  return std::any_of(parts.begin(), parts.end(),
                     [&](std::string_view part) { return has(text, part); });
}

bool fitsPlace(Fits fits, const Place& place) {
  switch (fits) {
    case Fits::Bits64:
      return place.view == View::Bits64;
    case Fits::Bits32:
      return place.view == View::Bits32;
    case Fits::OfUser:
      return place.owner == Owner::User;
    case Fits::OfMachine:
      return place.owner == Owner::Machine;
    case Fits::Names:
      return place.use == Use::Name;
    default:
      return true;
  }
}

bool fitsUse(const Case& tried, Use use) {
  switch (use) {
    case Use::Name:
      return !isAnyOf(tried.text, {"%", "\""});
    case Use::Folder:
      // The folder of a missing file is there.
      return tried.truth != Truth::Dead || isAnyOf(tried.text, {"{lost}", "Longer"});
    default:
      return true;
  }
}

bool fits(const Case& tried, const Place& place) {
  // Fonts and help files have no program folder.
  const bool needsPrograms = isAnyOf(tried.text, {"{live}", "{gone}", "{lost}"});
  return fitsPlace(tried.fits, place) && fitsUse(tried, place.use) &&
         !(needsPrograms && !FilePool::isOfPrograms(place.kind));
}

std::string shaped(std::string text, Shape shape) {
  if (shape == Shape::AsWritten) {
    return text;
  }
  std::string result;
  for (const char character : text) {
    if (character == ' ' && shape == Shape::Url) {
      result += "%20";
    } else {
      result += character == '\\' ? '/' : character;
    }
  }
  return result;
}

std::string withoutExtension(const std::string& path) { return path.substr(0, path.rfind('.')); }

std::string onlyFolder(const std::string& path) { return path.substr(0, path.find_last_of("\\/")); }

}  // namespace

Cases::Cases(std::span<const Case> cases, const FilePool& pool, Random& numbers)
    : table(cases),
      files(pool),
      random(numbers),
      first(numbers.below(cases.size())),
      uses(cases.size()) {}

std::vector<Reference> Cases::take(const Place& place, std::size_t count) {
  std::vector<Reference> taken;
  taken.reserve(count);
  while (taken.size() < count) {
    const std::size_t index = next(place);
    ++uses[index];
    taken.push_back(filled(table[index], place));
  }
  return taken;
}

std::size_t Cases::next(const Place& place) const {
  // Those that fit few places come first, or they would find no place.
  const auto rank = [&](std::size_t index) {
    return std::tuple(!fits(table[index], place), uses[index], table[index].fits == Fits::Anywhere,
                      (index + table.size() - first) % table.size());
  };
  std::size_t best = 0;
  for (std::size_t index = 1; index < table.size(); ++index) {
    if (rank(index) < rank(best)) {
      best = index;
    }
  }
  return best;
}

Reference Cases::filled(const Case& taken, const Place& place) const {
  std::string text;
  std::string_view rest = taken.text;
  while (has(rest, "{")) {
    const std::size_t start = rest.find('{');
    const std::size_t end = rest.find('}');
    text += rest.substr(0, start);
    const std::string filled = filling(rest.substr(start, end + 1 - start), place);
    text += filled;
    rest.remove_prefix(end + 1);
  }
  text += rest;
  text = shaped(std::move(text), taken.shape);
  return {place.use == Use::Folder ? onlyFolder(text) : text, taken.truth, taken.family};
}

std::string Cases::filling(std::string_view gap, const Place& place) const {
  std::string programs = FilePool::programFolder(place.view);
  const auto below = [&](const std::string& path) { return path.substr(programs.size() + 1); };
  const std::string extension(FilePool::extensionOf(place.kind));
  if (gap == "{P}") {
    return programs;
  }
  if (gap == "{live}") {
    return below(files.live(place.kind, place.view, random));
  }
  if (gap == "{noext}") {
    return below(withoutExtension(files.live(place.kind, place.view, random)));
  }
  if (gap == "{gone}") {
    return below(files.deadFile(place.kind, place.view, random));
  }
  if (gap == "{lost}") {
    return below(files.deadFolder(place.kind, place.view, random));
  }
  if (gap == "{tool}") {
    return "tool" + extension;
  }
  if (gap == "{notool}") {
    return "notool" + extension;
  }
  // Nothing else is in braces but the codes of products and classes.
  return gap == "{deep}" ? deepFolders() : std::string(gap);
}

void removeRepeated(std::vector<Reference>& references) {
  std::set<std::string> seen;
  std::erase_if(references,
                [&](const Reference& reference) { return !seen.insert(reference.text).second; });
}

}  // namespace zelvreg::bench

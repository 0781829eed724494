// What a text refers to (LivingContent.h). Every way to read it as a path is tried; one that leads
// to a file is enough to leave it alone.
#include <algorithm>
#include <array>
#include <vector>

#include "evidence/CommandText.h"
#include "evidence/Reasons.h"
#include "evidence/TextLook.h"
#include "repair/LivingContent.h"
#include "runtime/FileSystemObject.h"
#include "scan/Resolver.h"
#include "text/Text.h"

namespace zelvreg {
namespace {

// The endings by which a text without a folder names a program or a library.
constexpr std::array<std::string_view, 16> programEndings{
    ".exe", ".dll", ".ocx", ".ovl", ".cpl", ".com", ".bat", ".cmd",
    ".msc", ".sys", ".drv", ".tlb", ".olb", ".hlp", ".chm", ".msi"};

constexpr std::string_view fileScheme = "file:///";

bool isClassName(std::string_view text) {
  return text.size() > 2 && text.front() == '{' && text.back() == '}';
}

// All of a text that does not begin with a quote.
std::string_view betweenFirstQuotes(std::string_view text) {
  return text.starts_with('"') ? split(text, "\"")[1] : text;
}

// A name without a folder, with or without arguments after it.
bool isBareProgram(const std::string& lower) {
  return std::ranges::any_of(programEndings, [&](std::string_view ending) {
    const auto found = lower.find(ending);
    const std::size_t end = found + ending.size();
    return found != std::string::npos &&
           (end == lower.size() || std::string_view(" \",").find(lower[end]) != std::string::npos);
  });
}

bool isReference(const std::string& lower) {
  return contains(lower, "\\") || contains(lower, "%") || contains(lower, "://") ||
         lower.starts_with("//") || isDrivePath(lower) || isClassName(lower) ||
         isBareProgram(lower);
}

bool isFile(const std::string& path) { return fileSystemObject::fileExists(path); }

bool isThere(const std::string& path) {
  return isFile(path) || isFile(path + ".exe") || fileSystemObject::folderExists(path);
}

// The path as this process sees it, and as it leads to the folders of the 64-bit system.
std::vector<std::string> roads(const Form42& form, std::string path) {
  std::string resolved = path;
  resolved = GetPath(form, resolved);
  resolved.resize(untilNul(resolved).size());
  return {std::move(path), std::move(resolved)};
}

// Tries all of a text, and the text before each blank, comma and bar: any of these may begin the
// arguments of a file.
bool isFoundInPart(const Form42& form, const std::string& text) {
  constexpr const char* breaks = " ,|";
  for (const std::string& road : roads(form, text)) {
    if (isThere(road)) {
      return true;
    }
    for (auto cut = road.find_first_of(breaks); cut != std::string::npos;
         cut = road.find_first_of(breaks, cut + 1)) {
      const std::string part(trim(std::string_view(road).substr(0, cut)));
      if (isFile(part) || isFile(part + ".exe")) {
        return true;
      }
    }
  }
  return false;
}

std::string pathIn(const std::string& text) { return std::string(trim(betweenFirstQuotes(text))); }

// A path on an existing drive that leads to nothing, however it is read.
bool isSurelyGone(const Form42& form, const std::string& text) {
  const std::string path = pathIn(text);
  if (!isDrivePath(path) || contains(path, "%") || isFoundInPart(form, path)) {
    return false;
  }
  TextLook look(Shares::Refused, 1);
  const Evidence evidence = look.at(text, {}, Reading::Command);
  return confidenceOf(evidence.reasons) != Confidence::Unsure;
}

std::string withoutScheme(const std::string& text) {
  return findIgnoringCase(text, fileScheme) == 0
             ? replaceAll(std::string_view(text).substr(fileScheme.size()), "/", "\\")
             : text;
}

}  // namespace

Reference referenceIn(const Form42& form, const std::string& text) {
  const std::string whole(trim(untilNul(text)));
  if (whole.empty() || !isReference(lowerCase(whole))) {
    return Reference::None;
  }
  return isSurelyGone(form, withoutScheme(whole)) ? Reference::Dead : Reference::Living;
}

bool isFoundNow(const Form42& form, const std::string& text) {
  std::string path = pathIn(std::string(trim(untilNul(text))));
  path = roads(form, path).back();
  return isDrivePath(path) && isFoundInPart(form, path);
}

}  // namespace zelvreg

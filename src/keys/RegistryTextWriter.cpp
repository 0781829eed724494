#include "keys/RegistryTextWriter.h"

#include <span>

#include "keys/RegistryTextNotes.h"
#include "unicode/Unicode.h"

namespace zelvreg {
namespace {

bool holds(std::u16string_view text, std::u16string_view units) {
  return text.find_first_of(units) != std::u16string_view::npos;
}

std::u16string note(std::u16string_view what) { return std::u16string(notes::prefix).append(what); }

}  // namespace

bool RegistryTextWriter::beginKey(const std::u16string& path) {
  if (holds(path, {u"\r\n\0", 3})) {
    return false;
  }
  hasKey = true;
  writer.beginKey(path);
  return true;
}

void RegistryTextWriter::markAsSafetyExport(const std::string& userSid) {
  writer.addLine(note(notes::safetyExport));
  if (!userSid.empty()) {
    writer.addLine(note(notes::user) + utf16(userSid));
  }
}

// In one line: a comment cannot be continued.
void RegistryTextWriter::addSecurity(const std::vector<BYTE>& descriptor) {
  std::u16string line = note(notes::security);
  regfile::appendByteList(line, std::as_bytes(std::span(descriptor)));
  writer.addLine(line);
}

void RegistryTextWriter::addOrder(const std::vector<std::size_t>& positions) {
  writer.addLine(note(notes::order) + notes::positionsText(positions));
}

bool RegistryTextWriter::addValue(const WideValue& value) {
  if (holds(value.name, {u"\0", 1})) {
    return false;
  }
  writer.addValue(
      {.name = value.name, .type = value.type, .data = std::as_bytes(std::span(value.data))});
  return true;
}

void RegistryTextWriter::addMissingDefault() { writer.addMissingValue(u""); }

}  // namespace zelvreg

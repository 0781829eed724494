#include "RegistryText.h"

#include <stdexcept>

#include "unicode/Unicode.h"

namespace zelvreg::bench {
namespace {

constexpr std::size_t blockSize = 1 << 20;
constexpr std::string_view hexDigits = "0123456789abcdef";

}  // namespace

RegistryText::RegistryText(const std::filesystem::path& file)
    : fileName(file.string()),
      output(file, std::ios::binary),
      pending("Windows Registry Editor Version 5.00\n") {
  pending.reserve(blockSize + blockSize / 4);
}

void RegistryText::container(std::string_view path) {
  if (containers.contains(std::string(path))) {
    return;
  }
  const auto backslash = path.rfind('\\');
  if (backslash == std::string_view::npos) {
    return;  // a root is there without being written
  }
  container(path.substr(0, backslash));
  containers.emplace(path);
  key(path);
}

void RegistryText::key(std::string_view path) {
  pending.append("\n[").append(path).append("]");
  endLine();
  ++keys;
}

void RegistryText::text(std::string_view name, std::string_view data) {
  beginValue(name);
  quoted(data);
  endLine();
}

void RegistryText::expandableText(std::string_view name, std::string_view data) {
  beginValue(name);
  pending += "hex(2):";
  units(data);
  pending += "00,00";
  endLine();
}

void RegistryText::reference(std::string_view name, std::string_view data) {
  if (data.find('%') == std::string_view::npos) {
    text(name, data);
  } else {
    expandableText(name, data);
  }
}

void RegistryText::texts(std::string_view name, std::span<const std::string_view> data) {
  beginValue(name);
  pending += "hex(7):";
  for (const std::string_view one : data) {
    units(one);
    pending += "00,00,";
  }
  pending += "00,00";
  endLine();
}

void RegistryText::number(std::string_view name, std::uint32_t data) {
  beginValue(name);
  pending += "dword:";
  for (int shift = 24; shift >= 0; shift -= 8) {
    byte(data >> shift);
  }
  endLine();
}

void RegistryText::binary(std::string_view name, std::uint64_t data) {
  beginValue(name);
  pending += "hex:";
  for (int shift = 0; shift < 64; shift += 8) {
    if (shift > 0) {
      pending += ',';
    }
    byte(static_cast<unsigned>(data >> shift));
  }
  endLine();
}

void RegistryText::finish() {
  flush();
  output.close();
  if (!output) {
    throw std::runtime_error(fileName + " cannot be written; check the folder and the room left");
  }
}

void RegistryText::beginValue(std::string_view name) {
  if (name.empty()) {
    pending += '@';
  } else {
    quoted(name);
  }
  pending += '=';
}

void RegistryText::quoted(std::string_view text) {
  pending += '"';
  for (const char character : text) {
    if (character == '\\' || character == '"') {
      pending += '\\';
    }
    pending += character;
  }
  pending += '"';
}

// As bytes, each followed by a comma.
void RegistryText::units(std::string_view text) {
  for (const char16_t unit : utf16(text)) {
    byte(unit & 0xFFU);
    pending += ',';
    byte(unit >> 8U);
    pending += ',';
  }
}

void RegistryText::byte(unsigned number) {
  pending += hexDigits[(number >> 4) & 0xF];
  pending += hexDigits[number & 0xF];
}

void RegistryText::endLine() {
  pending += '\n';
  if (pending.size() >= blockSize) {
    flush();
  }
}

void RegistryText::flush() {
  if (!output.write(pending.data(), static_cast<std::streamsize>(pending.size()))) {
    throw std::runtime_error(fileName + " cannot be written; check the folder and the room left");
  }
  pending.clear();
}

}  // namespace zelvreg::bench

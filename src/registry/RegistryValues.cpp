#include "registry/RegistryValues.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>

#include "keys/OpenKey.h"
#include "keys/ValueData.h"
#include "registry/SubkeyEnumerators.h"
#include "text/Characters.h"
#include "text/Numbers.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

RuntimeError unsupportedValueType() { return {1001, "Unsupported value type"}; }

std::string textWithout(std::u16string_view units, std::size_t terminators) {
  std::string text = utf8(units);
  text.resize(withoutLast(text, terminators).size());
  return text;
}

std::int32_t numberOf(std::span<const BYTE> data) {
  std::int32_t number = 0;
  std::memcpy(&number, data.data(), std::min(data.size(), sizeof(number)));
  return number;
}

// The decimal text as it lies in memory when `size` bytes of it are asked for.
std::string bytesOfDecimal(std::int64_t number, std::size_t size) {
  std::string digits = decimal(number);
  digits.resize(size);
  return digits;
}

struct RegistryData {
  DWORD type;
  std::string bytes;
};

std::string bytesOf(const std::u16string& units) {
  return {reinterpret_cast<const char*>(units.data()), units.size() * sizeof(char16_t)};
}

std::optional<RegistryData> dataToWrite(const Variant& value) {
  if (const auto* text = std::get_if<std::string>(&value)) {
    return RegistryData{REG_SZ, bytesOf(utf16(*text))};
  }
  if (const auto* number = std::get_if<std::int16_t>(&value)) {
    return RegistryData{REG_DWORD, bytesOfDecimal(*number, 4)};
  }
  if (const auto* number = std::get_if<std::int32_t>(&value)) {
    return RegistryData{REG_DWORD, bytesOfDecimal(*number, 4)};
  }
  if (const auto* bytes = std::get_if<std::vector<BYTE>>(&value); bytes != nullptr) {
    return RegistryData{REG_BINARY,
                        bytes->empty() ? "" : bytesOfDecimal(bytes->front(), bytes->size())};
  }
  return std::nullopt;
}

}  // namespace

ReadResult GetRegistryValue(HiveHandle hive, const std::string& key, const std::string& valueName,
                            Variant fallback) {
  const OpenKey open(hive, key, workOn64BitView);
  if (!open.isOpen()) {
    return {std::move(fallback), std::nullopt};
  }
  ValueData data;
  data.read(open.keyOf(valueName), valueName);
  switch (data.type()) {
    case REG_SZ:
    case REG_EXPAND_SZ:
      return {textOfData(data.units()), std::nullopt};
    case REG_BINARY:
      return {std::vector<BYTE>(data.bytes().begin(), data.bytes().end()), std::nullopt};
    case REG_DWORD:
      return {numberOf(data.bytes()), std::nullopt};
    case REG_MULTI_SZ:
      return {textWithout(data.units(), 2), std::nullopt};
    default:
      return {std::move(fallback), unsupportedValueType()};
  }
}

std::string textOfData(std::u16string_view units) { return textWithout(units, 1); }

WriteResult SetRegistryValue(HiveHandle hive, const std::string& key, const std::string& valueName,
                             const Variant& value) {
  const OpenKey open(hive, key, writeOn32BitView, ClassesOf::User);
  if (!open.isOpen()) {
    return {};
  }
  const auto data = dataToWrite(value);
  if (!data) {
    return {false, unsupportedValueType()};
  }
  const LONG status = RegSetValueExW(open.handle(), Wide(valueName).get(), 0, data->type,
                                     reinterpret_cast<const BYTE*>(data->bytes.data()),
                                     static_cast<DWORD>(data->bytes.size()));
  return {status == ERROR_SUCCESS, std::nullopt};
}

bool RegKeyExists(HiveHandle hive, const std::string& key) {
  return OpenKey(hive, key, workOn64BitView).isOpen();
}

}  // namespace zelvreg

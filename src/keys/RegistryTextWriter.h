// Writing keys and values with the notes of a safety export, in the registry editor's export
// format: version 5.00 in UTF-16LE, with lines that end in CR LF.
#ifndef ZELVREG_KEYS_REGISTRY_TEXT_WRITER_H
#define ZELVREG_KEYS_REGISTRY_TEXT_WRITER_H

#include <string>
#include <vector>

#include "keys/WideKey.h"
#include "regfile/Writer.h"

namespace zelvreg {

class RegistryTextWriter {
 public:
  // That the file is a safety export, and whose HKEY_CURRENT_USER it tells of, if that is known.
  // Call it first.
  void markAsSafetyExport(const std::string& userSid);

  // Begins the block of a key, by its whole path ("HKEY_LOCAL_MACHINE\…"). False, and nothing
  // written, for a name that the format cannot hold: one with a line end or a NUL.
  [[nodiscard]] bool beginKey(const std::u16string& path);

  // Notes on the key last begun, before its values: its security descriptor, and where the values
  // that follow stand among all that it has, from 0 and rising.
  void addSecurity(const std::vector<BYTE>& descriptor);
  void addOrder(const std::vector<std::size_t>& positions);

  // A value of the key last begun. False, and nothing written, for a name with a NUL.
  [[nodiscard]] bool addValue(const WideValue& value);
  // That the key has no default value: importing it deletes one that is there.
  void addMissingDefault();

  // Whether no key was begun.
  [[nodiscard]] bool isEmpty() const { return !hasKey; }
  // The file's bytes.
  [[nodiscard]] const std::string& bytes() const { return writer.bytes(); }

 private:
  regfile::Writer writer{regfile::Form()};
  bool hasKey = false;
};

}  // namespace zelvreg

#endif

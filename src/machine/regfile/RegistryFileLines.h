// The lines of a registry file as UTF-16, whichever of its encodings it has. The file is mapped,
// not copied.
#ifndef ZELVREG_MACHINE_REGFILE_REGISTRY_FILE_LINES_H
#define ZELVREG_MACHINE_REGFILE_REGISTRY_FILE_LINES_H

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "machine/regfile/RegistryFile.h"

namespace zelvreg::machine {

// The bytes of a file for as long as this object lives.
class MappedFile {
 public:
  // Throws MachineError if the file cannot be read.
  explicit MappedFile(const std::filesystem::path& file);
  ~MappedFile();
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;
  [[nodiscard]] std::string_view bytes() const { return {start, size}; }

 private:
  const char* start = nullptr;
  std::size_t size = 0;
};

class RegistryFileLines {
 public:
  // `bytes` must outlive this object. Its encoding is found from its first bytes and its header
  // line. Throws MachineError, as every step does, if there is no known header.
  RegistryFileLines(std::string name, std::string_view bytes);

  // Encoding, mark and line ends.
  [[nodiscard]] const RegistryFileForm& form() const { return fileForm; }

  // Goes to the next line; false after the last one.
  bool next();
  // The line, without its end, until the next step.
  [[nodiscard]] std::u16string_view text() const { return line; }
  // What ended it: "\r\n", "\n", or nothing at the end of the file.
  [[nodiscard]] std::u16string_view ending() const { return lineEnding; }
  // Its number, from 1.
  [[nodiscard]] std::size_t number() const { return lineNumber; }

  // Throws MachineError "NAME:LINE: WRONG; EXPECTED".
  [[noreturn]] void fail(std::size_t atLine, const std::string& wrong,
                         const std::string& expected) const;

 private:
  void readHeader();
  bool nextWide();
  bool nextNarrow();
  void decode(std::string_view narrow);

  std::string fileName;
  std::string_view rest;
  RegistryFileForm fileForm;
  std::u16string_view line;
  std::u16string_view lineEnding;
  std::u16string decoded;
  std::size_t lineNumber = 0;
};

}  // namespace zelvreg::machine

#endif

// Turns a text of the registry into a path that can be tested, and tests it.
//
// These are simple cuts, not a parser of command lines. What they keep and drop decides what is
// reported, so do not change them. A cut outside the text is skipped.
#ifndef ZELVREG_SCAN_RESOLVER_H
#define ZELVREG_SCAN_RESOLVER_H

#include <cstdint>
#include <string>

namespace zelvreg {

struct Form42;

// The file path in a text that may be a command line. `text` is left without its quotes. The folder
// stays as written, the file name comes in lower case with an extension of at most three letters; a
// name without a dot is not cut at all.
std::string FilePath(std::string& text);

// Changes a path to the form that this process can test: on 64-bit Windows in lower case, with
// "Sysnative" in the place of "system32" and the 64-bit program folders in the place of those that
// a 32-bit process would get; then expands variables. The result ends in a NUL that belongs to it.
// `path` is left as it was before the expansion.
std::string GetPath(const Form42& form, std::string& path);

// While one lives the form remembers what its scan or search has found out, unless it touches what
// it finds.
class MemoryOfScan {
 public:
  explicit MemoryOfScan(Form42& formInUse);
  ~MemoryOfScan();
  MemoryOfScan(const MemoryOfScan&) = delete;
  MemoryOfScan& operator=(const MemoryOfScan&) = delete;

 private:
  Form42& form;
};

// Whether a file exists. The text may end in a NUL. A path with the name of the system folder
// always counts as existing. If a scan may touch what it finds, the user is first given access to a
// path in a recycle bin. A path on another computer counts as missing unless that may be asked.
// Each call is counted in `filesAsked`.
bool FileExists(Form42& form, std::string path);
bool FolderExists(const Form42& form, const std::string& path);

// Puts the program path of a firewall rule into FirewallPath: the text between "|app=" and the next
// "|", or nothing if that is no path. After a rule without a bar it is still the path of the rule
// before. `rule` becomes lower case.
void pth(Form42& form, std::string& rule);

// The number of an icon kind for the number of a path kind.
std::int16_t getIco(std::int16_t kind);

// Whether this is a 32-bit process on 64-bit Windows.
bool runsOn64BitWindows();

}  // namespace zelvreg

#endif

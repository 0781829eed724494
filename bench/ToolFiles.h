// Files in special places of a made machine, which hard references name.
#ifndef ZELVREG_BENCH_TOOL_FILES_H
#define ZELVREG_BENCH_TOOL_FILES_H

#include <filesystem>
#include <string>

namespace zelvreg::bench {

// Three folders, one in the other, that make a path of more than 260 characters.
std::string deepFolders();

// Makes them below the folder of drive C, with the programs of Windows that start others, and
// links to folders, one of them broken. Throws std::filesystem::filesystem_error, or
// std::runtime_error with one line.
void writeToolFiles(const std::filesystem::path& drive);

}  // namespace zelvreg::bench

#endif

// Files that may come from somebody else: a name may lead to a pipe or a device, on which opening
// waits or does something.
#ifndef ZELVREG_MACHINE_BASE_PLAIN_FILE_H
#define ZELVREG_MACHINE_BASE_PLAIN_FILE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

#include "machine/base/FileDescriptor.h"

namespace zelvreg::machine {

// Opens a file for reading and never waits. None, with errno set, if it cannot be opened or is
// anything but a plain file; that one errno is EINVAL.
FileDescriptor openPlainFile(const std::filesystem::path& file);

// The whole content of a plain file. Throws MachineError.
std::string readWholeFile(const std::filesystem::path& file);

// Reads up to `size` bytes from an offset on; how many there were. Fewer are told with errno set
// where they could not be read, and with errno as it was at the end of the file.
std::size_t readAt(const FileDescriptor& file, std::uint64_t offset, void* bytes, std::size_t size);

// Which file a failure is of. The library does not say so of a folder whose listing breaks off:
// then it is somewhere in `above`.
std::string placeOf(const std::filesystem::filesystem_error& failure,
                    const std::filesystem::path& above);

// Inode, size, seconds and nanoseconds of the last write of what is at a name itself, not at the
// end of a link; all zero if there is nothing. Tells whether somebody else has put another file
// there or written it.
using FileStamp = std::array<std::int64_t, 4>;
FileStamp stampOf(const std::filesystem::path& file);

}  // namespace zelvreg::machine

#endif

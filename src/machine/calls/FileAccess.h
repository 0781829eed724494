// What the file calls share: who may do what with a file, and how this system's refusals read.
#ifndef ZELVREG_MACHINE_CALLS_FILE_ACCESS_H
#define ZELVREG_MACHINE_CALLS_FILE_ACCESS_H

#include <sys/types.h>
#include <windows.h>

#include <string>

#include "machine/files/Drives.h"

namespace zelvreg::machine {

class Machine;

inline constexpr ACCESS_MASK fileReadData = 0x1;
inline constexpr ACCESS_MASK fileWriteData = 0x2;   // of a folder: to make a file in it
inline constexpr ACCESS_MASK fileAppendData = 0x4;  // of a folder: to make a folder in it
inline constexpr ACCESS_MASK fileDeleteChild = 0x40;
inline constexpr ACCESS_MASK fileReadAttributes = 0x80;
inline constexpr ACCESS_MASK fileWriteAttributes = 0x100;

// The Windows code for an error number of this system.
LONG errorCodeOf(int systemError);

// The rights that the process gets on what is there; 0 if it is denied any of them.
ACCESS_MASK grantedOn(const Machine& machine, const std::string& path, ACCESS_MASK desired);

// The attributes of what is at a place that exists.
DWORD attributesAt(const Machine& machine, const Place& place);

// Whether something that is there may be deleted: by its own list or by its folder's, and not when
// it is read-only. ERROR_SUCCESS or the answer.
LONG mayDelete(const Machine& machine, const Place& place);

// Whether something may be made at a place that is empty; `right` is the one that its folder asks.
LONG mayMake(const Machine& machine, const Place& place, ACCESS_MASK right);

// What this system lets others do with something that is to be made: a list of its own that its
// maker passes along closes it to all but the user.
mode_t modeOfNew(const SECURITY_ATTRIBUTES* given, bool isFolder);

// Something was made at this place: it has the list that its maker passed along, or takes over its
// folder's if that has one of its own. On an offline disk whose driver shows access lists it is for
// administrators alone there.
void wasMade(const Machine& machine, const Place& place, bool isFolder,
             const SECURITY_ATTRIBUTES* given);

// The path of what contains this one.
std::string parentPath(const std::string& path);

}  // namespace zelvreg::machine

#endif

// What several scanners do with a reference before they judge it.
//
// The steps differ from scanner to scanner, and the differences decide what is reported. So do not
// add or leave out a step because another scanner has it.
#ifndef ZELVREG_SCANNERS_REFERENCES_H
#define ZELVREG_SCANNERS_REFERENCES_H

#include <string>
#include <string_view>

#include "roots/Roots.h"

namespace zelvreg {

struct Form42;

// GetPath of a copy, without the NUL at its end.
std::string resolvedPath(const Form42& form, std::string text);

// Whether the data of a value contains something like a path, and there is neither a file nor a
// folder.
bool namesMissingPath(Form42& form, std::string data);

// Whether a text is a path on a drive, by its second character.
bool hasDriveColon(std::string_view text);

// Whether a text ends in ".exe", in any case.
bool endsInExe(std::string_view text);

// The text between the first two quotes if it begins with one. Any other text, and one without a
// second quote, is returned as it is.
std::string betweenQuotes(const std::string& text);

std::string withoutQuotes(std::string_view text);

// The text up to the first "exe", "dll", "ovl" or "ocx", wherever it is; all of it without any.
std::string cutAfterExtension(std::string text);

// The program of a command: the text between its quotes if it begins with one, else up to the first
// extension.
std::string programOf(const std::string& command);

// The default value of a key, read directly; empty if there is none.
std::string defaultValueOf(HiveHandle hive, const std::string& key);

// Gives the current user access to a key, if a scan may touch what it finds. GrantKeyStatus is 0 if
// that worked, or, without touching, if the key exists.
void grantCurrentUser(Form42& form, HiveHandle hive, const std::string& key);

// Sets a file's attributes to archive only, if a scan may touch what it finds. Does nothing if
// there is no such file.
void setArchiveOnly(const Form42& form, const std::string& path);

// Whether the file that a text names is listed in its folder once it is no longer hidden.
bool isListedWhenUnhidden(const Form42& form, const std::string& text);

}  // namespace zelvreg

#endif

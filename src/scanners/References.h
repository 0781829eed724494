// What several scanners do with a reference before they judge it.
//
// The steps differ from scanner to scanner in ways that decide what is reported, so none of them is
// left out or added because another scanner has it.
#ifndef ZELVREG_SCANNERS_REFERENCES_H
#define ZELVREG_SCANNERS_REFERENCES_H

#include <string>
#include <string_view>

#include "roots/Roots.h"

namespace zelvreg {

struct Form42;

// GetPath of a copy, without the NUL at its end.
std::string resolvedPath(const Form42& form, std::string text);

// Whether the data of a value looks like a path, anywhere in it, and neither file nor folder is
// there.
bool namesMissingPath(const Form42& form, std::string data);

// Whether the second character makes a text the path on a drive.
bool hasDriveColon(std::string_view text);

// Whether a text ends in ".exe", in any case.
bool endsInExe(std::string_view text);

// What stands between the first two quotes of a text that begins with one; any other text, and one
// without a second quote, as it is.
std::string betweenQuotes(const std::string& text);

std::string withoutQuotes(std::string_view text);

// Cut after the first "exe", "dll", "ovl" or "ocx", wherever it stands; whole without any.
std::string cutAfterExtension(std::string text);

// The program of a command: between its quotes if it begins with one, else cut after the first
// extension.
std::string programOf(const std::string& command);

// The default value of a key, read directly; empty when there is none.
std::string defaultValueOf(HiveHandle hive, const std::string& key);

// Gives the current user access to a key, if a scan may touch what it finds. GrantKeyStatus tells
// whether it worked, or would have: a key that is there counts as one that could be opened.
void grantCurrentUser(Form42& form, HiveHandle hive, const std::string& key);

// Sets a file's attributes to archive only, if a scan may touch what it finds. Does nothing if
// there is no such file.
void setArchiveOnly(const Form42& form, const std::string& path);

// Whether the file that a text names is listed in its folder, once nothing hides it there.
bool isListedWhenUnhidden(const Form42& form, const std::string& text);

}  // namespace zelvreg

#endif

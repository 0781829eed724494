// Where the program and the suite store what they share: texts below HKEY_LOCAL_MACHINE, in the
// view of the process.
//
// A program with a file `zelvreg.ini` in its folder is portable. It keeps its settings in that
// file, in UTF-8 with a byte order mark, and nothing in the registry; what is meant for a suite it
// keeps nowhere.
#ifndef ZELVREG_SCAN_SETTINGS_H
#define ZELVREG_SCAN_SETTINGS_H

#include <optional>
#include <string>
#include <vector>

namespace zelvreg {

namespace settings {

// What the user has chosen, and the highest number of an undo entry.
inline constexpr const char* regscan = "software\\zelvane\\Zelvane Tuner Deluxe\\regscan";
// The undo entries: number to label, and label to file.
inline constexpr const char* dates = "software\\zelvane\\Zelvane Tuner Deluxe\\regscan\\dates";
inline constexpr const char* files = "software\\zelvane\\Zelvane Tuner Deluxe\\regscan\\file";
// Label to the safety export of that repair.
inline constexpr const char* exports = "software\\zelvane\\Zelvane Tuner Deluxe\\regscan\\export";
// Label to the identifier of the user whose HKEY_CURRENT_USER was repaired.
inline constexpr const char* users = "software\\zelvane\\Zelvane Tuner Deluxe\\regscan\\user";
// The ticks of the category rows.
inline constexpr const char* selection = "software\\zelvane\\Zelvane Tuner Deluxe\\timer\\reg";
// The running total of a scan. The backslash at the end is part of the name.
inline constexpr const char* runningTotal = "software\\zelvane\\Zelvane Tuner Deluxe\\real\\";
inline constexpr const char* recheck = "software\\zelvane\\Zelvane Tuner Deluxe\\real";
// The number of rows repaired since installation, and whether a repair has ended.
inline constexpr const char* statistics =
    "software\\zelvane\\Zelvane Tuner Deluxe\\statics\\regscan";
inline constexpr const char* finish = "software\\zelvane\\Zelvane Tuner Deluxe\\wizard\\finish";
// The language, and the font that goes with it.
inline constexpr const char* language = "SOFTWARE\\zelvane\\zelvane tuner\\zelvreg";
inline constexpr const char* suite = "SOFTWARE\\zelvane\\zelvane tuner";

}  // namespace settings

// The file that makes the program portable; it need not be there.
std::string settingsFile();
bool isPortable();

// A setting; empty if there is none.
std::string readSetting(const char* key, const std::string& name);
// The same; std::nullopt if there is one, or may be, that cannot be read.
std::optional<std::string> knownSetting(const char* key, const std::string& name);
// Stores it, and creates the key if needed. Returns whether that worked.
bool keepSetting(const char* key, const std::string& name, const std::string& text);

// The names of a key's settings, those that are longer than a number of an undo entry as "". There
// may be others if `isWhole` is false afterwards: they could not be read.
std::vector<std::string> settingNames(const char* key, bool& isWhole);
// Whether there is no such setting any more.
bool removeSetting(const char* key, const std::string& name);

}  // namespace zelvreg

#endif

// What is installed.
#include "MachineKeys.h"

namespace zelvreg::bench {
namespace {

struct List {
  const char* software;
  View view;
  Owner owner;
  std::size_t perMillion;
};
constexpr List lists[] = {
    {machineSoftware, View::Bits64, Owner::Machine, 700},
    {machineSoftware32, View::Bits32, Owner::Machine, 500},
    {userSoftware, View::Bits64, Owner::User, 60},
};

void writeText(const Making& making, const std::string& record, const char* name,
               const Reference& reference) {
  making.registry.reference(name, reference.text);
  making.label("135", record, name, reference);
}

Reference changed(Reference reference, const std::string& before, const std::string& after) {
  reference.text = before + reference.text + after;
  return reference;
}

void writeRecord(const Making& making, const std::string& record, const Reference& program) {
  making.registry.key(record);
  making.registry.text("DisplayName", "Product of " + fileNameOf(program.text));
  making.registry.text("DisplayVersion", "1." + std::to_string(making.random.below(100)));
  making.registry.text("Publisher", "Vendor");
  writeText(making, record, "InstallLocation", folderOf(program));
  writeText(making, record, "DisplayIcon", changed(program, "", ",0"));
  writeText(making, record, "UninstallString", changed(program, "\"", "\" /remove"));
  making.registry.text("InstallDate", "20250615");
  making.registry.number("EstimatedSize", static_cast<std::uint32_t>(making.random.below(90'000)));
  making.registry.number("NoModify", 1);
}

// Records of which single values are hard to judge.
void writeHardRecords(const Making& making, const std::string& above, const List& list) {
  const Place place{FileKind::Program, list.view, list.owner};
  const Place folderPlace{FileKind::Program, list.view, list.owner, Use::Folder};
  const std::size_t count = making.casesOfPlace();
  const std::vector<Reference> icons = making.paths.take(place, count);
  const std::vector<Reference> folders = making.paths.take(folderPlace, count);
  const std::vector<Reference> texts = making.texts.take(place, count);
  const std::vector<Reference> commands = making.commands.take(place, count);
  for (std::size_t number = 0; number < count; ++number) {
    const std::string record = above + "\\Tool " + padded(number, 5);
    making.registry.key(record);
    // A colon and a backslash make a path of it for a scan.
    writeText(making, record, "DisplayName",
              {"Copy of D:\\Data, version " + std::to_string(number), Truth::Undecidable,
               "text-with-colon"});
    writeText(making, record, "DisplayIcon", changed(icons[number], "", ",-101"));
    writeText(making, record, "InstallSource", folders[number]);
    writeText(making, record, "Readme", texts[number]);
    writeText(making, record, "UninstallString", commands[number]);
  }
}

// An icon that the installer keeps comes back with the product.
void writeInstallerIcon(const Making& making, const std::string& record, const char* product,
                        Truth truth) {
  making.registry.key(record);
  making.registry.text("DisplayName", "Product of the installer");
  writeText(
      making, record, "DisplayIcon",
      {std::string("C:\\Windows\\Installer\\") + product + "\\icon.ico", truth, "installer-icon"});
}

// Records without a value: nothing is in them, or a key.
void writeEmptyRecords(const Making& making, const std::string& above) {
  for (std::size_t number = 0; number < making.share(20); ++number) {
    const std::string empty = above + "\\Empty " + padded(number, 4);
    making.registry.key(empty);
    making.label("133", empty, "", {{}, Truth::Dead, "empty-record"});
    const std::string filled = above + "\\Filled " + padded(number, 4);
    making.registry.key(filled);
    making.label("133", filled, "", {{}, Truth::Undecidable, "record-with-subkeys"});
    making.registry.key(filled + "\\Setup");
    making.registry.text("Version", "1.0");
  }
}

void writeList(const Making& making, const List& list) {
  const std::string above = std::string(list.software) + windowsKey + "\\Uninstall";
  making.registry.container(above);
  const std::size_t count = making.share(list.perMillion);
  for (std::size_t number = 0; number < count; ++number) {
    writeRecord(making, above + "\\" + making.guid(number, count),
                making.files.any(FileKind::Program, list.view, making.random));
  }
  writeHardRecords(making, above, list);
  writeEmptyRecords(making, above);
  writeInstallerIcon(making, above + "\\" + installedProduct, installedProduct, Truth::Undecidable);
  writeInstallerIcon(making, above + "\\Product that was removed", unknownProduct, Truth::Dead);
}

}  // namespace

void writeUninstallRecords(const Making& making) {
  for (const List& list : lists) {
    writeList(making, list);
  }
}

}  // namespace zelvreg::bench

// The bulk of a registry: settings of programs, which no scanner reads.
#include "MachineKeys.h"

namespace zelvreg::bench {
namespace {

constexpr std::size_t productsOfVendor = 8;
constexpr std::size_t groupsOfProduct = 6;
constexpr std::size_t entriesOfGroup = 7;

// Writes the keys of one vendor after the other until `last` keys are there.
class Vendors {
 public:
  Vendors(const Making& keysInMaking, std::string software, View ofView)
      : making(keysInMaking), above(std::move(software)), view(ofView) {}

  void writeUntil(std::size_t last) {
    making.registry.container(above);
    writeTools();
    for (std::size_t vendor = 0; making.registry.keyCount() < last; ++vendor) {
      const std::string path = above + "\\Vendor " + padded(vendor, 5);
      making.registry.key(path);
      making.registry.text("Name", "Vendor");
      if (making.random.oneIn(4)) {
        writeProgram(path, "Program", making.files.any(FileKind::Program, view, making.random));
      }
      writeProducts(path, last);
    }
  }

 private:
  [[nodiscard]] bool isFull(std::size_t last) const { return making.registry.keyCount() >= last; }

  void writeProgram(const std::string& key, const std::string& name, const Reference& program) {
    making.registry.reference(name, program.text);
    making.label("3", key, name, program);
  }

  void writeTools() {
    const std::string path = above + "\\Tools";
    making.registry.key(path);
    std::size_t number = 0;
    const Owner owner = above == userSoftware ? Owner::User : Owner::Machine;
    const Place place{FileKind::Program, view, owner};
    for (Cases* cases : {&making.paths, &making.texts}) {
      for (const Reference& program : cases->take(place, making.casesOfPlace())) {
        writeProgram(path, "Tool " + padded(number++, 4), program);
      }
    }
  }

  void writeProducts(const std::string& vendor, std::size_t last) {
    for (std::size_t number = 0; number < productsOfVendor && !isFull(last); ++number) {
      const std::string path = vendor + "\\Product " + std::to_string(number);
      making.registry.key(path);
      making.registry.text("Version", "4." + std::to_string(making.random.below(100)));
      writeGroups(path, last);
    }
  }

  void writeGroups(const std::string& product, std::size_t last) {
    for (std::size_t number = 0; number < groupsOfProduct && !isFull(last); ++number) {
      const std::string path = product + "\\Settings " + std::to_string(number);
      making.registry.key(path);
      writeEntries(path, last);
    }
  }

  void writeEntries(const std::string& group, std::size_t last) {
    for (std::size_t number = 0; number < entriesOfGroup && !isFull(last); ++number) {
      making.registry.key(group + "\\Entry " + std::to_string(number));
      const std::size_t values = making.random.below(4);
      if (values > 0) {
        making.registry.text("Title", "Setting of a program " + std::to_string(number));
      }
      if (values > 1) {
        making.registry.number("Enabled", static_cast<std::uint32_t>(making.random.below(2)));
      }
      if (values > 2) {
        making.registry.binary("State", making.random.bits());
      }
    }
  }

  const Making& making;
  std::string above;
  View view;
};

}  // namespace

void writeVendorKeys(const Making& making) {
  const std::size_t first = making.registry.keyCount();
  const std::size_t left = making.keyCount - std::min(first, making.keyCount);
  Vendors(making, machineSoftware, View::Bits64).writeUntil(first + left * 11 / 20);
  Vendors(making, machineSoftware32, View::Bits32).writeUntil(first + left * 15 / 20);
  Vendors(making, userSoftware, View::Bits64).writeUntil(making.keyCount);
}

}  // namespace zelvreg::bench

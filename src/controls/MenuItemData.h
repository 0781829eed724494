// What owner-drawn menus keep of each entry.
#ifndef ZELVREG_CONTROLS_MENU_ITEM_DATA_H
#define ZELVREG_CONTROLS_MENU_ITEM_DATA_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace zelvreg::controls {

struct CMyItemData {
  bool bMainMenu = false;     // the entry is in the menu bar
  std::int32_t iButton = -1;  // index of the entry's picture, from 0; -1 for none
  std::uint32_t fType = 0;    // the entry's type flags before the menus became owner-drawn
  std::string sMenuText;      // UTF-8; the keys follow after a tab

  bool operator==(const CMyItemData&) const = default;
};

// The records of all entries. A record keeps its address until it is removed: the entries of the
// menus point to it.
class CMyItemDatas {
 public:
  CMyItemData& Add(CMyItemData data) {
    return *records.emplace_back(std::make_unique<CMyItemData>(std::move(data)));
  }
  // `index` runs from 1; null beyond the end.
  [[nodiscard]] const CMyItemData* Item(std::size_t index) const {
    return index >= 1 && index <= records.size() ? records[index - 1].get() : nullptr;
  }
  [[nodiscard]] std::size_t Count() const { return records.size(); }
  // Those after it move up. Beyond the end nothing happens.
  void Remove(std::size_t index) {
    if (Item(index) != nullptr) {
      records.erase(records.begin() + static_cast<std::ptrdiff_t>(index) - 1);
    }
  }
  // The records in order, to walk through.
  [[nodiscard]] std::vector<const CMyItemData*> NewEnum() const {
    std::vector<const CMyItemData*> all;
    all.reserve(records.size());
    for (const auto& record : records) {
      all.push_back(record.get());
    }
    return all;
  }

 private:
  std::vector<std::unique_ptr<CMyItemData>> records;
};

}  // namespace zelvreg::controls

#endif

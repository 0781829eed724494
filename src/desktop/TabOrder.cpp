#include "desktop/TabOrder.h"

#include <algorithm>
#include <numeric>
#include <span>

namespace zelvreg::desktop {
namespace {

// In pixels at 96 dpi.
constexpr int lineTolerance = 10;

int middleOf(const Place& place) { return place.top + place.height / 2; }

void orderLines(std::span<std::size_t> order, const std::vector<Place>& places) {
  const auto middle = [&places](std::size_t index) { return middleOf(places[index]); };
  std::ranges::stable_sort(order, {}, middle);
  for (std::size_t start = 0; start < order.size();) {
    std::size_t end = start + 1;
    while (end < order.size() && middle(order[end]) - middle(order[start]) < lineTolerance) {
      ++end;
    }
    std::ranges::stable_sort(order.subspan(start, end - start), {},
                             [&places](std::size_t index) { return places[index].left; });
    start = end;
  }
}

std::vector<std::size_t> asGiven(const std::vector<Place>& places) {
  std::vector<std::size_t> order(places.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  return order;
}

int areaOf(const Place& place) {
  enum Area : int { Title, CommandBar, SideBar, Pages };
  if (place.top < titleHeight) {
    return Title;
  }
  if (place.top < commandBarBottom) {
    return CommandBar;
  }
  return place.left < sideBarWidth ? SideBar : Pages;
}

}  // namespace

std::vector<std::size_t> readingOrder(const std::vector<Place>& places) {
  std::vector<std::size_t> order = asGiven(places);
  orderLines(order, places);
  return order;
}

std::vector<std::size_t> readingOrderOfMainWindow(const std::vector<Place>& places) {
  std::vector<std::size_t> order = asGiven(places);
  const auto area = [&places](std::size_t index) { return areaOf(places[index]); };
  std::ranges::stable_sort(order, {}, area);
  for (auto start = order.begin(); start != order.end();) {
    const auto end = std::find_if(start, order.end(),
                                  [&](std::size_t index) { return area(index) != area(*start); });
    orderLines({start, end}, places);
    start = end;
  }
  return order;
}

}  // namespace zelvreg::desktop

// The two places that a path of the system folder means: one for 64-bit programs and one for
// 32-bit programs.
#ifndef ZELVREG_EVIDENCE_VIEW_PATHS_H
#define ZELVREG_EVIDENCE_VIEW_PATHS_H

#include <array>
#include <cstddef>
#include <string>

#include "evidence/OwnerVariables.h"

namespace zelvreg {

struct ViewPath {
  std::string path;   // as this process reaches it
  bool isOwn = true;  // in the view of the text
};

class ViewPaths {
 public:
  explicit ViewPaths(std::string path) : places{ViewPath{std::move(path), true}}, count(1) {}
  ViewPaths(std::string own, std::string other)
      : places{ViewPath{std::move(own), true}, ViewPath{std::move(other), false}}, count(2) {}

  [[nodiscard]] const ViewPath* begin() const { return places.data(); }
  [[nodiscard]] const ViewPath* end() const { return places.data() + count; }

 private:
  std::array<ViewPath, 2> places;
  std::size_t count;
};

// The path itself, unless it leads into the system folder of a 64-bit Windows; then that of its own
// view, and that of the other.
ViewPaths viewPaths(const std::string& path, ProgramView view, const std::string& windowsFolder);

}  // namespace zelvreg

#endif

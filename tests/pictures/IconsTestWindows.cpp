// The pictures are resources of a Windows program.
#include "pictures/Icons.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "evidence/Reasons.h"
#include "form/Form42.h"
#include "scan/CategoryTable.h"

namespace zelvreg {
namespace {

TEST(Icons, EachKeyOfTheFormsImageListsHasItsPicture) {
  const Form42 form;
  for (const ImageList* list : {&form.ImageList1, &form.imgtoolbar}) {
    for (const std::string& key : list->keys) {
      EXPECT_NE(findIcon(key), nullptr) << key;
    }
  }
}

TEST(Icons, HelpFilesOfTheKindWithoutPictureStayWithoutOne) {
  EXPECT_EQ(findIcon("k"), nullptr);
  EXPECT_FALSE(iconShape("k", 16));
}

TEST(Icons, EachHasABitmapOfEachSizeThatCoversAPartOfItsSquare) {
  for (const Icon& icon : icons()) {
    for (const int size : {16, 20, 24, 30, 32, 36, 40, 48, 60, 64, 72, 96}) {
      const auto shape = iconShape(icon.key, size);
      ASSERT_TRUE(shape) << icon.key << " " << size;
      EXPECT_EQ(shape->size, size);
      ASSERT_EQ(shape->coverage.size(), static_cast<std::size_t>(size * size));
      const auto covered = std::ranges::count_if(shape->coverage, [](int at) { return at > 127; });
      EXPECT_GT(covered, size / 2) << icon.key << " " << size;
      EXPECT_LT(covered, size * size / 2) << icon.key << " " << size;
    }
  }
}

TEST(Icons, NoTwoCategoriesShareAPicture) {
  for (const Category& one : categories()) {
    for (const Category& other : categories()) {
      if (&one == &other) continue;
      const auto first = iconShape(one.icon, 16);
      const auto second = iconShape(other.icon, 16);
      ASSERT_TRUE(first && second);
      EXPECT_FALSE(std::ranges::equal(first->coverage, second->coverage)) << one.icon;
    }
  }
}

// Beside it stands the picture of its category.
TEST(Icons, EachConfidenceHasAMarkLikeNoOtherPicture) {
  constexpr int markedly = 24;
  std::vector<IconShape> others;
  for (const Category& category : categories()) {
    others.push_back(iconShape(category.icon, 16).value());
  }
  for (const Confidence confidence : {Confidence::Sure, Confidence::Likely, Confidence::Unsure}) {
    const IconShape mark = iconShape(codeOf(confidence), 16).value();
    for (const IconShape& other : others) {
      int different = 0;
      for (std::size_t pixel = 0; pixel < mark.coverage.size(); ++pixel) {
        different += (mark.coverage[pixel] > 127) != (other.coverage[pixel] > 127) ? 1 : 0;
      }
      EXPECT_GT(different, markedly) << codeOf(confidence);
    }
    others.push_back(mark);
  }
}

TEST(Icons, ASquareBetweenTwoSizesTakesTheSmallerAndATinyOneTheSmallest) {
  EXPECT_EQ(iconShape("a", 28)->size, 24);
  EXPECT_EQ(iconShape("a", 200)->size, 96);
  EXPECT_EQ(iconShape("a", 8)->size, 16);
}

TEST(Icons, PaintedPixelsHoldTheColorMultipliedByWhatIsCovered) {
  const std::array<std::uint8_t, 4> coverage{0, 255, 51, 128};
  const auto pixels = painted({2, coverage}, 10118205);
  EXPECT_EQ(pixels, (std::vector<std::uint32_t>{0, 0xFF3D649A, 0x330C141F, 0x801F324D}));
}

TEST(SearchPicture, LiesBesideTheProgramAndRunsForEver) {
  std::ifstream file("search.gif", std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  EXPECT_EQ(bytes.substr(0, 6), "GIF89a");
  EXPECT_NE(bytes.find(std::string("NETSCAPE2.0\x03\x01\0\0\0", 16)), std::string::npos);
  EXPECT_EQ(bytes.substr(bytes.size() - 1), ";");
}

}  // namespace
}  // namespace zelvreg

#include "machine/registry/NamePool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zelvreg::machine {
namespace {

TEST(NamePool, AKeptNameStaysWhatItWas) {
  Arena arena;
  NamePool pool;
  std::vector<std::u16string> given;
  std::vector<Name> kept;
  for (std::size_t length = 0; length < 300; ++length) {
    for (const char16_t unit : {u'a', u'A', u'\0', u'\xD800', u'\xFFFF'}) {
      given.emplace_back(length, unit);
      given.push_back(given.back() + u"end");
    }
  }
  given.emplace_back(16383, u'x');
  for (const std::u16string& name : given) {
    kept.push_back(pool.keep(arena, name));
  }
  for (std::size_t index = 0; index < given.size(); ++index) {
    ASSERT_EQ(kept[index].view(), given[index]);
  }
}

TEST(NamePool, ANameThatWasKeptLatelyIsShared) {
  Arena arena;
  NamePool pool;
  const Name first = pool.keep(arena, u"InprocServer32");
  EXPECT_EQ(pool.keep(arena, std::u16string(u"InprocServer32")).view().data(), first.view().data());
  EXPECT_NE(pool.keep(arena, u"InProcServer32").view().data(), first.view().data());
}

TEST(NamePool, NoNameIsTheEmptyOne) { EXPECT_EQ(Name().view(), u""); }

std::span<const std::byte> bytesOf(std::string_view text) { return std::as_bytes(std::span(text)); }

TEST(DataPool, KeptDataStayWhatTheyWereAndAreSharedWithTheSameData) {
  Arena arena;
  DataPool pool;
  std::vector<std::string> given;
  std::vector<std::span<const std::byte>> kept;
  for (std::size_t size = 0; size < 100; ++size) {
    given.emplace_back(size, 'a');
    for (const std::size_t place : {size / 4, size / 2, size - size / 4}) {
      given.emplace_back(size, 'a').insert(place, "b");
    }
  }
  for (const std::string& data : given) {
    kept.push_back(pool.keep(arena, bytesOf(data)));
    const std::string same = data;
    EXPECT_EQ(pool.keep(arena, bytesOf(same)).data(), kept.back().data());
  }
  for (std::size_t index = 0; index < given.size(); ++index) {
    ASSERT_TRUE(std::ranges::equal(kept[index], bytesOf(given[index])));
  }
}

}  // namespace
}  // namespace zelvreg::machine

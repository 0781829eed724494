// What the program reads of a hive, compared with what libhivex does.
//
// Of a hive that libhivex reads without a failure both give the same. Of any other the program
// gives at least what libhivex gives, and it opens every hive that libhivex opens. It may give
// more: libhivex refuses a whole file for one bad bin, of which the program looks only at what is
// linked, and a whole list for one bad entry or a wrong count.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <random>

#include "machine/HiveBuilder.h"
#include "machine/TemporaryFolder.h"
#include "machine/hive/HiveContent.h"
#include "machine/hive/HiveReader.h"
#include "machine/hive/RawHive.h"
#include "unicode/Unicode.h"

namespace zelvreg::fixture {
namespace {

using machine::HiveBytes;
using namespace machine::hiveFormat;

std::span<const std::byte> bytesOf(std::string_view text) { return std::as_bytes(std::span(text)); }

// Whether `part` is what is left of `whole` when some of it is taken away.
template <typename Entry>
bool isPartOf(const std::vector<Entry>& part, const std::vector<Entry>& whole) {
  auto next = whole.begin();
  return std::ranges::all_of(part, [&](const Entry& entry) {
    next = std::find(next, whole.end(), entry);
    return next != whole.end() && next++ != whole.end();
  });
}

// What a test knows of a run over many hives.
struct Tally {
  int refused = 0;  // by both
  int equal = 0;
  int more = 0;           // the program has read more
  std::size_t found = 0;  // keys, by searches
};

void compareKeys(const HiveContent& theirs, const HiveContent& ours) {
  for (const auto& [node, key] : theirs.keys) {
    const auto same = ours.keys.find(node);
    ASSERT_NE(same, ours.keys.end()) << "the key " << node << " " << key.name;
    EXPECT_EQ(same->second.name, key.name) << node;
    EXPECT_TRUE(isPartOf(key.values, same->second.values)) << "values of " << key.name;
  }
}

void compare(const std::optional<HiveContent>& theirs, const std::optional<HiveContent>& ours,
             Tally& tally) {
  if (!theirs) {
    (ours ? tally.more : tally.refused) += 1;
    return;
  }
  ASSERT_TRUE(ours) << "a hive is refused";
  if (theirs->isWhole) {
    EXPECT_TRUE(ours->keys == theirs->keys);
    EXPECT_TRUE(ours->isWhole);
  }
  compareKeys(*theirs, *ours);
  (ours->keys == theirs->keys ? tally.equal : tally.more) += 1;
}

// A search by name gives what a walk gives, or leaves the answer to a walk. In a long list of a
// damaged hive it may miss what has lost its mark and its place.
void searchFindsWhatAWalkFinds(std::span<const std::byte> hive, const HiveContent& walked,
                               bool isDamaged, Tally& tally) {
  constexpr std::size_t longestShortList = 64;
  machine::HiveReader reader(hive);
  for (const auto& [node, key] : walked.keys) {
    const bool mayMiss = isDamaged && key.subkeys.size() > longestShortList;
    for (const std::uint32_t subkey : key.subkeys) {
      const std::u16string name = utf16(walked.keys.at(subkey).name);
      const auto found = reader.findSubkey(node, name);
      EXPECT_TRUE(mayMiss || found.answer != machine::FoundSubkey::Answer::Absent)
          << walked.keys.at(subkey).name;
      if (found.answer == machine::FoundSubkey::Answer::Found) {
        EXPECT_EQ(utf8(found.subkey.name.text()), walked.keys.at(found.subkey.node).name);
        EXPECT_TRUE(found.subkey.name.isSame(name));
        ++tally.found;
      }
    }
    EXPECT_NE(reader.findSubkey(node, u"no key has this name").answer,
              machine::FoundSubkey::Answer::Found);
  }
}

class HiveDifferenceTest : public ::testing::Test {
 protected:
  void compareFile(const std::filesystem::path& file, const std::string& content) {
    SCOPED_TRACE(file);
    const auto ours = readWithReader(bytesOf(content));
    compare(readWithLibrary(file), ours, tally);
    if (ours) {
      searchFindsWhatAWalkFinds(bytesOf(content), *ours, areDamaged, tally);
    }
  }
  void compareFile(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    compareFile(file, {std::istreambuf_iterator<char>(stream), {}});
  }
  // The same for a hive that is not in a file yet.
  void compareContent(const std::string& content) {
    folder.write("hive", content);
    compareFile(folder.path() / "hive", content);
  }

  TemporaryFolder folder;
  bool areDamaged = false;  // on purpose, anywhere
  Tally tally;
};

// Keys in every kind of list, and every kind of value.
std::string manyKindsOfCells() {
  RawHive hive;
  const auto top =
      hive.giveSubkeys(hive.root(), "lh", {"Hashes", "Hints", "Links", "Lists", "Long", "Longer"});
  hive.giveSubkeys(top[0], "lh", {"Alpha", "beta", "Gamma", "x"});
  hive.giveSubkeys(top[1], "lf", {"abcdef", "ABCX", "b", "\xE4rger"});
  hive.giveSubkeys(top[2], "li", {"one", "two"});
  std::vector<std::string> many;
  for (int number = 100; number < 170; ++number) {
    many.push_back("Key" + std::to_string(number));
  }
  hive.giveSubkeys(top[4], "lh", many);
  hive.giveSubkeys(top[5], "li", many);
  const std::size_t first = hive.key("first", top[3]);
  const std::size_t second = hive.wideKey(std::string("s\0\x2D\x4E", 4), top[3]);
  const std::size_t third = hive.key("third", top[3]);
  hive.giveList(top[3],
                hive.list("ri", {hive.list("lh", {first, second}), hive.list("li", {third})}), 3);
  hive.giveValues(first,
                  {hive.value("", 1, std::string("t\0\0\0", 4)), hive.value("number", 4, "abcd"),
                   hive.value("bytes", 3, std::string(100, 'b')), hive.value("none", 0, "")});
  hive.giveValues(second, {hive.largeValue("large", 3, std::string(partSize * 2 + 100, 'l'))});
  hive.giveValues(third, {hive.value("\xFC", 0x80000007, "five!")});
  return hive.file();
}

// Another hive in each run, as libhivex writes it.
void buildRandomHive(const std::filesystem::path& file, std::mt19937& random) {
  HiveBuilder hive(file);
  const auto below = [&random](std::size_t limit) { return random() % limit; };
  const std::array<std::string, 6> names{"Key",           "\xC3\xA4rger", "\xE4\xB8\xAD",
                                         "a longer name", "{00-11}",      "x"};
  std::vector<std::string> paths{""};
  for (std::size_t left = 1 + below(60); left > 0; --left) {
    const std::string& above = paths[below(paths.size())];
    const std::string name = names[below(names.size())] + std::to_string(below(50));
    paths.push_back(above.empty() ? name : above + "\\" + name);
    hive.key(paths.back());
    for (std::size_t values = below(4); values > 0; --values) {
      const std::size_t size = below(10) == 0 ? 9000 : below(40);
      hive.value(paths.back(), below(5) == 0 ? "" : names[below(names.size())],
                 static_cast<int>(below(13)), std::string(size, static_cast<char>(below(256))));
    }
  }
}

TEST_F(HiveDifferenceTest, EveryKindOfCellIsReadAlike) {
  compareContent(manyKindsOfCells());
  EXPECT_EQ(tally.equal, 1);
  EXPECT_EQ(tally.found, 159U);
}

TEST_F(HiveDifferenceTest, GeneratedHivesAreReadAlike) {
  std::mt19937 random(1);
  constexpr int hives = 40;
  for (int hive = 0; hive < hives; ++hive) {
    buildRandomHive(folder.path() / "built", random);
    compareFile(folder.path() / "built");
  }
  EXPECT_EQ(tally.equal, hives);
}

// Damages a hive in one way of several.
class Fuzzer {
 public:
  explicit Fuzzer(std::uint32_t seed) : random(seed) {}

  std::string damaged(const std::string& whole) {
    if (below(12) == 0) {
      return whole.substr(0, below(whole.size() + 1));
    }
    HiveBytes hive(whole);
    for (std::size_t changes = 1 + below(4); changes > 0; --changes) {
      change(hive);
    }
    if (below(4) != 0) {
      RawHive::sign(hive);
    }
    return hive.all();
  }

 private:
  std::size_t below(std::size_t limit) { return random() % limit; }

  // Most of a hive's bytes are data, in which damage is not noticed: so change what stands at a
  // record, if one is found near.
  std::size_t somewhere(const HiveBytes& hive) {
    const std::size_t place = below(hive.all().size() - 64);
    if (below(8) == 0) {
      return place;
    }
    constexpr std::array<std::string_view, 7> letters{"nk", "vk", "lh", "lf", "li", "ri", "db"};
    const std::size_t record = hive.all().find(letters[below(letters.size())], place);
    return record == std::string::npos || record + 64 > hive.all().size() ? place
                                                                          : record - 4 + below(56);
  }

  void change(HiveBytes& hive) {
    constexpr std::array<std::uint32_t, 10> numbers{
        0, 1, 2, 0xFFFF, 0xFFFFFFFF, 0x7FFFFFFF, 0x80000000, 0x80000005, 0x1000, 0x20};
    const std::size_t place = somewhere(hive);
    switch (below(4)) {
      case 0:
        hive.put<std::uint8_t>(place, static_cast<std::uint8_t>(below(256)));
        break;
      case 1:
        hive.put<std::uint16_t>(place / 2 * 2, static_cast<std::uint16_t>(numbers[below(10)]));
        break;
      case 2:
        hive.put<std::uint32_t>(place / 4 * 4, numbers[below(numbers.size())]);
        break;
      default:
        // A link to some other place.
        hive.put<std::uint32_t>(place / 4 * 4,
                                static_cast<std::uint32_t>(somewhere(hive) / 8 * 8 - binsOffset));
    }
  }

  std::mt19937 random;
};

TEST_F(HiveDifferenceTest, OfADamagedHiveNoLessIsRead) {
  const bool isLong = std::getenv("ZELVREG_RANDOM_MACHINES") != nullptr;
  const int hives = isLong ? 6000 : 300;
  const std::string whole = manyKindsOfCells();
  areDamaged = true;
  Fuzzer fuzzer(1);
  for (int hive = 0; hive < hives && !HasFailure(); ++hive) {
    SCOPED_TRACE(hive);
    compareContent(fuzzer.damaged(whole));
  }
  // All of it happens.
  EXPECT_GT(tally.refused, hives / 20);
  EXPECT_GT(tally.equal, hives / 20);
  EXPECT_GT(tally.more, hives / 20);
}

TEST_F(HiveDifferenceTest, HivesOfRealComputersAreReadAlike) {
  const char* real = std::getenv("ZELVREG_REAL_HIVES");
  if (real == nullptr) {
    GTEST_SKIP() << "ZELVREG_REAL_HIVES names no folder";
  }
  for (const auto& entry : std::filesystem::recursive_directory_iterator(real)) {
    if (entry.is_regular_file()) {
      compareFile(entry.path());
    }
  }
  EXPECT_GT(tally.equal, 0);
}

}  // namespace
}  // namespace zelvreg::fixture

#include "languages/Charset.h"

#include <algorithm>
#include <array>

namespace zelvreg {
namespace {

struct Pair {
  int charset;
  unsigned codePage;
};

// The system's own pairs, for decoding.
constexpr std::array written{
    Pair{128, 932},  Pair{129, 949},  Pair{130, 949},  Pair{134, 936},  Pair{136, 950},
    Pair{161, 1253}, Pair{162, 1254}, Pair{163, 1258}, Pair{177, 1255}, Pair{178, 1256},
    Pair{186, 1257}, Pair{204, 1251}, Pair{222, 874},  Pair{238, 1250},
};

constexpr std::array matching{
    Pair{0, 1252},   Pair{1, 1252},   Pair{2, 2},      Pair{77, 77},    Pair{128, 932},
    Pair{129, 949},  Pair{130, 949},  Pair{134, 936},  Pair{136, 950},  Pair{161, 1253},
    Pair{162, 1254}, Pair{163, 1258}, Pair{177, 1255}, Pair{178, 1256}, Pair{186, 1257},
    Pair{204, 1251}, Pair{222, 874},  Pair{238, 1257}, Pair{255, 255},
};

// Hebrew and Arabic.
constexpr std::array fromRight{177, 178};

}  // namespace

bool charsetReadsFromRight(int charset) {
  return std::ranges::find(fromRight, charset) != fromRight.end();
}

unsigned codePageOfCharset(int charset) {
  const auto* found = std::ranges::find(written, charset, &Pair::charset);
  return found == written.end() ? 1252 : found->codePage;
}

bool charsetMatchesCodePage(int charset, unsigned codePage) {
  return std::ranges::any_of(matching, [&](const Pair& pair) {
    return pair.charset == charset && pair.codePage == codePage;
  });
}

}  // namespace zelvreg

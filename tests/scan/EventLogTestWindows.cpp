#include "scan/EventLog.h"

#include <algorithm>
#include <array>

#include "support/ComputerFixture.h"
#include "text/Text.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

constexpr std::array<WORD, 2> languages{MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US),
                                        MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN)};

// As the viewer of the event log shows it; empty if the programs have none.
std::string messageOf(LoggedEvent event, WORD language) {
  std::array<std::u16string, 4> texts{u"first", u"second", u"third", u"fourth"};
  std::array<DWORD_PTR, 4> pointers{};
  std::ranges::transform(texts, pointers.begin(), [](const std::u16string& text) {
    return reinterpret_cast<DWORD_PTR>(wideText(text));
  });
  std::u16string room(1000, u'\0');
  const DWORD size =
      FormatMessageW(FORMAT_MESSAGE_FROM_HMODULE | FORMAT_MESSAGE_ARGUMENT_ARRAY,
                     GetModuleHandleW(nullptr), eventNumber(event), language, roomIn(room),
                     static_cast<DWORD>(room.size()), reinterpret_cast<va_list*>(pointers.data()));
  return utf8({room.data(), size});
}

class EventMessageTest : public testing::TestWithParam<int> {};

TEST_P(EventMessageTest, IsThereInBothLanguages) {
  const auto event = static_cast<LoggedEvent>(GetParam());
  const std::string english = messageOf(event, languages[0]);
  const std::string german = messageOf(event, languages[1]);
  EXPECT_TRUE(contains(english, "first")) << english;
  EXPECT_TRUE(contains(german, "first")) << german;
  EXPECT_NE(english, german);
}

INSTANTIATE_TEST_SUITE_P(All, EventMessageTest, testing::Range(1, loggedEvents + 1));

TEST(EventMessages, TheRepairHasAllOfItsTexts) {
  for (const WORD language : languages) {
    const std::string text = messageOf(LoggedEvent::RepairEnded, language);
    for (const char* each : {"first", "second", "third", "fourth"}) {
      EXPECT_TRUE(contains(text, each)) << text;
    }
  }
}

}  // namespace
}  // namespace zelvreg

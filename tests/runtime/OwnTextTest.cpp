#include "runtime/OwnText.h"

#include "runtime/FileText.h"
#include "support/ComputerFixture.h"
#include "text/Wide.h"

namespace zelvreg {
namespace {

// On Windows in whatever code page the system has.
class OwnTextTest : public fixture::ComputerFixture {};

TEST_F(OwnTextTest, PlainTextIsTheSameBytes) {
  for (const char* text : {"", "HKEY_LOCAL_MACHINE\\Software\r\n"}) {
    EXPECT_EQ(ownBytes(text), text);
    EXPECT_EQ(ownText(text), text);
  }
}

TEST_F(OwnTextTest, EveryTextReturns) {
  for (const std::string text :
       {"Füße", "сервер", "サーバー", "表计算", "מחשב", "\U0001F600", "\xED\xA0\x80", "a\u0301",
        "\uFEFF", "\uFFFD", "ï»¿x", "ä сервер サーバー"}) {
    EXPECT_EQ(ownText(ownBytes(text)), text);
    EXPECT_EQ(ownText(appendedOwnBytes(ownBytes("first ä"), text)), "first ä" + text);
  }
}

TEST_F(OwnTextTest, BytesThatAreNoUtf8BecomeTextAllTheSame) {
  EXPECT_EQ(ownText("\xEF\xBB\xBFok \xFF\xE3\x82."), "ok \uFFFD\uFFFD\uFFFD.");
}

TEST_F(OwnTextTest, AUtf8FileStaysOneWhateverIsAppended) {
  EXPECT_EQ(appendedOwnBytes("\xEF\xBB\xBFサ\r\n", "plain"), "\xEF\xBB\xBFサ\r\nplain");
  EXPECT_EQ(appendedOwnBytes("\xEF\xBB\xBF", "ä"), "\xEF\xBB\xBFä");
}

TEST_F(OwnTextTest, ATextIsAppendedToWhatAFileHolds) {
  makeFolder("C:\\OwnText");
  const std::string path = "C:\\OwnText\\kept.txt";
  DeleteFileW(Wide(path).get());
  EXPECT_TRUE(appendOwnText(path, "abc"));
  EXPECT_TRUE(appendOwnText(path, "def"));
  EXPECT_EQ(readFileText(path), "abcdef");
  EXPECT_TRUE(appendOwnText(path, "\xED\xA0\x80"));
  EXPECT_EQ(readFileText(path),
            "\xEF\xBB\xBF"
            "abcdef\xED\xA0\x80");
  EXPECT_FALSE(appendOwnText("C:\\OwnText\\none\\kept.txt", "abc"));
}

}  // namespace
}  // namespace zelvreg

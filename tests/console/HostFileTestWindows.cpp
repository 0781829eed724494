// Only Windows has names that a program could be handed in a code page.
#include "console/HostFile.h"

#include <gtest/gtest.h>

#include "console/ExportTrust.h"
#include "runtime/FileText.h"
#include "text/Wide.h"

namespace zelvreg::console {
namespace {

TEST(HostFile, NamesOfEveryScriptAreOpened) {
  for (const std::string name : {"Füße", "Иван", "サーバー表", "מחשב", "\U0001F600"}) {
    const std::string path = "C:\\HostFile " + name + ".txt";
    writeHostFile(path, "first");
    writeHostFile(path, "second");
    EXPECT_EQ(readHostFile(path), "second") << name;
    EXPECT_EQ(readFileText(path), "second") << name;
    EXPECT_NE(DeleteFileW(Wide(path).get()), FALSE) << name;
    EXPECT_THROW(readHostFile(path), std::runtime_error);
  }
}

TEST(HostFile, AnExportOfAnyNameIsFound) {
  const std::string path = "C:\\экспорт サ.reg";
  writeHostFile(path, "x");
  try {
    requireTrustedFile(path);
  } catch (const std::runtime_error& refusal) {
    EXPECT_EQ(std::string(refusal.what()).find("cannot be read"), std::string::npos);
  }
  DeleteFileW(Wide(path).get());
  EXPECT_THROW(requireTrustedFile(path), std::runtime_error);
}

}  // namespace
}  // namespace zelvreg::console

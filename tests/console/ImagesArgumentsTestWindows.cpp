// The program for Linux has this command.
#include <gtest/gtest.h>

#include "console/CommandLine.h"

namespace zelvreg::console {
namespace {

TEST(ImagesArguments, ImagesAreLeftToTheProgramForLinux) {
  for (const std::vector<const char*>& arguments :
       {std::vector<const char*>{"zelvreg-console", "images"},
        {"zelvreg-console", "images", "disk.vhdx", "--results", "C:\\results", "--again"}}) {
    try {
      parseCommandLine(static_cast<int>(arguments.size()), arguments.data());
      FAIL();
    } catch (const UsageError& error) {
      EXPECT_NE(std::string(error.what()).find("program for Linux"), std::string::npos)
          << error.what();
    }
  }
}

}  // namespace
}  // namespace zelvreg::console

#include <gtest/gtest.h>

#include "console/Computer.h"

namespace zelvreg::console {
namespace {

TEST(Access, OnlyListsShareTheComputer) {
  for (const Command command :
       {Command::Scan, Command::Fix, Command::Search, Command::Automatic, Command::RestoreUndo,
        Command::RemoveUndo, Command::RestoreExport, Command::UndoOn, Command::UndoOff,
        Command::AddExclusion, Command::RemoveExclusion, Command::UseLanguage}) {
    EXPECT_EQ(accessFor(command), Access::Alone) << static_cast<int>(command);
  }
  for (const Command command :
       {Command::ListUndo, Command::ListExclusions, Command::ListLanguages}) {
    EXPECT_EQ(accessFor(command), Access::Shared) << static_cast<int>(command);
  }
}

}  // namespace
}  // namespace zelvreg::console

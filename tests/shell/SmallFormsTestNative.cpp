// Only the emulated computer records what it was asked to open.
#include "machine/Machine.h"
#include "machine/computer/Processes.h"
#include "machine/computer/Requests.h"
#include "shell/SmallForms.h"
#include "support/ComputerFixture.h"

namespace zelvreg {
namespace {

using SmallFormsLinksTest = fixture::ComputerFixture;

TEST_F(SmallFormsLinksTest, OpenTheSupportTheWebSiteAndTheTranslationTool) {
  bindSmallForms(form);
  form.programFolder = "C:\\program";
  form.frmabout.Label4.click();
  form.frmabout.Label5.click();
  form.frmabout.Label6.click();
  const std::vector<std::string>& opened = machine::Machine::current()->processes().started;
  ASSERT_EQ(opened.size(), 3U);
  EXPECT_EQ(opened[0].substr(0, 8), "https://");
  EXPECT_EQ(opened[1].substr(0, 8), "https://");
  EXPECT_NE(opened[0], opened[1]);
  EXPECT_EQ(opened[2], "C:\\program\\zelvtrans.exe");
  const auto& requests = machine::Machine::current()->requests().opened;
  ASSERT_EQ(requests.size(), 3U);
  for (const machine::OpenRequest& request : requests) {
    EXPECT_EQ(request.verb, "open") << request.file;
    EXPECT_EQ(request.owner, nullptr) << request.file;
    EXPECT_EQ(request.parameters, std::nullopt) << request.file;
    EXPECT_EQ(request.folder, std::nullopt) << request.file;
    EXPECT_EQ(request.showStyle, SW_SHOWNORMAL) << request.file;
  }
}

}  // namespace
}  // namespace zelvreg

// What is left of a mounted image when its process ends in any way; the Windows program takes none.
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include <grp.h>

#include <csignal>
#include <optional>

#include "images/ImageFixture.h"
#include "images/Keeper.h"
#include "images/MountedImage.h"
#include "images/OwnMounts.h"
#include "machine/KilledProcess.h"

namespace zelvreg::fixture {
namespace {

namespace fs = std::filesystem;

class ImageEndTest : public ImageTest {
 protected:
  void SetUp() override {
    ImageTest::SetUp();
    if (IsSkipped()) return;
    makeDisk("whole", {{1, windows({R"(C:\gone\a.exe)"})}});
    convert("whole", "qcow2", "disk");
  }

  std::size_t dead(const std::string& name) {
    EXPECT_LE(onImage(name, {"scan", "--json", "--only", "startup"}), 1) << error.str();
    return found().size();
  }

  // The process that keeps what this one has mounted, its only child.
  static pid_t keeperOf(pid_t process) {
    const std::string name = std::to_string(process);
    pid_t keeper = 0;
    std::ifstream("/proc/" + name + "/task/" + name + "/children") >> keeper;
    return keeper;
  }

  // Returns when it has ended. It is the first one of its view, so all others there have, too.
  static void killAndAwait(pid_t process) {
    siginfo_t ended{};
    ASSERT_EQ(kill(process, SIGKILL), 0);
    ASSERT_EQ(waitid(P_PID, static_cast<id_t>(process), &ended, WEXITED | WNOWAIT), 0);
  }

  [[nodiscard]] images::ImageTarget target(std::optional<fs::path> overlay) const {
    return {
        .file = path("disk"), .partition = {}, .canBeWritten = true, .overlay = std::move(overlay)};
  }

  static std::string mounts() {
    std::ifstream file("/proc/self/mounts");
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
  }
};

TEST_F(ImageEndTest, NothingIsLeftWhenItIsOver) {
  const std::string before = (dead("disk"), mounts());
  const std::string folderBefore = folder.read("disk");
  EXPECT_EQ(dead("disk"), 1U);
  EXPECT_EQ(mounts(), before);
  EXPECT_EQ(wait(nullptr), -1);
  EXPECT_TRUE(folder.read("disk") == folderBefore);
}

TEST_F(ImageEndTest, WhenItIsKilledEverythingIsTakenApart) {
  if (!canBeTraced) GTEST_SKIP() << "the sanitizer traces the process itself";
  const std::string before = folder.read("disk");
  const auto fixInto = [this] {
    onImage("disk", {"fix", "--yes", "--quiet", "--only", "startup", "--overlay", path("new")});
  };
  int killed = 0;
  for (int call = 16; !endsBeforeCall(
           call, [] {}, fixInto);
       call += call / 2) {
    AdoptedProcesses::waitForAll();
    ++killed;
    EXPECT_TRUE(folder.read("disk") == before);
    // Either nothing of the repair is there, or all of it.
    if (folder.has("new")) {
      EXPECT_EQ(dead("new"), 0U) << call;
      fs::remove(path("new"));
    }
  }
  AdoptedProcesses::waitForAll();
  EXPECT_GT(killed, 5);
  EXPECT_EQ(dead("new"), 0U);
}

TEST_F(ImageEndTest, AnImageThatIsWrittenItselfOutlivesItsProcess) {
  if (!canBeTraced) GTEST_SKIP() << "the sanitizer traces the process itself";
  const auto fixIt = [this] {
    onImage("disk", {"fix", "--yes", "--quiet", "--only", "startup", "--in-place"});
  };
  for (int call = 64; !endsBeforeCall(
           call, [] {}, fixIt);
       call *= 2) {
    AdoptedProcesses::waitForAll();
    EXPECT_LE(dead("disk"), 1U) << call;
  }
  AdoptedProcesses::waitForAll();
  EXPECT_EQ(dead("disk"), 0U);
}

TEST_F(ImageEndTest, AKeeperThatIsKilledTakesTheDaemonsAlong) {
  {
    images::MountedImage image(target({}));
    EXPECT_TRUE(fs::exists(image.root() / "Windows"));
    killAndAwait(keeperOf(getpid()));
    EXPECT_THROW(image.sync(), machine::MachineError);
    EXPECT_THROW(image.close(), machine::MachineError);
  }
  EXPECT_EQ(wait(nullptr), -1);
  EXPECT_EQ(dead("disk"), 1U);
}

TEST_F(ImageEndTest, AnOverlayGoesWithAKilledKeeperUntilItIsWhole) {
  {
    images::MountedImage image(target(path("new")));
    EXPECT_TRUE(folder.has("new"));
    killAndAwait(keeperOf(getpid()));
    EXPECT_THROW(image.sync(), machine::MachineError);
  }
  EXPECT_FALSE(folder.has("new"));
  {
    images::MountedImage image(target(path("new")));
    image.sync();
    killAndAwait(keeperOf(getpid()));
  }
  EXPECT_EQ(dead("new"), 1U);
}

TEST_F(ImageEndTest, AKeeperDoesNotWaitForAProgramWhenNobodyWaitsForIt) {
  const std::string begun = path("begun");
  ASSERT_EQ(mkfifo(begun.c_str(), 0600), 0);
  const fs::path mounts = images::ownMountFolder();
  const pid_t child = fork();
  if (child == 0) {
    images::Keeper keeper(mounts, {"cat"});
    keeper.run({"sh", "-c", "echo >'" + begun + "'; exec tail -f /dev/null"});
    _exit(1);
  }
  EXPECT_EQ((std::ifstream(begun).get()), '\n');
  ASSERT_EQ(kill(child, SIGKILL), 0);
  AdoptedProcesses::waitForAll();
}

TEST_F(ImageEndTest, AnOrdinaryUserCanMountOneWhereTheKernelLetsUsers) {
  if (geteuid() != 0) GTEST_SKIP() << "only root becomes another user";
  constexpr uid_t nobody = 65534;
  fs::permissions(folder.path(), fs::perms::all);
  fs::permissions(path("disk"), fs::perms::all);
  const pid_t child = fork();
  if (child == 0) {
    // Of a device that all users may open, as it is on most systems.
    const std::string device = path("fuse");
    const bool isUser = unshare(CLONE_NEWNS) == 0 &&
                        mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                        mknod(device.c_str(), S_IFCHR | 0666, makedev(10, 229)) == 0 &&
                        chmod(device.c_str(), 0666) == 0 &&
                        mount(device.c_str(), "/dev/fuse", nullptr, MS_BIND, nullptr) == 0 &&
                        setgroups(0, nullptr) == 0 && setgid(nobody) == 0 && setuid(nobody) == 0 &&
                        prctl(PR_SET_DUMPABLE, 1) == 0;
    try {
      const int status = isUser ? onImage("disk", {"fix", "--yes", "--quiet", "--only", "startup",
                                                   "--overlay", path("new")})
                                : 3;
      _exit(status);
    } catch (const std::exception& failure) {
      std::cerr << failure.what() << "\n";
      _exit(4);
    }
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
  EXPECT_EQ(dead("new"), 0U);
  EXPECT_EQ(dead("disk"), 1U);
}

}  // namespace
}  // namespace zelvreg::fixture

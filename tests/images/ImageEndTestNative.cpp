// What is left of a mounted image when its process ends in any way; the Windows program takes none.
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include <grp.h>
#include <csignal>

#include "images/ImageFixture.h"
#include "images/MountedImage.h"
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
    // Processes that lose the one that started them come to this one.
    ASSERT_EQ(prctl(PR_SET_CHILD_SUBREAPER, 1), 0);
  }
  void TearDown() override { prctl(PR_SET_CHILD_SUBREAPER, 0); }

  // Until every process that was started has ended, whosever child it was.
  static void waitForAll() {
    while (wait(nullptr) > 0 || errno == EINTR) {
    }
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
    waitForAll();
    ++killed;
    EXPECT_TRUE(folder.read("disk") == before);
    // Either nothing of the repair is there, or all of it.
    if (folder.has("new")) {
      EXPECT_EQ(dead("new"), 0U) << call;
      fs::remove(path("new"));
    }
  }
  waitForAll();
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
    waitForAll();
    EXPECT_LE(dead("disk"), 1U) << call;
  }
  waitForAll();
  EXPECT_EQ(dead("disk"), 0U);
}

TEST_F(ImageEndTest, AKeeperThatIsKilledTakesTheDaemonsAlong) {
  {
    images::MountedImage image(
        {.file = path("disk"), .partition = {}, .canBeWritten = true, .overlay = {}});
    EXPECT_TRUE(fs::exists(image.root() / "Windows"));
    const pid_t keeper = keeperOf(getpid());
    ASSERT_EQ(kill(keeper, SIGKILL), 0);
    // The first process of its own view ends when all others in it have.
    siginfo_t ended{};
    ASSERT_EQ(waitid(P_PID, static_cast<id_t>(keeper), &ended, WEXITED | WNOWAIT), 0);
    EXPECT_THROW(image.sync(), machine::MachineError);
    EXPECT_THROW(image.close(), machine::MachineError);
  }
  EXPECT_EQ(wait(nullptr), -1);
  EXPECT_EQ(dead("disk"), 1U);
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

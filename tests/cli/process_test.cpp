// The program itself, started as a process: what only an operating system can bring about.
#include <array>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "cli/library_fixture.h"

namespace declarium::cli {
namespace {

// A started program that waits for its end at the latest when it goes out of scope.
class Process {
 public:
  explicit Process(const std::string& shell_command) : id_(::fork()) {
    if (id_ == 0) {
      ::execl("/bin/sh", "sh", "-c", shell_command.c_str(), nullptr);
      ::_exit(127);
    }
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  ~Process() {
    if (id_ > 0) Wait();
  }

  int Wait() {
    int status = 0;
    while (::waitpid(id_, &status, 0) < 0 && errno == EINTR) {
    }
    id_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  }

 private:
  pid_t id_;
};

class CliProcess : public CliTest {
 protected:
  // Runs the program with these words of a shell command; its output goes to out.txt and err.txt.
  int Run(const std::string& words) {
    return Process(DECLARIUM_CLI " " + words + " > '" + Path("out.txt") + "' 2> '" +
                   Path("err.txt") + "'")
        .Wait();
  }
  [[nodiscard]] std::string Quoted(const std::string& name) const { return "'" + Path(name) + "'"; }
};

TEST_F(CliProcess, ReadsAPipe) {
  const auto import = "printf 'Const PIPED = 1\\n' | " DECLARIUM_CLI " import " +
                      Quoted("sample.api") + " - --replace > /dev/null";
  EXPECT_EQ(Process(import).Wait(), 0);
  EXPECT_EQ(Run("list " + Quoted("sample.api")), 0);
  EXPECT_EQ(Bytes("out.txt"), "const:PIPED\n");
}

TEST_F(CliProcess, TakesNamesBeyondAscii) {
  EXPECT_EQ(Run("rename " + Quoted("sample.api") + " 'Žltý kôň'"), 0);
  EXPECT_EQ(Run("databases " + Quoted("")), 0);
  EXPECT_NE(Bytes("out.txt").find("Žltý kôň"), std::string::npos);
}

// A name that is no UTF-8, as old disks have them, and one that the C locale has no letters for.
TEST_F(CliProcess, AFileWhoseNameCannotBeShownIsOpenedListedAndSaved) {
  for (const std::string name : {"kni\xE8nica.api", "knižnica.api"}) {
    std::filesystem::copy_file(Path("sample.api"), Path(name));
    const auto run = [&](const std::string& command, const std::string& words) {
      return Run(command + " " + Quoted(name) + " " + words);
    };
    const std::string in_c_locale = "LC_ALL=C " DECLARIUM_CLI " show ";
    EXPECT_EQ(Process(in_c_locale + Quoted(name) + " LIMIT > " + Quoted("out.txt")).Wait(), 0);
    EXPECT_NE(Bytes("out.txt").find("Const LIMIT"), std::string::npos);
    EXPECT_EQ(run("rename", "Changed"), 0) << Bytes("err.txt");
    EXPECT_NE(Bytes(name), Bytes("sample.api"));
    EXPECT_EQ(run("delete", "LIMIT"), 0) << Bytes("err.txt");
    EXPECT_EQ(run("show", "LIMIT"), 1);

    EXPECT_EQ(Run("databases " + Quoted("")), 0);
    EXPECT_NE(Bytes("out.txt").find("nica.api\tChanged\n"), std::string::npos) << Bytes("out.txt");
    std::filesystem::remove(Path(name));
  }
}

TEST_F(CliProcess, AFolderWhoseNameCannotBeShownIsListed) {
  std::filesystem::create_directory(Path("d\xFF"));
  std::filesystem::copy_file(Path("sample.api"), Path("d\xFF/a.api"));
  EXPECT_EQ(Run("databases " + Quoted("d\xFF")), 0);
  EXPECT_NE(Bytes("out.txt").find("/a.api\t"), std::string::npos) << Bytes("out.txt");
  EXPECT_EQ(Run("--json databases " + Quoted("d\xFF")), 0);
  EXPECT_NE(Bytes("out.txt").find("/a.api"), std::string::npos) << Bytes("out.txt");
}

TEST_F(CliProcess, AMissingFileWhoseNameCannotBeShownIsToldInUtf8) {
  EXPECT_EQ(Run("show " + Quoted("none\xE8.api") + " LIMIT"), 3);
  EXPECT_NE(Bytes("err.txt").find("none\xEF\xBF\xBD.api: "), std::string::npos) << Bytes("err.txt");
}

TEST_F(CliProcess, HasNoColorInAPipe) {
  EXPECT_EQ(Run("show " + Quoted("sample.api") + " LIMIT"), 0);
  EXPECT_EQ(Bytes("out.txt").find('\x1B'), std::string::npos);
}

TEST_F(CliProcess, AFolderAsStandardInputCannotBeRead) {
  const auto before = Bytes("sample.api");
  EXPECT_EQ(Run("import " + Quoted("sample.api") + " - < /"), 3);
  EXPECT_EQ(Bytes("err.txt"), "declarium-cli: standard input: cannot be read\n");
  EXPECT_EQ(Bytes("sample.api"), before);
}

TEST_F(CliProcess, AFullOutputDeviceIsReported) {
  if (::access("/dev/full", W_OK) != 0) GTEST_SKIP() << "no /dev/full here";
  EXPECT_EQ(Process(DECLARIUM_CLI " list " + Quoted("sample.api") + " > /dev/full 2> " +
                    Quoted("err.txt"))
                .Wait(),
            3);
  EXPECT_EQ(Bytes("err.txt"), "declarium-cli: standard output: cannot be written\n");
}

// Root may write everything, so it takes another user's rights for this one.
TEST_F(CliProcess, AFileWithoutPermissionStaysAsItIs) {
  const auto before = Bytes("sample.api");
  folder_.Put("out.txt", "");
  folder_.Put("err.txt", "");
  for (const std::string file : {"out.txt", "err.txt"}) ::chmod(Path(file).c_str(), 0666);
  ::chmod(folder_.path().c_str(), 0755);
  const std::string as_nobody = ::geteuid() == 0 ? "setpriv --reuid=65534 --clear-groups " : "";
  const auto run = [&](const std::string& words) {
    return Process(as_nobody + DECLARIUM_CLI + " " + words + " > " + Quoted("out.txt") + " 2> " +
                   Quoted("err.txt"))
        .Wait();
  };
  if (run("--version") != 0) GTEST_SKIP() << "the program cannot be started as another user";

  ::chmod(library_.c_str(), 0444);
  EXPECT_EQ(run("rename " + Quoted("sample.api") + " X"), 3);
  EXPECT_NE(Bytes("err.txt").find("sample.api"), std::string::npos);
  EXPECT_EQ(Bytes("sample.api"), before);
  ::chmod(library_.c_str(), 0000);
  EXPECT_EQ(run("list " + Quoted("sample.api")), 3);
  EXPECT_NE(Bytes("err.txt").find("sample.api"), std::string::npos);
  EXPECT_EQ(Bytes("out.txt"), "");
}

// A file system of a few pages, which only root may set up.
class SmallDisk {
 public:
  explicit SmallDisk(const std::filesystem::path& folder) : folder_(folder) {
    std::filesystem::create_directory(folder);
    mounted_ = ::mount("tmpfs", folder.c_str(), "tmpfs", 0, "size=64k") == 0;
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;
  ~SmallDisk() {
    if (mounted_) ::umount2(folder_.c_str(), MNT_DETACH);
  }
  [[nodiscard]] bool IsMounted() const { return mounted_; }

 private:
  std::filesystem::path folder_;
  bool mounted_;
};

TEST_F(CliProcess, AFullDiskLeavesTheOldLibrary) {
  const SmallDisk disk(folder_ / "disk");
  if (!disk.IsMounted()) GTEST_SKIP() << "no permission to mount a small disk";
  std::filesystem::copy_file(library_, Path("disk/l.api"));
  const auto before = Bytes("disk/l.api");
  std::string source;
  for (int i = 0; i < 20'000; ++i) source += "Const C" + std::to_string(i) + " = 1\r\n";
  folder_.Put("big.bas", source);

  EXPECT_EQ(Run("import " + Quoted("disk/l.api") + " " + Quoted("big.bas")), 3);
  EXPECT_NE(Bytes("err.txt").find("l.api"), std::string::npos);
  EXPECT_EQ(Bytes("disk/l.api"), before);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(Path("disk")), {}), 1);
}

TEST_F(CliProcess, TwoThatSaveAtOnceLeaveOneContentWhole) {
  std::array<std::string, 2> contents;
  for (const std::size_t i : {0u, 1u}) {
    std::string source;
    for (int n = 0; n < 5'000; ++n) {
      source += "Const C" + std::to_string(n) + " = " + std::to_string(i) + "\r\n";
    }
    folder_.Put("s" + std::to_string(i) + ".bas", source);
    ASSERT_EQ(
        RunCli({"import", library_, Path("s" + std::to_string(i) + ".bas"), "--replace"}).status,
        0);
    contents[i] = Bytes("sample.api");
  }
  for (int round = 0; round < 10; ++round) {
    const auto import = [&](const std::string& source) {
      return DECLARIUM_CLI " import " + Quoted("sample.api") + " --replace " + Quoted(source) +
             " > /dev/null";
    };
    Process first(import("s0.bas"));
    Process second(import("s1.bas"));
    // One that finds the library changed since it was read replaces nothing.
    const std::array ends = {first.Wait(), second.Wait()};
    EXPECT_THAT(ends, testing::Each(testing::AnyOf(0, 3)));
    EXPECT_THAT(ends, testing::Contains(0));
    const auto left = Bytes("sample.api");
    EXPECT_TRUE(left == contents[0] || left == contents[1]);
  }
}

TEST_F(CliProcess, TooLittleMemoryChangesNothing) {
#ifdef DECLARIUM_SANITIZED
  GTEST_SKIP() << "the sanitizer needs more address space than the limit leaves";
#endif
  const auto before = Bytes("sample.api");
  folder_.Put("long.bas", "Const A = " + std::string(60'000'000, 'x'));
  const auto import = "ulimit -v 120000; " DECLARIUM_CLI " import " + Quoted("sample.api") + " " +
                      Quoted("long.bas") + " 2> " + Quoted("err.txt");
  EXPECT_EQ(Process(import).Wait(), 3);
  EXPECT_NE(Bytes("err.txt").find("not enough memory"), std::string::npos);
  EXPECT_EQ(Bytes("sample.api"), before);
}

}  // namespace
}  // namespace declarium::cli

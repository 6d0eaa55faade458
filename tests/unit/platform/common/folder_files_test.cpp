#include "platform/common/folder_files.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <set>
#include <sstream>

#include "platform/errors.h"
#include "support/temporary_folder.h"

namespace {

/// What the calls below were asked for, and which of them fails.
struct DiskCalls {
  std::vector<std::string> made;
  std::string failing;
  int interruptions = 0;  ///< calls that are to be interrupted
  std::string renamed;    ///< the last file that was to get another name

  int answer(const std::string& call) {
    if (interruptions > 0) {
      --interruptions;
      errno = EINTR;
      return -1;
    }
    made.push_back(call);
    if (call != failing) return 0;
    errno = EIO;
    return -1;
  }
};
DiskCalls disk;

}  // namespace

// In place of the system's, which they call.
extern "C" int fsync(int descriptor) {
  struct stat status {};
  fstat(descriptor, &status);
  const int answer = disk.answer(S_ISDIR(status.st_mode) ? "fsync folder" : "fsync file");
  return answer != 0 ? answer : static_cast<int>(syscall(SYS_fsync, descriptor));
}
extern "C" int rename(const char* from, const char* to) noexcept {
  disk.renamed = from;
  const int answer = disk.answer("rename");
  return answer != 0 ? answer : static_cast<int>(syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

namespace vorn {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

class FolderFilesTest : public testing::Test {
 protected:
  void put(const std::string& name, const std::string& bytes) { folder.write(name, bytes); }
  std::string get(const std::string& name) { return folder.read(name); }

  TemporaryFolder folder;
  std::vector<std::string> told;
  FolderFiles files{folder.path(), [this](std::string_view operation, const std::string& name) {
                      told.push_back(std::string(operation) + " " + name);
                    }};
};

TEST_F(FolderFilesTest, FindsWithoutRegardToCase) {
  put("VORN1voc.CFG", "x");
  EXPECT_EQ(files.find("vorn1voc.cfg"), "VORN1voc.CFG");
  EXPECT_EQ(files.find("vorn1voc.cf"), std::nullopt);
}

TEST_F(FolderFilesTest, TheExactCaseComesFirstThenTheAlphabet) {
  put("log.txt", "exact");
  put("LOG.TXT", "capitals");
  put("Log.txt", "mixed");
  EXPECT_EQ(files.find("log.txt"), "log.txt");
  EXPECT_EQ(files.find("LOG.TXT"), "LOG.TXT");
  EXPECT_EQ(files.find("lOG.tXT"), "LOG.TXT");
}

TEST_F(FolderFilesTest, OnlyRegularFilesCount) {
  fs::create_directory(folder.path() / "arcadehub.exe");
  ASSERT_EQ(mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
  fs::create_symlink("nowhere", folder.path() / "dangling");
  EXPECT_EQ(files.find("arcadehub.exe"), std::nullopt);
  EXPECT_EQ(files.find("pipe"), std::nullopt);
  EXPECT_EQ(files.find("dangling"), std::nullopt);
  EXPECT_THAT(files.list("", ""), IsEmpty());
}

TEST_F(FolderFilesTest, ALinkToARegularFileIsOne) {
  put("real.wav", "samples");
  fs::create_symlink("real.wav", folder.path() / "linked.wav");
  EXPECT_EQ(files.find("linked.wav"), "linked.wav");
  EXPECT_EQ(files.readSound("linked.wav"), "samples");
}

TEST_F(FolderFilesTest, ADirectoryDoesNotHideAFileOfAnotherCase) {
  fs::create_directory(folder.path() / "save");
  put("SAVE", "x");
  EXPECT_EQ(files.find("save"), "SAVE");
}

TEST_F(FolderFilesTest, ListsByPrefixAndSuffixInTheOrderOfLoweredNames) {
  for (const char* name :
       {"vorn1b.rec", "VORN1A.REC", "vorn1C.rec", "vorn1.txt", "xvorn1d.rec", "vorn1_.rec"}) {
    put(name, "");
  }
  EXPECT_THAT(files.list("Vorn1", ".Rec"),
              ElementsAre("vorn1_.rec", "VORN1A.REC", "vorn1b.rec", "vorn1C.rec"));
  EXPECT_THAT(files.list("vorn2", ".rec"), IsEmpty());
}

TEST_F(FolderFilesTest, PrefixAndSuffixMustNotOverlap) {
  put("abc", "");
  EXPECT_THAT(files.list("abc", "bc"), IsEmpty());
  EXPECT_THAT(files.list("ab", "c"), ElementsAre("abc"));
}

TEST_F(FolderFilesTest, ReadsEveryByte) {
  std::string bytes;
  for (int i = 0; i < 200000; ++i) bytes += static_cast<char>(i * 7);
  put("a.txt", bytes);
  EXPECT_TRUE(files.read("A.txt") == bytes);
  EXPECT_TRUE(files.readSound("A.txt") == bytes);
  EXPECT_EQ(files.size("A.txt"), bytes.size());
  put("empty", "");
  EXPECT_EQ(files.read("empty"), "");
}

TEST_F(FolderFilesTest, AMissingFileIsAFailedCall) {
  EXPECT_THROW(files.read("a"), PlatformError);
  EXPECT_THROW(files.readSound("a"), PlatformError);
  EXPECT_THROW(files.size("a"), PlatformError);
  EXPECT_THROW(files.remove("a"), PlatformError);
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(FolderFilesTest, WritesUnderTheNameThatIsThere) {
  put("VORN1OPS.CFG", "a long old content");
  files.write("vorn1ops.cfg", "new");
  EXPECT_EQ(get("VORN1OPS.CFG"), "new");
  EXPECT_THAT(folder.names(), ElementsAre("VORN1OPS.CFG"));
  files.append("vorn1ops.cfg", "er");
  EXPECT_EQ(get("VORN1OPS.CFG"), "newer");
  files.remove("vorn1ops.cfg");
  EXPECT_THAT(folder.names(), IsEmpty());
  EXPECT_THAT(told, ElementsAre("write VORN1OPS.CFG", "append VORN1OPS.CFG", "delete VORN1OPS.CFG"));
}

TEST_F(FolderFilesTest, MakesWhatIsNotThere) {
  files.write("a", "1");
  files.append("b", "2");
  EXPECT_EQ(get("a"), "1");
  EXPECT_EQ(get("b"), "2");
}

TEST_F(FolderFilesTest, TellsOfReadsButNotOfSoundsSizesAndLookUps) {
  put("a.cfg", "x");
  files.find("a.cfg");
  files.list("a", "cfg");
  files.size("a.cfg");
  files.readSound("a.cfg");
  EXPECT_THAT(told, IsEmpty());
  files.read("A.CFG");
  EXPECT_THAT(told, ElementsAre("read a.cfg"));
}

TEST_F(FolderFilesTest, NamesNeverLeaveTheFolder) {
  fs::create_directory(folder.path() / "inner");
  FolderFiles inner(folder.path() / "inner");
  put("outer", "x");
  for (const std::string& name :
       {std::string("../outer"), std::string(""), std::string("."), std::string(".."),
        (folder.path() / "outer").string(), std::string("o\0uter", 6)}) {
    EXPECT_EQ(inner.find(name), std::nullopt) << name;
    EXPECT_THROW(inner.write(name, "y"), PlatformError) << name;
    EXPECT_THROW(inner.append(name, "y"), PlatformError) << name;
    EXPECT_THROW(inner.read(name), PlatformError) << name;
  }
  EXPECT_EQ(get("outer"), "x");
}

TEST_F(FolderFilesTest, AReplacedFileKeepsItsPermissions) {
  put("a", "x");
  fs::permissions(folder.path() / "a", fs::perms(0640));
  files.write("a", "y");
  EXPECT_EQ(fs::status(folder.path() / "a").permissions(), fs::perms(0640));
}

TEST_F(FolderFilesTest, AReplacedFileIsANewFile) {
  // A reader that has the old file open keeps the old bytes whole.
  put("a", "old bytes");
  std::ifstream reader(folder.path() / "a");
  files.write("a", "new");
  std::ostringstream seen;
  seen << reader.rdbuf();
  EXPECT_EQ(seen.str(), "old bytes");
}

TEST_F(FolderFilesTest, LeftoversOfKilledRunsAreRemovedWhenTheyAreADayOld) {
  const auto age = [&](const std::string& name, int hours) {
    put(name, "half");
    fs::last_write_time(folder.path() / name, fs::file_time_type::clock::now() - std::chrono::hours(hours));
  };
  age(".a.new-0123456789abcdef", 25);
  age(".vorn1log.txt.new-00000000ffffffff", 25);
  age(".a.new-1123456789abcdef", 23);
  age(".a.new-0123456789abcde", 25);    // not ours
  age(".a.newer0123456789abcdef", 25);  // nor this
  age("a.new-0123456789abcdef", 25);    // nor this
  files.write("a", "1");
  EXPECT_THAT(folder.names(),
              testing::UnorderedElementsAre("a", ".a.new-1123456789abcdef", ".a.new-0123456789abcde",
                                            ".a.newer0123456789abcdef", "a.new-0123456789abcdef"));
}

TEST_F(FolderFilesTest, NothingOfSomebodyElsesIsWrittenThroughTheTemporaryFile) {
  // Were its name known, a link there would lead the bytes elsewhere.
  put("precious", "theirs");
  files.write("a", "1");
  const std::vector<std::string> before = folder.names();
  std::set<std::string> temporaries;
  for (int i = 0; i < 20; ++i) {
    disk = {{}, "rename", 0, ""};
    EXPECT_THROW(files.write("a", "2"), PlatformError);
    temporaries.insert(disk.renamed);
  }
  disk = {};
  EXPECT_EQ(temporaries.size(), 20U);
  EXPECT_EQ(folder.names(), before);
}

TEST_F(FolderFilesTest, WhatIsNoOrdinaryFileIsRefusedAtOnce) {
  ASSERT_EQ(mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
  fs::create_directory(folder.path() / "folder");
  fs::create_symlink("/dev/zero", folder.path() / "device");
  for (const std::string name : {"pipe", "folder", "device"}) {
    EXPECT_THROW(files.read(name), PlatformError) << name;
    EXPECT_THROW(files.readSound(name), PlatformError) << name;
    EXPECT_THROW(files.write(name, "x"), PlatformError) << name;
    EXPECT_THROW(files.append(name, "x"), PlatformError) << name;
    EXPECT_THROW(files.remove(name), PlatformError) << name;
  }
  EXPECT_THAT(folder.names(), ElementsAre("device", "folder", "pipe"));
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(FolderFilesTest, WhatIsLongerThanTheGameMakesItIsReadNoFurther) {
  put("huge.cfg", "1\r\n");
  fs::resize_file(folder.path() / "huge.cfg", std::uintmax_t{1} << 40);
  EXPECT_EQ(files.read("huge.cfg").size(), 65536U);
  EXPECT_EQ(files.read("huge.cfg").substr(0, 3), "1\r\n");
  put("LOG.TXT", "");
  fs::resize_file(folder.path() / "LOG.TXT", std::uintmax_t{1} << 40);
  EXPECT_EQ(files.read("LOG.TXT").size(), std::size_t{16} << 20);
}

/// Interrupts the process again and again while it lives.
class Interruptions {
 public:
  Interruptions() {
    struct sigaction action {};
    action.sa_handler = [](int) {};  // without SA_RESTART
    sigaction(SIGALRM, &action, nullptr);
    const itimerval often{{0, 100}, {0, 100}};
    setitimer(ITIMER_REAL, &often, nullptr);
  }
  ~Interruptions() {
    const itimerval never{};
    setitimer(ITIMER_REAL, &never, nullptr);
    signal(SIGALRM, SIG_DFL);
  }
};

TEST_F(FolderFilesTest, SignalsDisturbNothing) {
  disk = {{}, "", 3, ""};  // and the disk says three times that it was interrupted
  const Interruptions interruptions;
  for (int i = 0; i < 50; ++i) {
    files.write("record", std::string(100000, static_cast<char>('a' + i % 26)));
    files.append("log", "line\r\n");
    EXPECT_EQ(files.read("record").size(), 65536U);
  }
  EXPECT_EQ(files.size("log"), 300U);
  EXPECT_EQ(disk.interruptions, 0);
  disk = {};
}

/// Lets no file grow beyond `bytes` while it lives, as a full disk would.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) : oldHandler_(signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &old_);
    rlimit small = old_;
    small.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &old_);
    signal(SIGXFSZ, oldHandler_);
  }

 private:
  rlimit old_;
  sighandler_t oldHandler_;
};

TEST_F(FolderFilesTest, AFullDiskLosesNothing) {
  put("record", "the old record");
  put("log", "line 1\r\n");
  bool writeFailed = false;
  bool appendFailed = false;
  {
    const FullDisk full(12);
    try {
      files.write("record", std::string(1000, 'x'));
    } catch (const PlatformError&) {
      writeFailed = true;
    }
    try {
      files.append("log", "line 2\r\n");
    } catch (const PlatformError&) {
      appendFailed = true;
    }
  }
  EXPECT_TRUE(writeFailed);
  EXPECT_TRUE(appendFailed);
  EXPECT_EQ(get("record"), "the old record");
  EXPECT_EQ(get("log"), "line 1\r\n");
  EXPECT_THAT(folder.names(), testing::UnorderedElementsAre("record", "log"));
  EXPECT_THAT(told, IsEmpty());
}

/// A disk whose next calls are watched, and one of them failing.
class FailingDisk {
 public:
  explicit FailingDisk(const std::string& failing = "") { disk = {{}, failing, 0, ""}; }
  ~FailingDisk() { disk = {}; }
};

TEST_F(FolderFilesTest, WhatIsWrittenReachesTheDiskBeforeItIsRenamedAndItsFolderAfter) {
  const FailingDisk watched;
  files.write("record", "new");
  EXPECT_THAT(disk.made, ElementsAre("fsync file", "rename", "fsync folder"));
  disk.made.clear();
  files.append("log", "line\r\n");
  EXPECT_THAT(disk.made, ElementsAre("fsync file"));
}

TEST_F(FolderFilesTest, ARenameThatFailsLosesNothing) {
  put("record", "the old record");
  const FailingDisk failing("rename");
  EXPECT_THROW(files.write("record", "new"), PlatformError);
  EXPECT_EQ(get("record"), "the old record");
  EXPECT_THAT(folder.names(), ElementsAre("record"));
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(FolderFilesTest, WhatDoesNotReachTheDiskIsAFailedCall) {
  put("record", "the old record");
  put("log", "line 1\r\n");
  const FailingDisk failing("fsync file");
  EXPECT_THROW(files.write("record", "new"), PlatformError);
  EXPECT_THROW(files.append("log", "line 2\r\n"), PlatformError);
  EXPECT_EQ(get("record"), "the old record");
  EXPECT_EQ(get("log"), "line 1\r\n");
  EXPECT_THAT(folder.names(), testing::UnorderedElementsAre("record", "log"));
  EXPECT_THAT(told, IsEmpty());
}

TEST_F(FolderFilesTest, AFolderThatCannotBeSyncedIsNoFailure) {
  const FailingDisk failing("fsync folder");  // some disks know no such thing
  EXPECT_NO_THROW(files.write("record", "new"));
  EXPECT_EQ(get("record"), "new");
}

/// Gives up the rights of the superuser while it lives, where the test has them.
class PlainUser {
 public:
  PlainUser() { (void)!seteuid(getuid() == 0 ? 65534 : getuid()); }
  ~PlainUser() { (void)!seteuid(getuid()); }
};

TEST_F(FolderFilesTest, AReadOnlyFolderIsAFailedCall) {
  put("record", "old");
  fs::permissions(folder.path(), fs::perms(0555));
  {
    const PlainUser plain;
    EXPECT_THROW(files.write("record", "new"), PlatformError);
    EXPECT_THROW(files.write("other", "new"), PlatformError);
    EXPECT_THROW(files.append("other", "new"), PlatformError);
    EXPECT_THROW(files.remove("record"), PlatformError);
    EXPECT_EQ(files.read("record"), "old");
  }
  fs::permissions(folder.path(), fs::perms(0755));
  EXPECT_THAT(folder.names(), ElementsAre("record"));
}

TEST_F(FolderFilesTest, AFolderThatIsNotThereIsAFailedCall) {
  FolderFiles nowhere(folder.path() / "nowhere");
  EXPECT_EQ(nowhere.find("a"), std::nullopt);
  EXPECT_THAT(nowhere.list("", ""), IsEmpty());
  EXPECT_THROW(nowhere.write("a", ""), PlatformError);
  EXPECT_THROW(nowhere.append("a", ""), PlatformError);
}

TEST_F(FolderFilesTest, AKilledWriterLeavesTheOldOrTheNewBytes) {
  const std::string oldBytes(300000, 'o');
  const std::string newBytes(300000, 'n');
  for (int round = 0; round < 20; ++round) {
    put("record", oldBytes);
    int begun[2];
    ASSERT_EQ(pipe(begun), 0);
    const pid_t child = fork();
    if (child == 0) {
      FolderFiles writer(folder.path());
      (void)!::write(begun[1], "", 1);
      for (;;) writer.write("record", newBytes);
    }
    char byte = 0;
    EXPECT_EQ(::read(begun[0], &byte, 1), 1);
    close(begun[0]);
    close(begun[1]);
    usleep(static_cast<useconds_t>(round * 137));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    const std::string found = get("record");
    EXPECT_TRUE(found == oldBytes || found == newBytes) << found.size();
  }
  for (const std::string& name : folder.names()) {
    EXPECT_TRUE(name == "record" || name.starts_with(".record.new-")) << name;
  }
}

}  // namespace
}  // namespace vorn

#include "recording/recording_platform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

#include "platform/headless/headless_platform.h"
#include "support/temporary_folder.h"

namespace vorn {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

/// For as long as it lives a file can grow to so many bytes, as if the disk were full.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{bytes, before_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    ::setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  rlimit before_{};
  void (*handler_)(int);
};

/// What standard error says of a recording of so many ticks.
std::string complaintOf(const TemporaryFolder& folder, const char* script, int ticks) {
  HeadlessPlatform inner({.folder = folder.path()}, {});
  testing::internal::CaptureStderr();
  {
    const auto recording = makeRecordingPlatform(inner, folder.path() / script);
    for (int i = 0; i < ticks; ++i) recording->carTicked({});
  }
  return testing::internal::GetCapturedStderr();
}

TEST(RecordingPlatform, SaysWhereItsScriptIsNotWhole) {
  constexpr rlim_t kLimit = 10'000;
  const TemporaryFolder folder;
  const FileSizeLimit limit(kLimit);
  EXPECT_THAT(complaintOf(folder, "short.script", 3), IsEmpty());
  EXPECT_THAT(complaintOf(folder, "long.script", 300), HasSubstr("long.script is not whole"));
  EXPECT_EQ(folder.read("long.script").size(), kLimit);
}

TEST(RecordingPlatform, TakesNobodysFile) {
  const TemporaryFolder folder;
  folder.write("race.script", "mine");
  EXPECT_THROW(complaintOf(folder, "race.script", 0), std::exception);
  testing::internal::GetCapturedStderr();
  EXPECT_EQ(folder.read("race.script"), "mine");
}

}  // namespace
}  // namespace vorn

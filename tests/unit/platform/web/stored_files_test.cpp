#include "platform/web/stored_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/errors.h"

namespace vorn {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A store that may refuse.
class TestStore : public FileStore {
 public:
  void put(const std::string& name, const std::string& bytes) override {
    refuseIfAsked(name);
    contents[name] = bytes;
  }
  void remove(const std::string& name) override {
    refuseIfAsked(name);
    contents.erase(name);
  }

  StoredFiles::Contents contents;
  bool refuses = false;

 private:
  void refuseIfAsked(const std::string& name) const {
    if (refuses) {
      throw PlatformError("write", name, "refused");
    }
  }
};

class StoredFilesTest : public testing::Test {
 protected:
  TestStore store;
  StoredFiles files{{{"Vorn1key.cfg", "old"}}, {{"vorn0.wav", "RIFF"}}, store};
};

TEST_F(StoredFilesTest, NamesAreFoundWithoutRegardToCase) {
  EXPECT_EQ(files.find("vorn1KEY.cfg"), "Vorn1key.cfg");
  EXPECT_EQ(files.find("VORN0.WAV"), "vorn0.wav");
  EXPECT_EQ(files.find("vorn1joy.cfg"), std::nullopt);
  EXPECT_EQ(files.read("vorn1key.cfg"), "old");
  EXPECT_EQ(files.size("vorn0.wav"), 4U);
  EXPECT_EQ(files.readSound("vorn0.wav"), "RIFF");
  EXPECT_THROW(files.read("vorn1joy.cfg"), PlatformError);
}

TEST_F(StoredFilesTest, EachChangeIsStoredBeforeTheCallReturns) {
  files.write("vorn1KEY.cfg", "new");
  EXPECT_EQ(store.contents, (StoredFiles::Contents{{"Vorn1key.cfg", "new"}}));
  files.append("vorn1log.txt", "one\r\n");
  files.append("vorn1log.txt", "two\r\n");
  EXPECT_EQ(store.contents["vorn1log.txt"], "one\r\ntwo\r\n");
  files.remove("VORN1LOG.TXT");
  EXPECT_FALSE(store.contents.contains("vorn1log.txt"));
  EXPECT_EQ(files.find("vorn1log.txt"), std::nullopt);
  EXPECT_THROW(files.remove("vorn1log.txt"), PlatformError);
}

TEST_F(StoredFilesTest, WhatIsNotStoredHasNotHappened) {
  store.refuses = true;
  EXPECT_THROW(files.write("vorn1key.cfg", "new"), PlatformError);
  EXPECT_EQ(files.read("vorn1key.cfg"), "old");
  EXPECT_THROW(files.append("vorn1log.txt", "one"), PlatformError);
  EXPECT_EQ(files.find("vorn1log.txt"), std::nullopt);
  EXPECT_THROW(files.remove("vorn1key.cfg"), PlatformError);
  EXPECT_EQ(files.read("vorn1key.cfg"), "old");
}

TEST_F(StoredFilesTest, ListsGoByTheLoweredName) {
  files.write("vorn1maple0010.rec", "");
  files.write("VORN1MAPLE0001.REC", "");
  files.write("vorn1.rec.bak", "");
  EXPECT_THAT(files.list("vorn1maple", ".rec"), ElementsAre("VORN1MAPLE0001.REC", "vorn1maple0010.rec"));
  EXPECT_THAT(files.list("vorn1ohio", ".rec"), IsEmpty());
}

}  // namespace
}  // namespace vorn

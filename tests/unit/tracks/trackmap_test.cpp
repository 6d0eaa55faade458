#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "documents.h"
#include "picture.h"
#include "road.h"
#include "support/temporary_folder.h"
#include "tracks/catalogue.h"
#include "tracks/cue_names.h"

namespace vorn::trackmap {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

TEST(Road, KnowsHowFastAWheelHoldsATurn) {
  EXPECT_EQ(heldUpTo(kMentor.segments[1]), 111);      // 0.1 + 111 / 17
  EXPECT_EQ(heldUpTo(kChesterland.segments[1]), 28);  // 1 + 28 / 5
  EXPECT_EQ(heldUpTo(kMaple.segments[1]), 0);         // at any speed
  EXPECT_EQ(heldUpTo(kMaple.segments[0]), 0);         // a straight
}

TEST(Road, NamesSegmentsAndCues) {
  EXPECT_EQ(kindOf(kMaple.segments[0]), "straight");
  EXPECT_EQ(kindOf(kOhio.segments[1]), "right turn");
  EXPECT_EQ(kindOf(kGeneva.segments[1]), "banked left turn");
  EXPECT_EQ(kindOf(kChesterland.segments[3]), "straight, ends at the jump");
  EXPECT_EQ(cueOf(kChesterland.segments[3]), "swimmers, ahead");
  EXPECT_EQ(cueOf(kChesterland.segments[2]), "turkeys, right");
  EXPECT_EQ(fileWord(kErie), "erie");
}

TEST(CueName, ExistsForEverySegment) {
  for (const Track* track : allTracks()) {
    for (const Segment& segment : track->segments) EXPECT_STRNE(cueName(segment.cue), "");
  }
  EXPECT_THROW(cueName(0), std::out_of_range);
  EXPECT_THROW(cueName(72), std::out_of_range);
}

TEST(Picture, DrawsLeftTurnsAboveTheLineAndRightTurnsBelow) {
  const Segment turns[] = {{1000, 1, 30, 0, {Turn::kLeft, 1, 60}}, {1000, 2, 30, 0, {Turn::kRight, 1, 60}}};
  const std::string picture = pictureOf({"Test", "", 1, turns});
  // At 180 mph 4 units a tick: 56 pixels from the line at 150.
  EXPECT_THAT(picture, HasSubstr("x=\"30.0\" y=\"94.0\" width=\"470.0\" height=\"56.0\""));
  EXPECT_THAT(picture, HasSubstr("x=\"500.0\" y=\"150.0\" width=\"470.0\" height=\"56.0\""));
}

/// A document with a place for each track.
std::string emptyDocument() {
  std::string document = "# Tracks\n";
  for (const Track* track : allTracks()) {
    document +=
        "<!-- trackmap " + fileWord(*track) + " -->\nold\n<!-- end -->\nword of " + fileWord(*track) + "\n";
  }
  return document;
}

TEST(Documents, AreOutOfDateUntilTheyAreRenewed) {
  const TemporaryFolder folder;
  folder.write("tracks.md", emptyDocument());
  EXPECT_THAT(outdatedFiles(folder.path()), SizeIs(11));
  renewFiles(folder.path());
  EXPECT_THAT(outdatedFiles(folder.path()), IsEmpty());
  const std::string document = folder.read("tracks.md");
  EXPECT_THAT(document, HasSubstr("| 5 | left turn | 9000 | woman stomping grapes, left (5) |"));
  EXPECT_THAT(document, HasSubstr("word of geneva\n"));  // what stands between the marks' parts is kept
}

TEST(Documents, OneChangedFigureIsSeen) {
  const TemporaryFolder folder;
  folder.write("tracks.md", emptyDocument());
  renewFiles(folder.path());
  std::string document = folder.read("tracks.md");
  document.replace(document.find("9000"), 4, "9001");
  folder.write("tracks.md", document);
  EXPECT_THAT(outdatedFiles(folder.path()), ElementsAre("tracks.md"));
}

TEST(Documents, MustHaveTheirMarks) {
  const TemporaryFolder folder;
  EXPECT_THROW(outdatedFiles(folder.path()), std::runtime_error);
  folder.write("tracks.md", "# Tracks\n");
  EXPECT_THROW(outdatedFiles(folder.path()), std::runtime_error);
}

}  // namespace
}  // namespace vorn::trackmap

#include "recording/input_recorder.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace vorn {
namespace {

constexpr int kUp = 38, kShift = 16;  // virtual-key codes

class Recorded : public testing::Test {
 protected:
  void yields(int count) {
    for (int i = 0; i < count; ++i) writer.yielded();
  }
  void setKey(const char* name, bool isDown) {
    keyboard[static_cast<std::size_t>(keyByName(name)->keyCode)] = isDown ? 0x80 : 0;
  }

  std::ostringstream out;
  ScriptWriter writer{out};
  InputRecorder recorder{writer};
  KeyboardState keyboard{};
  JoystickState controller;
};

TEST_F(Recorded, KeyIsPressedAtItsEventAndReleasedBeforeItIsReadAsUp) {
  yields(2);
  recorder.keyWentDown(kUp);
  setKey("Up", true);
  yields(3);
  recorder.keyboardRead(keyboard);
  yields(5);
  setKey("Up", false);
  recorder.keyboardRead(keyboard);
  EXPECT_EQ(out.str(), "wait 1\npress Up\nwait 4\nrelease Up\n");  // as soon as the last reading is over
}

TEST_F(Recorded, ReleaseComesInTheYieldAfterACarTickWhereThereIsOne) {
  yields(2);
  recorder.keyWentDown(kUp);
  setKey("Up", true);
  recorder.keyboardRead(keyboard);
  yields(3);
  writer.ticked();
  yields(99);
  setKey("Up", false);
  recorder.keyboardRead(keyboard);
  EXPECT_EQ(out.str(), "wait 1\npress Up\nwait tick 1\nrelease Up\n");
}

TEST_F(Recorded, TapThatIsNeverReadIsOverAtOnce) {
  yields(2);
  recorder.keyWentDown(kUp);
  yields(3);
  writer.ticked();
  yields(99);
  recorder.keyboardRead(keyboard);
  EXPECT_EQ(out.str(), "wait 1\npress Up\nrelease Up\n");
}

TEST_F(Recorded, ReadingTellsWhichShiftItWas) {
  yields(1);
  recorder.keyWentDown(kShift);
  setKey("RightShift", true);
  yields(1);
  recorder.keyboardRead(keyboard);
  EXPECT_EQ(out.str(), "press RightShift\n");
}

TEST_F(Recorded, ShiftThatIsNeverReadIsTheLeftOne) {
  yields(1);
  recorder.keyWentDown(kShift);
  EXPECT_EQ(out.str(), "");
  recorder.settle();
  EXPECT_EQ(out.str(), "press LeftShift\n");
}

TEST_F(Recorded, KeyThatIsPressedAgainUnseenWasReleased) {
  yields(1);
  recorder.keyWentDown(kUp);
  yields(100);
  recorder.keyWentDown(kUp);
  EXPECT_EQ(out.str(), "press Up\nwait 100\nrelease Up\npress Up\n");
}

TEST_F(Recorded, KeyWithoutAnEventIsPressedWithoutTheFocus) {
  yields(1);
  setKey("Numpad8", true);
  recorder.keyboardRead(keyboard);
  EXPECT_EQ(out.str(), "focus off\npress Numpad8\nfocus on\n");
}

TEST_F(Recorded, UnknownKeyIsNoStatement) {
  yields(1);
  recorder.keyWentDown(255);
  recorder.settle();
  EXPECT_EQ(out.str(), "");
}

TEST_F(Recorded, ControllersChangesAloneAreWritten) {
  controller.buttons[3] = 0x80;
  controller.y = -10000;
  yields(6);
  recorder.controllerRead(controller);
  recorder.controllerRead(controller);
  yields(2);
  controller.buttons[3] = 0;
  controller.x = 5;
  controller.rx = 6;
  controller.ry = 7;
  recorder.controllerRead(controller);
  EXPECT_EQ(out.str(),
            "wait 5\naxis Y -10000\nbutton 3 down\nwait 2\naxis X 5\naxis Rx 6\naxis Ry 7\nbutton 3 up\n");
}

}  // namespace
}  // namespace vorn

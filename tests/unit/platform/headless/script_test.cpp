#include "platform/headless/script.h"

#include <gmock/gmock.h>

#include <sstream>

namespace vorn {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

/// Steps in words, so that a test can say what it expects.
struct InWords {
  std::string operator()(const step::Pause& s) const { return "pause " + std::to_string(s.milliseconds); }
  std::string operator()(const step::AwaitTicks& s) const {
    return "ticks " + std::to_string(s.count) +
           (s.orMilliseconds ? " or " + std::to_string(*s.orMilliseconds) : "");
  }
  std::string operator()(const step::AwaitText& s) const { return "say <" + s.text + ">"; }
  std::string operator()(const step::AwaitQuiet&) const { return "quiet"; }
  std::string operator()(const step::MoveKey& s) const {
    return (s.isDown ? "press " : "release ") + std::string(s.key->name);
  }
  std::string operator()(const step::MoveAxis& s) const {
    return std::string("axis ") + axisName(s.axis) + " " + std::to_string(s.value);
  }
  std::string operator()(const step::MoveButton& s) const {
    return "button " + std::to_string(s.number) + (s.isDown ? " down" : " up");
  }
  std::string operator()(const step::LoseController&) const { return "lost"; }
  std::string operator()(const step::MoveFocus& s) const { return s.isOn ? "focus on" : "focus off"; }
  std::string operator()(const step::GetField& s) const { return "get " + s.name; }
  std::string operator()(const step::SetField& s) const {
    return "set " + s.name + " " + std::to_string(s.value);
  }
  std::string operator()(const step::Echo& s) const { return "echo <" + s.text + ">"; }
  std::string operator()(const step::CloseWindow&) const { return "close"; }
  std::string operator()(const step::EndSession&) const { return "end"; }
  std::string operator()(const Wait& wait) const { return std::visit(*this, wait); }
  std::string operator()(const Action& action) const { return std::visit(*this, action); }
};

/// The steps of a line, "; " between them.
std::string steps(const std::string& line) {
  std::string words;
  for (const Step& step : parseLine(line)) words += (words.empty() ? "" : "; ") + std::visit(InWords{}, step);
  return words;
}

/// Why a line is refused; empty where it is not.
std::string refusal(const std::string& line) {
  try {
    parseLine(line);
  } catch (const ScriptError& error) {
    return error.what();
  }
  return "";
}

TEST(Script, CommentsAndEmptyLinesAreNoStatements) {
  EXPECT_THAT(parseLine(""), IsEmpty());
  EXPECT_THAT(parseLine("   "), IsEmpty());
  EXPECT_THAT(parseLine("# wait 5"), IsEmpty());
  EXPECT_THAT(parseLine("#"), IsEmpty());
}

TEST(Script, Waits) {
  EXPECT_EQ(steps("wait 5"), "pause 5");
  EXPECT_EQ(steps("wait 0"), "pause 0");
  EXPECT_EQ(steps("wait tick"), "ticks 1");
  EXPECT_EQ(steps("wait tick 12"), "ticks 12");
  EXPECT_EQ(steps("wait tick or 500"), "ticks 1 or 500");
  EXPECT_EQ(steps("wait tick 3 or 500"), "ticks 3 or 500");
  EXPECT_EQ(steps("wait quiet"), "quiet");
}

TEST(Script, TheTextOfAWaitIsTheRestOfTheLineAfterOneBlank) {
  EXPECT_EQ(steps("wait say Select."), "say <Select.>");
  EXPECT_EQ(steps("wait say  10 "), "say < 10 >");
  EXPECT_EQ(steps("wait say   "), "say <  >");
  EXPECT_EQ(steps("wait say # no comment"), "say <# no comment>");
}

TEST(Script, Keys) {
  EXPECT_EQ(steps("press Enter"), "press Enter");
  EXPECT_EQ(steps("release RightShift"), "release RightShift");
  EXPECT_EQ(steps("tap A"), "press A; pause 60; release A; pause 20");
  EXPECT_EQ(steps("tap Numpad5 250"), "press Numpad5; pause 250; release Numpad5; pause 20");
  EXPECT_EQ(steps("tap 7 0"), "press 7; pause 0; release 7; pause 20");
}

TEST(Script, TypingTapsKeyAfterKey) {
  EXPECT_EQ(steps("type a2"),
            "press A; pause 60; release A; pause 20; press 2; pause 60; release 2; pause 20");
  EXPECT_EQ(steps("type B"),
            "press LeftShift; pause 60; release LeftShift; pause 20; press B; pause 60; release B; pause 20");
  EXPECT_EQ(steps("type  "), "press Space; pause 60; release Space; pause 20");
}

TEST(Script, ControllerAndFocus) {
  EXPECT_EQ(steps("axis X -10000"), "axis X -10000");
  EXPECT_EQ(steps("axis Y 10000"), "axis Y 10000");
  EXPECT_EQ(steps("axis Rx 1"), "axis Rx 1");
  EXPECT_EQ(steps("axis Ry -1"), "axis Ry -1");
  EXPECT_EQ(steps("button 0 down"), "button 0 down");
  EXPECT_EQ(steps("button 31 up"), "button 31 up");
  EXPECT_EQ(steps("lost"), "lost");
  EXPECT_EQ(steps("focus off"), "focus off");
  EXPECT_EQ(steps("focus on"), "focus on");
}

TEST(Script, FieldsMarksAndEnds) {
  EXPECT_EQ(steps("get speedMarkSaid[3]"), "get speedMarkSaid[3]");
  EXPECT_EQ(steps("set speed 12.5"), "set speed 12.500000");
  EXPECT_EQ(steps("set gear -1"), "set gear -1.000000");
  EXPECT_EQ(steps("set fuel 1e3"), "set fuel 1000.000000");
  EXPECT_EQ(steps("echo half way "), "echo <half way >");
  EXPECT_EQ(steps("echo"), "echo <>");
  EXPECT_EQ(steps("close"), "close");
  EXPECT_EQ(steps("end"), "end");
}

TEST(Script, BlanksAroundWordsDoNotMatter) {
  EXPECT_EQ(steps("  wait   5  "), "pause 5");
  EXPECT_EQ(steps("axis  X   3 "), "axis X 3");
}

TEST(Script, WhatCannotBeUnderstoodIsRefusedWithAReason) {
  EXPECT_THAT(refusal("jump"), HasSubstr("no such statement: jump"));
  EXPECT_THAT(refusal("Wait 5"), HasSubstr("no such statement: Wait"));
  EXPECT_THAT(refusal("wait"), HasSubstr("missing"));
  EXPECT_THAT(refusal("wait -1"), HasSubstr("-1"));
  EXPECT_THAT(refusal("wait soon"), HasSubstr("soon"));
  EXPECT_THAT(refusal("wait 1.5"), HasSubstr("1.5"));
  EXPECT_THAT(refusal("wait 99999999999999999999"), HasSubstr("99999999999999999999"));
  EXPECT_THAT(refusal("wait 5 6"), HasSubstr("more than"));
  EXPECT_THAT(refusal("wait tick 0"), HasSubstr("0"));
  EXPECT_THAT(refusal("wait tick 2 3"), HasSubstr("3"));
  EXPECT_THAT(refusal("wait tick or"), HasSubstr("missing"));
  EXPECT_THAT(refusal("wait say"), HasSubstr("text is missing"));
  EXPECT_THAT(refusal("wait say "), HasSubstr("text is missing"));
  EXPECT_THAT(refusal("press"), HasSubstr("missing"));
  EXPECT_THAT(refusal("press enter"), HasSubstr("no such key: enter"));
  EXPECT_THAT(refusal("press A B"), HasSubstr("more than"));
  EXPECT_THAT(refusal("tap A long"), HasSubstr("long"));
  EXPECT_THAT(refusal("type a.b"), HasSubstr("letters, digits and blanks"));
  EXPECT_THAT(refusal("type"), HasSubstr("text is missing"));
  EXPECT_THAT(refusal("axis Z 0"), HasSubstr("Z"));
  EXPECT_THAT(refusal("axis X"), HasSubstr("missing"));
  EXPECT_THAT(refusal("axis X 10001"), HasSubstr("10001"));
  EXPECT_THAT(refusal("axis X -10001"), HasSubstr("-10001"));
  EXPECT_THAT(refusal("button 32 down"), HasSubstr("32"));
  EXPECT_THAT(refusal("button 1 held"), HasSubstr("held"));
  EXPECT_THAT(refusal("focus"), HasSubstr("missing"));
  EXPECT_THAT(refusal("focus 1"), HasSubstr("1"));
  EXPECT_THAT(refusal("get"), HasSubstr("missing"));
  EXPECT_THAT(refusal("set speed"), HasSubstr("missing"));
  EXPECT_THAT(refusal("set speed fast"), HasSubstr("fast"));
  EXPECT_THAT(refusal("set speed inf"), HasSubstr("not a number that fits"));
  EXPECT_THAT(refusal("set speed nan"), HasSubstr("not a number that fits"));
  EXPECT_THAT(refusal("close now"), HasSubstr("now"));
  EXPECT_THAT(refusal("end 3"), HasSubstr("3"));
}

TEST(StreamScript, GivesLineAfterLineWithoutItsEnd) {
  std::istringstream text("wait 1\r\n\necho a \nend");
  StreamScript script(text, "a.script");
  EXPECT_EQ(script.name(), "a.script");
  EXPECT_EQ(script.nextLine(), "wait 1");
  EXPECT_EQ(script.nextLine(), "");
  EXPECT_EQ(script.nextLine(), "echo a ");
  EXPECT_EQ(script.nextLine(), "end");
  EXPECT_EQ(script.nextLine(), std::nullopt);
}

}  // namespace
}  // namespace vorn

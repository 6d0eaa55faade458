// The item reader against its vectors and against a second reader that was
// written on another plan: one pass, one state a byte.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "sound/catalogue.h"
#include "support/item_figures.h"

namespace vorn {
namespace {

using namespace std::string_literals;

struct Vector {
  std::string bytes;
  ItemFigures figures;
};

const std::vector<Vector>& vectors() {
  static const std::vector<Vector> all{
      {"abc", {1, 3}},
      {"abc,", {1, 3}},
      {"abc,\x1A,,", {1, 3}},
      {"a,b\r\nc", {3, 1}},
      {"a\rb\nc\r\nd", {4, 1}},
      {"a\n\nb", {3, 1}},
      {",,", {2, 0}},
      {"a,,b", {3, 1}},
      {"  ab ,c", {2, 1}},
      {"  ab ", {1, 3}},
      {"\"a,b\" x,cd", {2, 2}},
      {"\"a\r\nb", {1, 4}},
      {"", {1, 0}},
      {"\x1A"
       "abc",
       {1, 0}},
      {"a\"b,c\"", {2, 2}},
      {"a,\"x\"\x1A", {2, 1}},
      {"a, \x1A", {2, 0}},
      // NUL bytes are as if they were not there.
      {"a\0b"s, {1, 2}},
      {"\0\0"s, {1, 0}},
      {"\0abc\0"s, {1, 3}},
      {"a,\0"s, {1, 1}},
      {"a,\0\0b"s, {2, 1}},
      {"a,\0,b"s, {3, 1}},
      {"a\r\0\nb"s, {2, 1}},
      {"a\0\x1A"
       "b"s,
       {1, 1}},
      {"\0 \0ab"s, {1, 2}},
      {"\0\"a\0,b\"\0,c"s, {2, 1}},
      {"\"a\0\0b\""s, {1, 2}},
      {" \0\"a,b\""s, {1, 3}},
  };
  return all;
}

std::string legible(const std::string& bytes) {
  std::string text;
  for (const char c : bytes) text += c >= 33 && c < 127 ? std::string(1, c) : "<" + std::to_string(c) + ">";
  return text;
}

TEST(ItemReader, ReadsTheVectors) {
  for (const Vector& vector : vectors()) {
    EXPECT_EQ(readItems(vector.bytes), vector.figures) << legible(vector.bytes);
    EXPECT_EQ(test::readItemsInOnePass(vector.bytes), vector.figures) << legible(vector.bytes);
  }
}

TEST(ItemReader, AgreesWithTheOnePassReaderOnRandomTexts) {
  const std::string alphabet = " \t\",\r\n\x1A\0abc"s;
  std::mt19937 chance(20);
  for (int i = 0; i < 40000; ++i) {
    std::string bytes(chance() % 24, ' ');
    // The end mark is rare, or most texts would be over before they begin.
    for (char& c : bytes) {
      do c = alphabet[chance() % alphabet.size()];
      while (c == 26 && chance() % 4 != 0);
    }
    ASSERT_EQ(readItems(bytes), test::readItemsInOnePass(bytes)) << legible(bytes);
  }
}

}  // namespace
}  // namespace vorn

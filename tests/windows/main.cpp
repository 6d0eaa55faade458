/// The tests as the game's own process finds itself.

#include <gmock/gmock.h>

#include "program/process.h"

int main(int argc, char** argv) {
  vorn::prepareProcess(argc, argv);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}

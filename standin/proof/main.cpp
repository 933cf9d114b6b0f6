#include <gtest/gtest.h>

#include "windows/com/api.h"

int main(int argc, char** argv) {
  OleInitialize(nullptr);
  // A path without a drive stays on the machine's own.
  SetCurrentDirectoryA("C:\\");
  testing::InitGoogleTest(&argc, argv);
  const int result = RUN_ALL_TESTS();
  OleUninitialize();
  return result;
}

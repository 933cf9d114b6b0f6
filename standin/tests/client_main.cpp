#include <gtest/gtest.h>

#include "standin/com/DispatchExport.h"

int main(int argc, char** argv) {
  OleInitialize(nullptr);
  standin::DispatchExport::offerOwnObjects();
  testing::InitGoogleTest(&argc, argv);
  const int result = RUN_ALL_TESTS();
  OleUninitialize();
  return result;
}

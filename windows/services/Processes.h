#pragma once

#include "platform/processes.h"

namespace windows {

class Processes : public platform::Processes {
 public:
  std::u16string hostModuleName() override;
  std::int32_t shellExecute(std::u16string_view file, std::u16string_view parameters,
                            std::u16string_view folder) override;
  bool windowExists(std::u16string_view windowClass) override;
};

}  // namespace windows

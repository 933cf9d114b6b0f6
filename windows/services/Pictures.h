#pragma once

#include "platform/pictures.h"
#include "windows/com/api.h"

namespace windows {

/// The pictures among a module's resources: icons by number, and an image list whose images are
/// icons by name or, where the ribbon shows them too, by number. A picture is COM's own picture
/// object.
class Pictures : public platform::Pictures {
 public:
  explicit Pictures(HINSTANCE module) : module_(module) {}

  automation::Object icon(std::int32_t id) override;
  platform::Face overlay(std::u16string_view name, std::u16string_view background) override;
  void setClipboard(const platform::Face& face) override;
  bool awaitClipboard() override;

 private:
  const HINSTANCE module_;
};

}  // namespace windows

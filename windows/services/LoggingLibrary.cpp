#include "windows/services/LoggingLibrary.h"

#include "platform/automation.h"
#include "windows/com/text.h"

namespace windows {
namespace {

using CreateLogger = LONG WINAPI(LONG index, const char* product, const char* module, LONG, LONG,
                                 LONG, LONG);
using Write = LONG WINAPI(LONG index, LONG level, const char* message);

}  // namespace

Library& LoggingLibrary::library() {
  // Not looked for by its name: that would take the system through all its folders.
  if (!library_) throw automation::Error(automation::ErrorNumber::FileNotFound);
  return *library_;
}

void LoggingLibrary::load(std::u16string_view path) {
  library_ = std::make_unique<Library>(ansi(path), Library::AtEnd::Keep);
  library_->load();
}

std::int32_t LoggingLibrary::createLogger(std::int32_t index, std::u16string_view product,
                                          std::u16string_view module, std::int32_t p4,
                                          std::int32_t p5, std::int32_t p6, std::int32_t p7) {
  auto* create = library_ ? library_->find<CreateLogger>("K9TLog_CreateLogger") : nullptr;
  if (!create) return NotThere;
  return create(index, ansi(product).c_str(), ansi(module).c_str(), p4, p5, p6, p7);
}

std::int32_t LoggingLibrary::write(std::int32_t index, std::int32_t level,
                                   std::u16string_view text) {
  auto* write = library().require<Write>("K9TLog_Write");
  return write(index, level, ansi(text).c_str());
}

}  // namespace windows

#include "simulator/machine/SimLoggingLibrary.h"

#include "simulator/caseless.h"
#include "simulator/machine/ansi.h"

namespace simulator {
namespace {

constexpr std::int32_t Done = 0;
constexpr std::int32_t IndexTaken = -6;
constexpr std::int32_t NoSuchLogger = -1;

/// A text as it arrives through a pointer to a C string in the ANSI code page.
std::u16string received(std::u16string_view text) {
  return fromAnsi(toAnsi(text.substr(0, text.find(u'\0'))));
}

}  // namespace

void SimLoggingLibrary::setPresent(bool present, std::u16string_view path) {
  present_ = present;
  path_ = path;
  loaded_ = loaded_ && present;
}

bool SimLoggingLibrary::presentAt(std::u16string_view path) const {
  return present_ && sameName(path, path_);
}

void SimLoggingLibrary::load(std::u16string_view path) {
  loads_.emplace_back(path);
  try {
    boundary_.service(u"LoggingLibrary", u"load");
  } catch (const automation::Error&) {
    return;
  }
  if (presentAt(path)) loaded_ = true;
}

void SimLoggingLibrary::bind(std::u16string_view function) const {
  if (!loaded_) throw automation::Error(automation::ErrorNumber::FileNotFound);
  if (lacking_.contains(function)) {
    throw automation::Error(automation::ErrorNumber::EntryPointNotFound);
  }
}

std::int32_t SimLoggingLibrary::createLogger(std::int32_t index, std::u16string_view product,
                                             std::u16string_view module, std::int32_t p4,
                                             std::int32_t p5, std::int32_t p6, std::int32_t p7) {
  boundary_.service(u"LoggingLibrary", u"createLogger");
  if (!loaded_ || lacking_.contains(u"K9TLog_CreateLogger")) return NotThere;
  std::int32_t status = loggers_.contains(index) ? IndexTaken : Done;
  if (!createStatuses_.empty()) {
    status = createStatuses_.front();
    createStatuses_.pop_front();
  }
  if (status == Done) loggers_.insert(index);
  created_.push_back({index, received(product), received(module), {p4, p5, p6, p7}, status});
  return status;
}

std::int32_t SimLoggingLibrary::write(std::int32_t index, std::int32_t level,
                                      std::u16string_view text) {
  boundary_.service(u"LoggingLibrary", u"write");
  bind(u"K9TLog_Write");
  const std::int32_t status = writeStatus_.value_or(loggers_.contains(index) ? Done : NoSuchLogger);
  const Written written{index, level, received(text), status};
  written_.push_back(written);
  if (listener_ && status == Done) listener_(written);
  return status;
}

}  // namespace simulator

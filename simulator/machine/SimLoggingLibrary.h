#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/logging_library.h"
#include "simulator/boundary.h"

namespace simulator {

/// A logging library that lies at one path, or is not there. Calls by bare name find it only after
/// it was loaded from that path. Texts arrive as the library gets them: in the ANSI code page, up
/// to their first NUL. An observer's error fails a load silently and passes through elsewhere.
class SimLoggingLibrary : public platform::LoggingLibrary {
 public:
  explicit SimLoggingLibrary(Boundary& boundary) : boundary_(boundary) {}

  void load(std::u16string_view path) override;
  /// Without a status set for it, 0, or -6 when the library has a logger of this index.
  std::int32_t createLogger(std::int32_t index, std::u16string_view product,
                            std::u16string_view module, std::int32_t p4, std::int32_t p5,
                            std::int32_t p6, std::int32_t p7) override;
  /// Without a status set, 0, or -1 when the library has no logger of this index.
  std::int32_t write(std::int32_t index, std::int32_t level, std::u16string_view text) override;

  // Not crossings: for the program that plays the machine.

  static constexpr std::u16string_view DefaultPath =
      u"C:\\Program Files\\Common Files\\K9T\\K9tLogVB.dll";
  void setPresent(bool present, std::u16string_view path = DefaultPath);
  bool presentAt(std::u16string_view path) const;
  /// The function, by its exported name, is missing from the library.
  void lackExport(std::u16string_view name) { lacking_.emplace(name); }
  /// What the next calls of `createLogger` answer, one a call.
  void queueCreateStatus(std::int32_t status) { createStatuses_.push_back(status); }
  void setWriteStatus(std::optional<std::int32_t> status) { writeStatus_ = status; }

  struct Created {
    std::int32_t index = 0;
    std::u16string product;
    std::u16string module;
    std::vector<std::int32_t> settings;
    std::int32_t status = 0;
  };
  struct Written {
    std::int32_t index = 0;
    std::int32_t level = 0;
    std::u16string text;
    std::int32_t status = 0;
  };
  /// Every path that a load was asked for.
  const std::vector<std::u16string>& loads() const { return loads_; }
  const std::vector<Created>& created() const { return created_; }
  const std::vector<Written>& written() const { return written_; }
  /// Called for each text that was written with status 0.
  void setListener(std::function<void(const Written&)> listener) {
    listener_ = std::move(listener);
  }

 private:
  void bind(std::u16string_view function) const;

  Boundary& boundary_;
  bool present_ = false;
  bool loaded_ = false;
  std::u16string path_;
  std::set<std::u16string, std::less<>> lacking_;
  std::deque<std::int32_t> createStatuses_;
  std::optional<std::int32_t> writeStatus_;
  std::set<std::int32_t> loggers_;
  std::vector<std::u16string> loads_;
  std::vector<Created> created_;
  std::vector<Written> written_;
  std::function<void(const Written&)> listener_;
};

}  // namespace simulator

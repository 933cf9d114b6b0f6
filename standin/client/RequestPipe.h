#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "windows/com/Lock.h"
#include "windows/com/api.h"

namespace standin {

/// Takes requests from other programs while the thread of the client's objects may be busy: a
/// thread of its own reads them, the client's thread carries them out when it looks here. Only one
/// program can have the pipe.
class RequestPipe {
 public:
  RequestPipe();
  ~RequestPipe();
  RequestPipe(const RequestPipe&) = delete;
  RequestPipe& operator=(const RequestPipe&) = delete;

  /// False when another program has it.
  bool owned() const { return pipe_ != INVALID_HANDLE_VALUE; }
  /// Signalled while a request waits.
  HANDLE waiting() const { return waiting_; }
  /// Carries out the request that waits, if any.
  using Handler = std::function<std::u16string(std::u16string_view)>;
  void serve(const Handler& handler);

 private:
  static DWORD WINAPI run(void* self);
  void listen();
  bool exchange();

  HANDLE pipe_;
  HANDLE waiting_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  HANDLE answered_ = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  HANDLE ending_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  HANDLE thread_ = nullptr;
  windows::Lock lock_;
  std::u16string request_;
  std::u16string answer_;
};

/// Sends a request to the running client and gives its answer; empty when no client runs, or none
/// was left to answer.
std::u16string request(std::u16string_view text);

}  // namespace standin

#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "windows/com/Lock.h"
#include "windows/com/Owner.h"

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
  bool owned() const { return static_cast<bool>(pipe_); }
  /// Signalled while a request waits.
  HANDLE waiting() const { return waiting_.get(); }
  /// Carries out the request that waits, if any.
  using Handler = std::function<std::u16string(std::u16string_view)>;
  void serve(const Handler& handler);

 private:
  static DWORD WINAPI run(void* self);
  void listen();
  bool exchange();

  using Handle = windows::KernelObject;
  const Handle pipe_;
  const Handle waiting_ = Handle::attach(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  const Handle answered_ = Handle::attach(CreateEventW(nullptr, FALSE, FALSE, nullptr));
  const Handle ending_ = Handle::attach(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  Handle thread_;
  windows::Lock lock_;
  std::u16string request_;
  std::u16string answer_;
};

/// Sends a request to the running client and gives its answer; empty when no client runs, or none
/// was left to answer.
std::u16string request(std::u16string_view text);

}  // namespace standin

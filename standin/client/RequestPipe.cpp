#include "standin/client/RequestPipe.h"

#include <array>

#include "standin/client/names.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"

namespace standin {
namespace {

constexpr DWORD LongestMessage = 4096;

windows::KernelObject openPipe() {
  return windows::ownFile(CreateFileW(windows::wide(RequestPipeName.data()),
                                      GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0,
                                      nullptr));
}

/// One message; empty when the other side is gone.
std::u16string readMessage(HANDLE pipe) {
  std::array<char16_t, LongestMessage> buffer;
  DWORD size = 0;
  if (!ReadFile(pipe, buffer.data(), sizeof buffer, &size, nullptr)) return {};
  return std::u16string(buffer.data(), size / sizeof(char16_t));
}

bool writeMessage(HANDLE pipe, std::u16string_view text) {
  text = text.substr(0, LongestMessage);
  DWORD written = 0;
  return WriteFile(pipe, text.data(), static_cast<DWORD>(text.size() * sizeof(char16_t)), &written,
                   nullptr) != FALSE;
}

}  // namespace

RequestPipe::RequestPipe()
    : pipe_(windows::ownFile(CreateNamedPipeW(
          windows::wide(RequestPipeName.data()), PIPE_ACCESS_DUPLEX,
          PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE | PIPE_WAIT, 1,
          LongestMessage * sizeof(char16_t), LongestMessage * sizeof(char16_t), 0, nullptr))) {
  if (owned()) thread_ = Handle::attach(CreateThread(nullptr, 0, run, this, 0, nullptr));
}

RequestPipe::~RequestPipe() {
  SetEvent(ending_.get());
  if (!thread_) return;
  do {
    // Wakes the thread, which may wait for somebody to call.
    openPipe();
  } while (WaitForSingleObject(thread_.get(), 10) == WAIT_TIMEOUT);
}

DWORD WINAPI RequestPipe::run(void* self) {
  windows::guardedQuietly([self] { static_cast<RequestPipe*>(self)->listen(); });
  return 0;
}

void RequestPipe::listen() {
  for (bool more = true; more;) {
    if (!ConnectNamedPipe(pipe_.get(), nullptr) && GetLastError() == ERROR_INVALID_HANDLE) return;
    more = WaitForSingleObject(ending_.get(), 0) != WAIT_OBJECT_0 && exchange();
    FlushFileBuffers(pipe_.get());
    DisconnectNamedPipe(pipe_.get());
  }
}

bool RequestPipe::exchange() {
  const std::u16string text = readMessage(pipe_.get());
  if (text.empty()) return true;
  {
    const windows::Locked locked(lock_);
    request_ = text;
  }
  SetEvent(waiting_.get());
  // The end must come, whatever the other thread does.
  constexpr DWORD Grace = 2000;
  const HANDLE events[] = {answered_.get(), ending_.get()};
  const DWORD result =
      WaitForMultipleObjects(2, events, FALSE, text == VanishRequest ? Grace : INFINITE);
  if (result == WAIT_TIMEOUT) TerminateProcess(GetCurrentProcess(), 1);
  if (result != WAIT_OBJECT_0) return false;
  const windows::Locked locked(lock_);
  writeMessage(pipe_.get(), answer_);
  return true;
}

void RequestPipe::serve(const Handler& handler) {
  if (WaitForSingleObject(waiting_.get(), 0) != WAIT_OBJECT_0) return;
  ResetEvent(waiting_.get());
  std::u16string text;
  {
    const windows::Locked locked(lock_);
    text = request_;
  }
  std::u16string answer = handler(text);
  {
    const windows::Locked locked(lock_);
    answer_ = std::move(answer);
  }
  SetEvent(answered_.get());
}

std::u16string request(std::u16string_view text) {
  constexpr DWORD Patience = 10000;
  const DWORD start = GetTickCount();
  auto pipe = openPipe();
  // Somebody else's request may be under way.
  while (!pipe && GetLastError() == ERROR_PIPE_BUSY && GetTickCount() - start < Patience) {
    Sleep(1);
    pipe = openPipe();
  }
  if (!pipe) return {};
  DWORD mode = PIPE_READMODE_MESSAGE;
  SetNamedPipeHandleState(pipe.get(), &mode, nullptr, nullptr);
  return writeMessage(pipe.get(), text) ? readMessage(pipe.get()) : std::u16string();
}

}  // namespace standin

#include "standin/client/RequestPipe.h"

#include <array>

#include "standin/client/names.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"

namespace standin {
namespace {

constexpr DWORD LongestMessage = 4096;

HANDLE openPipe() {
  return CreateFileW(windows::wide(RequestPipeName.data()), GENERIC_READ | GENERIC_WRITE, 0,
                     nullptr, OPEN_EXISTING, 0, nullptr);
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
    : pipe_(CreateNamedPipeW(windows::wide(RequestPipeName.data()), PIPE_ACCESS_DUPLEX,
                             PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE | PIPE_WAIT, 1,
                             LongestMessage * sizeof(char16_t), LongestMessage * sizeof(char16_t),
                             0, nullptr)) {
  if (owned()) thread_ = CreateThread(nullptr, 0, run, this, 0, nullptr);
}

RequestPipe::~RequestPipe() {
  SetEvent(ending_);
  if (thread_) {
    // Wakes the thread, which may wait for somebody to call.
    do {
      const HANDLE wake = openPipe();
      if (wake != INVALID_HANDLE_VALUE) CloseHandle(wake);
    } while (WaitForSingleObject(thread_, 10) == WAIT_TIMEOUT);
    CloseHandle(thread_);
  }
  if (owned()) CloseHandle(pipe_);
  for (const HANDLE event : {waiting_, answered_, ending_}) CloseHandle(event);
}

DWORD WINAPI RequestPipe::run(void* self) {
  windows::guardedQuietly([self] { static_cast<RequestPipe*>(self)->listen(); });
  return 0;
}

void RequestPipe::listen() {
  for (bool more = true; more;) {
    if (!ConnectNamedPipe(pipe_, nullptr) && GetLastError() == ERROR_INVALID_HANDLE) return;
    more = WaitForSingleObject(ending_, 0) != WAIT_OBJECT_0 && exchange();
    FlushFileBuffers(pipe_);
    DisconnectNamedPipe(pipe_);
  }
}

bool RequestPipe::exchange() {
  const std::u16string text = readMessage(pipe_);
  if (text.empty()) return true;
  {
    const windows::Locked locked(lock_);
    request_ = text;
  }
  SetEvent(waiting_);
  // The end must come, whatever the other thread does.
  constexpr DWORD Grace = 2000;
  const HANDLE events[] = {answered_, ending_};
  const DWORD result =
      WaitForMultipleObjects(2, events, FALSE, text == VanishRequest ? Grace : INFINITE);
  if (result == WAIT_TIMEOUT) TerminateProcess(GetCurrentProcess(), 1);
  if (result != WAIT_OBJECT_0) return false;
  const windows::Locked locked(lock_);
  writeMessage(pipe_, answer_);
  return true;
}

void RequestPipe::serve(const Handler& handler) {
  if (WaitForSingleObject(waiting_, 0) != WAIT_OBJECT_0) return;
  ResetEvent(waiting_);
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
  SetEvent(answered_);
}

std::u16string request(std::u16string_view text) {
  constexpr DWORD Patience = 10000;
  const DWORD start = GetTickCount();
  HANDLE pipe = openPipe();
  // Somebody else's request may be under way.
  while (pipe == INVALID_HANDLE_VALUE && GetLastError() == ERROR_PIPE_BUSY &&
         GetTickCount() - start < Patience) {
    Sleep(1);
    pipe = openPipe();
  }
  if (pipe == INVALID_HANDLE_VALUE) return {};
  DWORD mode = PIPE_READMODE_MESSAGE;
  SetNamedPipeHandleState(pipe, &mode, nullptr, nullptr);
  std::u16string answer;
  if (writeMessage(pipe, text)) answer = readMessage(pipe);
  CloseHandle(pipe);
  return answer;
}

}  // namespace standin

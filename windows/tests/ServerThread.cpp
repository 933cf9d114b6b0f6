#include "windows/tests/ServerThread.h"

#include <memory>

#include "windows/com/ComObject.h"
#include "windows/com/errors.h"
#include "windows/com/values.h"

namespace windows {
namespace {

constexpr UINT RunMessage = WM_APP + 1;

struct Task {
  std::function<void()> function;
  /// Null when nobody waits.
  HANDLE done;
};

}  // namespace

void waitAndPump(HANDLE handle) {
  while (MsgWaitForMultipleObjects(1, &handle, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
  }
}

ServerThread::ServerThread()
    : ready_(CreateEventW(nullptr, FALSE, FALSE, nullptr)),
      thread_(CreateThread(nullptr, 0, &ServerThread::main, this, 0, &id_)) {
  WaitForSingleObject(ready_, INFINITE);
}

ServerThread::~ServerThread() {
  PostThreadMessageW(id_, WM_QUIT, 0, 0);
  waitAndPump(thread_);
  CloseHandle(thread_);
  CloseHandle(ready_);
}

DWORD WINAPI ServerThread::main(void* self) {
  OleInitialize(nullptr);
  MSG message;
  PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
  SetEvent(static_cast<ServerThread*>(self)->ready_);
  while (GetMessageW(&message, nullptr, 0, 0)) {
    if (message.hwnd == nullptr && message.message == RunMessage) {
      const std::unique_ptr<Task> task(reinterpret_cast<Task*>(message.lParam));
      guardedQuietly(task->function);
      if (task->done) SetEvent(task->done);
      continue;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  OleUninitialize();
  return 0;
}

void ServerThread::run(const std::function<void()>& function) {
  const HANDLE done = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  post(function, done);
  waitAndPump(done);
  CloseHandle(done);
}

void ServerThread::start(std::function<void()> function) {
  post(std::move(function), nullptr);
}

void ServerThread::post(std::function<void()> function, HANDLE done) {
  auto task = std::make_unique<Task>(Task{std::move(function), done});
  if (PostThreadMessageW(id_, RunMessage, 0, reinterpret_cast<LPARAM>(task.get()))) task.release();
}

automation::Object ServerThread::bring(const std::function<automation::Object()>& maker) {
  IStream* stream = nullptr;
  run([&] {
    const auto dispatch = dispatchOf(maker());
    check(CoMarshalInterThreadInterfaceInStream(IID_IDispatch, dispatch.get(), &stream));
  });
  ComPtr<IDispatch> dispatch;
  check(CoGetInterfaceAndReleaseStream(stream, IID_IDispatch, dispatch.receiveVoid()));
  return automation::Object(std::make_shared<ComObject>(std::move(dispatch)));
}

}  // namespace windows

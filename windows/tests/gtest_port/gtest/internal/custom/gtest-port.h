#pragma once

// GoogleTest for a compiler without threads in its run-time library. The tests check on one thread
// only, so that there is nothing to lock.

#define GTEST_IS_THREADSAFE 0

extern "C" __declspec(dllimport) int __stdcall CloseHandle(void* handle);

namespace testing {
namespace internal {

/// Owns a kernel handle. GoogleTest has this for programs with threads only, and uses it in all.
class AutoHandle {
 public:
  using Handle = void*;
  AutoHandle() = default;
  explicit AutoHandle(Handle handle) : handle_(handle) {}
  ~AutoHandle() { Reset(); }
  AutoHandle(const AutoHandle&) = delete;
  AutoHandle& operator=(const AutoHandle&) = delete;

  Handle Get() const { return handle_; }
  void Reset() { Reset(nullptr); }
  void Reset(Handle handle) {
    if (handle_ && handle_ != handle) CloseHandle(handle_);
    handle_ = handle;
  }

 private:
  Handle handle_ = nullptr;
};

}  // namespace internal
}  // namespace testing

#pragma once

#include <initializer_list>
#include <utility>

#include "windows/com/ComPtr.h"

namespace windows {

/// Objects of this module that somebody outside may still hold. The module can't be unloaded while
/// there are any.
class LiveObjects {
 public:
  static long count() noexcept { return InterlockedCompareExchange(&count_, 0, 0); }
  static void add() noexcept { InterlockedIncrement(&count_); }
  static void remove() noexcept { InterlockedDecrement(&count_); }

 private:
  static inline LONG count_ = 0;
};

/// Reference counting of a COM object with one chain of interfaces. A new object has one reference,
/// which its maker owns.
template <class Interface>
class ComBase : public Interface {
 public:
  ComBase(const ComBase&) = delete;
  ComBase& operator=(const ComBase&) = delete;

  ULONG STDMETHODCALLTYPE AddRef() override {
    return static_cast<ULONG>(InterlockedIncrement(&references_));
  }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG left = InterlockedDecrement(&references_);
    if (left != 0) return static_cast<ULONG>(left);
    // Who takes and drops a reference while the object goes must not delete it once more.
    references_ = Going;
    delete this;
    return 0;
  }

 protected:
  ComBase() { LiveObjects::add(); }
  virtual ~ComBase() { LiveObjects::remove(); }

  /// Answers a query: the object itself serves each of `iids`.
  HRESULT answer(REFIID iid, std::initializer_list<const IID*> iids, void** result) {
    if (!result) return E_POINTER;
    *result = nullptr;
    for (const IID* own : iids) {
      if (!IsEqualIID(iid, *own)) continue;
      *result = static_cast<Interface*>(this);
      AddRef();
      return S_OK;
    }
    return E_NOINTERFACE;
  }

 private:
  static constexpr LONG Going = 1 << 30;
  LONG references_ = 1;
};

/// Makes a COM object and owns its first reference.
template <class Class, class... Args>
ComPtr<Class> make(Args&&... args) {
  return ComPtr<Class>::attach(new Class(std::forward<Args>(args)...));
}

}  // namespace windows

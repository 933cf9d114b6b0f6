#pragma once

#include <functional>
#include <vector>

#include "windows/com/ComPtr.h"

namespace standin {

/// Offers a program's objects to other programs, in the table of running objects and through class
/// objects, for as long as it lives.
class ClassOffers {
 public:
  using Create = std::function<windows::ComPtr<IDispatch>()>;

  ClassOffers() = default;
  ~ClassOffers();
  ClassOffers(const ClassOffers&) = delete;
  ClassOffers& operator=(const ClassOffers&) = delete;

  /// The running object of its class.
  void offerRunning(const CLSID& id, IDispatch* object);
  /// Whoever asks for an object of the class gets what `create` makes.
  void offerClass(const CLSID& id, Create create);

  /// Takes back what must not outlive the process. Windows sees to that by itself; Wine goes on
  /// offering the class objects of a process that was killed.
  void withdrawClasses();

 private:
  void keepServed(REFIID iid, IUnknown* object);

  std::vector<DWORD> running_;
  std::vector<DWORD> classes_;
  std::vector<windows::ComPtr<IStream>> served_;
};

}  // namespace standin

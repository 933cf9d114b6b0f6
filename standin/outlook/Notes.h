#pragma once

#include <functional>

#include "standin/client/ClientControl.h"
#include "standin/outlook/Libraries.h"
#include "standin/outlook/RegistryKeeper.h"
#include "standin/outlook/TraceTail.h"

namespace standin {

/// What happens outside of this program: what the client is told and what the add-in traces. While
/// it lives the add-in has a trace: the logging library's where its stand-in is at hand, its own
/// file otherwise.
class Notes {
 public:
  /// Both must outlive it. The client may be null.
  Notes(ClientControl* client, Libraries& libraries);

  /// Puts the logging library there, or takes it away.
  void setLoggingLibrary(bool present);
  /// Tells what has come since the last time, in the order in which it came. Reads it in any case:
  /// without a listener it is gone.
  void tell(const std::function<void(const scenario::Note&)>& listener);

 private:
  void watch(const std::u16string& file);

  ClientControl* client_;
  Libraries& libraries_;
  RegistryKeeper registry_;
  TraceFile traceFile_;
  LibraryLog libraryLog_;
};

}  // namespace standin

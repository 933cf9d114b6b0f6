#pragma once

#include "standin/client/ClientServer.h"

namespace standin {

/// Offers the client's objects to other programs: the application in the table of running objects
/// and, with the remote control, through class objects. Ends with its life.
class ClassOffers {
 public:
  explicit ClassOffers(ClientServer& server);
  ~ClassOffers();
  ClassOffers(const ClassOffers&) = delete;
  ClassOffers& operator=(const ClassOffers&) = delete;

  /// Takes back what must not outlive the process. Windows sees to that by itself; Wine goes on
  /// offering the class objects of a process that was killed.
  void withdrawClasses();

 private:
  DWORD running_ = 0;
  DWORD applicationClass_ = 0;
  DWORD remoteClass_ = 0;
};

}  // namespace standin

#pragma once

#include <memory>
#include <span>
#include <string_view>
#include <utility>

#include "simulator/client/Client.h"
#include "simulator/object.h"

namespace simulator {

class ClientApplication;
class ClientPhoneCommand;
class ClientAuxiliaryService;

/// One run of the client. Its end makes the objects that others hold useless; they never keep it
/// alive.
class ClientProcess : public std::enable_shared_from_this<ClientProcess> {
 public:
  explicit ClientProcess(Client& owner) : client(owner) {}
  /// Makes the objects, which need the process to be shared already.
  static std::shared_ptr<ClientProcess> start(Client& owner);

  Client& client;
  std::shared_ptr<ClientApplication> application;
  std::shared_ptr<ClientPhoneCommand> phoneCommand;
  std::shared_ptr<ClientAuxiliaryService> auxiliaryService;
};

/// An object of the client: knows its process and lets each call pass through the client first.
template <class Self>
class ClientObject : public TableObject<Self> {
 public:
  explicit ClientObject(std::weak_ptr<ClientProcess> process) : process_(std::move(process)) {}

  Value invoke(automation::Access access, const automation::Member& member,
               Arguments args) override {
    // Holds the process for the length of the call, which may end it.
    const auto process = process_.lock();
    if (!process) throw automation::Error(automation::ErrorNumber::ServerUnavailable);
    process->client.enter(member.name);
    return TableObject<Self>::invoke(access, member, args);
  }

  /// Valid inside a call only.
  Client& client() const { return process_.lock()->client; }

 private:
  std::weak_ptr<ClientProcess> process_;
};

class ClientApplication : public ClientObject<ClientApplication> {
 public:
  static constexpr std::u16string_view Name = u"Application";
  static std::span<const MemberRow<ClientApplication>> members();
  using ClientObject::ClientObject;
};

class ClientPhoneCommand : public ClientObject<ClientPhoneCommand> {
 public:
  static constexpr std::u16string_view Name = u"PhoneCommand";
  static std::span<const MemberRow<ClientPhoneCommand>> members();
  using ClientObject::ClientObject;
};

class ClientAuxiliaryService : public ClientObject<ClientAuxiliaryService> {
 public:
  static constexpr std::u16string_view Name = u"AuxiliaryService";
  static std::span<const MemberRow<ClientAuxiliaryService>> members();
  using ClientObject::ClientObject;
};

class ClientRemote : public ClientObject<ClientRemote> {
 public:
  static constexpr std::u16string_view Name = u"Remote";
  static std::span<const MemberRow<ClientRemote>> members();
  using ClientObject::ClientObject;
};

}  // namespace simulator

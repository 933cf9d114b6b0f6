#include "simulator/machine/MapiSession.h"

#include <utility>

namespace simulator {
namespace {

using automation::Error;

class AddressEntry : public TableObject<AddressEntry> {
 public:
  static constexpr std::u16string_view Name = u"AddressEntry";
  static std::span<const MemberRow<AddressEntry>> members() {
    static constexpr MemberRow<AddressEntry> Rows[] = {
        {u"Address", [](AddressEntry& self, Arguments) -> Value { return self.address_; }}};
    return Rows;
  }
  explicit AddressEntry(std::u16string address) : address_(std::move(address)) {}

 private:
  std::u16string address_;
};

class Message : public TableObject<Message> {
 public:
  static constexpr std::u16string_view Name = u"Message";
  static std::span<const MemberRow<Message>> members() {
    static constexpr MemberRow<Message> Rows[] = {
        {u"Sender", [](Message& self, Arguments) -> Value { return self.sender(); }}};
    return Rows;
  }
  Message(std::shared_ptr<MapiSessionState> state, std::u16string address)
      : state_(std::move(state)), address_(std::move(address)) {}

 private:
  Value sender() const {
    if (state_->senderError) throw Error(*state_->senderError);
    return std::make_shared<AddressEntry>(address_)->handle();
  }

  std::shared_ptr<MapiSessionState> state_;
  std::u16string address_;
};

/// What the session raises for anything that it does not find or does not allow.
[[noreturn]] void refuse(std::uint32_t result, std::u16string description) {
  throw Error(static_cast<std::int32_t>(result), std::move(description));
}

}  // namespace

std::span<const MemberRow<MapiSession>> MapiSession::members() {
  static constexpr MemberRow<MapiSession> Rows[] = {
      {u"Logon", [](MapiSession& self, Arguments args) { return self.logon(args); }},
      {u"Logoff", [](MapiSession& self, Arguments args) { return self.logoff(args); }},
      {u"GetMessage", [](MapiSession& self, Arguments args) { return self.getMessage(args); }},
  };
  return Rows;
}

Value MapiSession::logon(Arguments args) {
  // Profile name, password, whether to show a dialog, whether to open a new session.
  const bool quiet = args.size() >= 4 && !args[2].toBoolean() && !args[3].toBoolean();
  if (!quiet) refuse(0x80040113, u"The logon was cancelled by the user");
  ++state_->logons;
  loggedOn_ = true;
  return {};
}

Value MapiSession::logoff(Arguments) {
  if (!loggedOn_) refuse(0x80040605, u"There is no session");
  ++state_->logoffs;
  loggedOn_ = false;
  return {};
}

Value MapiSession::getMessage(Arguments args) {
  if (!loggedOn_) refuse(0x80040605, u"There is no session");
  std::optional<std::u16string> address;
  if (state_->senderOf) {
    address = state_->senderOf(argument(args, 0).toText(), argument(args, 1).toText());
  }
  if (!address) refuse(0x8004010F, u"The message was not found");
  return std::make_shared<Message>(state_, *std::move(address))->handle();
}

}  // namespace simulator

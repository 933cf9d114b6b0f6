#include "simulator/client/ClientObjects.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace simulator {
namespace {

using Kind = Told::Kind;

/// Raises error 450 unless the caller gave this many arguments.
void expectCount(Arguments args, std::size_t least, std::size_t most) {
  if (args.size() < least || args.size() > most) {
    throw automation::Error(automation::ErrorNumber::WrongArgumentCount);
  }
}

void expectCount(Arguments args, std::size_t count) {
  expectCount(args, count, count);
}

Value lineState(ClientPhoneCommand& self, Arguments args) {
  expectCount(args, 1);
  const std::int32_t line = args[0].toInt32();
  const Telephone& telephone = self.client().telephone();
  return line ? telephone.stateOf(line) : telephone.currentState();
}

Value lineStateOf(ClientPhoneCommand& self, Arguments args) {
  expectCount(args, 1);
  return self.client().telephone().stateOf(args[0].toInt32());
}

Value lines(ClientPhoneCommand& self, Arguments args) {
  expectCount(args, 1);
  return self.client().lines();
}

Value dial(ClientPhoneCommand& self, Arguments args) {
  expectCount(args, 3, 4);
  Told told;
  told.kind = Kind::Dial;
  told.firstLine = args[0].toInt32();
  told.chosenLine = args[1].toInt32();
  told.text = args[2].toText();
  self.client().execute(told);
  return {};
}

/// A command whose one argument is the line, 0 for the current one.
template <Kind kind>
Value onLine(ClientPhoneCommand& self, Arguments args) {
  expectCount(args, 1);
  Told told;
  told.kind = kind;
  told.chosenLine = args[0].toInt32();
  self.client().execute(told);
  return {};
}

Value stop(ClientPhoneCommand& self, Arguments args) {
  expectCount(args, 1);
  Told told;
  told.kind = Kind::Stop;
  told.code = args[0].toInt32();
  self.client().execute(told);
  return {};
}

/// The number, five texts that describe who has it, and how to show it.
Value showNumber(ClientAuxiliaryService& self, Arguments args) {
  expectCount(args, 7);
  for (const Value& text : args.subspan(1, 5)) text.toText();
  args[6].toInt32();
  Told told;
  told.kind = Kind::ShowNumber;
  told.text = args[0].toText();
  self.client().execute(told);
  return {};
}

Value convertNumber(ClientAuxiliaryService& self, Arguments args) {
  expectCount(args, 1);
  return self.client().convert(args[0].toText());
}

Value isNumber(ClientAuxiliaryService& self, Arguments args) {
  expectCount(args, 1);
  return self.client().isNumber(args[0].toText());
}

Value showActions(ClientAuxiliaryService& self, Arguments args) {
  expectCount(args, 3);
  Told told;
  told.kind = Kind::ShowActions;
  told.text = args[0].toText();
  told.code = args[1].toInt32();
  told.code2 = args[2].toInt32();
  self.client().execute(told);
  return {};
}

Value showCallInfo(ClientAuxiliaryService& self, Arguments args) {
  expectCount(args, 0);
  Told told;
  told.kind = Kind::ShowCallInfo;
  self.client().execute(told);
  return {};
}

/// The number, and whether to ask the user first.
Value directDial(ClientRemote& self, Arguments args) {
  expectCount(args, 2);
  args[1].toBoolean();
  Told told;
  told.kind = Kind::DirectDial;
  told.text = args[0].toText();
  self.client().execute(told);
  return {};
}

}  // namespace

std::shared_ptr<ClientProcess> ClientProcess::start(Client& owner) {
  auto process = std::make_shared<ClientProcess>(owner);
  process->application = std::make_shared<ClientApplication>(process);
  process->phoneCommand = std::make_shared<ClientPhoneCommand>(process);
  process->auxiliaryService = std::make_shared<ClientAuxiliaryService>(process);
  return process;
}

std::span<const MemberRow<ClientApplication>> ClientApplication::members() {
  static constexpr MemberRow<ClientApplication> Rows[] = {
      {u"PhoneCommand",
       [](ClientApplication& self, Arguments) -> Value {
         return self.client().phoneCommandObject();
       }},
      {u"AuxiliaryService",
       [](ClientApplication& self, Arguments) -> Value {
         return self.client().auxiliaryServiceObject();
       }},
  };
  return Rows;
}

std::span<const MemberRow<ClientPhoneCommand>> ClientPhoneCommand::members() {
  static constexpr MemberRow<ClientPhoneCommand> Rows[] = {
      {u"Dial", dial},
      {u"LineStateOf", lineStateOf},
      {u"LineState", lineState},
      {u"Lines", lines},
      {u"HangUp", onLine<Kind::HangUp>},
      {u"PickUp", onLine<Kind::PickUp>},
      {u"Stop", stop},
      {u"Transfer", onLine<Kind::Transfer>},
      {u"Incognito", onLine<Kind::Incognito>},
  };
  return Rows;
}

std::span<const MemberRow<ClientAuxiliaryService>> ClientAuxiliaryService::members() {
  static constexpr MemberRow<ClientAuxiliaryService> Rows[] = {
      {u"ShowNumber", showNumber},   {u"ConvertNumber", convertNumber}, {u"IsNumber", isNumber},
      {u"ShowActions", showActions}, {u"ShowCallInfo", showCallInfo},
  };
  return Rows;
}

std::span<const MemberRow<ClientRemote>> ClientRemote::members() {
  static constexpr MemberRow<ClientRemote> Rows[] = {{u"DirectDial", directDial}};
  return Rows;
}

}  // namespace simulator

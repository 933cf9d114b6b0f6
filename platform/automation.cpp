#include "platform/automation.h"

#include "platform/conversions.h"

namespace automation {
namespace {

struct Description {
  ErrorNumber number;
  std::u16string_view text;
};

constexpr Description Descriptions[] = {
    {ErrorNumber::InvalidProcedureCall, u"Invalid procedure call or argument"},
    {ErrorNumber::Overflow, u"Overflow"},
    {ErrorNumber::OutOfMemory, u"Out of memory"},
    {ErrorNumber::SubscriptOutOfRange, u"Subscript out of range"},
    {ErrorNumber::TypeMismatch, u"Type mismatch"},
    {ErrorNumber::FileNotFound, u"File not found"},
    {ErrorNumber::PermissionDenied, u"Permission denied"},
    {ErrorNumber::ObjectNotSet, u"Object variable or With block variable not set"},
    {ErrorNumber::ObjectRequired, u"Object required"},
    {ErrorNumber::CannotCreateObject, u"ActiveX component can't create object"},
    {ErrorNumber::MemberNotFound, u"Object doesn't support this property or method"},
    {ErrorNumber::AutomationFailed, u"Automation error"},
    {ErrorNumber::WrongArgumentCount, u"Wrong number of arguments or invalid property assignment"},
    {ErrorNumber::EntryPointNotFound, u"Can't find DLL entry point"},
    {ErrorNumber::KeyInUse, u"This key is already associated with an element of this collection"},
    {ErrorNumber::ServerUnavailable, u"The remote server machine does not exist or is unavailable"},
    {ErrorNumber::ServerBusy, u"The message filter indicated that the application is busy."},
};

std::string narrow(std::u16string_view text) {
  std::string ascii;
  ascii.reserve(text.size());
  for (char16_t c : text) ascii.push_back(c < 0x80 ? static_cast<char>(c) : '?');
  return ascii;
}

[[noreturn]] void typeMismatch() {
  throw Error(ErrorNumber::TypeMismatch);
}

double numberIn(const std::u16string& text) {
  const auto number = parseNumber(text);
  if (!number) typeMismatch();
  return *number;
}

}  // namespace

std::u16string_view customaryDescription(std::int32_t number) noexcept {
  for (const auto& row : Descriptions) {
    if (static_cast<std::int32_t>(row.number) == number) return row.text;
  }
  return u"Automation error";
}

Error::Error(ErrorNumber number)
    : Error(static_cast<std::int32_t>(number),
            std::u16string(customaryDescription(static_cast<std::int32_t>(number)))) {}

Error::Error(std::int32_t number, std::u16string description)
    : number_(number),
      description_(std::make_shared<const std::u16string>(std::move(description))),
      what_(std::make_shared<const std::string>(narrow(*description_))) {}

Value Object::invoke(Access access, const Member& member, std::span<const Value> args) const {
  if (!dispatch_) throw Error(ErrorNumber::ObjectNotSet);
  // The call may drop the last other handle of the object.
  const auto held = dispatch_;
  return held->invoke(access, member, args);
}

std::u16string Object::typeName() const {
  const auto held = dispatch_;
  return held ? held->typeName() : std::u16string(u"Nothing");
}

Connection Object::connect(const EventInterface& events, std::shared_ptr<EventSink> sink) const {
  if (!dispatch_) throw Error(ErrorNumber::ObjectNotSet);
  const auto held = dispatch_;
  auto connection = std::make_shared<Connection>(held->connect(events, std::move(sink)));
  // The source goes after the subscription.
  return Connection([held, connection] { connection->close(); });
}

bool operator==(const Object& a, const Object& b) {
  return a.identity() == b.identity();
}

bool Value::toBoolean() const {
  if (const auto* boolean = std::get_if<bool>(&data_)) return *boolean;
  if (const auto* text = std::get_if<std::u16string>(&data_)) {
    if (equalsIgnoringCase(*text, u"true")) return true;
    if (equalsIgnoringCase(*text, u"false")) return false;
  }
  return toDouble() != 0;
}

std::int32_t Value::toInt32() const {
  if (const auto* number = std::get_if<std::int32_t>(&data_)) return *number;
  return roundToInt32(toDouble());
}

double Value::toDouble() const {
  if (isEmpty()) return 0;
  if (const auto* boolean = std::get_if<bool>(&data_)) return *boolean ? -1 : 0;
  if (const auto* number = std::get_if<std::int32_t>(&data_)) return *number;
  if (const auto* number = std::get_if<double>(&data_)) return *number;
  if (const auto* text = std::get_if<std::u16string>(&data_)) return numberIn(*text);
  typeMismatch();
}

std::u16string Value::toText() const {
  if (isEmpty()) return {};
  if (const auto* boolean = std::get_if<bool>(&data_)) return *boolean ? u"True" : u"False";
  if (const auto* number = std::get_if<std::int32_t>(&data_)) return int32Text(*number);
  if (const auto* number = std::get_if<double>(&data_)) return doubleText(*number);
  if (const auto* text = std::get_if<std::u16string>(&data_)) return *text;
  typeMismatch();
}

const Object& Value::toObject() const {
  const auto* object = std::get_if<Object>(&data_);
  if (!object) typeMismatch();
  return *object;
}

const Array& Value::toArray() const {
  const auto* array = std::get_if<Array>(&data_);
  if (!array) typeMismatch();
  return *array;
}

}  // namespace automation

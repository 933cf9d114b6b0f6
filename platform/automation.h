#pragma once

#include <array>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

/// Late-bound objects, the one way in which the add-in reaches Outlook, Office and the telephony
/// client. On Windows an object is an IDispatch; in the simulator it is a table of members.
namespace automation {

/// The customary runtime error numbers that the logic raises or compares.
enum class ErrorNumber : std::int32_t {
  InvalidProcedureCall = 5,
  Overflow = 6,
  OutOfMemory = 7,
  SubscriptOutOfRange = 9,
  TypeMismatch = 13,
  FileNotFound = 53,
  PermissionDenied = 70,
  ObjectNotSet = 91,
  ObjectRequired = 424,
  CannotCreateObject = 429,
  MemberNotFound = 438,
  AutomationFailed = 440,
  WrongArgumentCount = 450,
  EntryPointNotFound = 453,
  KeyInUse = 457,
  ServerUnavailable = 462,
  /// RPC_E_SERVERCALL_RETRYLATER: the server runs, but does not answer.
  ServerBusy = -2147417846,
};

/// A failure of the host, of the client, of a library or of a conversion: what VB calls Err.
class Error : public std::exception {
 public:
  /// An error with its customary description.
  explicit Error(ErrorNumber number);
  /// An error as a server reported it. `number` may be any HRESULT.
  Error(std::int32_t number, std::u16string description);

  std::int32_t number() const noexcept { return number_; }
  const std::u16string& description() const noexcept { return *description_; }
  const char* what() const noexcept override { return what_->c_str(); }

 private:
  std::int32_t number_;
  // Shared, so that copying an error in flight can't throw.
  std::shared_ptr<const std::u16string> description_;
  std::shared_ptr<const std::string> what_;
};

/// The customary description of an error number; "Automation error" for one that has none.
std::u16string_view customaryDescription(std::int32_t number) noexcept;

class Object;
class Value;
using Array = std::vector<Value>;

/// A member of an object: its name and, for members of the telephony client that are known by
/// their place in the interface only, that place. Places count from 1 after IDispatch's members;
/// 0 means that the place is unknown and the name alone decides.
struct Member {
  constexpr Member(const char16_t* memberName, int memberPosition = 0)
      : name(memberName), position(memberPosition) {}
  constexpr Member(std::u16string_view memberName, int memberPosition = 0)
      : name(memberName), position(memberPosition) {}

  std::u16string_view name;
  int position;
};

/// How a member is reached.
enum class Access { Get, Put, Call };

/// One event of a source: its dispatch id and its name.
struct Event {
  std::int32_t id;
  std::u16string_view name;
};

/// An event interface: its interface id in registry form and those of its events that somebody
/// here handles.
struct EventInterface {
  std::u16string_view iid;
  std::span<const Event> events;
};

/// Receives the events of one connection. Lives as long as a connection or a delivery holds it.
class EventSink {
 public:
  virtual ~EventSink() = default;
  /// `args` stand in the order of the event's declaration; a Boolean that the source passes by
  /// reference is written back from here.
  virtual void onEvent(std::int32_t id, std::span<Value> args) noexcept = 0;
};

/// Ends an event subscription exactly once.
class [[nodiscard]] Connection {
 public:
  Connection() = default;
  /// `end` must not throw.
  explicit Connection(std::function<void()> end) : end_(std::move(end)) {}
  Connection(Connection&& other) noexcept : end_(std::exchange(other.end_, {})) {}
  Connection& operator=(Connection&& other) noexcept {
    // The old one ends last: its end may come back here, and must find the new one in place.
    if (this != &other) Connection(std::exchange(end_, std::exchange(other.end_, {}))).close();
    return *this;
  }
  ~Connection() { close(); }

  void close() noexcept {
    if (auto end = std::exchange(end_, {})) end();
  }
  explicit operator bool() const noexcept { return static_cast<bool>(end_); }

 private:
  std::function<void()> end_;
};

/// What an adapter implements for one object.
class Dispatch {
 public:
  virtual ~Dispatch() = default;
  /// Reads, writes (the value is the last argument) or calls a member; raises Error.
  virtual Value invoke(Access access, const Member& member, std::span<const Value> args) = 0;
  /// The class name as VB's TypeName gives it, without a leading underscore.
  virtual std::u16string typeName() = 0;
  /// Equal for two handles of one and the same object, and for them only.
  virtual const void* identity() const = 0;
  /// Subscribes; raises Error when the object is no source of these events.
  virtual Connection connect(const EventInterface& events, std::shared_ptr<EventSink> sink) = 0;
};

/// A nullable shared handle of a late-bound object. Using a null handle raises error 91.
class Object {
 public:
  Object() = default;
  Object(std::nullptr_t) {}
  explicit Object(std::shared_ptr<Dispatch> dispatch) : dispatch_(std::move(dispatch)) {}

  explicit operator bool() const noexcept { return dispatch_ != nullptr; }
  const std::shared_ptr<Dispatch>& dispatch() const noexcept { return dispatch_; }

  template <class... Args>
  Value get(const Member& member, const Args&... args) const;
  template <class V>
  void put(const Member& member, const V& value) const;
  template <class... Args>
  Value call(const Member& member, const Args&... args) const;
  Value invoke(Access access, const Member& member, std::span<const Value> args) const;

  /// "Nothing" for a null handle.
  std::u16string typeName() const;
  /// The connection holds the object: events come as long as it lives, whether or not anybody else
  /// holds their source.
  Connection connect(const EventInterface& events, std::shared_ptr<EventSink> sink) const;

  /// Equal for handles of one object as long as one of them lives; null for a null handle.
  const void* identity() const noexcept { return dispatch_ ? dispatch_->identity() : nullptr; }
  /// Identity of the objects, not of the handles; two null handles are the same.
  friend bool operator==(const Object& a, const Object& b);

 private:
  std::shared_ptr<Dispatch> dispatch_;
};

/// An optional argument that is left out.
struct Missing {};

/// What travels between the add-in and an object. The conversions follow automation: numbers in
/// text are understood, halves round to the even neighbour, what can't be converted raises error
/// 13, what does not fit raises error 6.
class Value {
 public:
  Value() = default;
  Value(Missing) : data_(Missing{}) {}
  template <std::same_as<bool> B>
  Value(B value) : data_(value) {}
  Value(std::int32_t value) : data_(value) {}
  Value(double value) : data_(value) {}
  Value(std::u16string value) : data_(std::move(value)) {}
  Value(std::u16string_view value) : data_(std::u16string(value)) {}
  Value(const char16_t* value) : data_(std::u16string(value)) {}
  Value(Object value) : data_(std::move(value)) {}
  Value(Array value) : data_(std::move(value)) {}

  bool isEmpty() const noexcept { return holds<std::monostate>(); }
  bool isMissing() const noexcept { return holds<Missing>(); }
  bool isObject() const noexcept { return holds<Object>(); }
  bool isArray() const noexcept { return holds<Array>(); }
  bool isText() const noexcept { return holds<std::u16string>(); }
  bool isInt32() const noexcept { return holds<std::int32_t>(); }

  bool toBoolean() const;
  std::int32_t toInt32() const;
  double toDouble() const;
  std::u16string toText() const;
  const Object& toObject() const;
  const Array& toArray() const;

  using Data = std::variant<std::monostate, Missing, bool, std::int32_t, double, std::u16string,
                            Object, Array>;
  /// For adapters, which translate each alternative.
  const Data& data() const noexcept { return data_; }

 private:
  template <class T>
  bool holds() const noexcept {
    return std::holds_alternative<T>(data_);
  }
  Data data_;
};

template <class... Args>
Value Object::get(const Member& member, const Args&... args) const {
  const std::array<Value, sizeof...(Args)> values{Value(args)...};
  return invoke(Access::Get, member, values);
}

template <class V>
void Object::put(const Member& member, const V& value) const {
  const std::array<Value, 1> values{Value(value)};
  invoke(Access::Put, member, values);
}

template <class... Args>
Value Object::call(const Member& member, const Args&... args) const {
  const std::array<Value, sizeof...(Args)> values{Value(args)...};
  return invoke(Access::Call, member, values);
}

/// Base of the typed views: a value that holds one object and names its members. A view of a null
/// object is allowed and stands for "nothing".
class View {
 public:
  View() = default;
  explicit View(Object object) : object_(std::move(object)) {}

  explicit operator bool() const noexcept { return static_cast<bool>(object_); }
  const Object& object() const noexcept { return object_; }
  friend bool operator==(const View& a, const View& b) { return a.object_ == b.object_; }

 private:
  Object object_;
};

/// Hands the events of one connection to a typed receiver for as long as that lives. The receiver
/// can't go away during a delivery, even when the delivery itself drops the last other reference.
/// `Receiver` offers a static `deliver(Receiver&, id, args)`.
template <class Receiver>
class ReceiverSink : public EventSink {
 public:
  explicit ReceiverSink(std::weak_ptr<Receiver> receiver) : receiver_(std::move(receiver)) {}
  void onEvent(std::int32_t id, std::span<Value> args) noexcept override {
    if (auto receiver = receiver_.lock()) Receiver::deliver(*receiver, id, args);
  }

 private:
  std::weak_ptr<Receiver> receiver_;
};

}  // namespace automation

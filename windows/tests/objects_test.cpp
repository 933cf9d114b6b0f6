// Late-bound objects over COM: objects of this program go out, cross an apartment's border through
// COM's marshalling, and come in again.

#include <gtest/gtest.h>

#include "standin/com/DispatchExport.h"
#include "standin/com/ExportType.h"
#include "standin/com/namedTypeInfo.h"
#include "tests/errorOf.h"
#include "windows/com/ComObject.h"
#include "windows/com/EventSinkAdapter.h"
#include "windows/com/errors.h"
#include "windows/com/values.h"
#include "windows/services/Objects.h"
#include "windows/tests/ServerThread.h"
#include "windows/tests/TestObject.h"
#include "windows/tests/printing.h"

namespace windows {
namespace {

using automation::Array;
using automation::Missing;
using automation::Object;
using automation::printed;
using automation::Value;

/// {1EF19067-536E-4887-BEA4-D9735083D6DB}, {60858377-0885-4E54-A14B-A33AC62050A5}
constexpr IID IID_Phone = {
    0x1EF19067, 0x536E, 0x4887, {0xBE, 0xA4, 0xD9, 0x73, 0x50, 0x83, 0xD6, 0xDB}};
constexpr IID IID_CarPhone = {
    0x60858377, 0x0885, 0x4E54, {0xA1, 0x4B, 0xA3, 0x3A, 0xC6, 0x20, 0x50, 0xA5}};

ComPtr<ITypeInfo> testType(const IID& iid) {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  ComPtr<ITypeLib> library;
  check(LoadTypeLibEx(path, REGKIND_NONE, library.receive()));
  ComPtr<ITypeInfo> info;
  check(library->GetTypeInfoOfGuid(iid, info.receive()));
  return info;
}

class ObjectsTest : public testing::Test {
 protected:
  void SetUp() override {
    standin::ExportTypes::add(u"Tested", {standin::namedTypeInfo(u"_Tested"), {&TestEvents}});
    server_.emplace();
  }
  void TearDown() override {
    object_ = {};
    server_.reset();
    standin::ExportTypes::clear();
    EXPECT_EQ(standin::DispatchExport::count(), 0U) << "a reference is left";
    EXPECT_EQ(TestObject::alive, 0);
  }

  Object bringTested() {
    return server_->bring([] { return std::make_shared<TestObject>()->handle(); });
  }
  /// A phone that tells this interface; none tells nothing.
  Object bringPhone(const IID* iid) {
    return server_->bring([iid] {
      standin::ExportTypes::add(u"Phone", {iid ? testType(*iid) : ComPtr<ITypeInfo>(), {}});
      return std::make_shared<Phone>()->handle();
    });
  }

  std::optional<ServerThread> server_;
  Object object_;
};

TEST_F(ObjectsTest, PassValuesBothWays) {
  object_ = bringTested();
  const Value values[] = {{}, true, -7, 2.5, u"Grüße", Array{1, u"two", Array{}}, Missing{}};
  for (const Value& value : values) {
    EXPECT_EQ(printed(object_.call(u"Echo", value)), printed(value));
    object_.put(u"Value", value);
    EXPECT_EQ(printed(object_.get(u"Value")), printed(value));
  }
  EXPECT_EQ(object_.call(u"Difference", 10, 3).toInt32(), 7) << "arguments keep their order";
  EXPECT_EQ(object_.call(u"Count", 1, Missing{}, 3).toInt32(), 3);
  EXPECT_FALSE(object_.get(u"Nothing").toObject());
}

TEST_F(ObjectsTest, KeepTheirIdentity) {
  object_ = bringTested();
  const Object same = object_.get(u"Self").toObject();
  const Object child = object_.get(u"Child").toObject();
  EXPECT_EQ(same, object_);
  EXPECT_EQ(object_.get(u"Child").toObject(), child);
  EXPECT_FALSE(child == object_);
  // Back at its home it is itself again.
  EXPECT_TRUE(object_.call(u"IsSelf", same).toBoolean());
  EXPECT_FALSE(object_.call(u"IsSelf", child).toBoolean());
  object_.put(u"Value", child);
  EXPECT_EQ(object_.get(u"Value").toObject(), child);
}

TEST_F(ObjectsTest, TellTheirErrors) {
  object_ = bringTested();
  try {
    object_.call(u"Fail", 457, u"Schlüssel vergeben");
    FAIL() << "no error";
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.number(), 457);
    EXPECT_EQ(error.description(), u"Schlüssel vergeben");
  }
  EXPECT_EQ(errorOf([&] { object_.get(u"NoSuchMember"); }), 438);
  EXPECT_EQ(errorOf([&] { object_.put(u"ReadOnly", 1); }), 438);
  EXPECT_EQ(errorOf([&] { object_.call(u"Fail", -2147221233, u""); }), -2147221233);
}

TEST_F(ObjectsTest, TellTheirClass) {
  object_ = bringTested();
  EXPECT_EQ(object_.typeName(), u"Tested") << "one underscore goes";
  const IID iid = IID_CarPhone;
  EXPECT_EQ(bringPhone(&iid).typeName(), u"CarPhone");
  EXPECT_EQ(bringPhone(nullptr).typeName(), u"Object");
}

TEST_F(ObjectsTest, ServeMembersByPlace) {
  // The names are ours, the places count.
  struct Row {
    const char* why;
    const IID* iid;
    automation::Member member;
    const char* expected;
  };
  const Row rows[] = {
      {"first member", &IID_Phone, {u"Klingeln", 1}, "\"ring\""},
      {"a property takes a place for reading", &IID_Phone, {u"Lautstärke", 2}, "int 3"},
      {"and one for writing", &IID_Phone, {u"Wählen", 4}, "\"dial 110\""},
      {"a derived interface goes on counting", &IID_CarPhone, {u"Hupen", 5}, "\"horn\""},
      {"its base's members keep their places", &IID_CarPhone, {u"Wählen", 4}, "\"dial 110\""},
      {"the place goes before the name", &IID_Phone, {u"Ring", 4}, "\"dial 110\""},
      {"a place beyond the last: by name", &IID_Phone, {u"Unlisted", 9}, "\"unlisted\""},
      {"no place: by name", &IID_Phone, {u"dial"}, "\"dial 110\""},
      {"no type information: by name", nullptr, {u"Dial", 1}, "\"dial 110\""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    const Object phone = bringPhone(row.iid);
    EXPECT_EQ(printed(phone.call(row.member, u"110")), row.expected);
    // Asked again, it is known.
    EXPECT_EQ(printed(phone.call(row.member, u"110")), row.expected);
  }
  const Object phone = bringPhone(&IID_Phone);
  phone.put({u"Lautstärke", 2}, 9);
  EXPECT_EQ(phone.get(u"Volume").toInt32(), 9);
  EXPECT_EQ(errorOf([&] { phone.get({u"Nirgends", 12}); }), 438);
}

/// Notes events, answers flags, and does something inside.
class TestSink : public automation::EventSink {
 public:
  void onEvent(std::int32_t id, std::span<Value> args) noexcept override {
    heard.push_back(std::to_string(id));
    for (const Value& arg : args) heard.back() += " " + printed(arg);
    if (answer && args.size() == 2) args[1] = *answer;
    if (inside) inside();
  }
  std::vector<std::string> heard;
  std::optional<bool> answer;
  std::function<void()> inside;
};

TEST_F(ObjectsTest, DeliverEventsAndTakeFlagsBack) {
  object_ = bringTested();
  const auto sink = std::make_shared<TestSink>();
  auto connection = object_.connect(TestEvents, sink);
  EXPECT_FALSE(object_.call(u"Ask", false, u"first").toBoolean());
  sink->answer = true;
  EXPECT_TRUE(object_.call(u"Ask", false, u"second").toBoolean());
  sink->answer = false;
  EXPECT_FALSE(object_.call(u"Ask", true, object_.get(u"Child").toObject()).toBoolean());
  EXPECT_EQ(sink->heard,
            (std::vector<std::string>{"7 \"first\" false", "7 \"second\" false", "7 object true"}));
  connection.close();
  object_.call(u"Ask", false, u"third");
  EXPECT_EQ(sink->heard.size(), 3U);
  EXPECT_EQ(object_.get(u"SinkCount").toInt32(), 0);
}

TEST_F(ObjectsTest, EndASubscriptionInsideItsOwnEvent) {
  object_ = bringTested();
  auto sink = std::make_shared<TestSink>();
  const std::weak_ptr<TestSink> watched = sink;
  auto connection = object_.connect(TestEvents, sink);
  sink->inside = [&] { connection.close(); };
  // The sink's last other holder is the subscription that ends.
  sink.reset();
  object_.call(u"Ask", false, u"only");
  EXPECT_TRUE(watched.expired());
  EXPECT_EQ(object_.get(u"SinkCount").toInt32(), 0);
}

TEST_F(ObjectsTest, LiveAsLongAsTheirSubscriptions) {
  std::shared_ptr<TestObject> source;
  object_ = server_->bring([&] {
    source = std::make_shared<TestObject>();
    return source->handle();
  });
  const auto sink = std::make_shared<TestSink>();
  auto connection = object_.connect(TestEvents, sink);
  // Nobody but the subscription holds it now.
  object_ = {};
  server_->run([&] { source->handle().call(u"Ask", false, u"heard"); });
  EXPECT_EQ(sink->heard, std::vector<std::string>{"7 \"heard\" false"});
  connection.close();
  EXPECT_EQ(standin::DispatchExport::count(), 0U);
  source.reset();
}

/// An interface that counts whoever asks it anything.
class Odd : public ComBase<IUnknown> {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** result) override {
    *result = nullptr;
    ++questions;
    return E_FAIL;
  }
  int questions = 0;
};

TEST_F(ObjectsTest, EventsNeverFailTowardsTheirSource) {
  const auto sink = std::make_shared<TestSink>();
  sink->answer = true;
  const auto adapter = make<EventSinkAdapter>(iidOf(TestEvents.iid), TestEvents.events, sink);
  const auto odd = make<Odd>();
  VARIANT_BOOL cancel = VARIANT_FALSE;
  VARIANT args[2] = {};
  args[0].vt = VT_BOOL | VT_BYREF;
  args[0].pboolVal = &cancel;
  args[1].vt = VT_UNKNOWN;
  args[1].punkVal = odd.get();
  DISPPARAMS params{args, nullptr, 2, 0};
  const auto raise = [&](DISPID id, DISPPARAMS* given) {
    return adapter->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, given, nullptr, nullptr, nullptr);
  };
  EXPECT_EQ(raise(99, &params), S_OK);
  EXPECT_EQ(odd->questions, 0) << "nobody handles it";
  EXPECT_EQ(raise(7, &params), S_OK);
  EXPECT_EQ(cancel, VARIANT_TRUE) << "the flag beside it is read and written";
  for (const int type :
       {int{VT_RECORD}, VT_BYREF | VT_VARIANT, VT_ARRAY | VT_RECORD, int{VT_ERROR}}) {
    args[1].vt = static_cast<VARTYPE>(type);
    args[1].byref = nullptr;
    EXPECT_EQ(raise(7, &params), S_OK) << type;
  }
  EXPECT_EQ(raise(7, nullptr), S_OK);
  EXPECT_EQ(sink->heard.front(), "7 missing false");
  EXPECT_EQ(sink->heard.size(), 6U);
}

TEST_F(ObjectsTest, RefuseEventsThatTheyDoNotHave) {
  object_ = bringTested();
  const automation::EventInterface other{u"{0006304F-0000-0000-C000-000000000046}", {}};
  const auto sink = std::make_shared<TestSink>();
  EXPECT_NE(errorOf([&] { auto c = object_.connect(other, sink); }), 0);
  const Object phone = bringPhone(nullptr);
  EXPECT_NE(errorOf([&] { auto c = phone.connect(TestEvents, sink); }), 0);
}

TEST_F(ObjectsTest, OutliveTheirServer) {
  object_ = bringTested();
  const auto sink = std::make_shared<TestSink>();
  auto connection = object_.connect(TestEvents, sink);
  server_.reset();
  EXPECT_NE(errorOf([&] { object_.get(u"Value"); }), 0);
  EXPECT_NE(errorOf([&] { object_.get({u"Value", 2}); }), 0);
  EXPECT_EQ(object_.typeName(), u"Object");
  connection.close();
}

TEST_F(ObjectsTest, GoOutOnceAndComeBackThemselves) {
  const auto tested = std::make_shared<TestObject>();
  const auto first = dispatchOf(tested->handle());
  const auto second = dispatchOf(tested->handle());
  EXPECT_EQ(first.get(), second.get());
  EXPECT_EQ(standin::DispatchExport::count(), 1U);
  EXPECT_EQ(objectOf(first.get()).dispatch(), tested);
}

TEST_F(ObjectsTest, OfOtherMakersWork) {
  const Object dictionary = windows::Objects().create(u"Scripting.Dictionary");
  EXPECT_EQ(dictionary.typeName(), u"Dictionary");
  dictionary.call(u"Add", u"key", 5);
  EXPECT_EQ(dictionary.get(u"Count").toInt32(), 1);
  EXPECT_EQ(dictionary.get(u"Item", u"key").toInt32(), 5);
  EXPECT_TRUE(dictionary.call(u"Exists", u"key").toBoolean());
  EXPECT_EQ(errorOf([&] { dictionary.call(u"Add", u"key", 6); }), 457);
  EXPECT_EQ(errorOf([&] { dictionary.get(u"NoSuchMember"); }), 438);
}

TEST_F(ObjectsTest, AreFoundOnlyWhereTheyAre) {
  windows::Objects objects;
  EXPECT_FALSE(objects.registered(u"Nobody.Knows"));
  EXPECT_TRUE(objects.registered(u"Scripting.Dictionary"));
  EXPECT_EQ(errorOf([&] { objects.create(u"Nobody.Knows"); }), 429);
  EXPECT_EQ(errorOf([&] { objects.running(u"Nobody.Knows"); }), 429);
  EXPECT_EQ(errorOf([&] { objects.running(u"Scripting.Dictionary"); }), 429);

  CLSID id;
  ASSERT_EQ(CLSIDFromProgID(L"Scripting.Dictionary", &id), S_OK);
  const auto tested = std::make_shared<TestObject>();
  DWORD cookie = 0;
  ASSERT_EQ(
      RegisterActiveObject(dispatchOf(tested->handle()).get(), id, ACTIVEOBJECT_STRONG, &cookie),
      S_OK);
  EXPECT_EQ(objects.running(u"Scripting.Dictionary"), tested->handle());
  RevokeActiveObject(cookie, nullptr);
}

TEST_F(ObjectsTest, OfAHungServerAreNotWaitedFor) {
  CLSID id;
  ASSERT_EQ(CLSIDFromProgID(L"Scripting.Dictionary", &id), S_OK);
  DWORD cookie = 0;
  HWND window = nullptr;
  server_->run([&] {
    RegisterActiveObject(dispatchOf(std::make_shared<TestObject>()->handle()).get(), id,
                         ACTIVEOBJECT_STRONG, &cookie);
    window = CreateWindowExW(0, L"STATIC", L"VelnorTestServer", WS_POPUP, 0, 0, 0, 0, nullptr,
                             nullptr, nullptr, nullptr);
  });
  windows::Objects objects({{u"scripting.dictionary", u"Static", 200}});
  EXPECT_TRUE(objects.running(u"Scripting.Dictionary"));
  EXPECT_TRUE(objects.answers(u"Scripting.Dictionary"));
  EXPECT_TRUE(objects.answers(u"Nobody.Knows"));
  const HANDLE wake = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  server_->start([wake] { WaitForSingleObject(wake, 10000); });
  const DWORD start = GetTickCount();
  constexpr auto Busy = static_cast<std::int32_t>(automation::ErrorNumber::ServerBusy);
  EXPECT_FALSE(objects.answers(u"Scripting.Dictionary"));
  EXPECT_EQ(errorOf([&] { objects.running(u"Scripting.Dictionary"); }), Busy);
  EXPECT_EQ(errorOf([&] { objects.create(u"Scripting.Dictionary"); }), Busy);
  EXPECT_LT(GetTickCount() - start, 5000U);
  SetEvent(wake);
  server_->run([&] {
    RevokeActiveObject(cookie, nullptr);
    DestroyWindow(window);
  });
  CloseHandle(wake);
}

}  // namespace
}  // namespace windows

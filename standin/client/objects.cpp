#include "standin/client/objects.h"

#include <string>

#include "standin/client/DualObject.h"
#include "standin/client/interfaces.h"
#include "windows/com/Bstr.h"

namespace standin {
namespace {

using automation::Value;
using windows::ComPtr;

class ApplicationObject : public DualObject<DualApplication> {
 public:
  using DualObject::DualObject;

  HRESULT STDMETHODCALLTYPE get_PhoneCommand(IDispatch** command) override {
    return object(u"PhoneCommand", command);
  }
  HRESULT STDMETHODCALLTYPE get_AuxiliaryService(IDispatch** service) override {
    return object(u"AuxiliaryService", service);
  }

 private:
  HRESULT object(std::u16string_view member, IDispatch** result) {
    if (!result) return E_POINTER;
    *result = nullptr;
    return binding().ask(member, [&](const Value& value) {
      *result = binding().host().exported(value.toObject()).detach();
    });
  }
};

class PhoneCommandObject : public DualObject<DualPhoneCommand> {
 public:
  using DualObject::DualObject;

  HRESULT STDMETHODCALLTYPE Dial(LONG firstLine, LONG chosenLine, BSTR number,
                                 VARIANT option) override {
    return binding().tell(u"Dial", firstLine, chosenLine, number, option);
  }
  HRESULT STDMETHODCALLTYPE HangUp(LONG line) override { return binding().tell(u"HangUp", line); }
  HRESULT STDMETHODCALLTYPE PickUp(LONG line) override { return binding().tell(u"PickUp", line); }
  HRESULT STDMETHODCALLTYPE Transfer(LONG line) override {
    return binding().tell(u"Transfer", line);
  }
  HRESULT STDMETHODCALLTYPE LineStateOf(LONG line, LONG* state) override {
    return number(u"LineStateOf", line, state);
  }
  HRESULT STDMETHODCALLTYPE LineState(LONG line, LONG* state) override {
    return number(u"LineState", line, state);
  }
  HRESULT STDMETHODCALLTYPE Stop(LONG code) override { return binding().tell(u"Stop", code); }
  HRESULT STDMETHODCALLTYPE Incognito(LONG line) override {
    return binding().tell(u"Incognito", line);
  }
  HRESULT STDMETHODCALLTYPE Lines(LONG kind, VARIANT* lines) override {
    if (!lines) return E_POINTER;
    return binding().ask(
        u"Lines", [&](const Value& value) { *lines = windows::variantOf(value).detach(); }, kind);
  }

 private:
  HRESULT number(std::u16string_view member, LONG line, LONG* result) {
    if (!result) return E_POINTER;
    return binding().ask(
        member, [&](const Value& value) { *result = value.toInt32(); }, line);
  }
};

class AuxiliaryServiceObject : public DualObject<DualAuxiliaryService> {
 public:
  using DualObject::DualObject;

  HRESULT STDMETHODCALLTYPE ShowNumber(BSTR number, BSTR lastName, BSTR firstName, BSTR company,
                                       BSTR reference, BSTR remark, LONG how) override {
    return binding().tell(u"ShowNumber", number, lastName, firstName, company, reference, remark,
                          how);
  }
  HRESULT STDMETHODCALLTYPE ConvertNumber(BSTR number, BSTR* converted) override {
    if (!converted) return E_POINTER;
    return binding().ask(
        u"ConvertNumber",
        [&](const Value& value) { *converted = windows::Bstr(value.toText()).detach(); }, number);
  }
  HRESULT STDMETHODCALLTYPE ShowActions(BSTR references, LONG a, LONG b) override {
    return binding().tell(u"ShowActions", references, a, b);
  }
  HRESULT STDMETHODCALLTYPE ShowCallInfo() override { return binding().tell(u"ShowCallInfo"); }
  HRESULT STDMETHODCALLTYPE IsNumber(BSTR text, VARIANT_BOOL* number) override {
    if (!number) return E_POINTER;
    const auto store = [&](const Value& value) {
      *number = value.toBoolean() ? VARIANT_TRUE : VARIANT_FALSE;
    };
    return binding().ask(u"IsNumber", store, text);
  }
};

class RemoteObject : public DualObject<DualRemote> {
 public:
  using DualObject::DualObject;

  HRESULT STDMETHODCALLTYPE DirectDial(BSTR number, VARIANT_BOOL ask) override {
    return binding().tell(u"DirectDial", number, ask);
  }
};

template <class Class>
ComPtr<IDispatch> makeObject(ObjectHost& host, const automation::Object& object) {
  return ComPtr<IDispatch>::attach(windows::make<Class>(host, object).detach());
}

struct Maker {
  std::u16string_view typeName;
  ComPtr<IDispatch> (*make)(ObjectHost&, const automation::Object&);
};
constexpr Maker Makers[] = {
    {u"Application", makeObject<ApplicationObject>},
    {u"PhoneCommand", makeObject<PhoneCommandObject>},
    {u"AuxiliaryService", makeObject<AuxiliaryServiceObject>},
    {u"Remote", makeObject<RemoteObject>},
};

}  // namespace

ComPtr<IDispatch> makeDual(ObjectHost& host, const automation::Object& object) {
  const std::u16string typeName = object.typeName();
  for (const Maker& maker : Makers) {
    if (maker.typeName == typeName) return maker.make(host, object);
  }
  throw automation::Error(automation::ErrorNumber::ObjectRequired);
}

}  // namespace standin

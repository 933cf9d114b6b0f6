#include "standin/script/Script.h"

#include <algorithm>

#include "platform/conversions.h"
#include "windows/com/ComBase.h"
#include "windows/com/errors.h"
#include "windows/com/text.h"
#include "windows/com/values.h"

namespace standin {
namespace {

constexpr const wchar_t* HostName = L"host";

windows::ComPtr<IActiveScript> newEngine(std::u16string_view name) {
  CLSID id{};
  windows::check(CLSIDFromProgID(windows::wide(std::u16string(name)), &id));
  windows::ComPtr<IActiveScript> engine;
  windows::check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IActiveScript),
                                  engine.receiveVoid()));
  return engine;
}

}  // namespace

/// What the engine asks its program.
class Script::Site : public windows::ComBase<IActiveScriptSite> {
 public:
  explicit Site(automation::Object host) : host_(std::move(host)) {}

  /// What went wrong last, in words.
  const std::u16string& problem() const { return problem_; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
    return answer(iid, {&IID_IUnknown, &__uuidof(IActiveScriptSite)}, result);
  }
  HRESULT STDMETHODCALLTYPE GetLCID(LCID* language) override {
    *language = LOCALE_USER_DEFAULT;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR, DWORD what, IUnknown** item,
                                        ITypeInfo** type) override {
    if (type) *type = nullptr;
    if ((what & SCRIPTINFO_IUNKNOWN) == 0) return TYPE_E_ELEMENTNOTFOUND;
    return windows::guarded([&] {
      *item = windows::dispatchOf(host_).detach();
      return S_OK;
    });
  }
  HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override {
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* error) override {
    return windows::guarded([&] {
      EXCEPINFO exception{};
      DWORD context = 0;
      ULONG line = 0;
      LONG column = 0;
      error->GetExceptionInfo(&exception);
      error->GetSourcePosition(&context, &line, &column);
      problem_ = u"line " + automation::int32Text(static_cast<std::int32_t>(line + 1)) + u": " +
                 windows::errorFrom(DISP_E_EXCEPTION, exception).description();
      return S_OK;
    });
  }
  HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }

 private:
  const automation::Object host_;
  std::u16string problem_;
};

Script::Script(std::u16string_view engine, automation::Object host)
    : site_(windows::make<Site>(std::move(host))), engine_(newEngine(engine)) {
  windows::check(engine_->SetScriptSite(site_.get()));
  const auto parser = engine_.as<IActiveScriptParse32>();
  if (!parser) windows::check(E_NOINTERFACE);
  windows::check(parser->InitNew());
  windows::check(engine_->AddNamedItem(HostName, SCRIPTITEM_ISVISIBLE));
  windows::check(engine_->SetScriptState(SCRIPTSTATE_STARTED));
}

Script::~Script() {
  engine_->Close();
}

void Script::run(const std::u16string& text) {
  const HRESULT result = engine_.as<IActiveScriptParse32>()->ParseScriptText(
      windows::wide(text), nullptr, nullptr, nullptr, 0, 0, SCRIPTTEXT_ISVISIBLE, nullptr, nullptr);
  if (FAILED(result)) throw automation::Error(result, site_->problem());
}

automation::Object Script::global() const {
  windows::ComPtr<IDispatch> global;
  windows::check(engine_->GetScriptDispatch(nullptr, global.receive()));
  return windows::objectOf(global.get());
}

}  // namespace standin

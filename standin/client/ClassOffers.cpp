#include "standin/client/ClassOffers.h"

#include "windows/com/ComBase.h"
#include "windows/com/errors.h"

namespace standin {
namespace {

class Factory : public windows::ComBase<IClassFactory> {
 public:
  explicit Factory(ClassOffers::Create create) : create_(std::move(create)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
    return answer(iid, {&IID_IUnknown, &IID_IClassFactory}, result);
  }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** result) override {
    if (!result) return E_POINTER;
    *result = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    return windows::guarded([&] { return create_()->QueryInterface(iid, result); });
  }
  // The client runs as long as its user wants, whoever holds its objects.
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  const ClassOffers::Create create_;
};

}  // namespace

void ClassOffers::offerRunning(const CLSID& id, IDispatch* object) {
  DWORD cookie = 0;
  windows::check(RegisterActiveObject(object, id, ACTIVEOBJECT_STRONG, &cookie));
  running_.push_back(cookie);
  keepServed(IID_IDispatch, object);
  windows::ComPtr<ITypeInfo> type;
  if (SUCCEEDED(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, type.receive())) && type)
    keepServed(IID_ITypeInfo, type.get());
}

/// With the last object that is served by an interface Wine ends the serving, and on a busy
/// computer waits for ever for a call before that has just been answered: one of each stays.
void ClassOffers::keepServed(REFIID iid, IUnknown* object) {
  windows::ComPtr<IStream> stream;
  windows::check(CreateStreamOnHGlobal(nullptr, TRUE, stream.receive()));
  windows::check(
      CoMarshalInterface(stream.get(), iid, object, MSHCTX_LOCAL, nullptr, MSHLFLAGS_TABLESTRONG));
  served_.push_back(std::move(stream));
}

void ClassOffers::offerClass(const CLSID& id, Create create) {
  DWORD cookie = 0;
  windows::check(CoRegisterClassObject(id, windows::make<Factory>(std::move(create)).get(),
                                       CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE, &cookie));
  classes_.push_back(cookie);
}

void ClassOffers::withdrawClasses() {
  for (const DWORD cookie : std::exchange(classes_, {})) CoRevokeClassObject(cookie);
}

ClassOffers::~ClassOffers() {
  withdrawClasses();
  for (const DWORD cookie : running_) RevokeActiveObject(cookie, nullptr);
  for (const auto& stream : served_) {
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    CoReleaseMarshalData(stream.get());
  }
}

}  // namespace standin

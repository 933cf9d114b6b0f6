#include "standin/client/ClassOffers.h"

#include "standin/client/names.h"
#include "windows/com/ComBase.h"

namespace standin {
namespace {

using windows::ComPtr;

class Factory : public windows::ComBase<IClassFactory> {
 public:
  using Create = ComPtr<IDispatch> (ClientServer::*)();
  Factory(ClientServer& server, Create create) : server_(server), create_(create) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override {
    return answer(iid, {&IID_IUnknown, &IID_IClassFactory}, result);
  }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** result) override {
    if (!result) return E_POINTER;
    *result = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    return windows::guarded([&] { return (server_.*create_)()->QueryInterface(iid, result); });
  }
  // The client runs as long as its user wants, whoever holds its objects.
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  ClientServer& server_;
  const Create create_;
};

DWORD offer(const CLSID& id, ClientServer& server, Factory::Create create) {
  DWORD cookie = 0;
  windows::check(CoRegisterClassObject(id, windows::make<Factory>(server, create).get(),
                                       CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE, &cookie));
  return cookie;
}

}  // namespace

ClassOffers::ClassOffers(ClientServer& server) {
  const auto application = server.application();
  windows::check(
      RegisterActiveObject(application.get(), ApplicationClassId, ACTIVEOBJECT_STRONG, &running_));
  applicationClass_ = offer(ApplicationClassId, server, &ClientServer::application);
  remoteClass_ = offer(RemoteClassId, server, &ClientServer::newRemote);
}

void ClassOffers::withdrawClasses() {
  for (DWORD* cookie : {&applicationClass_, &remoteClass_}) {
    if (*cookie) CoRevokeClassObject(std::exchange(*cookie, 0));
  }
}

ClassOffers::~ClassOffers() {
  withdrawClasses();
  if (running_) RevokeActiveObject(running_, nullptr);
}

}  // namespace standin

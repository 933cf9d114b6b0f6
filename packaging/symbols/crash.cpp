// Makes a DLL crash, and prints where: the address from the beginning of the DLL, as a report of
// the system would name it.
//   crash.exe DLL

#include <windows.h>

#include <cstdio>

namespace {

HMODULE module = nullptr;

LONG WINAPI report(EXCEPTION_POINTERS* exception) {
  const auto address = reinterpret_cast<UINT_PTR>(exception->ExceptionRecord->ExceptionAddress);
  std::printf("%08lx\n", static_cast<unsigned long>(address - reinterpret_cast<UINT_PTR>(module)));
  std::fflush(stdout);
  TerminateProcess(GetCurrentProcess(), 0);
  return EXCEPTION_EXECUTE_HANDLER;
}

}  // namespace

int main(int argc, char** argv) {
  using GetClassObject = HRESULT(STDAPICALLTYPE*)(const CLSID*, const IID*, void**);
  module = argc == 2 ? LoadLibraryA(argv[1]) : nullptr;
  const auto address = module ? GetProcAddress(module, "DllGetClassObject") : nullptr;
  if (!address) return 2;
  SetUnhandledExceptionFilter(report);
  const CLSID id = {};
  // Nothing can be written there.
  reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(address))(
      &id, &id, reinterpret_cast<void**>(0x10));
  return 1;
}

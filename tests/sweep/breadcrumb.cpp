#include <csignal>
#include <cstdio>
#include <cstring>

#include <unistd.h>

#include "tests/sweep/Sweep.h"
#include "tests/sweep/breadcrumb.h"

// There with a sanitizer only.
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace sweep {
namespace {

char crumb[512] = "nothing is being played";

void tell() {
  constexpr char Head[] = "\n*** the process died playing: ";
  [[maybe_unused]] auto ignored = write(STDERR_FILENO, Head, sizeof Head - 1);
  ignored = write(STDERR_FILENO, crumb, std::strlen(crumb));
  ignored = write(STDERR_FILENO, "\n", 1);
}

void onSignal(int number) {
  tell();
  std::signal(number, SIG_DFL);
  std::raise(number);
}

}  // namespace

void leaveBreadcrumb(const std::string& text) {
  std::snprintf(crumb, sizeof crumb, "%s", text.c_str());
}

void installBreadcrumb() {
  // The sanitizers report the other signals themselves, and then call back.
  if (__sanitizer_set_death_callback) {
    __sanitizer_set_death_callback(tell);
    std::signal(SIGABRT, onSignal);
    return;
  }
  for (const int number : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL}) std::signal(number, onSignal);
}

}  // namespace sweep

// What the add-in adds to the start of Outlook, measured by an add-in that does nothing. The
// figures are printed and not judged: they are the machine's as much as the add-in's.

#include <algorithm>

#include "standin/outlook/ComAddin.h"
#include "standin/proof/ProofDesk.h"
#include "windows/services/Library.h"

namespace proof {
namespace {

double milliseconds() {
  LARGE_INTEGER frequency;
  LARGE_INTEGER counter;
  QueryPerformanceFrequency(&frequency);
  QueryPerformanceCounter(&counter);
  return static_cast<double>(counter.QuadPart) * 1000 / static_cast<double>(frequency.QuadPart);
}

/// Knows when start-up was complete.
class TimedAddin : public standin::ComAddin {
 public:
  using ComAddin::ComAddin;
  void onStartupComplete() override {
    ComAddin::onStartupComplete();
    complete = milliseconds();
  }
  double complete = 0;
};

double median(std::vector<double> times) {
  std::ranges::sort(times);
  const std::size_t half = times.size() / 2;
  return times.size() % 2 ? times[half] : (times[half - 1] + times[half]) / 2;
}

class StartUpCost : public ProofDesk {
 protected:
  StartUpCost() { EXPECT_TRUE(shell_.load()); }

  /// From the creation of the add-in, which loads its DLL, to the end of start-up completion.
  double startWith(std::u16string_view progId) {
    simulator::OutlookHost host(session.mailbox(), {}, session.bars(), session.boundary(), {});
    const double begin = milliseconds();
    double end = 0;
    {
      TimedAddin addin(progId, nullptr);
      host.start(&addin);
      end = addin.complete;
      EXPECT_FALSE(addin.failed());
      EXPECT_TRUE(host.addinConnected());
      host.quit();
    }
    CoFreeUnusedLibrariesEx(0, 0);
    return end - begin;
  }

 private:
  /// Outlook has it loaded long before its add-ins.
  windows::Library shell_{"shell32.dll"};
};

TEST_F(StartUpCost, ComparedToAnAddinThatDoesNothing) {
  const RegisteredDll idle(IdleDll);
  for (const bool traced : {false, true}) {
    setText(u"Software\\K9T\\Logging", u"LogFile", traced ? u"1" : u"0");
    std::vector<double> own;
    std::vector<double> nothing;
    constexpr int Runs = 20;
    for (int i = 0; i < Runs; ++i) {
      nothing.push_back(startWith(IdleProgId));
      EXPECT_FALSE(idle.loaded());
      own.push_back(startWith(AddinProgId));
      EXPECT_FALSE(dll.loaded());
    }
    EXPECT_EQ(traced, !this->traced().empty());
    std::printf(
        "start-up with the trace %s, median of %d alternating runs: %.2f ms, doing nothing %.2f "
        "ms, ratio %.2f (%.2f ms more)\n",
        traced ? "on" : "off", Runs, median(own), median(nothing), median(own) / median(nothing),
        median(own) - median(nothing));
  }
}

}  // namespace
}  // namespace proof

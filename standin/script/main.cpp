// A program whose behaviour is a script's, the one that lies beside it under its own name:
// client.js in this folder is a whole telephony client.

#include <memory>
#include <optional>

#include "standin/client/LineFile.h"
#include "standin/client/names.h"
#include "standin/client/program.h"
#include "standin/com/DispatchExport.h"
#include "standin/script/Script.h"
#include "standin/script/ScriptHost.h"

namespace {

using standin::ScriptHost;

/// The engines by the ends of their files' names.
constexpr struct {
  std::u16string_view extension;
  std::u16string_view engine;
} Engines[] = {{u".js", u"JScript"}, {u".vbs", u"VBScript"}};

/// The client as it was started, with its script.
class Program {
 public:
  explicit Program(bool hidden) : host_(std::make_shared<ScriptHost>(hidden)) {
    standin::DispatchExport::offerOwnObjects();
    const std::u16string path = standin::ownPath();
    for (const auto& [extension, engine] : Engines) {
      const auto text = standin::readFile(path.substr(0, path.rfind(u'.')).append(extension));
      if (text.empty()) continue;
      script_.emplace(engine, host_->handle());
      script_->run(standin::fromUtf8(text));
      break;
    }
    if (!script_) throw automation::Error(automation::ErrorNumber::FileNotFound);
  }

  /// Until the client ends.
  void run(standin::RequestPipe& pipe) {
    while (host_->running()) {
      const HANDLE waiting = pipe.waiting();
      MsgWaitForMultipleObjects(1, &waiting, FALSE, INFINITE, QS_ALLINPUT);
      pipe.serve([this](std::u16string_view text) { return answer(text); });
      standin::takeMessages();
    }
  }

 private:
  /// The script answers all but what concerns the program itself.
  std::u16string answer(std::u16string_view text) {
    if (text == standin::VanishRequest) {
      host_->offers().withdrawClasses();
      TerminateProcess(GetCurrentProcess(), 1);
    }
    if (text == standin::ReloadRequest) host_->reload();
    try {
      if (text == u"status") return standin::Done + script_->global().call(u"status").toText();
      const bool done = script_->global().call(u"request", text).toBoolean();
      return std::u16string(1, done ? standin::Done : standin::Refused);
    } catch (const automation::Error&) {
      return std::u16string(1, standin::Refused);
    }
  }

  const std::shared_ptr<ScriptHost> host_;
  std::optional<standin::Script> script_;
};

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  return standin::runClient([](const standin::CommandLine& line, standin::RequestPipe& pipe) {
    Program(line.hidden()).run(pipe);
  });
}

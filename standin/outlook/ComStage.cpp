#include "standin/outlook/ComStage.h"

#include "simulator/player/Text.h"

namespace standin {

using platform::RegistryRoot;
using scenario::Mistake;

namespace {

constexpr std::u16string_view LanguageKey = u"Software\\K9T\\Localization\\LangID";
constexpr std::uint32_t AmericanEnglish = 1033;
constexpr int PointerX = 400;
constexpr int PointerY = 300;

}  // namespace

ComStage::ComStage(Session& session, ClientControl* client, Libraries& libraries)
    : session_(session), client_(client), libraries_(libraries), notes_(client, libraries) {
  if (libraries_.available()) setMapiHelper(scenario::HelperState::Present);
  registry_.setDword(RegistryRoot::CurrentUser, LanguageKey, u"LangID", AmericanEnglish);
  // Where the pointer of the simulated machine is: menus of the ribbon open there.
  SetCursorPos(PointerX, PointerY);
  watch_ = std::make_unique<ModalWatch>(
      ModalWatch::Answers{[this](const auto& menu) -> std::optional<int> {
                            tell();
                            return listener() ? listener()->popup(menu) : std::nullopt;
                          },
                          [this](std::u16string_view text) {
                            tell();
                            if (listener()) listener()->messageBox(text);
                          }});
}

ComStage::~ComStage() {
  setListener(nullptr);
  try {
    if (session_.running()) session_.quit();
  } catch (const std::exception&) {
    // Outlook is gone in any case.
  }
}

void ComStage::tell() {
  notes_.tell([this](const scenario::Note& note) {
    if (listener()) listener()->note(note);
  });
}

void ComStage::act(const std::function<void()>& action) {
  try {
    action();
  } catch (...) {
    pace_.reset();
    tell();
    throw;
  }
  if (client_) client_->settle();
  pace_.reset();
  tell();
}

simulator::OutlookHost* ComStage::runningHost() const {
  return session_.running() ? &session_.host() : nullptr;
}

simulator::PlayedClient& ComStage::client() {
  if (!client_) throw Mistake("the client's stand-in is not there; name it with --client");
  return *client_;
}

// ---- Outlook and its user.

void ComStage::startOutlook(std::u16string_view version) {
  if (session_.running()) throw Mistake("Outlook runs already");
  act([&] { session_.start(optionsFor(version)); });
  if (!session_.problem().empty())
    throw Mistake("the add-in was not loaded: " + scenario::toUtf8(session_.problem()));
}

void ComStage::clickButton(const scenario::ControlPlace& place) {
  session_.click(place.window, place.name, place.ribbon);
}

void ComStage::switchAddin(bool on) {
  host();
  if (on == session_.addinOn())
    throw Mistake(on ? "the add-in is on already" : "the add-in is off already");
  act([&] { session_.switchAddin(on); });
}

// ---- The machine.

void ComStage::setLanguage(std::int32_t langId) {
  registry_.setDword(RegistryRoot::CurrentUser, LanguageKey, u"LangID",
                     static_cast<std::uint32_t>(langId));
}

void ComStage::setRegistry(RegistryRoot root, std::u16string_view key, std::u16string_view name,
                           const std::optional<platform::RegistryValue>& value) {
  if (!registry_.set(root, key, name, value)) throw Mistake("there is no such value");
}

void ComStage::setLoggingLibrary(bool present) {
  notes_.setLoggingLibrary(present);
}
void ComStage::setMapiHelper(scenario::HelperState state) {
  libraries_.setMapiHelper(state);
}
void ComStage::setTime(int, int, int) {
  throw Mistake("the clock of a real machine is not set here; mark the line as native only");
}

void ComStage::wait(std::uint32_t milliseconds) {
  pace_.wait(milliseconds);
  tell();
}

}  // namespace standin

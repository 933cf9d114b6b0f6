#include "tests/sweep/AlteredServices.h"

#include <memory>
#include <span>

#include "platform/logging_library.h"
#include "platform/mapi_helper.h"
#include "platform/objects.h"
#include "platform/pictures.h"
#include "platform/registry.h"
#include "simulator/object.h"
#include "tests/sweep/FaultInjector.h"

namespace sweep {
namespace {

using automation::Object;
using platform::RegistryRoot;
using platform::RegistryType;
using platform::RegistryValue;

/// Tells what the service that has just answered is to answer instead.
struct Alterer {
  simulator::Boundary& boundary;
  FaultInjector* injector = nullptr;

  std::optional<FaultKind> take() const {
    return injector ? injector->takeAlteration() : std::nullopt;
  }
  Object object(Object answer) const {
    const auto kind = take();
    if (!kind) return answer;
    if (*kind == FaultKind::NullObject) return {};
    return stranger(boundary);
  }
};

class Objects : public platform::Objects {
 public:
  Objects(platform::Objects& inner, const Alterer& alterer) : inner_(inner), alterer_(alterer) {}
  Object running(std::u16string_view name) override {
    return alterer_.object(inner_.running(name));
  }
  bool registered(std::u16string_view name) override {
    const bool answer = inner_.registered(name);
    return alterer_.take() ? !answer : answer;
  }
  Object create(std::u16string_view name) override { return alterer_.object(inner_.create(name)); }
  bool answers(std::u16string_view name) override { return inner_.answers(name); }

 private:
  platform::Objects& inner_;
  const Alterer& alterer_;
};

class Pictures : public platform::Pictures {
 public:
  Pictures(platform::Pictures& inner, const Alterer& alterer) : inner_(inner), alterer_(alterer) {}
  Object icon(std::int32_t id) override { return alterer_.object(inner_.icon(id)); }
  platform::Face overlay(std::u16string_view name, std::u16string_view background) override {
    auto face = inner_.overlay(name, background);
    face.picture = alterer_.object(face.picture);
    return face;
  }
  void setClipboard(const platform::Face& face) override { inner_.setClipboard(face); }
  bool awaitClipboard() override { return inner_.awaitClipboard(); }

 private:
  platform::Pictures& inner_;
  const Alterer& alterer_;
};

/// Answers a string without its final NUL where there is a string, bytes that are no number where
/// there is a number, and a string where there is nothing.
class Registry : public platform::Registry {
 public:
  Registry(platform::Registry& inner, const Alterer& alterer) : inner_(inner), alterer_(alterer) {}
  std::optional<RegistryValue> read(RegistryRoot root, std::u16string_view key,
                                    std::u16string_view name) override {
    auto answer = inner_.read(root, key, name);
    if (!alterer_.take()) return answer;
    RegistryValue wrong;
    wrong.type = RegistryType::String;
    wrong.text = answer ? u"wrong" : std::u16string(u"wrong\0", 6);
    if (answer && answer->text.empty()) {
      wrong.type = RegistryType::Binary;
      wrong.text.clear();
      wrong.bytes.assign(9, std::byte{0xFF});
    }
    return wrong;
  }
  void write(RegistryRoot root, std::u16string_view key, std::u16string_view name,
             const RegistryValue& value) override {
    inner_.write(root, key, name, value);
  }
  bool deleteValue(RegistryRoot root, std::u16string_view key, std::u16string_view name) override {
    return inner_.deleteValue(root, key, name);
  }
  bool deleteKey(RegistryRoot root, std::u16string_view key) override {
    return inner_.deleteKey(root, key);
  }
  std::vector<std::u16string> valueNames(RegistryRoot root, std::u16string_view key) override {
    return inner_.valueNames(root, key);
  }
  std::vector<std::u16string> subkeyNames(RegistryRoot root, std::u16string_view key) override {
    return inner_.subkeyNames(root, key);
  }
  std::u16string expanded(const std::u16string& text) override { return inner_.expanded(text); }

 private:
  platform::Registry& inner_;
  const Alterer& alterer_;
};

/// Answers counts that the texts don't have and lists of different lengths.
class MapiHelper : public platform::MapiHelper {
 public:
  MapiHelper(platform::MapiHelper& inner, const Alterer& alterer)
      : inner_(inner), alterer_(alterer) {}
  std::int32_t init() override { return inner_.init(); }
  void deinit() override {
    inner_.deinit();
    alterer_.take();
  }
  Sender sender(const Object& item) override {
    auto answer = inner_.sender(item);
    return alterer_.take() ? Sender{u"", u"\xD800"} : std::move(answer);
  }
  CountedText name(const Object& item) override { return counted(inner_.name(item)); }
  CountedText displayTo(const Object& item) override { return counted(inner_.displayTo(item)); }
  CountedText receivedBy(const Object& item) override { return counted(inner_.receivedBy(item)); }
  std::array<TextList, 4> recipients(const Object& item) override {
    auto answer = inner_.recipients(item);
    if (alterer_.take()) answer[2].assign(3, std::u16string());
    return answer;
  }
  TelephoneNumbers telephoneNumbers(const Object& item) override {
    auto answer = inner_.telephoneNumbers(item);
    if (alterer_.take()) answer.names.insert(answer.names.end(), 2, u"nobody");
    return answer;
  }
  std::u16string currentUser() override {
    auto answer = inner_.currentUser();
    return alterer_.take() ? std::u16string() : answer;
  }

 private:
  CountedText counted(CountedText answer) const {
    if (alterer_.take()) answer.count = -answer.count - 1;
    return answer;
  }
  platform::MapiHelper& inner_;
  const Alterer& alterer_;
};

class LoggingLibrary : public platform::LoggingLibrary {
 public:
  LoggingLibrary(platform::LoggingLibrary& inner, const Alterer& alterer)
      : inner_(inner), alterer_(alterer) {}
  void load(std::u16string_view path) override { inner_.load(path); }
  std::int32_t createLogger(std::int32_t index, std::u16string_view product,
                            std::u16string_view module, std::int32_t p4, std::int32_t p5,
                            std::int32_t p6, std::int32_t p7) override {
    const auto status = inner_.createLogger(index, product, module, p4, p5, p6, p7);
    return alterer_.take() ? -1 : status;
  }
  std::int32_t write(std::int32_t index, std::int32_t level, std::u16string_view text) override {
    return inner_.write(index, level, text);
  }

 private:
  platform::LoggingLibrary& inner_;
  const Alterer& alterer_;
};

}  // namespace

struct AlteredServices::Impl {
  Impl(const platform::Platform& services, simulator::Boundary& boundary)
      : machine(services), alterer{boundary} {}

  platform::Platform machine;
  Alterer alterer;
  Objects objects{machine.objects, alterer};
  Pictures pictures{machine.pictures, alterer};
  Registry registry{machine.registry, alterer};
  MapiHelper mapiHelper{machine.mapiHelper, alterer};
  LoggingLibrary loggingLibrary{machine.loggingLibrary, alterer};
};

AlteredServices::AlteredServices(const platform::Platform& machine, simulator::Boundary& boundary)
    : impl_(std::make_unique<Impl>(machine, boundary)) {}

AlteredServices::~AlteredServices() = default;

void AlteredServices::setInjector(FaultInjector* injector) {
  impl_->alterer.injector = injector;
}

platform::Platform AlteredServices::platform() {
  auto services = impl_->machine;
  return {services.clock,    services.files,  services.language, impl_->loggingLibrary,
          impl_->mapiHelper, impl_->objects,  impl_->pictures,   services.processes,
          impl_->registry,   services.screen, services.timers};
}

}  // namespace sweep

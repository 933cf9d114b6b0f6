// Values of every type and size, and files of them.
#include "demo/import/RegFile.h"
#include "fuzz/Input.h"
#include "fuzz/OneItemHost.h"
#include "fuzz/check.h"
#include "fuzz/targets.h"
#include "infra/RegOp.h"
#include "infra/modRegistry.h"
#include "state/settings.h"

namespace fuzz {
namespace {

using platform::RegistryRoot;
using platform::RegistryType;

platform::RegistryValue valueOf(Input& input) {
  platform::RegistryValue value;
  value.type = static_cast<RegistryType>(input.byte() % 13);
  const bool text = value.type == RegistryType::String ||
                    value.type == RegistryType::ExpandString ||
                    value.type == RegistryType::MultiString;
  if (text) {
    value.text = input.restAsText();
  } else {
    for (const char c : input.rest()) value.bytes.push_back(static_cast<std::byte>(c));
  }
  return value;
}

}  // namespace

void registry(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  OneItemHost host;
  const auto value = valueOf(input);
  constexpr auto& option = cxol::options::UseMapi;
  host.machine.registry.setRaw(option.root, option.key, option.name, value);

  try {
    const auto text = cxol::GetRegString(option.root, option.key, option.name);
    check(text.find(u'\0') == std::u16string::npos, "a text ends before its first NUL");
  } catch (const automation::Error& error) {
    check(value.type == RegistryType::String && error.number() == 5, "only a string without NUL");
  }
  const auto number = cxol::GetRegLong(option.root, option.key, option.name);
  const auto read = cxol::RegOp(host.machine.registry, option.root, option.key).value(option.name);
  check(read.has_value(), "a value that is there is read");
  const bool on = cxol::ReadOption(option);
  if (value.type == RegistryType::Dword && value.bytes.size() == 4) {
    check(on == (number != 0), "both ways to read a number agree");
  }
  if (!on) check(read->toDouble() == 0, "only 0 switches an option off that is on");
}

void regfile(const std::uint8_t* data, std::size_t size) {
  simulator::Boundary boundary;
  simulator::SimRegistry registry(boundary);
  registry.setDword(RegistryRoot::LocalMachine, u"Before", u"", 1);
  try {
    demo::importRegFile(registry, Input(data, size).rest());
  } catch (const scenario::RegError& error) {
    check(error.line() >= 1, "an error names its line");
    check(registry.subkeyNames(RegistryRoot::CurrentUser, u"").empty() &&
              registry.subkeyNames(RegistryRoot::LocalMachine, u"").size() == 1,
          "a file with a mistake changes nothing");
  }
}

}  // namespace fuzz

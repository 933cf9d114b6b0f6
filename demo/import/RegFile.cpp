#include "demo/import/RegFile.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "simulator/data/Utf8.h"
#include "simulator/machine/ansi.h"
#include "simulator/player/RegSyntax.h"

namespace demo {
namespace {

using platform::RegistryRoot;
using platform::RegistryValue;
using scenario::RegError;

constexpr std::u16string_view Version5 = u"Windows Registry Editor Version 5.00";
constexpr std::u16string_view Version4 = u"REGEDIT4";

std::u16string decoded(std::string_view bytes) {
  constexpr std::string_view LittleEndianMark = "\xFF\xFE";
  if (bytes.starts_with(LittleEndianMark)) {
    if (bytes.size() % 2 != 0)
      throw RegError(1, "expected UTF-16 text, found half a character at its end");
    return simulator::fromUtf16LittleEndian(bytes.substr(2));
  }
  if (bytes.starts_with("REGEDIT4")) return simulator::fromAnsi(bytes);
  const auto text = simulator::fromUtf8(simulator::withoutByteOrderMark(bytes));
  return text ? *text : simulator::fromAnsi(bytes);
}

class Reader {
 public:
  explicit Reader(std::u16string_view text) : scan_(text) {}

  std::vector<RegStep> read() {
    readHeader();
    for (scan_.skipBlankLines(); !scan_.atEnd(); scan_.skipBlankLines()) {
      if (scan_.take(u'[')) {
        readKey();
      } else {
        readValue();
      }
      scan_.endOfLine();
    }
    return std::move(steps_);
  }

 private:
  void readHeader() {
    const std::u16string_view header = scan_.restOfLine();
    version4_ = header == Version4;
    if (!version4_ && header != Version5) {
      scan_.expected("\"Windows Registry Editor Version 5.00\" or \"REGEDIT4\"", header);
    }
  }

  void readKey() {
    const bool deletes = scan_.take(u'-');
    const std::u16string_view path = scan_.upToClosingBracket();
    const std::size_t end = std::min(path.find(u'\\'), path.size());
    const scenario::RegRoot* known = scenario::findRegRoot(path.substr(0, end));
    if (!known) {
      scan_.expected("HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE or HKEY_CLASSES_ROOT",
                     path.substr(0, end));
    }
    root_ = known->root;
    key_ = path.substr(std::min(end + 1, path.size()));
    place_ = deletes ? Place::DeletedKey : Place::Key;
    add(deletes ? RegStep::Kind::DeleteKey : RegStep::Kind::MakeKey, {}, {});
  }

  void readValue() {
    std::u16string name;
    if (!scan_.take(u'@')) {
      if (!scan_.startsText()) {
        scan_.expected("a key in brackets, a name in quotes or @", scan_.peekWord());
      }
      name = scan_.text();
    }
    if (place_ == Place::Start) scan_.fail("expected a key in brackets before the first value");
    if (place_ == Place::DeletedKey) scan_.fail("expected a new key: this one is deleted");
    scan_.skipBlanks();
    if (!scan_.take(u'=')) scan_.expected("\"=\" after the name", scan_.peekWord());
    scan_.skipBlanks();
    auto value = scenario::takeRegValue(
        scan_, version4_ ? simulator::fromAnsi : simulator::fromUtf16LittleEndian);
    const auto kind = value ? RegStep::Kind::SetValue : RegStep::Kind::DeleteValue;
    add(kind, std::move(name), std::move(value).value_or(RegistryValue{}));
  }

  void add(RegStep::Kind kind, std::u16string name, RegistryValue value) {
    if (root_) steps_.push_back({kind, *root_, key_, std::move(name), std::move(value)});
  }

  enum class Place { Start, Key, DeletedKey };

  scenario::RegScanner scan_;
  bool version4_ = false;
  Place place_ = Place::Start;
  std::optional<RegistryRoot> root_;
  std::u16string key_;
  std::vector<RegStep> steps_;
};

}  // namespace

std::vector<RegStep> readRegFile(std::string_view bytes) {
  const std::u16string text = decoded(bytes);
  return Reader(text).read();
}

void importRegFile(simulator::SimRegistry& registry, std::string_view bytes) {
  for (RegStep& step : readRegFile(bytes)) {
    switch (step.kind) {
      case RegStep::Kind::MakeKey: registry.makeKey(step.root, step.key); break;
      case RegStep::Kind::DeleteKey: registry.removeKey(step.root, step.key); break;
      case RegStep::Kind::SetValue:
        registry.setRaw(step.root, step.key, step.name, std::move(step.value));
        break;
      case RegStep::Kind::DeleteValue: registry.remove(step.root, step.key, step.name); break;
    }
  }
}

}  // namespace demo

#include "simulator/machine/RegFile.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "simulator/data/Utf8.h"
#include "simulator/machine/RegScanner.h"
#include "simulator/machine/ansi.h"
#include "simulator/machine/caseless.h"

namespace simulator {
namespace {

using platform::RegistryRoot;
using platform::RegistryType;
using platform::RegistryValue;

constexpr std::u16string_view Version5 = u"Windows Registry Editor Version 5.00";
constexpr std::u16string_view Version4 = u"REGEDIT4";

std::u16string fromUtf16(std::string_view bytes) {
  if (bytes.size() % 2 != 0) throw RegFileError(1, "expected UTF-16 text, found half a character");
  std::u16string text;
  text.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i < bytes.size(); i += 2) {
    const auto low = static_cast<unsigned char>(bytes[i]);
    const auto high = static_cast<unsigned char>(bytes[i + 1]);
    text += static_cast<char16_t>(high << 8 | low);
  }
  return text;
}

std::u16string decoded(std::string_view bytes) {
  constexpr std::string_view LittleEndianMark = "\xFF\xFE";
  if (bytes.starts_with(LittleEndianMark)) return fromUtf16(bytes.substr(2));
  if (bytes.starts_with("REGEDIT4")) return fromAnsi(bytes);
  const auto text = fromUtf8(withoutByteOrderMark(bytes));
  return text ? *text : fromAnsi(bytes);
}

struct RootName {
  std::u16string_view name;
  std::optional<RegistryRoot> root;  // nothing for one that the machine does without
};

constexpr RootName RootNames[] = {
    {u"HKEY_CLASSES_ROOT", RegistryRoot::ClassesRoot},
    {u"HKEY_CURRENT_USER", RegistryRoot::CurrentUser},
    {u"HKEY_LOCAL_MACHINE", RegistryRoot::LocalMachine},
    {u"HKCR", RegistryRoot::ClassesRoot},
    {u"HKCU", RegistryRoot::CurrentUser},
    {u"HKLM", RegistryRoot::LocalMachine},
    {u"HKEY_USERS", std::nullopt},
    {u"HKEY_CURRENT_CONFIG", std::nullopt},
};

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
    const auto known = std::ranges::find_if(
        RootNames, [&](const RootName& row) { return sameName(row.name, path.substr(0, end)); });
    if (known == std::end(RootNames)) {
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
    if (scan_.take(u'-')) {
      add(RegStep::Kind::DeleteValue, std::move(name), {});
    } else {
      add(RegStep::Kind::SetValue, std::move(name), readData());
    }
  }

  RegistryValue readData() {
    if (scan_.startsText()) return stringValue(scan_.text());
    if (scan_.take(u"dword:")) return dwordValue(scan_.hexNumber(8));
    if (scan_.take(u"hex:")) return typed(RegistryType::Binary, scan_.hexBytes());
    if (scan_.take(u"hex(")) {
      const auto type = static_cast<RegistryType>(scan_.hexNumber(8));
      if (!scan_.take(u"):")) scan_.expected("\"):\" after the type", scan_.peekWord());
      return typed(type, scan_.hexBytes());
    }
    scan_.expected("a text in quotes, dword:, hex:, hex(type): or -", scan_.peekWord());
  }

  /// The value that these bytes are; of a text, half a character at the end is dropped.
  RegistryValue typed(RegistryType type, const std::string& bytes) const {
    RegistryValue value;
    value.type = type;
    switch (type) {
      case RegistryType::String:
      case RegistryType::ExpandString:
      case RegistryType::MultiString:
        value.text = version4_ ? fromAnsi(bytes)
                               : fromUtf16(std::string_view(bytes).substr(0, bytes.size() / 2 * 2));
        break;
      default:
        for (const char byte : bytes) value.bytes.push_back(static_cast<std::byte>(byte));
    }
    return value;
  }

  void add(RegStep::Kind kind, std::u16string name, RegistryValue value) {
    if (root_) steps_.push_back({kind, *root_, key_, std::move(name), std::move(value)});
  }

  enum class Place { Start, Key, DeletedKey };

  RegScanner scan_;
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

void importRegFile(SimRegistry& registry, std::string_view bytes) {
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

}  // namespace simulator

#include "simulator/SimRegistry.h"

#include <cstddef>
#include <utility>

#include "simulator/caseless.h"

namespace simulator {
namespace {

using platform::RegistryRoot;
using platform::RegistryValue;

constexpr std::u16string_view Classes = u"Software\\Classes\\";

std::vector<std::u16string_view> parts(std::u16string_view path) {
  std::vector<std::u16string_view> result;
  while (!path.empty()) {
    const std::size_t end = path.find(u'\\');
    if (end != 0) result.push_back(path.substr(0, end));
    path = end == std::u16string_view::npos ? std::u16string_view() : path.substr(end + 1);
  }
  return result;
}

/// The path below the tree that holds the root.
std::u16string placed(RegistryRoot root, std::u16string_view path) {
  std::u16string result(root == RegistryRoot::ClassesRoot ? Classes : std::u16string_view());
  return result += path;
}

/// Does one operation of the service; an observer's error gives the plain result.
template <class Result, class Operation>
Result served(Boundary& boundary, std::u16string_view name, const Operation& operation) {
  try {
    boundary.service(u"Registry", name);
  } catch (const automation::Error&) {
    return Result{};
  }
  return operation();
}

}  // namespace

std::optional<RegistryValue> SimRegistry::read(RegistryRoot root, std::u16string_view key,
                                               std::u16string_view name) {
  return served<std::optional<RegistryValue>>(boundary_, u"read",
                                              [&] { return peek(root, key, name); });
}

void SimRegistry::write(RegistryRoot root, std::u16string_view key, std::u16string_view name,
                        const RegistryValue& value) {
  boundary_.service(u"Registry", u"write");
  setRaw(root, key, name, value);
}

bool SimRegistry::deleteValue(RegistryRoot root, std::u16string_view key,
                              std::u16string_view name) {
  return served<bool>(boundary_, u"deleteValue", [&] { return remove(root, key, name); });
}

bool SimRegistry::deleteKey(RegistryRoot root, std::u16string_view key) {
  return served<bool>(boundary_, u"deleteKey", [&] { return removeKey(root, key); });
}

std::vector<std::u16string> SimRegistry::valueNames(RegistryRoot root, std::u16string_view key) {
  using Names = std::vector<std::u16string>;
  return served<Names>(boundary_, u"valueNames", [&] {
    Names names;
    if (const Key* found = find(root, key)) {
      for (const auto& [fold, value] : found->values) names.push_back(value.name);
    }
    return names;
  });
}

std::vector<std::u16string> SimRegistry::subkeyNames(RegistryRoot root, std::u16string_view key) {
  using Names = std::vector<std::u16string>;
  return served<Names>(boundary_, u"subkeyNames", [&] {
    Names names;
    if (const Key* found = find(root, key)) {
      for (const auto& [fold, subkey] : found->keys) names.push_back(subkey.name);
    }
    return names;
  });
}

std::u16string SimRegistry::expanded(const std::u16string& text) {
  std::u16string result;
  for (std::u16string_view rest = text;;) {
    const auto begin = rest.find(u'%');
    const auto end = begin == rest.npos ? rest.npos : rest.find(u'%', begin + 1);
    if (end == rest.npos) return result.append(rest);
    const auto found = variables_.find(folded(rest.substr(begin + 1, end - begin - 1)));
    const bool known = found != variables_.end();
    result.append(rest.substr(0, begin));
    // A "%" that ends no name may begin one.
    result.append(known ? std::u16string_view(found->second) : rest.substr(begin, end - begin));
    rest.remove_prefix(known ? end + 1 : end);
  }
}

void SimRegistry::setVariable(std::u16string_view name, std::u16string_view value) {
  variables_.insert_or_assign(folded(name), std::u16string(value));
}

void SimRegistry::makeKey(RegistryRoot root, std::u16string_view key) {
  make(root, key);
}

void SimRegistry::setDword(RegistryRoot root, std::u16string_view key, std::u16string_view name,
                           std::uint32_t value) {
  setRaw(root, key, name, platform::dwordValue(value));
}

void SimRegistry::setString(RegistryRoot root, std::u16string_view key, std::u16string_view name,
                            std::u16string_view text) {
  setRaw(root, key, name, platform::stringValue(text));
}

void SimRegistry::setRaw(RegistryRoot root, std::u16string_view key, std::u16string_view name,
                         RegistryValue value) {
  // A value that is there keeps the spelling of its name.
  NamedValue& place = make(root, key)
                          .values.try_emplace(folded(name), NamedValue{std::u16string(name), {}})
                          .first->second;
  place.value = std::move(value);
}

std::optional<RegistryValue> SimRegistry::peek(RegistryRoot root, std::u16string_view key,
                                               std::u16string_view name) const {
  const Key* found = find(root, key);
  if (!found) return std::nullopt;
  const auto value = found->values.find(folded(name));
  if (value == found->values.end()) return std::nullopt;
  return value->second.value;
}

bool SimRegistry::hasKey(RegistryRoot root, std::u16string_view key) const {
  return find(root, key) != nullptr;
}

bool SimRegistry::remove(RegistryRoot root, std::u16string_view key, std::u16string_view name) {
  Key* found = find(root, key);
  return found && found->values.erase(folded(name)) > 0;
}

bool SimRegistry::removeKey(RegistryRoot root, std::u16string_view key) {
  const std::u16string path = placed(root, key);
  const auto names = parts(path);
  // The root itself can't be deleted.
  if (parts(key).empty()) return false;
  const std::u16string_view last = names.back();
  const std::size_t parent = static_cast<std::size_t>(last.data() - path.data());
  const RegistryRoot tree = root == RegistryRoot::ClassesRoot ? RegistryRoot::LocalMachine : root;
  Key* above = find(tree, std::u16string_view(path).substr(0, parent));
  return above && above->keys.erase(folded(last)) > 0;
}

const SimRegistry::Key* SimRegistry::find(RegistryRoot root, std::u16string_view path) const {
  const Key* key = root == RegistryRoot::CurrentUser ? &currentUser_ : &localMachine_;
  const std::u16string full = placed(root, path);
  for (const std::u16string_view part : parts(full)) {
    const auto found = key->keys.find(folded(part));
    if (found == key->keys.end()) return nullptr;
    key = &found->second;
  }
  return key;
}

SimRegistry::Key* SimRegistry::find(RegistryRoot root, std::u16string_view path) {
  return const_cast<Key*>(std::as_const(*this).find(root, path));
}

SimRegistry::Key& SimRegistry::make(RegistryRoot root, std::u16string_view path) {
  Key* key = root == RegistryRoot::CurrentUser ? &currentUser_ : &localMachine_;
  const std::u16string full = placed(root, path);
  for (const std::u16string_view part : parts(full)) {
    Key& next = key->keys[folded(part)];
    if (next.name.empty()) next.name = part;
    key = &next;
  }
  return *key;
}

}  // namespace simulator

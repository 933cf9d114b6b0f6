#include "standin/com/ExportType.h"

#include <map>

namespace standin {
namespace {

using Types = std::map<std::u16string, ExportType, std::less<>>;

Types& types() {
  static Types listed;
  return listed;
}

}  // namespace

void ExportTypes::add(std::u16string_view className, ExportType type) {
  types().insert_or_assign(std::u16string(className), std::move(type));
}

ExportType ExportTypes::of(std::u16string_view className) {
  const auto found = types().find(className);
  return found == types().end() ? ExportType() : found->second;
}

void ExportTypes::clear() {
  types().clear();
}

}  // namespace standin

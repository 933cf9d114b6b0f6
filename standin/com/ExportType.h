#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/automation.h"
#include "windows/com/ComPtr.h"

namespace standin {

using windows::ComPtr;

/// What an exported object tells COM of its class.
struct ExportType {
  /// The dispatch interface with its members' ids and places; null for an object that tells nothing
  /// and is served by names alone. Members that it lacks are served by name as well.
  ComPtr<ITypeInfo> info;
  /// The event interfaces of which the object is a source.
  std::vector<const automation::EventInterface*> events;
};

/// The classes whose exported objects tell something of themselves, by class name. One list a
/// module; fill it before the first object goes out.
class ExportTypes {
 public:
  static void add(std::u16string_view className, ExportType type);
  /// An empty type for a class that is not listed.
  static ExportType of(std::u16string_view className);
  static void clear();
};

}  // namespace standin

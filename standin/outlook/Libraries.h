#pragma once

#include <string>

#include "simulator/player/Stage.h"

namespace standin {

/// The libraries that the add-in finds on a machine by their names: puts their stand-ins where it
/// looks for them, and takes them away. A library of the maker's that was there before is never
/// touched: then these operations raise Mistake.
class Libraries {
 public:
  /// `source` is the folder that holds the stand-ins; empty for none. `mailbox` is the file that
  /// the MAPI helper tells of.
  Libraries(std::u16string source, const std::u16string& mailbox);
  ~Libraries();
  Libraries(const Libraries&) = delete;
  Libraries& operator=(const Libraries&) = delete;

  bool available() const { return !source_.empty(); }
  void setLogging(bool present);
  void setMapiHelper(scenario::HelperState state);

 private:
  /// One library and the place where it is looked for.
  struct Place {
    std::u16string target;
    bool ours = false;
  };
  void put(Place& place, std::u16string_view file);
  static void take(Place& place);

  std::u16string source_;
  Place logging_;
  Place mapiHelper_;
};

/// What the end of Outlook's process does to the stand-ins that are still loaded: their threads end
/// and they go.
void endLibraries();

/// The folder of this program, without a backslash at its end.
std::u16string programFolder();

/// The full Windows path of a path of the command line; empty for an empty one.
std::u16string fullPath(const std::string& path);

}  // namespace standin

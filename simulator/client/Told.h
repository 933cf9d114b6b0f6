#pragma once

#include <cstdint>
#include <string>

namespace simulator {

/// Something that the client was told to do. Questions are not told.
struct Told {
  enum class Kind {
    Dial,
    DirectDial,
    ShowNumber,
    ShowActions,
    ShowCallInfo,
    HangUp,
    PickUp,
    Stop,
    Transfer,
    Incognito,
  };
  Kind kind = Kind::Dial;
  /// The number, the name or the references that came with it.
  std::u16string text;
  std::int32_t firstLine = 0;   ///< of Dial
  std::int32_t chosenLine = 0;  ///< of Dial; the line of HangUp, PickUp, Transfer and Incognito
  std::int32_t code = 0;        ///< of Stop; the first argument of ShowActions
  std::int32_t code2 = 0;       ///< the second argument of ShowActions

  /// One readable line: `dial +4971112345 on line 2 (first line 1)`, `show number "Meier"`.
  /// Line ends and backslashes of a text in quotes are escaped.
  std::u16string line() const;
};

}  // namespace simulator

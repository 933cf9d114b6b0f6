#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "simulator/object.h"

namespace simulator {

/// What the messaging session answers and what was asked of it. Shared with its objects.
struct MapiSessionState {
  /// The sender's address of a message; nothing when there is no such message.
  std::function<std::optional<std::u16string>(std::u16string_view entryId,
                                              std::u16string_view storeId)>
      senderOf;
  /// Raised by a message's Sender; nothing for no error.
  std::optional<automation::Error> senderError;
  int logons = 0;
  int logoffs = 0;
};

/// The session object of hosts that work without the MAPI helper, for `SimObjects::offer`. Logon
/// must neither show a dialog nor open a session of its own: nobody is there to answer.
class MapiSession : public TableObject<MapiSession> {
 public:
  static constexpr std::u16string_view Name = u"Session";
  static constexpr std::u16string_view ClassName = u"MAPI.Session";
  static std::span<const MemberRow<MapiSession>> members();

  explicit MapiSession(std::shared_ptr<MapiSessionState> state) : state_(std::move(state)) {}

 private:
  Value logon(Arguments args);
  Value logoff(Arguments args);
  Value getMessage(Arguments args);

  std::shared_ptr<MapiSessionState> state_;
  bool loggedOn_ = false;
};

}  // namespace simulator

#pragma once

#include <string>
#include <string_view>

#include "platform/automation.h"

/// Typed view of the messaging session object that older hosts offer beside the MAPI helper.
namespace mapi {

inline constexpr std::u16string_view SessionClass = u"MAPI.Session";

class Message : public automation::View {
 public:
  using View::View;
  std::u16string senderAddress() const {
    return object().get(u"Sender").toObject().get(u"Address").toText();
  }
};

class Session : public automation::View {
 public:
  using View::View;
  /// Joins the session that is open already, without a dialog.
  void logon() const {
    object().call(u"Logon", automation::Missing{}, automation::Missing{}, false, false);
  }
  void logoff() const { object().call(u"Logoff"); }
  Message getMessage(std::u16string_view entryId, std::u16string_view storeId) const {
    return Message(object().call(u"GetMessage", entryId, storeId).toObject());
  }
};

}  // namespace mapi

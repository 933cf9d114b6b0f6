#pragma once

#include <string>
#include <string_view>

#include "infra/collection.h"
#include "platform/mapi_helper.h"
#include "platform/outlook.h"

namespace cxol {

using Texts = Collection<std::u16string>;

/// Makes the MAPI helper ready when the setting allows it and it is not ready yet. A helper that is
/// missing or fails leaves everything that needs it silently without results.
void MAPI_Init() noexcept;

/// Releases the helper when it is ready.
void MAPI_Deinit() noexcept;

/// The rest is to be called only while the helper is ready and raises what the helper raises.

platform::MapiHelper::Sender MAPI_GetSender(const outlook::Item& item);
/// Display name of the sender; empty when there is none.
std::u16string MAPI_GetName(const outlook::Item& item);
/// The addressees; empty when there are none.
std::u16string MAPI_GetDisplayTo(const outlook::Item& item);
/// Who received the item; empty when it was not received.
std::u16string MAPI_ReceivedBy(const outlook::Item& item);

/// Appends the numbers of the people on an item and of the caller that the telephony client noted
/// in it, but for the logged-on user's own. Numbers may be empty. Never raises: a failure ends it
/// with what is appended so far.
void GetSenderNumbers(const outlook::Item& item, Texts& labels, Texts& numbers) noexcept;

}  // namespace cxol

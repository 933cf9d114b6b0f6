#include "client/SetButtonImage.h"

#include "infra/modK9TLog.h"
#include "infra/runtime.h"
#include "platform/pictures.h"
#include "state/globals.h"

namespace cxol {
namespace {

/// False when the button has no such members: Office 2000's.
bool setDirectly(const platform::Face& face, const office::CommandBarControl& button) {
  try {
    button.setPicture(face.picture);
  } catch (const automation::Error& error) {
    constexpr auto NoSuchMember =
        static_cast<std::int32_t>(automation::ErrorNumber::MemberNotFound);
    if (error.number() != NoSuchMember) throw;
    return false;
  }
  button.setMask(face.mask);
  return true;
}

void pasteFromClipboard(const platform::Face& face, const office::CommandBarControl& button) {
  auto& pictures = machine().pictures;
  pictures.setClipboard(face);
  try {
    button.pasteFace();
  } catch (const automation::Error&) {
    // A program that looks at what is new on the clipboard may have been quicker than Office, which
    // does not wait. Our face is still there.
    if (!pictures.awaitClipboard()) throw;
    button.pasteFace();
  }
}

void setFace(std::u16string_view pictureName, const office::CommandBarControl& button) {
  const auto form = globals().g_frmMenus;
  if (!form) throw automation::Error(automation::ErrorNumber::ObjectNotSet);
  const auto face = machine().pictures.overlay(pictureName, u"blank");
  form->BtPic = face.picture;
  if (!setDirectly(face, button)) pasteFromClipboard(face, button);
}

}  // namespace

void SetButtonImage(std::u16string_view pictureName,
                    const office::CommandBarControl& button) noexcept {
  trapAndLog(u"SetButtonImage: ", [&] {
    ResumeNext resume;
    if (resume([&] { setFace(pictureName, button); })) return;
    LogWarning(concat(u"SetButtonImage failed: '", pictureName, u"', try again one more time."));
    setFace(pictureName, button);
  });
}

}  // namespace cxol

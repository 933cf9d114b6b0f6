#include "client/SetButtonImage.h"

#include "addin/globals.h"
#include "infra/modK9TLog.h"
#include "infra/runtime.h"
#include "platform/pictures.h"

namespace cxol {
namespace {

void paste(std::u16string_view pictureName, const office::CommandBarControl& button) {
  auto& pictures = machine().pictures;
  const auto form = globals().g_frmMenus;
  if (!form) throw automation::Error(automation::ErrorNumber::ObjectNotSet);
  pictures.clearClipboard();
  form->BtPic = pictures.overlay(pictureName, u"blank");
  pictures.setClipboard(form->BtPic);
  button.pasteFace();
}

}  // namespace

void SetButtonImage(std::u16string_view pictureName,
                    const office::CommandBarControl& button) noexcept {
  trapAndLog(u"SetButtonImage: ", [&] {
    ResumeNext resume;
    if (resume([&] { paste(pictureName, button); })) return;
    LogWarning(concat(u"SetButtonImage failed: '", pictureName, u"', try again one more time."));
    paste(pictureName, button);
  });
}

}  // namespace cxol

#include "simulator/machine/SimPictures.h"

#include <algorithm>
#include <memory>
#include <span>
#include <utility>

#include "platform/conversions.h"
#include "simulator/object.h"

namespace simulator {
namespace {

using automation::Error;
using automation::ErrorNumber;

constexpr std::u16string_view Blank = u"blank";
constexpr std::u16string_view Images[] = {u"dial",   u"drop",     u"velnor",
                                          u"action", u"transfer", Blank};

class SimPicture : public TableObject<SimPicture> {
 public:
  static constexpr std::u16string_view Name = u"Picture";
  static std::span<const MemberRow<SimPicture>> members() {
    static constexpr MemberRow<SimPicture> Rows[] = {
        {u"Name", [](SimPicture& self, Arguments) -> Value { return self.name_; }}};
    return Rows;
  }
  explicit SimPicture(std::u16string name) : name_(std::move(name)) {}

 private:
  std::u16string name_;
};

automation::Object picture(std::u16string name) {
  return std::make_shared<SimPicture>(std::move(name))->handle();
}

std::u16string maskOf(std::u16string_view name) {
  return u"mask of " + std::u16string(name);
}

/// Whether one of the failures that were asked for is due; it is used up then.
bool fails(int& failures) {
  if (failures == 0) return false;
  --failures;
  return true;
}

}  // namespace

automation::Object SimPictures::icon(std::int32_t id) {
  boundary_.service(u"Pictures", u"icon");
  if (id < 101 || id > 103) throw Error(326, u"Resource with this identifier not found");
  return boundary_.out(picture(u"icon " + automation::int32Text(id)));
}

platform::Face SimPictures::overlay(std::u16string_view name, std::u16string_view background) {
  boundary_.service(u"Pictures", u"overlay");
  if (fails(overlayFailures_)) throw Error(ErrorNumber::OutOfMemory);
  for (const std::u16string_view wanted : {name, background}) {
    if (std::ranges::find(Images, wanted) == std::end(Images)) {
      throw Error(35601, u"Element not found");
    }
  }
  std::u16string drawn(name);
  if (background != Blank) (drawn += u" over ") += background;
  return {boundary_.out(picture(drawn)), boundary_.out(picture(maskOf(drawn)))};
}

void SimPictures::setClipboard(const platform::Face& face) {
  boundary_.service(u"Pictures", u"setClipboard");
  if (fails(clipboardFailures_) || !open()) throw Error(521, u"Can't open Clipboard");
  face_ = faceName(Boundary::in(face.picture), Boundary::in(face.mask));
  copied_.clear();
  heldUntil_ = uptime_.now() + watch_;
}

void SimPictures::copy(std::u16string_view text) {
  copied_ = text;
  face_.clear();
}

bool SimPictures::awaitClipboard() {
  boundary_.service(u"Pictures", u"awaitClipboard");
  return open() != 0;
}

std::optional<int> SimPictures::open() {
  constexpr int Tries = 25;
  constexpr std::uint32_t Apart = 20;
  for (int failed = 0; failed < Tries; ++failed) {
    if (!held()) return failed;
    if (failed + 1 < Tries) uptime_.pass(Apart);
  }
  return std::nullopt;
}

std::u16string SimPictures::faceName(const automation::Object& picture,
                                     const automation::Object& mask) {
  if (!picture) throw Error(ErrorNumber::ObjectNotSet);
  if (!std::dynamic_pointer_cast<SimPicture>(picture.dispatch()) ||
      (mask && !std::dynamic_pointer_cast<SimPicture>(mask.dispatch()))) {
    throw Error(ErrorNumber::TypeMismatch);
  }
  const auto name = picture.get(u"Name").toText();
  if (!mask) return name + u" on a square";
  if (mask.get(u"Name").toText() != maskOf(name)) throw Error(ErrorNumber::InvalidProcedureCall);
  return name;
}

}  // namespace simulator

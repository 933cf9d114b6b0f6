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

automation::Object SimPictures::overlay(std::u16string_view name, std::u16string_view background) {
  boundary_.service(u"Pictures", u"overlay");
  if (fails(overlayFailures_)) throw Error(ErrorNumber::OutOfMemory);
  for (const std::u16string_view wanted : {name, background}) {
    if (std::ranges::find(Images, wanted) == std::end(Images)) {
      throw Error(35601, u"Element not found");
    }
  }
  std::u16string drawn(name);
  if (background != Blank) (drawn += u" over ") += background;
  return boundary_.out(picture(std::move(drawn)));
}

void SimPictures::clearClipboard() {
  boundary_.service(u"Pictures", u"clearClipboard");
  clipboard_ = {};
}

void SimPictures::setClipboard(const automation::Object& given) {
  boundary_.service(u"Pictures", u"setClipboard");
  if (fails(clipboardFailures_)) throw Error(521, u"Can't open Clipboard");
  if (!given) throw Error(ErrorNumber::ObjectNotSet);
  automation::Object inner = Boundary::in(given);
  if (!std::dynamic_pointer_cast<SimPicture>(inner.dispatch())) {
    throw Error(ErrorNumber::TypeMismatch);
  }
  clipboard_ = std::move(inner);
}

std::u16string SimPictures::clipboardName() const {
  return clipboard_ ? clipboard_.get(u"Name").toText() : std::u16string();
}

}  // namespace simulator

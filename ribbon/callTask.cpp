#include "ribbon/callTask.h"

#include "infra/errors.h"
#include "infra/modRes.h"
#include "infra/text.h"
#include "items/UIHelpers.h"
#include "state/globals.h"

namespace cxol {
namespace {

constexpr std::int32_t CallPrefix = 301;
constexpr std::int32_t NumberPrefix = 302;

void appendName(std::u16string& names, const outlook::Item& item) {
  if (item.objectClass() != outlook::ObjectClass::Contact) return;
  const auto name = GetContactName(outlook::ContactItem(item.object()));
  if (name.empty()) return;
  if (!names.empty()) names += u", ";
  names += name;
}

std::u16string namesOf(const outlook::Item& item) {
  std::u16string names;
  trapQuietly([&] {
    appendName(names, item);
    const auto links = item.links();
    const std::int32_t count = links.count();
    for (std::int32_t i = 1; i <= count; ++i) appendName(names, links.item(i).item());
  });
  return names;
}

}  // namespace

void CreateCallTask(std::u16string_view number) {
  auto names = namesOf(GetCurrentItem());
  if (names.empty()) names = GetItemCaption();
  const auto task = globals().g_olApp.createTask();
  task.setSubject(concat(GetResString(CallPrefix), names, GetResString(NumberPrefix), number));
  task.display();
}

}  // namespace cxol

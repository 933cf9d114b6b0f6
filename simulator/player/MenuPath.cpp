#include "simulator/player/MenuPath.h"

#include "simulator/player/Controls.h"
#include "simulator/player/Text.h"

namespace scenario {
namespace {

using platform::PopupEntry;

const PopupEntry& entryAt(const std::vector<PopupEntry>& menu, std::u16string_view path) {
  const std::size_t point = std::min(path.find(u'.'), path.size());
  std::size_t number = 0;
  for (const char16_t digit : path.substr(0, point)) {
    if (digit < u'0' || digit > u'9' || number > 1000)
      throw Mistake(inQuotes(path) +
                    " is no entry; expected a number such as 2 or 3.1, or a "
                    "\"Caption\"");
    number = number * 10 + (digit - std::size_t{u'0'});
  }
  std::size_t count = 0;
  for (const PopupEntry& entry : menu) {
    if (entry.separator || ++count != number) continue;
    return point == path.size() ? entry : entryAt(entry.entries, path.substr(point + 1));
  }
  throw Mistake("the menu has no entry " + toUtf8(path.substr(0, point)) + "; it has " +
                std::to_string(count));
}

void collect(std::vector<const PopupEntry*>& all, const std::vector<PopupEntry>& menu) {
  for (const PopupEntry& entry : menu) {
    if (entry.separator) continue;
    all.push_back(&entry);
    collect(all, entry.entries);
  }
}

}  // namespace

std::vector<const PopupEntry*> allEntries(const std::vector<PopupEntry>& menu) {
  std::vector<const PopupEntry*> all;
  collect(all, menu);
  return all;
}

const PopupEntry& findEntry(const std::vector<PopupEntry>& menu, std::u16string_view name,
                            bool byCaption) {
  if (!byCaption) return entryAt(menu, name);
  const std::vector<const PopupEntry*> all = allEntries(menu);
  std::vector<std::u16string> captions;
  for (const PopupEntry* entry : all) captions.push_back(shownCaption(entry->caption));
  return *all[findTitle(captions, name, "entry")];
}

}  // namespace scenario

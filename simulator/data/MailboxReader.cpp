#include "simulator/data/MailboxReader.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <vector>

#include "platform/conversions.h"
#include "simulator/data/ItemReader.h"
#include "simulator/data/Utf8.h"

namespace simulator {
namespace {

enum class Owner { Folder, Item, Appointment };

Owner ownerOf(const MailboxItem& item) {
  return item.kind == outlook::ObjectClass::Appointment ? Owner::Appointment : Owner::Item;
}

/// All entry ids of the mailbox, with the kind of what has them.
class Ids {
 public:
  /// Takes an id that the file gives; it has to be unique.
  void take(const std::u16string& id, Owner owner, const JsonNode& where) {
    if (!taken_.emplace(id, owner).second)
      where.fail("this id is taken already, expected one of its own");
  }
  /// Takes `base`, which gives way with a letter at its end where the file gives it to another.
  std::u16string generate(std::u16string base, Owner owner) {
    while (!taken_.emplace(base, owner).second) base += u'b';
    return base;
  }
  /// Empty when nothing has the id.
  std::optional<Owner> owner(const std::u16string& id) const {
    const auto found = taken_.find(id);
    return found == taken_.end() ? std::nullopt : std::optional(found->second);
  }

 private:
  std::map<std::u16string, Owner> taken_;
};

/// An item and the place that it was read from.
struct Placed {
  MailboxItem* item;
  JsonNode node;
};

const ItemKind& folderKind(const JsonNode& node) {
  const std::u16string wanted = node.text();
  std::vector<std::string_view> words;
  for (const ItemKind* kind : folderKinds()) {
    if (automation::widen(kind->word) == wanted) return *kind;
    words.push_back(kind->word);
  }
  node.fail("unknown kind of items, expected " + wordList(words));
}

MailboxFolder readFolder(const JsonNode& node, const std::u16string& user) {
  node.checkKeys({"name", "holds", "id", "store", "outbox", "items"});
  MailboxFolder folder;
  folder.name = node.at("name").filledText();
  const ItemKind& kind = folderKind(node.at("holds"));
  folder.itemType = *kind.itemType;
  if (const auto id = node.find("id")) folder.id = id->filledText();
  const auto store = node.find("store");
  folder.storeId = store ? store->filledText() : u"STORE";
  if (const auto outbox = node.find("outbox")) folder.outbox = outbox->boolean();
  const ItemSurroundings surroundings{user, kind, folder.outbox};
  if (const auto items = node.find("items"))
    for (const JsonNode& item : items->elements())
      folder.items.push_back(readItem(item, surroundings));
  return folder;
}

std::vector<Placed> placedItems(Mailbox& mailbox, const std::vector<JsonNode>& folders) {
  std::vector<Placed> placed;
  for (std::size_t f = 0; f < folders.size(); ++f) {
    if (mailbox.folders[f].items.empty()) continue;
    const auto nodes = folders[f].at("items").elements();
    for (std::size_t i = 0; i < nodes.size(); ++i)
      placed.push_back({&mailbox.folders[f].items[i], nodes[i]});
  }
  return placed;
}

std::u16string position(std::size_t index) {
  return automation::widen(std::to_string(index + 1));
}

/// Checks the ids that the file gives, then gives the others theirs.
Ids settleIds(Mailbox& mailbox, const std::vector<JsonNode>& folders,
              const std::vector<Placed>& items) {
  Ids ids;
  for (std::size_t f = 0; f < folders.size(); ++f)
    if (const auto id = folders[f].find("id")) ids.take(mailbox.folders[f].id, Owner::Folder, *id);
  for (const Placed& placed : items)
    if (const auto id = placed.node.find("id"))
      ids.take(placed.item->id, ownerOf(*placed.item), *id);
  for (std::size_t f = 0; f < folders.size(); ++f) {
    MailboxFolder& folder = mailbox.folders[f];
    if (folder.id.empty()) folder.id = ids.generate(u"FOLDER-" + position(f), Owner::Folder);
    for (std::size_t i = 0; i < folder.items.size(); ++i) {
      MailboxItem& item = folder.items[i];
      if (item.id.empty())
        item.id = ids.generate(u"ITEM-" + position(f) + u"-" + position(i), ownerOf(item));
    }
  }
  return ids;
}

void checkReferences(const std::vector<Placed>& items, const Ids& ids) {
  for (const Placed& placed : items) {
    if (const auto links = placed.node.find("links"))
      for (const JsonNode& link : links->elements())
        if (ids.owner(link.text()).value_or(Owner::Folder) == Owner::Folder)
          link.fail("expected the id of an item, but no item has this id");
    if (const auto appointment = placed.node.find("appointment"))
      if (ids.owner(appointment->text()) != Owner::Appointment)
        appointment->fail("expected the id of an appointment, but no appointment has this id");
  }
}

}  // namespace

Mailbox readMailbox(std::string_view text, std::string_view fileName) {
  const nlohmann::json parsed = parseJson(text, fileName);
  const JsonNode root(parsed, fileName);
  root.checkKeys({"user", "folders"});
  Mailbox mailbox;
  if (const auto user = root.find("user")) mailbox.user = user->text();
  const std::vector<JsonNode> folders = root.at("folders").elements();
  for (const JsonNode& folder : folders) {
    mailbox.folders.push_back(readFolder(folder, mailbox.user));
    const auto isOutbox = [](const MailboxFolder& each) { return each.outbox; };
    if (mailbox.folders.back().outbox && std::ranges::count_if(mailbox.folders, isOutbox) > 1)
      folder.at("outbox").fail("a mailbox has one outbox, expected no second");
  }
  const std::vector<Placed> items = placedItems(mailbox, folders);
  checkReferences(items, settleIds(mailbox, folders, items));
  return mailbox;
}

Mailbox readMailboxFile(const std::string& path) {
  const auto text = readWholeFile(path);
  if (!text) throw InputError(path + ": can't be read");
  return readMailbox(*text, path);
}

}  // namespace simulator

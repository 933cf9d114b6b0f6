#include <array>

#include "simulator/data/ItemKinds.h"
#include "simulator/player/Commands.h"
#include "simulator/player/Controls.h"
#include "simulator/player/Text.h"

namespace scenario {
namespace {

Stage& runningOutlook(Player& player) {
  if (!player.stage().outlookRuns())
    throw Mistake("Outlook does not run; start it with: outlook 11.0");
  return player.stage();
}

std::u16string folderNamed(Stage& stage, std::u16string_view name) {
  const std::vector<std::u16string> folders = stage.folders();
  return folders[findTitle(folders, name, "folder")];
}

std::vector<std::u16string> titles(const std::vector<ItemEntry>& items) {
  std::vector<std::u16string> list;
  list.reserve(items.size());
  for (const ItemEntry& item : items) list.push_back(item.title);
  return list;
}

void startOutlook(Player& player, Arguments& args) {
  struct Release {
    std::u16string_view year;
    std::u16string_view version;
  };
  constexpr std::array<Release, 4> releases{
      {{u"2000", u"9.0"}, {u"2002", u"10.0"}, {u"2003", u"11.0"}, {u"2007", u"12.0"}}};
  std::u16string version = args.text("a version such as 11.0");
  args.end();
  for (const Release& release : releases)
    if (version == release.year) version = release.version;
  if (version.empty() || version.find_first_not_of(u"0123456789.") != version.npos)
    throw Mistake(inQuotes(version) + " is no version; expected one such as 11.0 or 2003");
  if (player.stage().outlookRuns()) player.stage().quitOutlook();
  player.stage().startOutlook(version);
}

void quitOutlook(Player& player, Arguments& args) {
  args.end();
  runningOutlook(player).quitOutlook();
}

void openExplorer(Player& player, Arguments& args) {
  Stage& stage = runningOutlook(player);
  const std::u16string folder =
      args.atEnd() ? stage.folders().at(0) : folderNamed(stage, args.text("a folder"));
  args.end();
  stage.openExplorer(folder);
}

/// An item of the mailbox; "in FOLDER" narrows the search.
std::u16string findItem(Stage& stage, Arguments& args) {
  const std::u16string title = args.text("explorer, or the title of an item");
  std::vector<std::u16string> folders = stage.folders();
  if (args.skip(u"in")) folders = {folderNamed(stage, args.text("a folder"))};
  args.end();
  std::vector<ItemEntry> all;
  for (const std::u16string& folder : folders) {
    const std::vector<ItemEntry> items = stage.items(folder);
    all.insert(all.end(), items.begin(), items.end());
  }
  return all[findTitle(titles(all), title, "item")].id;
}

void open(Player& player, Arguments& args) {
  if (args.skip(u"explorer")) return openExplorer(player, args);
  Stage& stage = runningOutlook(player);
  stage.openItem(findItem(stage, args));
}

void newItem(Player& player, Arguments& args) {
  const auto kinds = simulator::folderKinds();
  std::vector<std::u16string> words;
  for (const simulator::ItemKind* kind : kinds) words.push_back(toUtf16(kind->word));
  const std::size_t index = args.choice({words.begin(), words.end()});
  args.end();
  runningOutlook(player).newItem(*kinds[index]->itemType);
}

/// A window given without "in": by number, by title, or by default the active one.
int directWindow(Player& player, Arguments& args) {
  const Snapshot snapshot = runningOutlook(player).snapshot();
  args.skip(u"in");
  const bool byTitle = args.atText();
  const std::u16string name = args.atEnd() ? std::u16string() : args.text("a window");
  args.end();
  return findWindow(snapshot, name, byTitle).number;
}

void activate(Player& player, Arguments& args) {
  player.stage().activate(directWindow(player, args));
}

void close(Player& player, Arguments& args) {
  player.stage().close(directWindow(player, args));
}

void switchFolder(Player& player, Arguments& args) {
  Stage& stage = runningOutlook(player);
  const std::u16string folder = folderNamed(stage, args.text("a folder"));
  const Snapshot snapshot = stage.snapshot();
  const WindowView& window = takeWindow(snapshot, args, true);
  args.end();
  stage.switchFolder(window.number, folder);
}

void switchView(Player& player, Arguments& args) {
  Stage& stage = runningOutlook(player);
  const Snapshot snapshot = stage.snapshot();
  const WindowView& window = takeWindow(snapshot, args, true);
  args.end();
  stage.switchView(window.number);
}

void select(Player& player, Arguments& args) {
  Stage& stage = runningOutlook(player);
  std::vector<Token> wanted;
  const bool none = args.skip(u"none");
  const bool all = !none && args.skip(u"all");
  const auto atWindow = [&] {
    const Token* token = args.peek();
    return !token || (!token->quoted && folded(token->text) == u"in");
  };
  if (!none && !all) wanted.push_back(args.take("titles of items, their numbers, all or none"));
  while (!atWindow()) wanted.push_back(args.take("a title"));
  const Snapshot snapshot = stage.snapshot();
  const WindowView& window = takeWindow(snapshot, args, true);
  args.end();

  const std::vector<ItemEntry> items = stage.items(window.folder);
  std::vector<std::u16string> ids;
  for (const ItemEntry& item : items)
    if (all) ids.push_back(item.id);
  for (const Token& token : wanted) {
    std::size_t index = 0;
    const bool isNumber = !token.quoted && token.text.size() <= 6 &&
                          token.text.find_first_not_of(u"0123456789") == token.text.npos;
    if (!isNumber) {
      index = findTitle(titles(items), token.text, "item here");
    } else {
      for (const char16_t digit : token.text) index = index * 10 + (digit - std::size_t{u'0'});
      if (index == 0 || index > items.size())
        throw Mistake("no item number " + toUtf8(token.text) + "; " + toUtf8(window.folder) +
                      " holds " + std::to_string(items.size()));
      --index;
    }
    ids.push_back(items[index].id);
  }
  stage.select(window.number, ids);
}

/// The visible control that the arguments name, with its window.
FoundControl takeControl(const Snapshot& snapshot, Arguments& args, std::u16string_view name,
                         bool byCaption) {
  const WindowView& window = takeWindow(snapshot, args);
  args.end();
  const FoundControl control = findControl(window, name, byCaption, false);
  if (!control)
    throw Mistake("window " + std::to_string(window.number) + " shows no " + inQuotes(name) +
                  "; it shows " + visibleControls(window));
  return control;
}

void click(Player& player, Arguments& args) {
  const Token name = args.take("a button: dial, hangup, client, actions, or a \"Caption\"");
  const Snapshot snapshot = runningOutlook(player).snapshot();
  const FoundControl control = takeControl(snapshot, args, name.text, name.quoted);
  if (control.view->isBox()) throw Mistake("the box is for typing: type \"0711 123\"");
  if (!control.view->enabled) throw Mistake("the button is disabled");
  player.stage().click(control.place);
}

void type(Player& player, Arguments& args) {
  const std::u16string text = args.text("the text for the dial box, in quotation marks");
  const Snapshot snapshot = runningOutlook(player).snapshot();
  player.stage().type(takeControl(snapshot, args, u"box", false).place, text);
}

void switchAddin(Player& player, Arguments& args) {
  const bool on = args.onOff();
  args.end();
  runningOutlook(player).switchAddin(on);
}

void fail(Player& player, Arguments& args) {
  const std::u16string name = args.text("a member such as CommandBar.FindControl");
  const std::size_t dot = name.find(u'.');
  if (dot == 0 || dot >= name.size() - 1)
    throw Mistake(inQuotes(name) + " is no member; expected one such as CommandBar.FindControl");
  FailureSpan span = FailureSpan::Lasting;
  if (!args.atEnd()) {
    constexpr std::array spans{FailureSpan::Once, FailureSpan::Over};
    span = spans[args.choice({u"once", u"off"})];
  }
  args.end();
  runningOutlook(player).failMember(name.substr(0, dot), name.substr(dot + 1), span);
}

}  // namespace

const WindowView& takeWindow(const Snapshot& snapshot, Arguments& args, bool explorer) {
  if (args.skip(u"in")) {
    const Token& token = args.take("a window: its number, or a part of its \"Title\"");
    const WindowView& window = findWindow(snapshot, token.text, token.quoted);
    if (explorer && window.isInspector())
      throw Mistake("window " + std::to_string(window.number) + " shows an item, no folder");
    return window;
  }
  const WindowView& active = findWindow(snapshot, u"", false);
  if (!explorer || !active.isInspector()) return active;
  for (const WindowView& window : snapshot.windows)
    if (!window.isInspector()) return window;
  throw Mistake("no explorer is open; open one with: open explorer");
}

std::span<const Command> outlookCommands() {
  static constexpr Command Rows[] = {
      {u"outlook", "outlook 11.0", "start Outlook: 9.0, 10.0, 11.0, 12.0, or 2000 to 2007",
       Actor::User, startOutlook},
      {u"quit", "quit", "quit Outlook", Actor::User, quitOutlook},
      {u"open", "open explorer [\"Folder\"] | open \"Item\" [in \"Folder\"]",
       "open a main window, or the window of an item", Actor::User, open},
      {u"new", "new mail|appointment|contact|task|journal|note|post",
       "open the window of a new, unsent item", Actor::User, newItem},
      {u"activate", "activate 2", "bring a window to the front, by number or \"Title\"",
       Actor::User, activate},
      {u"close", "close [2]", "close a window", Actor::User, close},
      {u"folder", "folder \"Contacts\" [in 1]", "switch to a folder", Actor::User, switchFolder},
      {u"select", "select \"Meier\" [\"Smith\" ...] | 3 | all | none [in 1]",
       "select items of the folder, by a part of the title or by number", Actor::User, select},
      {u"view", "view [in 1]", "switch the folder's view", Actor::User, switchView},
      {u"click", "click dial|hangup|client|actions|\"Caption\" [in 2]",
       "click a button of a window's toolbar or ribbon", Actor::User, click},
      {u"type", "type \"0711 123\" [in 1]", "type into the dial box and press Enter", Actor::User,
       type},
      {u"addin", "addin off|on", "switch the add-in off or on, as in the COM add-ins dialog",
       Actor::User, switchAddin},
      {u"fail", "fail CommandBar.FindControl [once|off]",
       "let a member of Outlook's objects raise an error: lasting, once, or no more", Actor::World,
       fail},
  };
  return Rows;
}

}  // namespace scenario

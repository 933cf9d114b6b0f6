#include "simulator/player/Commands.h"
#include "simulator/player/Controls.h"
#include "simulator/player/Expectations.h"
#include "simulator/player/MenuPath.h"
#include "simulator/player/Picture.h"
#include "simulator/player/Text.h"

namespace scenario {
namespace {

void choose(Player& player, Arguments& args) {
  const Token name = args.take("an entry: 2, 3.1 or a part of its \"Caption\"");
  args.end();
  const platform::PopupEntry& entry = findEntry(*player.menu(), name.text, name.quoted);
  if (!entry.entries.empty())
    throw Mistake("that entry opens a menu of its own; choose one of its entries, such as 3.1");
  if (entry.enabled) return player.answerMenu(entry.id);
  player.transcript().line("    (disabled: nothing happens, the menu stays open)");
}

void escape(Player& player, Arguments& args) {
  args.end();
  player.answerMenu(std::nullopt);
}

void show(Player& player, Arguments& args) {
  args.end();
  const Snapshot snapshot = player.stage().snapshot();
  player.transcript().whole(snapshot);
  for (const WindowView& window : snapshot.windows) {
    if (!window.active || window.isInspector()) continue;
    player.transcript().line("    items of " + toUtf8(window.folder) + ":");
    player.transcript().lines(drawItems(player.stage().items(window.folder)));
  }
  if (player.menu()) player.transcript().lines(drawMenu(*player.menu()));
}

void folders(Player& player, Arguments& args) {
  args.end();
  for (const std::u16string& folder : player.stage().folders())
    player.transcript().line("    " + padded(toUtf8(folder), 16) +
                             std::to_string(player.stage().items(folder).size()) + " items");
}

void trace(Player& player, Arguments& args) {
  player.transcript().traceShown = args.onOff();
  args.end();
}

void expect(Player& player, Arguments& args) {
  const Verdict verdict = judge(player, args);
  player.judge(verdict.held, verdict.expected, verdict.found);
}

void nativeOnly(Player& player, Arguments& args) {
  const std::u16string_view rest = args.line().rest;
  const std::u16string_view only = u"only:";
  if (!folded(rest).starts_with(only) || trimmed(rest.substr(only.size())).empty())
    throw Mistake("expected: native only: and the reason");
  player.nextIsNativeOnly(oneLine(trimmed(rest.substr(only.size()))));
}

void leave(Player& player, Arguments& args) {
  args.end();
  player.finish();
}

/// On one line where a terminal has room for it.
void describe(Player& player, const Command& command) {
  constexpr std::size_t column = 30;
  constexpr std::size_t width = 78;
  const std::string synopsis = "  " + std::string(command.synopsis);
  const std::string text = padded(synopsis, column) + "  " + std::string(command.help);
  if (synopsis.size() <= column && text.size() <= width) return player.transcript().line(text);
  player.transcript().line(synopsis);
  player.transcript().line("        " + std::string(command.help));
}

void listGroups(Player& player) {
  Transcript& transcript = player.transcript();
  for (const CommandGroup& group : commandGroups()) {
    transcript.line("  " + padded("help " + toUtf8(group.name), 14) + std::string(group.title));
    std::string words;
    for (const Command& command : group.commands) words += " " + toUtf8(command.word);
    transcript.line("       " + words);
  }
  transcript.line("  help click    one command; help expect says what can be checked");
  transcript.line("");
  transcript.line(
      "  Words may be shortened while they stay unambiguous, ? is help, # begins a comment.");
  transcript.line("  Texts stand in \"quotation marks\". The number of a menu's entry chooses it.");
}

void help(Player& player, Arguments& args) {
  if (args.atEnd()) return listGroups(player);
  const std::u16string topic = folded(args.text("a command"));
  args.end();
  for (const CommandGroup& group : commandGroups()) {
    if (group.name != topic) continue;
    for (const Command& command : group.commands) describe(player, command);
    return;
  }
  const Command& command = findCommand(topic);
  describe(player, command);
  if (command.word == u"expect") player.transcript().lines(expectationHelp());
}

}  // namespace

std::span<const Command> lookCommands() {
  static constexpr Command Rows[] = {
      {u"choose", "choose 2 | 3.1 | \"Caption part\"",
       "choose an entry of the open menu; 2 alone does", Actor::Menu, choose},
      {u"escape", "escape", "leave the open menu", Actor::Menu, escape},
      {u"show", "show", "draw everything, with the items of the active window", Actor::Looker,
       show},
      {u"folders", "folders", "list the folders of the mailbox", Actor::Looker, folders},
      {u"trace", "trace on|off", "whether the add-in's trace lines are shown", Actor::Looker,
       trace},
      {u"expect", "expect ...", "say what must hold; see: help expect", Actor::Looker, expect},
      {u"native", "native only: reason", "the next line is for a simulated Outlook only",
       Actor::Looker, nativeOnly},
      {u"help", "help [group|command]", "the groups, one group, one command; also: ?",
       Actor::Looker, help},
      {u"exit", "exit", "end the scenario", Actor::Looker, leave},
  };
  return Rows;
}

}  // namespace scenario

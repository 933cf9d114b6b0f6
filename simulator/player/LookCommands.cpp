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
  for (const WindowPicture& window : snapshot.windows) {
    if (!window.active || window.inspector) continue;
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

void describe(Player& player, const Command& command) {
  player.transcript().line("  " + std::string(command.synopsis));
  player.transcript().line("        " + std::string(command.help));
}

void help(Player& player, Arguments& args) {
  if (!args.atEnd()) {
    const Command& command = findCommand(folded(args.text("a command")));
    args.end();
    describe(player, command);
    if (command.word == u"expect") player.transcript().lines(expectationHelp());
    return;
  }
  for (const Command& command : commands()) describe(player, command);
  player.transcript().line(
      "Words may be shortened while they stay unambiguous; # begins a comment; texts stand in "
      "\"quotation marks\".");
}

constexpr Command table[] = {
    {u"choose", "choose 2 | 3.1 | \"Caption part\"", "choose an entry of the open menu",
     Actor::Menu, choose},
    {u"escape", "escape", "leave the open menu", Actor::Menu, escape},
    {u"show", "show", "draw everything, with the items of the active window", Actor::Looker, show},
    {u"folders", "folders", "list the folders of the mailbox", Actor::Looker, folders},
    {u"trace", "trace on|off", "whether the add-in's trace lines are shown", Actor::Looker, trace},
    {u"expect", "expect ...", "say what must hold; see: help expect", Actor::Looker, expect},
    {u"native", "native only: reason", "the next line is for a simulated Outlook only",
     Actor::Looker, nativeOnly},
    {u"help", "help [command]", "this list, or one command of it", Actor::Looker, help},
    {u"exit", "exit", "end the scenario", Actor::Looker, leave},
};

}  // namespace

std::span<const Command> lookCommands() {
  return table;
}

}  // namespace scenario

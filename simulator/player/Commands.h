#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "simulator/player/Line.h"
#include "simulator/player/Player.h"

namespace scenario {

/// Who acts, which decides what an open menu makes of the line.
enum class Actor {
  User,   ///< clicks elsewhere: the menu closes first
  Menu,   ///< needs an open menu
  World,  ///< goes on behind an open menu
  Looker  ///< only looks; what happened before stays the last happening
};

/// One command of the language.
struct Command {
  std::u16string_view word;
  std::string_view synopsis;
  std::string_view help;
  Actor actor;
  void (*run)(Player& player, Arguments& args);
};

/// Commands that the help text shows together.
struct CommandGroup {
  std::u16string_view name;  ///< a word that is no command
  std::string_view title;
  std::span<const Command> commands;
};
std::span<const CommandGroup> commandGroups();

/// All commands in the order of the help text.
const std::vector<Command>& commands();

/// The command that the word, or its unambiguous beginning, means; "?" means help. Raises Mistake.
const Command& findCommand(std::u16string_view word);

/// Takes "in WINDOW" when it comes next, otherwise means the active window; with `explorer` the
/// active or first explorer. Raises Mistake when there is none.
const WindowView& takeWindow(const Snapshot& snapshot, Arguments& args, bool explorer = false);

// The tables that make up the language.
std::span<const Command> outlookCommands();
std::span<const Command> telephoneCommands();
std::span<const Command> machineCommands();
std::span<const Command> lookCommands();

}  // namespace scenario

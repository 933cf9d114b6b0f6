#include "simulator/player/Commands.h"

namespace scenario {

std::span<const CommandGroup> commandGroups() {
  static const CommandGroup groups[] = {
      {u"user", "what a user does in Outlook", outlookCommands()},
      {u"phone", "what happens on the telephone", telephoneCommands()},
      {u"machine", "time and the machine", machineCommands()},
      {u"looking", "menus, looking, checking", lookCommands()},
  };
  return groups;
}

const std::vector<Command>& commands() {
  static const std::vector<Command> all = [] {
    std::vector<Command> list;
    for (const CommandGroup& group : commandGroups())
      list.insert(list.end(), group.commands.begin(), group.commands.end());
    return list;
  }();
  return all;
}

const Command& findCommand(std::u16string_view word) {
  if (word == u"?") return findCommand(u"help");
  std::vector<std::u16string_view> words;
  for (const Command& command : commands()) words.push_back(command.word);
  try {
    return commands()[chooseWord(word, words, "as a command")];
  } catch (const Mistake& mistake) {
    // The whole list would drown the message.
    const std::string text = mistake.what();
    throw Mistake(text.substr(0, text.find("; expected")) +
                  (text.find("; expected") == text.npos ? "" : "; help lists what there is"));
  }
}

}  // namespace scenario

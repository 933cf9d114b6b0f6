#include "simulator/player/Commands.h"

namespace scenario {

const std::vector<Command>& commands() {
  static const std::vector<Command> all = [] {
    std::vector<Command> list;
    for (const auto table :
         {outlookCommands(), telephoneCommands(), machineCommands(), lookCommands()})
      list.insert(list.end(), table.begin(), table.end());
    return list;
  }();
  return all;
}

const Command& findCommand(std::u16string_view word) {
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

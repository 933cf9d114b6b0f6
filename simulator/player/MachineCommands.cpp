#include <array>

#include "simulator/player/Commands.h"
#include "simulator/player/RegistryLine.h"
#include "simulator/player/Text.h"

namespace scenario {
namespace {

void language(Player& player, Arguments& args) {
  constexpr std::array<std::int32_t, 6> ids{1031, 1033, 1036, 1040, 1034, 1046};
  const std::int32_t id = args.atNumber()
                              ? args.number("a language id")
                              : ids[args.choice({u"de", u"en", u"fr", u"it", u"es", u"pt"})];
  args.end();
  player.stage().setLanguage(id);
  if (player.stage().outlookRuns())
    player.transcript().line("    (the add-in takes it over when it is loaded the next time)");
}

void registry(Player& player, Arguments& args) {
  const RegistryLine line = RegistryLine::read(args.line().rest);
  player.stage().setRegistry(line.root, line.key, line.name, line.value);
  if (player.typed()) player.transcript().line("    (" + std::string(line.readWhen()) + ")");
}

void tellOfNextStart(Player& player) {
  if (player.stage().outlookRuns())
    player.transcript().line("    (Outlook takes it over at its next start)");
}

void word(Player& player, Arguments& args) {
  const bool on = args.onOff();
  args.end();
  player.stage().setWordMail(on);
  tellOfNextStart(player);
}

void ribbon(Player& player, Arguments& args) {
  const bool early = args.choice({u"early", u"late"}) == 0;
  args.end();
  player.stage().setEarlyRibbon(early);
  tellOfNextStart(player);
}

void library(Player& player, Arguments& args) {
  const bool present = args.choice({u"present", u"missing"}) == 0;
  args.end();
  player.stage().setLoggingLibrary(present);
}

void mapi(Player& player, Arguments& args) {
  constexpr std::array states{HelperState::Present, HelperState::Missing, HelperState::Failing};
  const std::size_t index = args.choice({u"present", u"missing", u"failing"});
  args.end();
  player.stage().setMapiHelper(states[index]);
}

void bar(Player& player, Arguments& args) {
  BarPreset preset;
  preset.inspector = args.choice({u"explorer", u"inspector"}) == 1;
  preset.name = args.text("the name of the bar");
  while (!args.atEnd()) {
    if (args.skip(u"refuses")) {
      preset.refusesControls = true;
    } else if (args.skip(u"empty")) {
      preset.emptyActivations = args.number("a number of activations");
    } else {
      const std::u16string tag = args.text("tag");
      if (!tag.starts_with(u"Cx"))
        throw Mistake(inQuotes(tag) + " is no tag such as CxBtDial, nor empty 20, nor refuses");
      preset.tags.push_back(tag);
    }
  }
  player.stage().presetBar(preset);
}

void time(Player& player, Arguments& args) {
  const std::u16string text = args.text("a time such as 23:59:50");
  args.end();
  std::array<int, 3> parts{};
  std::size_t part = 0;
  bool good = !text.empty() && text.front() != u':' && text.back() != u':';
  for (const char16_t c : text) {
    if (c == u':')
      good = good && ++part < parts.size();
    else if (c < u'0' || c > u'9' || !good || (parts[part] = parts[part] * 10 + (c - u'0')) > 59)
      good = false;
    if (!good) break;
  }
  if (!good || part == 0 || parts[0] > 23)
    throw Mistake(inQuotes(text) + " is no time; expected one such as 23:59:50");
  player.stage().setTime(parts[0], parts[1], parts[2]);
}

void midnight(Player& player, Arguments& args) {
  args.end();
  player.stage().setTime(23, 59, 59);
}

/// "400 ms", "3", "3s", "1.5 min" in milliseconds.
std::uint32_t takeDuration(Arguments& args) {
  const char* expected = "a time such as 400 ms, 3 s or 1 min";
  std::u16string text = args.text(expected);
  if (!args.atEnd()) text += args.text("a unit");
  args.end();
  const std::size_t unitAt = std::min(text.find_first_not_of(u"0123456789."), text.size());
  const std::string number = toUtf8(text.substr(0, unitAt));
  const std::u16string unit = folded(text.substr(unitAt));
  double factor = unit == u"ms"                  ? 1
                  : unit == u"s" || unit.empty() ? 1000
                  : unit == u"min"               ? 60000
                                                 : 0;
  std::size_t read = 0;
  double value = 0;
  try {
    value = std::stod(number, &read);
  } catch (const std::exception&) {
    factor = 0;
  }
  constexpr double week = 7 * 86400e3;
  if (factor == 0 || read != number.size() || value * factor > week)
    throw Mistake(inQuotes(text) + " is not " + expected + " (a week at most)");
  return static_cast<std::uint32_t>(value * factor);
}

void wait(Player& player, Arguments& args) {
  player.stage().wait(takeDuration(args));
}

void copy(Player& player, Arguments& args) {
  const std::u16string text = args.text("what the user copies");
  args.end();
  player.stage().copy(text);
}

void clipboard(Player& player, Arguments& args) {
  const bool watched = args.choice({u"watched", u"free"}) == 0;
  if (!watched) args.end();
  player.stage().watchClipboard(watched ? takeDuration(args) : 0);
}

void doctor(Player& player, Arguments& args) {
  const bool putRight = !args.atEnd() && args.choice({u"cure"}) == 0;
  args.end();
  for (const std::u16string& line : player.stage().diagnose(putRight))
    player.transcript().line("    " + toUtf8(line));
}

}  // namespace

std::span<const Command> machineCommands() {
  static constexpr Command Rows[] = {
      {u"wait", "wait 21 | 400 ms | 3 s | 1 min", "let time pass, in seconds unless it says other",
       Actor::World, wait},
      {u"language", "language de|en|fr|it|es|pt | 3079", "the user's language", Actor::World,
       language},
      {u"registry", "registry HKCU\\Key\\Name = dword:1 | \"text\" | hex:01,00 | hex(7):... | -",
       "set a registry value as in a .reg file; - removes it", Actor::World, registry},
      {u"word", "word on|off", "whether Word edits the mails", Actor::World, word},
      {u"ribbon", "ribbon early|late",
       "whether a new window's ribbon is asked for before the window is in front, as at first, or "
       "then",
       Actor::World, ribbon},
      {u"bar", "bar explorer|inspector \"Name\" [CxBtDial ...] [empty 20] [refuses]",
       "a toolbar kept from earlier runs: with these buttons, empty for as many activations, "
       "refusing new buttons",
       Actor::World, bar},
      {u"library", "library present|missing", "the logging library", Actor::World, library},
      {u"mapi", "mapi present|missing|failing", "the MAPI helper", Actor::World, mapi},
      {u"copy", "copy \"a text\"", "the user copies a text", Actor::World, copy},
      {u"clipboard", "clipboard watched 30 ms | clipboard free",
       "whether another program opens the clipboard for a while when something new is on it",
       Actor::World, clipboard},
      {u"time", "time 23:59:50", "set the clock", Actor::World, time},
      {u"doctor", "doctor [cure]", "what velnor-doctor reports of this machine; cures what it can",
       Actor::Looker, doctor},
      {u"midnight", "midnight", "set the clock to one second before midnight", Actor::World,
       midnight},
  };
  return Rows;
}

}  // namespace scenario

#include "simulator/player/Commands.h"

namespace scenario {
namespace {

using simulator::ClientState;
using simulator::PlayedClient;

/// Does something with the client; raises Mistake with the reason where the client refuses it.
template <class Action>
void play(Player& player, const char* reason, const Action& action) {
  player.stage().playClient([&](PlayedClient& played) {
    if (!action(played)) throw Mistake(reason);
  });
}

constexpr char NotRunning[] = "the client does not run";

void client(Player& player, Arguments& args) {
  constexpr ClientState states[] = {ClientState::Installed, ClientState::Missing,
                                    ClientState::Running, ClientState::Hidden};
  constexpr PlayedClient::Gaps gaps[] = {
      {true, false, false}, {false, true, false}, {false, false, true}, {}};
  constexpr std::size_t never = 4;
  const std::size_t what =
      args.choice({u"installed", u"missing", u"running", u"hidden", u"never", u"error"});
  const std::size_t gap =
      what == never ? args.choice({u"window", u"object", u"service", u"nothing"}) : 0;
  const bool errors = what > never && args.onOff();
  args.end();
  play(player, "the client does not come up", [&](PlayedClient& played) {
    if (what < never) return played.setState(states[what]);
    if (what == never)
      played.setGaps(gaps[gap]);
    else
      played.setErrors(errors);
    return true;
  });
}

void ring(Player& player, Arguments& args) {
  const std::u16string number = args.atEnd() ? std::u16string() : args.text("the caller's number");
  args.end();
  play(player, "no line is free, or the client is not in service",
       [&](PlayedClient& played) { return played.ring(number); });
}

void connectCall(Player& player, Arguments& args) {
  args.end();
  play(player, "there is no call to connect",
       [](PlayedClient& played) { return played.connect(); });
}

void endCall(Player& player, Arguments& args) {
  if (!args.skip(u"call")) args.skip(u"remote");
  args.end();
  play(player, "there is no call to end", [](PlayedClient& played) { return played.endCall(); });
}

void hang(Player& player, Arguments& args) {
  const bool on = args.atEnd() || args.onOff();
  args.end();
  play(player, NotRunning, [&](PlayedClient& played) { return played.hang(on); });
}

void freeze(Player& player, Arguments& args) {
  const bool on = args.atEnd() || args.onOff();
  args.end();
  play(player, NotRunning, [&](PlayedClient& played) { return played.freeze(on); });
}

void vanish(Player& player, Arguments& args) {
  args.end();
  play(player, NotRunning, [](PlayedClient& played) {
    const bool runs = played.running();
    if (runs) played.vanish();
    return runs;
  });
}

}  // namespace

std::span<const Command> telephoneCommands() {
  static constexpr Command Rows[] = {
      {u"client",
       "client installed|missing|running|hidden | never window|object|service|nothing | error "
       "on|off",
       "the telephony client: its state, what it never comes to offer, whether calls fail",
       Actor::World, client},
      {u"ring", "ring \"0711 123\"", "a call comes in", Actor::World, ring},
      {u"connect", "connect",
       "the call is answered at the other end, or picked up at the telephone", Actor::World,
       connectCall},
      {u"end", "end call", "the other end hangs up", Actor::World, endCall},
      {u"stop", "stop call", "the same", Actor::World, endCall},
      {u"hangup", "hangup remote", "the same", Actor::World, endCall},
      {u"hang", "hang [on|off]", "the client stops answering, or answers again", Actor::World,
       hang},
      {u"freeze", "freeze [on|off]", "the client takes no messages, or takes them again",
       Actor::World, freeze},
      {u"vanish", "vanish", "the client's process is gone at once", Actor::World, vanish},
  };
  return Rows;
}

}  // namespace scenario

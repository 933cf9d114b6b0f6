#include "simulator/World.h"

#include <utility>

#include "simulator/machine/dates.h"

namespace simulator {
namespace {

/// What an Outlook on the simulated machine takes from it.
OutlookServices servicesOf(Machine& machine) {
  OutlookServices services;
  services.clipboard = [&machine] { return machine.pictures.clipboardFace(); };
  services.face = SimPictures::faceName;
  services.parseDate = [&machine](std::u16string_view text) {
    return parseShortDate(machine.language.langId(), text);
  };
  return services;
}

}  // namespace

World::World(AddinFactory makeAddin, Mailbox items)
    : mailbox(std::move(items)), makeAddin_(std::move(makeAddin)) {
  machine.mapiHelper.setCurrentUser(mailbox.user);
  machine.mapiHelper.setFacts([this](const automation::Object& item) {
    const MailboxItem* found = mailbox.find(item.get(u"EntryID").toText());
    return found ? &found->mapi : nullptr;
  });
}

World::~World() {
  try {
    stop();
  } catch (const std::exception&) {
    // Outlook is gone in any case.
  }
}

void World::loadAddin() {
  addin.reset();
  addin = makeAddin_(machine.platform());
}

void World::start(std::u16string_view version) {
  options.version = version;
  host = std::make_unique<OutlookHost>(mailbox, options, bars, boundary, servicesOf(machine));
  if (addinOn_) loadAddin();
  host->start(addin.get());
}

void World::stop() {
  if (host && host->running()) host->quit();
  settle();
}

void World::settle() {
  if (host && host->running()) return;
  addin.reset();
  host.reset();
}

void World::switchAddin(bool on) {
  addinOn_ = on;
  if (on) {
    loadAddin();
    host->connectAddin(*addin);
  } else {
    host->disconnectAddin();
    addin.reset();
  }
}

}  // namespace simulator

#include "standin/outlook/Notes.h"

#include <limits>
#include <utility>

namespace standin {

Notes::Notes(ClientControl* client, Libraries& libraries) : client_(client), libraries_(libraries) {
  if (libraries_.available()) {
    setLoggingLibrary(true);
    return;
  }
  watch(traceFile_.path());
  registry_.setText(platform::RegistryRoot::CurrentUser, u"Software\\K9T\\Logging", u"LogFile",
                    u"1");
}

/// With each thing that the client is told goes the size of this file.
void Notes::watch(const std::u16string& file) {
  if (client_) client_->watch(file);
}

void Notes::setLoggingLibrary(bool present) {
  libraries_.setLogging(present);
  watch(present ? libraryLog_.path() : traceFile_.path());
}

void Notes::tell(const std::function<void(const scenario::Note&)>& listener) {
  const auto told = client_ ? client_->told() : std::vector<ToldLine>();
  std::vector<TraceEntry> traced = traceFile_.read();
  // The add-in writes to one of them at a time.
  for (TraceEntry& entry : libraryLog_.read()) traced.push_back(std::move(entry));
  if (!listener) return;
  auto next = told.begin();
  const auto tellUpTo = [&](std::uint64_t traceSize) {
    for (; next != told.end() && next->watchedSize < traceSize; ++next)
      listener({scenario::Note::Kind::Told, next->text, {}, {}});
  };
  for (const TraceEntry& entry : traced) {
    tellUpTo(entry.fileSize);
    listener(entry.note);
  }
  tellUpTo(std::numeric_limits<std::uint64_t>::max());
}

}  // namespace standin

#include "simulator/client/Told.h"

#include <algorithm>
#include <string_view>

#include "platform/conversions.h"

namespace simulator {
namespace {

using automation::int32Text;

std::u16string quoted(std::u16string_view text) {
  std::u16string result = u"\"";
  for (const char16_t c : text) {
    if (c == u'\n') {
      result += u"\\n";
    } else if (c == u'\r') {
      result += u"\\r";
    } else if (c < 0x20) {
      result += u"\\x";
      result += u"0123456789ABCDEF"[c / 16];
      result += u"0123456789ABCDEF"[c % 16];
    } else {
      if (c == u'"' || c == u'\\') result += u'\\';
      result += c;
    }
  }
  return result + u"\"";
}

/// As it is when it reads as one word, else in quotes.
std::u16string word(std::u16string_view text) {
  const bool plain = !text.empty() && std::ranges::all_of(text, [](char16_t c) {
    return c > u' ' && c != u'"' && c != u'\\';
  });
  return plain ? std::u16string(text) : quoted(text);
}

std::u16string dialled(const Told& told) {
  std::u16string line = u"dial " + word(told.text);
  line += told.chosenLine ? u" on line " + int32Text(told.chosenLine) : u" on a free line";
  if (told.firstLine) line += u" (first line " + int32Text(told.firstLine) + u")";
  return line;
}

std::u16string onLine(std::u16string_view what, std::int32_t line) {
  std::u16string result(what);
  if (line) result += u" line " + int32Text(line);
  return result;
}

}  // namespace

std::u16string Told::line() const {
  switch (kind) {
    case Kind::Dial: return dialled(*this);
    case Kind::DirectDial: return u"dial remotely " + word(text);
    case Kind::ShowNumber: return u"show number " + quoted(text);
    case Kind::ShowActions:
      return u"open actions " + quoted(text) + u" (" + int32Text(code) + u", " + int32Text(code2) +
             u")";
    case Kind::ShowCallInfo: return u"show call info";
    case Kind::HangUp: return onLine(u"hang up", chosenLine);
    case Kind::PickUp: return onLine(u"pick up", chosenLine);
    case Kind::Stop: return u"stop (" + int32Text(code) + u")";
    case Kind::Transfer: return onLine(u"transfer", chosenLine);
    case Kind::Incognito: return onLine(u"incognito", chosenLine);
  }
  return {};
}

}  // namespace simulator

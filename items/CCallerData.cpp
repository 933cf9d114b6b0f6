#include "items/CCallerData.h"

#include "infra/text.h"

namespace cxol {
namespace {

/// The first of these that occurs in a record separates its pairs.
constexpr std::u16string_view Separators[] = {u"\r\n", u"\r", u"\n", u"\t", u";"};

}  // namespace

std::u16string CCallerData::FullName() const {
  return concat(firstName_, u" ", lastName_);
}

void CCallerData::Parse(std::u16string_view text) {
  for (const auto separator : Separators) {
    auto end = text.find(separator);
    if (end == std::u16string_view::npos) continue;
    while (end != std::u16string_view::npos) {
      parsePair(text.substr(0, end));
      text.remove_prefix(end + separator.size());
      end = text.find(separator);
    }
    return;
  }
}

void CCallerData::parsePair(std::u16string_view pair) {
  static constexpr struct {
    std::u16string_view key;
    std::u16string CCallerData::*field;
  } Fields[] = {
      {u"1", &CCallerData::lastName_},       {u"2", &CCallerData::firstName_},
      {u"20", &CCallerData::phoneBusiness_}, {u"21", &CCallerData::phonePrivate_},
      {u"22", &CCallerData::phoneMobile_},
  };
  const auto equals = pair.find(u'=');
  if (equals == std::u16string_view::npos || pair.find(u'=', equals + 1) != pair.npos) return;
  const auto key = trimBlanks(pair.substr(0, equals));
  for (const auto& field : Fields) {
    if (field.key == key) this->*field.field = pair.substr(equals + 1);
  }
}

}  // namespace cxol

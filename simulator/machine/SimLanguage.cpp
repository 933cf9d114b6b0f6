#include "simulator/machine/SimLanguage.h"

#include "simulator/machine/dates.h"

namespace simulator {

std::int32_t SimLanguage::userDefaultLangId() {
  boundary_.service(u"Language", u"userDefaultLangId");
  return langId_;
}

std::u16string SimLanguage::shortDate(const platform::LocalTime& date) {
  boundary_.service(u"Language", u"shortDate");
  return simulator::shortDate(langId_, date);
}

}  // namespace simulator

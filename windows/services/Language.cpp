#include "windows/services/Language.h"

#include "windows/com/errors.h"
#include "windows/com/text.h"

namespace windows {

std::int32_t Language::userDefaultLangId() {
  return GetUserDefaultLangID();
}

std::u16string Language::shortDate(const platform::LocalTime& date) {
  SYSTEMTIME day{};
  day.wYear = static_cast<WORD>(date.year);
  day.wMonth = static_cast<WORD>(date.month);
  day.wDay = static_cast<WORD>(date.day);
  wchar_t text[80] = {};
  if (GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &day, nullptr, text,
                     static_cast<int>(std::size(text))) == 0) {
    throw automation::Error(automation::ErrorNumber::InvalidProcedureCall);
  }
  return std::u16string(utf16(text));
}

}  // namespace windows

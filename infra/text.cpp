#include "infra/text.h"

namespace cxol {
namespace {

template <class Matches>
std::u16string replaceWhere(std::u16string_view text, std::u16string_view what,
                            std::u16string_view with, Matches matches) {
  std::u16string result;
  result.reserve(text.size());
  std::size_t at = 0;
  while (at < text.size()) {
    if (matches(text.substr(at, what.size()), what)) {
      result.append(with);
      at += what.size();
    } else {
      result.push_back(text[at++]);
    }
  }
  return result;
}

}  // namespace

std::u16string_view trimBlanks(std::u16string_view text) {
  const auto first = text.find_first_not_of(u' ');
  if (first == std::u16string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

std::u16string_view programOf(std::u16string_view commandLine) {
  constexpr std::u16string_view Extension = u".exe";
  const auto text = trimBlanks(commandLine);
  if (text.starts_with(u'"')) return text.substr(1, text.find(u'"', 1) - 1);
  for (std::size_t end = Extension.size(); end < text.size(); ++end) {
    if (text[end] == u' ' &&
        equalsIgnoringCase(text.substr(end - Extension.size(), Extension.size()), Extension))
      return text.substr(0, end);
  }
  return text;
}

std::u16string replaceAll(std::u16string_view text, std::u16string_view what,
                          std::u16string_view with) {
  return replaceWhere(text, what, with, [](auto a, auto b) { return a == b; });
}

std::u16string replaceAllIgnoringCase(std::u16string_view text, std::u16string_view what,
                                      std::u16string_view with) {
  return replaceWhere(text, what, with, equalsIgnoringCase);
}

}  // namespace cxol

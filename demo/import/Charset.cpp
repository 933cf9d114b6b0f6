#include "demo/import/Charset.h"

#include <iconv.h>

#include <array>

#include "simulator/data/Utf8.h"

namespace demo {
namespace {

class Converter {
 public:
  explicit Converter(const char* charset) : handle_(iconv_open("UTF-16LE", charset)) {}
  ~Converter() {
    if (isKnown()) iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  // iconv_open's own way to say "no such character set".
  bool isKnown() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

  /// Nothing when the bytes are invalid in the character set.
  std::optional<std::u16string> convert(std::string_view bytes) const {
    constexpr auto Failed = static_cast<std::size_t>(-1);
    // No character set makes more than two units of one byte.
    std::u16string text(bytes.size() * 2 + 1, u'\0');
    char* in = const_cast<char*>(bytes.data());  // iconv does not write there
    std::size_t inLeft = bytes.size();
    char* out = reinterpret_cast<char*>(text.data());
    std::size_t outLeft = text.size() * sizeof(char16_t);
    if (iconv(handle_, &in, &inLeft, &out, &outLeft) == Failed || inLeft > 0) return std::nullopt;
    text.resize(text.size() - outLeft / sizeof(char16_t));
    return text;
  }

 private:
  iconv_t handle_;
};

bool isPlainName(const std::string& charset) {
  constexpr std::string_view Allowed =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.:";
  return charset.find_first_not_of(Allowed) == std::string::npos;
}

std::u16string decodeUnnamed(std::string_view bytes) {
  if (auto text = simulator::fromUtf8(bytes)) return *std::move(text);
  // Windows-1252 leaves five bytes without a meaning, Latin-1 none.
  for (const char* charset : {"CP1252", "ISO-8859-1"})
    if (const Converter converter(charset); converter.isKnown())
      if (auto text = converter.convert(bytes)) return *std::move(text);
  return std::u16string(bytes.begin(), bytes.end());
}

}  // namespace

std::optional<std::u16string> decodeCharset(std::string_view bytes, const std::string& charset) {
  if (!charset.empty()) {
    // Slashes would carry options of the converter.
    if (!isPlainName(charset)) return std::nullopt;
    const Converter converter(charset.c_str());
    if (!converter.isKnown()) return std::nullopt;
    if (auto text = converter.convert(bytes)) return text;
  }
  return decodeUnnamed(bytes);
}

}  // namespace demo

#include "standin/client/LineFile.h"

#include <array>
#include <cstdio>

#include "windows/com/Owner.h"
#include "windows/com/text.h"

namespace standin {
namespace {

windows::KernelObject open(const std::u16string& path, DWORD access, DWORD disposition) {
  return windows::ownFile(CreateFileW(windows::wide(path), access,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

struct Escape {
  char16_t character;
  char16_t letter;
};
constexpr std::array<Escape, 4> Escapes{
    {{u'\\', u'\\'}, {u'\t', u't'}, {u'\r', u'r'}, {u'\n', u'n'}}};

std::u16string escaped(std::u16string_view text) {
  std::u16string result;
  for (const char16_t c : text) {
    char16_t letter = 0;
    for (const Escape& escape : Escapes) {
      if (escape.character == c) letter = escape.letter;
    }
    if (letter) result += u'\\';
    result += letter ? letter : c;
  }
  return result;
}

Fields fieldsOf(std::u16string_view line) {
  Fields fields(1);
  for (std::size_t at = 0; at < line.size(); ++at) {
    char16_t c = line[at];
    if (c == u'\t') {
      fields.emplace_back();
      continue;
    }
    if (c == u'\\' && at + 1 < line.size()) {
      ++at;
      for (const Escape& escape : Escapes) {
        if (escape.letter == line[at]) c = escape.character;
      }
    }
    fields.back() += c;
  }
  return fields;
}

}  // namespace

std::string toUtf8(std::u16string_view text) {
  if (text.empty()) return {};
  const auto* units = reinterpret_cast<const wchar_t*>(text.data());
  const int length = static_cast<int>(text.size());
  const int size = WideCharToMultiByte(CP_UTF8, 0, units, length, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, units, length, bytes.data(), size, nullptr, nullptr);
  return bytes;
}

std::u16string fromUtf8(std::string_view bytes) {
  if (bytes.empty()) return {};
  const int length = static_cast<int>(bytes.size());
  const int size = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), length, nullptr, 0);
  std::u16string text(static_cast<std::size_t>(size), u'\0');
  MultiByteToWideChar(CP_UTF8, 0, bytes.data(), length, reinterpret_cast<wchar_t*>(text.data()),
                      size);
  return text;
}

std::u16string timeOfDay() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  char text[16] = {};
  std::snprintf(text, sizeof text, "%02u:%02u:%02u.%03u", now.wHour % 24u, now.wMinute % 60u,
                now.wSecond % 61u, now.wMilliseconds % 1000u);
  return fromUtf8(text);
}

std::uint64_t fileSize(const std::u16string& path) {
  WIN32_FILE_ATTRIBUTE_DATA data;
  if (!GetFileAttributesExW(windows::wide(path), GetFileExInfoStandard, &data)) return 0;
  return (std::uint64_t{data.nFileSizeHigh} << 32) | data.nFileSizeLow;
}

std::string readFile(const std::u16string& path) {
  const auto file = open(path, GENERIC_READ, OPEN_EXISTING);
  if (!file) return {};
  std::string bytes;
  std::array<char, 16384> block;
  DWORD count = 0;
  while (ReadFile(file.get(), block.data(), static_cast<DWORD>(block.size()), &count, nullptr) &&
         count > 0) {
    bytes.append(block.data(), count);
  }
  return bytes;
}

bool appendLine(const std::u16string& path, std::span<const std::u16string> fields) {
  std::u16string line;
  for (const std::u16string& field : fields) {
    if (&field != fields.data()) line += u'\t';
    line += escaped(field);
  }
  const std::string bytes = toUtf8(line + u"\n");
  const auto file = open(path, FILE_APPEND_DATA, OPEN_ALWAYS);
  DWORD written = 0;
  return file &&
         WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
         written == bytes.size();
}

std::vector<Fields> LineReader::read() {
  const std::string bytes = readFile(path_);
  if (bytes.size() < offset_) offset_ = 0;
  std::vector<Fields> lines;
  std::size_t at = static_cast<std::size_t>(offset_);
  for (std::size_t end = 0; (end = bytes.find('\n', at)) != std::string::npos; at = end + 1) {
    lines.push_back(fieldsOf(fromUtf8(std::string_view(bytes).substr(at, end - at))));
  }
  offset_ = at;
  return lines;
}

}  // namespace standin

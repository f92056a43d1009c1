#include "base/url_encoding.h"

#include <algorithm>
#include <cstddef>

#include "base/utf8.h"

namespace orlune {
namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";
constexpr std::string_view kNeverInUrl = "\"<>\\^`{|}";

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool IsEscape(std::string_view text) {
  return text.size() >= 3 && text[0] == '%' && HexValue(text[1]) >= 0 && HexValue(text[2]) >= 0;
}

void AppendEscape(std::string& text, char c) {
  const auto byte = static_cast<unsigned char>(c);
  text += '%';
  text += kHexDigits[byte >> 4U];
  text += kHexDigits[byte & 15U];
}

std::string DecodeFormText(std::string_view text) {
  std::string blanks(text);
  std::replace(blanks.begin(), blanks.end(), '+', ' ');
  return RepairUtf8(DecodePercent(blanks));
}

bool IsPlain(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '-' || c == '_' ||
         c == '.';
}

void AppendFormText(std::string& encoded, std::string_view text) {
  for (const char c : text) {
    if (IsPlain(c)) {
      encoded += c;
    } else {
      AppendEscape(encoded, c);
    }
  }
}

}  // namespace

std::string DecodePercent(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (IsEscape(text.substr(i))) {
      decoded += static_cast<char>(HexValue(text[i + 1]) * 16 + HexValue(text[i + 2]));
      i += 2;
    } else {
      decoded += text[i];
    }
  }
  return decoded;
}

std::string EncodePercent(std::string_view text) {
  std::string encoded;
  AppendFormText(encoded, text);
  return encoded;
}

std::optional<std::string> DecodePath(std::string_view path) {
  for (std::size_t i = path.find('%'); i != std::string_view::npos; i = path.find('%', i + 1)) {
    if (!IsEscape(path.substr(i))) return std::nullopt;
  }
  return DecodePercent(path);
}

NamedTexts DecodeQuery(std::string_view query) {
  NamedTexts texts;
  while (!query.empty()) {
    const std::string_view pair = query.substr(0, query.find('&'));
    query.remove_prefix(std::min(pair.size() + 1, query.size()));
    if (pair.empty()) continue;
    const std::string_view name = pair.substr(0, pair.find('='));
    const std::string_view value = pair.substr(std::min(name.size() + 1, pair.size()));
    texts.Add(DecodeFormText(name), DecodeFormText(value));
  }
  return texts;
}

std::string EncodeQuery(const NamedTexts& texts) {
  std::string query;
  for (const auto& [name, value] : texts) {
    if (!query.empty()) query += '&';
    AppendFormText(query, name);
    query += '=';
    AppendFormText(query, value);
  }
  return query;
}

std::string EncodeUrl(std::string_view url) {
  std::string encoded;
  encoded.reserve(url.size());
  for (const char c : url) {
    if (c > ' ' && c < '\x7F' && kNeverInUrl.find(c) == std::string_view::npos) {
      encoded += c;
    } else {
      AppendEscape(encoded, c);
    }
  }
  return encoded;
}

}  // namespace orlune

#include "caldav/dav_address.h"

#include <algorithm>
#include <vector>

#include "base/ascii.h"
#include "base/url_encoding.h"
#include "base/utf8.h"

namespace orlune {
namespace {

bool IsControl(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == '\x7F';
}

std::optional<std::string> DecodeSegment(std::string_view segment) {
  auto decoded = DecodePath(segment);
  if (!decoded || decoded->empty() || *decoded == "." || *decoded == "..") return std::nullopt;
  if (decoded->find('/') != std::string::npos || std::ranges::any_of(*decoded, IsControl))
    return std::nullopt;
  if (RepairUtf8(*decoded) != *decoded) return std::nullopt;
  return decoded;
}

/// Nothing when one is malformed. At most one more than any address has.
std::optional<std::vector<std::string>> DecodeSegments(std::string_view path) {
  constexpr std::size_t kMost = 5;
  std::vector<std::string> segments;
  while (!path.empty() && segments.size() < kMost) {
    const std::string_view segment = path.substr(0, path.find('/'));
    auto decoded = DecodeSegment(segment);
    if (!decoded) return std::nullopt;
    segments.push_back(*std::move(decoded));
    path.remove_prefix(std::min(segment.size() + 1, path.size()));
  }
  return segments;
}

bool IsPlain(char c) {
  return (c >= '0' && c <= '9') || (ToLowerAscii(c) >= 'a' && ToLowerAscii(c) <= 'z') ||
         std::string_view("-_.~@").find(c) != std::string_view::npos;
}

}  // namespace

std::optional<DavAddress> ReadDavAddress(std::string_view rest) {
  auto segments = DecodeSegments(rest);
  if (!segments) return std::nullopt;
  const std::size_t count = segments->size();
  if (count == 0) return DavAddress{Place::kRoot};
  if (segments->front() == "principals") {
    if (count == 1) return DavAddress{Place::kPrincipals};
    if (count == 2) return DavAddress{Place::kPrincipal, std::move((*segments)[1])};
  }
  if (segments->front() != "calendars") return std::nullopt;
  if (count == 1) return DavAddress{Place::kHomes};
  if (count == 2) return DavAddress{Place::kHome, std::move((*segments)[1])};
  if (count == 3) return DavAddress{Place::kCalendar, std::move((*segments)[1]), std::move((*segments)[2])};
  if (count != 4 || rest.ends_with('/')) return std::nullopt;
  return DavAddress{Place::kObject, std::move((*segments)[1]), std::move((*segments)[2]),
                    std::move((*segments)[3])};
}

std::string DavLinks::To(const DavAddress& address) const {
  std::string link = root_;
  if (address.Place == Place::kRoot) return link;
  const bool isPrincipal = address.Place == Place::kPrincipals || address.Place == Place::kPrincipal;
  link += isPrincipal ? "principals/" : "calendars/";
  for (const std::string* segment : {&address.User, &address.Calendar}) {
    if (segment->empty()) break;
    AppendSegment(link, *segment);
    link += '/';
  }
  AppendSegment(link, address.Object);
  return link;
}

std::optional<DavAddress> DavLinks::Read(std::string_view link) const {
  if (const std::size_t scheme = link.find("://"); scheme != std::string_view::npos) {
    const std::size_t path = link.find('/', scheme + 3);
    if (path == std::string_view::npos) return std::nullopt;
    link.remove_prefix(path);
  }
  if (!link.starts_with(root_)) return std::nullopt;
  return ReadDavAddress(link.substr(root_.size()));
}

void AppendSegment(std::string& link, std::string_view segment) {
  constexpr std::string_view kHexDigits = "0123456789ABCDEF";
  for (const char c : segment) {
    if (IsPlain(c)) {
      link += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    link += '%';
    link += kHexDigits[byte >> 4U];
    link += kHexDigits[byte & 15U];
  }
}

}  // namespace orlune

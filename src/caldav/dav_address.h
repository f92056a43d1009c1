#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orlune {

/// What is at an address below a page's "/dav/".
enum class Place {
  kRoot,        ///< /dav/
  kPrincipals,  ///< /dav/principals/
  kPrincipal,   ///< /dav/principals/<user>/
  kHomes,       ///< /dav/calendars/
  kHome,        ///< /dav/calendars/<user>/
  kCalendar,    ///< /dav/calendars/<user>/<calendar>/
  kObject,      ///< /dav/calendars/<user>/<calendar>/<object>
};

/// An address below "/dav/", with its segments decoded.
struct DavAddress {
  orlune::Place Place = Place::kRoot;
  std::string User{};
  std::string Calendar{};
  std::string Object{};
};

/// Reads what follows "/dav/", still encoded; collections need no "/" at the end. Nothing for a malformed
/// escape, a segment that is empty, "." or "..", contains "/" or a control character, or is no UTF-8, and for
/// any other path.
std::optional<DavAddress> ReadDavAddress(std::string_view rest);

/// The addresses in answers, encoded, of one hosting page.
class DavLinks {
 public:
  /// `pagePath` is that of the hosting page.
  explicit DavLinks(std::string_view pagePath) : root_(std::string(pagePath) + "/dav/") {}

  std::string To(const DavAddress& address) const;
  /// What an address in a request means: a URL of any host, or an absolute path. Nothing for one outside
  /// "/dav/".
  std::optional<DavAddress> Read(std::string_view link) const;

 private:
  std::string root_;
};

/// Appends one segment of a path.
void AppendSegment(std::string& link, std::string_view segment);

}  // namespace orlune

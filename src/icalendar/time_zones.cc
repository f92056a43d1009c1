#include "icalendar/time_zones.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <mutex>

#include <libical/ical.h>
#include <libical/icaltz-util.h>

#include "exchange/calendar_text.h"
#include "icalendar/line_writer.h"

namespace orlune {
namespace {

constexpr std::size_t kZoneBudget = 20'000'000;
constexpr std::string_view kUtc = "UTC";

bool IsUtcName(std::string_view name) {
  return name == kUtc || name == "Etc/UTC" || name == "GMT" || name == "Etc/GMT" || name == "Zulu" ||
         name == "Z";
}

/// Whether the name can be nothing but one of the database's files.
bool IsZoneName(std::string_view name) {
  return !name.empty() && name.size() < 64 && name.front() >= 'A' && name.front() <= 'Z' &&
         name.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_+-/") ==
             std::string_view::npos;
}

bool IsZoneFile(const std::string& name) {
  const char* folder = icaltzutil_get_zone_directory();
  if (folder == nullptr) return false;
  std::ifstream file(std::filesystem::path(folder) / name, std::ios::binary);
  std::string magic(4, '\0');
  return file.read(magic.data(), 4) && magic == "TZif";
}

using IcalComponent = std::unique_ptr<icalcomponent, decltype(&icalcomponent_free)>;

std::string TextOf(icalcomponent* component) {
  const std::unique_ptr<char, decltype(&icalmemory_free_buffer)> text(
      icalcomponent_as_ical_string_r(component), icalmemory_free_buffer);
  return text ? text.get() : "";
}

void AppendDefinition(std::string& text, const Component& component, const std::string& name) {
  AppendLine(text, "BEGIN:", component.Name);
  for (const ContentLine& line : component.Lines) {
    if (line.Name == "TZID") {
      AppendLine(text, "TZID:", name);
    } else if (line.Name != "X-LIC-LOCATION") {
      AppendLine(text, line.Text);
    }
  }
  for (const Component& child : component.Children) AppendDefinition(text, child, name);
  AppendLine(text, "END:", component.Name);
}

std::string DefinitionOf(const std::string& text, const std::string& name) {
  std::string definition;
  for (const Component& component : ReadComponents(text)) AppendDefinition(definition, component, name);
  return definition;
}

/// Not to be called by several threads at once.
std::shared_ptr<const NamedZone> FetchZone(const std::string& name) {
  icalerror_set_errors_are_fatal(0);
  const IcalComponent fetched(icaltzutil_fetch_timezone(name.c_str()), icalcomponent_free);
  if (!fetched) return nullptr;
  const std::string whole = Unfolded(TextOf(fetched.get()));
  const std::vector<Component> components = ReadComponents(whole);
  if (components.size() != 1) return nullptr;
  WorkBudget budget(kZoneBudget);
  icaltimezone_truncate_vtimezone(fetched.get(), icaltime_from_string("20000101T000000Z"),
                                  icaltime_null_time(), 0);
  return std::make_shared<NamedZone>(NamedZone{name, Zone(components.front(), budget),
                                               DefinitionOf(whole, name),
                                               DefinitionOf(Unfolded(TextOf(fetched.get())), name)});
}

std::shared_ptr<const NamedZone> LoadZone(const std::string& name) {
  if (IsUtcName(name)) return std::make_shared<NamedZone>(NamedZone{std::string(kUtc), Zone(), "", ""});
  if (!IsZoneName(name) || !IsZoneFile(name)) return nullptr;
  try {
    return FetchZone(name);
  } catch (const InvalidCalendarText&) {
    return nullptr;
  }
}

/// The zones that were asked for; names that are none are not kept, so that texts cannot fill it.
class ZoneCatalog {
 public:
  std::shared_ptr<const NamedZone> Find(std::string_view name) {
    const std::lock_guard lock(mutex_);
    if (const auto found = zones_.find(name); found != zones_.end()) return found->second;
    auto zone = LoadZone(std::string(name));
    if (zone) zones_.emplace(name, zone);
    return zone;
  }

 private:
  std::mutex mutex_;
  std::map<std::string, std::shared_ptr<const NamedZone>, std::less<>> zones_;
};

/// What follows "zoneinfo/" in the path of a zone's file.
std::string NameInPath(const std::string& path) {
  constexpr std::string_view kFolder = "zoneinfo/";
  const std::size_t begin = path.find(kFolder);
  return begin == std::string::npos ? "" : path.substr(begin + kFolder.size());
}

}  // namespace

std::shared_ptr<const NamedZone> FindNamedZone(std::string_view name) {
  static ZoneCatalog catalog;
  return catalog.Find(name);
}

std::string MachineZoneName() {
  std::string name;
  if (const char* variable = std::getenv("TZ"); variable != nullptr) {  // NOLINT(concurrency-mt-unsafe)
    name = variable;
    if (name.starts_with(':')) name.erase(0, 1);
    if (name.starts_with('/')) name = NameInPath(name);
    if (FindNamedZone(name)) return name;
  }
  std::error_code error;
  const auto target = std::filesystem::canonical("/etc/localtime", error);
  if (!error) name = NameInPath(target.string());
  if (FindNamedZone(name)) return name;
  std::ifstream("/etc/timezone") >> name;
  return FindNamedZone(name) ? name : std::string(kUtc);
}

}  // namespace orlune

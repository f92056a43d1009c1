#include "app/site_version_names.h"

#include <string>
#include <string_view>
#include <variant>

#include "base/text.h"

namespace orlune {

void NameSiteVersion(std::vector<PageConfiguration>& pages, StaticFiles& files) {
  constexpr std::string_view kPlace = "{version}";
  std::string version;
  for (PageConfiguration& page : pages) {
    for (PropertyValue& property : page.Properties) {
      auto* text = std::get_if<std::string>(&property.Value);
      if (!property.Property->LinksFiles || text->find(kPlace) == std::string::npos) continue;
      if (version.empty()) version = files.ReadVersion();
      *text = ReplaceAll(*text, kPlace, version);
    }
  }
}

}  // namespace orlune

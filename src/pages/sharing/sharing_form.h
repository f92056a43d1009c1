#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "exchange/access_keys.h"
#include "exchange/participant.h"
#include "html/html.h"
#include "pages/sharing/sharing_links.h"

namespace orlune {

struct PageContext;

/// A key that was made just now, whose secret is shown this once.
struct NewKey {
  std::string Name;
  std::string Secret;
  bool IsLink = false;
};

/// How many events of a file were new, were changed, and were known already.
struct ImportSums {
  std::size_t New = 0;
  std::size_t Changed = 0;
  std::size_t Unchanged = 0;
};

/// What was typed into the forms that are shown again.
struct TypedNames {
  std::string Device;
  std::string Link;
  std::string FirstDay;
  std::string LastDay;
};

/// The data of the sharing page.
struct SharingContent {
  Participant User;
  SiteAddress Address;
  bool IsSafe = true;   ///< see `IsSafeForPasswords`
  bool HasKeys = true;  ///< false for an account that everybody uses
  std::vector<AccessKey> AppPasswords{};
  std::vector<AccessKey> SecretLinks{};
  std::optional<NewKey> Made{};
  std::optional<ImportSums> Imported{};
  TypedNames Typed{};
};
Html WriteSharingForm(const PageContext& context, const SharingContent& content);

/// The beginning of the page, up to its content, and its end; `width` is in per cent.
Html SharingFrameOpen(const PageContext& context, Markup width);
Html SharingFrameClose(const PageContext& context);

/// Opens and closes a part of the page below its heading.
Html SectionOpen(const Html& heading);
Html SectionClose();

}  // namespace orlune

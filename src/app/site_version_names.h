#pragma once

#include <vector>

#include "app/configuration.h"
#include "http/static_files.h"

namespace orlune {

/// Puts the version of the site folder in place of "{version}" in the properties of pages that link its
/// files. Reads the folder only when one of them has it.
void NameSiteVersion(std::vector<PageConfiguration>& pages, StaticFiles& files);

}  // namespace orlune

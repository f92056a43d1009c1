#pragma once

#include <string>

#include "app/configuration.h"
#include "http/website.h"
#include "platform/surroundings.h"

namespace orlune {

/// The page that `configuration` describes: every request gets its own component, configured and run.
/// `database` is the address to be displayed. The surroundings outlive the page.
HostedPage MakePage(PageConfiguration configuration, std::string database, const Surroundings& surroundings);

}  // namespace orlune

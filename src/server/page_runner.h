#pragma once

#include "component/surroundings.h"
#include "server/configuration.h"
#include "server/website.h"

namespace orlune {

/// The page that `configuration` describes: every request gets its own component, configured and run. The
/// surroundings outlive the page.
HostedPage MakePage(PageConfiguration configuration, const Surroundings& surroundings);

}  // namespace orlune

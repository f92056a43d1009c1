#pragma once

#include "base/regional_settings.h"
#include "request/hosting_page.h"
#include "request/visitor.h"

namespace orlune {

/// What the HTML of every page depends on. Does not own what it refers to; nothing in it changes while a page
/// is written.
struct PageContext {
  const HostingPage& Hosting;
  const orlune::Visitor& Visitor;
  const RegionalSettings& Regional;
  Date Today;
  bool IsCompatibleBrowser;  ///< for browsers that call themselves "compatible"
};

}  // namespace orlune

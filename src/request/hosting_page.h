#pragma once

#include <memory>
#include <string>

#include "base/civil_time.h"
#include "base/version.h"
#include "platform/localiser.h"

namespace orlune {

/// The settings of the hosting page; constant while a request is handled.
struct HostingPage {
  std::string LoginName = "?";  ///< "?": the users log in by themselves; "": nobody does
  std::string CalName;          ///< the calendar to show at first
  bool CalNameFixed = false;    ///< a login does not change the calendar
  bool UseCookie = false;
  Date ExpireCookie;
  std::string ScriptName = "OLOrlune.asp";
  std::string ImageDir = "images/";
  std::string CssDir = "css/";
  std::string DBPath = R"(c:\inetpub\wwwroot\OLOrlune\OLOrlune.mdb)";
  std::string ExitToURL;
  bool ShowTitle = false;
  bool NoMessaging = false;
  bool NoLoginChange = false;
  bool NoOLORLink = false;
  bool DemoMode = false;
  bool Strict = false;          ///< for the open net: closes what colleagues may be trusted with
  bool Sharing = false;         ///< exchanges events with other calendars
  bool AllowNoPassword = true;  ///< an account without a password accepts any
  std::string HeadData;
  std::string HTMLHeader;
  std::string HTMLFooter;
  std::string ProductTitle = "Orlune v" + std::string(kVersion);
  std::string ProductHomeUrl{kProductHomeUrl};
  std::shared_ptr<const orlune::Localiser> Localiser;  ///< null for English
};

}  // namespace orlune

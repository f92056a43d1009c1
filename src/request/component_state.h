#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/civil_time.h"
#include "platform/page_host.h"
#include "platform/surroundings.h"

namespace orlune {

/// One event type and the file of its icon under `ImageDir`.
struct EventTypeEntry {
  std::string TypeName;
  std::string FileName;
};

/// Everything that one request knows; created fresh for each and read by every page.
struct ComponentState {
  explicit ComponentState(const Surroundings& surroundings);

  std::string PageName = "c";
  bool UseCookie = false;
  Date ExpireCookie;
  std::string ProductTitle;
  std::string ProductHomeUrl;
  Date Today;
  Date CurrentDate;
  std::string DisplayMode;
  std::string LoginName = "?";  ///< "?": the users log in by themselves; "": nobody does
  std::string CalName;
  bool CalNameFixed = false;
  std::string ScriptName = "OLOrlune.asp";
  std::string SheetFile = "default.css";
  std::string ImageDir = "images/";
  std::string CssDir = "css/";
  std::string DBPath = R"(c:\inetpub\wwwroot\OLOrlune\OLOrlune.mdb)";
  std::string ExitToURL;
  std::string AlertText;
  bool IsCompatibleBrowser = false;
  bool ShowTitle = false;
  bool NoMessaging = false;
  bool NoLoginChange = false;
  bool NoOLORLink = false;
  bool DemoMode = false;
  std::string HeadData;
  std::string HTMLHeader;
  std::string HTMLFooter;
  int FirstDayOfWeek = 2;        ///< 1 = Sunday ... 7 = Saturday
  std::string Weekend = "1, 7";  ///< weekday numbers
  std::string TimeFormat = "Hh:Nn";
  int DayBegin = 6;  ///< first hour that the day view shows
  int DayEnd = 20;   ///< last hour that the day view shows
  std::vector<std::string> MemberOfGroups{""};
  std::vector<std::string> AdminOfGroups{""};
  std::vector<EventTypeEntry> EventTypes{{}};
  std::shared_ptr<const orlune::Localiser> Localiser;
  std::unique_ptr<Connection> Database;
  ScriptingContext Context{};

  const orlune::Surroundings* Surroundings;
};

}  // namespace orlune

#include "app/page_properties.h"

namespace orlune {
namespace {

template <void (Orlune::*property)(std::string)>
constexpr PageProperty::TextSetter kText =
    [](Orlune& page, const std::string& value) { (page.*property)(value); };
template <void (Orlune::*property)(std::string_view)>
constexpr PageProperty::TextSetter kName =
    [](Orlune& page, const std::string& value) { (page.*property)(value); };
template <void (Orlune::*property)(bool)>
constexpr PageProperty::SwitchSetter kSwitch = [](Orlune& page, bool value) { (page.*property)(value); };

constexpr PageProperty kProperties[] = {
    {"LoginName", kText<&Orlune::LoginName>, "\"?\"",
     "who is logged in; \"?\": the login form asks, \"\": nobody"},
    {"CalName", kName<&Orlune::CalName>, "\"\"",
     "the calendar shown at first; \"!\" before it keeps it after a login"},
    {"ImageDir", kText<&Orlune::ImageDir>, "\"images/\"", "where the images are, as a link of the page",
     true},
    {"CssDir", kText<&Orlune::CssDir>, "\"css/\"", "where the style sheets are, as a link of the page", true},
    {"DBPath", kText<&Orlune::DBPath>, "none", "the database file"},
    {"UseCookie", kSwitch<&Orlune::UseCookie>, "false",
     "keep the login in a sealed cookie, not on the server"},
    {"ExpireCookie", kName<&Orlune::ExpireCookie>, "tomorrow", "the date on which that cookie expires"},
    {"ExitToURL", kText<&Orlune::ExitToURL>, "\"\"", "the address to go to after logging out"},
    {"ShowTitle", kSwitch<&Orlune::ShowTitle>, "false", "show the calendar's name above it"},
    {"NoMessaging", kSwitch<&Orlune::NoMessaging>, "false", "hide the messages"},
    {"NoLoginChange", kSwitch<&Orlune::NoLoginChange>, "false", "hide the change of the password"},
    {"NoOLORLink", kSwitch<&Orlune::NoOLORLink>, "false", "hide the link to the product's home page"},
    {"DemoMode", kSwitch<&Orlune::DemoMode>, "false", "show the demo account under the login form"},
    {"Strict", kSwitch<&Orlune::Strict>, "false", "close what strangers must not be trusted with"},
    {"AllowNoPassword", kSwitch<&Orlune::AllowNoPassword>, "true",
     "accounts without a password accept any password"},
    {"Sharing", kSwitch<&Orlune::Sharing>, "false", "exchange events with devices and other calendars"},
    {"Language", kName<&Orlune::Language>, "English", "the language pack"},
    {"HTMLHeader", kText<&Orlune::HTMLHeader>, "\"\"", "HTML before the page's body", true},
    {"HTMLFooter", kText<&Orlune::HTMLFooter>, "\"\"", "HTML after the page's body", true},
    {"HeadData", kText<&Orlune::HeadData>, "\"\"", "HTML for the page's head", true},
};

}  // namespace

std::span<const PageProperty> PageProperties() {
  return kProperties;
}

}  // namespace orlune

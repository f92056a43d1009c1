#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "app/configuration.h"

namespace orlune {

/// A whole number within bounds, both included.
struct NumberSetting {
  long long Configuration::*Member;
  long long Min;
  long long Max;
};

/// One of two words, which stand for false and true.
struct WordSetting {
  bool Configuration::*Member;
  std::string_view False;
  std::string_view True;
};

/// A key of [server] in the configuration file. Its default is the member's value in a new Configuration.
struct ServerSetting {
  using Text = std::string Configuration::*;
  using Path = std::filesystem::path Configuration::*;
  using Networks = std::vector<IpNetwork> Configuration::*;
  using Hosts = std::vector<std::string> Configuration::*;
  using Switch = bool Configuration::*;

  std::string_view Name;
  std::variant<Text, Path, Networks, Hosts, Switch, NumberSetting, WordSetting> Target;
  std::string_view Help;
};

/// A key of [[page]] that is no property of the component.
struct PageSetting {
  using Text = std::string PageConfiguration::*;
  using Switch = bool PageConfiguration::*;

  std::string_view Name;
  std::variant<Text, Switch> Target;
  std::string_view Default;
  std::string_view Help;
};

std::span<const ServerSetting> ServerSettings();
std::span<const PageSetting> PageSettings();

/// All keys with their types, defaults and meanings, for `--help`.
std::string DescribeSettings();

}  // namespace orlune

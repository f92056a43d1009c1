#pragma once

#include <initializer_list>
#include <map>
#include <string>

#include "caldav/caldav_service.h"
#include "drivers/passwords/sodium_secrets.h"
#include "icalendar/icalendar_text.h"
#include "support/calendar_fixture.h"

namespace orlune::testing {

struct DavRequest {
  std::string Method;
  std::string Rest;  ///< after "/dav/"
  std::map<std::string, std::string> Headers{};
  std::string Body{};
};

/// The service for the calendars of `CalendarFixture`, asked by anna with her login password.
class CalDavFixture : public CalendarFixture {
 protected:
  ReplyMessage Ask(const DavRequest& request, Access access = Access::kReadAndWrite) {
    RequestMessage message;
    message.Method = request.Method;
    message.Path = "/calendar/dav/" + request.Rest;
    message.Headers.Add("Authorization", authorization_);
    for (const auto& [name, value] : request.Headers) message.Headers.Add(name, value);
    message.Body = request.Body;
    const CalDavService service(
        {driver_,
         access,
         [this] { return ToolsOn(clock_.Now().Day); },
         {databasePath_, secrets_, passwords_, logins_, recent_, allowsLoginPassword_}});
    return service.Answer({message, sender_, "/calendar", request.Rest});
  }

  ExchangeTools ToolsOn(Date today) const {
    return MakeExchangeTools(texts_, secrets_, regional_, today, nullptr);
  }

  static std::string BodyOf(const ReplyMessage& reply) { return std::get<std::string>(reply.Body); }
  static std::string HeaderOf(const ReplyMessage& reply, std::string_view name) {
    for (const auto& [header, value] : reply.Headers) {
      if (header == name) return value;
    }
    return "";
  }

  IcalendarText texts_{"Europe/Helsinki"};
  SodiumSecrets secrets_;
  RecentLogins recent_;
  bool allowsLoginPassword_ = true;
  std::string authorization_ = "Basic YW5uYTpzZWNyZXQ=";
  Sender sender_{*IpAddress::Parse("192.0.2.1"), true};
};

}  // namespace orlune::testing

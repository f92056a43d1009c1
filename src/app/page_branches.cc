#include "app/page_branches.h"

#include <memory>
#include <utility>

#include "caldav/caldav_service.h"
#include "feeds/feed_service.h"

namespace orlune {
namespace {

constexpr const char* kFeedPrefix = "/feed/";

/// Programs do not say which language their user prefers.
std::shared_ptr<const Localiser> LanguageOf(const PageConfiguration& page, LocaliserFactory& localisers) {
  const std::string name = page.TextOf("Language");
  return name.empty() || name == "auto" ? nullptr : localisers.Create("OLOR_" + name + ".Localise");
}

/// What answers at one branch, with one kind of access to the database.
using BranchAnswer = std::function<ReplyMessage(const BranchRequest&)>;

BranchAnswer MakeCalDav(const PageConfiguration& page, const PagePlace& place, Access access,
                        const ExchangeSurroundings& surroundings) {
  DatabaseDriver& databases = access == Access::kRead ? place.DatabaseToRead : place.Database;
  const auto tools = [&surroundings, &regional = place.Region.Settings(),
                      language = LanguageOf(page, surroundings.Localisers)] {
    return MakeExchangeTools(surroundings.Texts, surroundings.Secrets, regional, surroundings.Clock.Now().Day,
                             language.get());
  };
  const CalDavService service(
      {databases, access, tools,
       LoginParts{place.Database.Address().Displayed(), surroundings.Secrets, surroundings.Passwords,
                  surroundings.Logins, surroundings.Recent, page.SharesWithLogin}});
  return [service](const BranchRequest& request) { return service.Answer(request); };
}

BranchAnswer MakeFeeds(const PageConfiguration& page, const PagePlace& place, Access access,
                       const ExchangeSurroundings& surroundings) {
  DatabaseDriver& databases = access == Access::kRead ? place.DatabaseToRead : place.Database;
  const FeedService service({databases, place.Database.Address().Displayed(), surroundings.Texts,
                             surroundings.Secrets, surroundings.Logins, surroundings.Clock,
                             place.Region.Settings(), LanguageOf(page, surroundings.Localisers)});
  return [service](const BranchRequest& request) { return service.Answer(request); };
}

}  // namespace

std::vector<PageBranch> MakeBranches(const PageConfiguration& page, const PagePlace& place,
                                     const ExchangeSurroundings& surroundings) {
  return {{std::string(kCalDavPrefix), MakeCalDav(page, place, Access::kReadAndWrite, surroundings),
           MakeCalDav(page, place, Access::kRead, surroundings), kMostCalDavBytes, false},
          {kFeedPrefix, MakeFeeds(page, place, Access::kReadAndWrite, surroundings),
           MakeFeeds(page, place, Access::kRead, surroundings), 0, true}};
}

}  // namespace orlune

#include "feeds/feed_service.h"

#include <memory>
#include <utility>
#include <vector>

#include "exchange/access_keys.h"
#include "exchange/change_log.h"
#include "exchange/shared_objects.h"

namespace orlune {
namespace {

constexpr std::string_view kEnding = ".ics";

/// The text of a calendar in pieces; owns what it is made of.
class FeedText {
 public:
  FeedText(const CalendarText& texts, std::string title, std::vector<SharedObject> objects)
      : texts_(texts), title_(std::move(title)), objects_(std::move(objects)) {}

  /// Appends what comes next; false past the end.
  bool AddTo(std::string& piece) {
    if (next_ > objects_.size() + 1) return false;
    if (next_ == 0) {
      piece += texts_.FileBegin(title_);
    } else if (next_ <= objects_.size()) {
      const SharedObject& object = objects_[next_ - 1];
      piece += texts_.FileEntry(object.Object, object.Week);
    } else {
      piece += texts_.FileEnd();
    }
    ++next_;
    return true;
  }

 private:
  const CalendarText& texts_;
  const std::string title_;
  const std::vector<SharedObject> objects_;
  std::size_t next_ = 0;
};

std::size_t MemoryOf(std::span<const SharedObject> objects) {
  std::size_t bytes = 0;
  for (const SharedObject& shared : objects) {
    bytes += sizeof(shared) + shared.Object.KeptText.size();
    for (const ObjectEvent& row : shared.Object.Events)
      bytes += sizeof(row) + row.Event.Comments.size() + row.Days.Listed.size() * sizeof(Date);
  }
  return bytes;
}

std::string_view SecretIn(std::string_view rest) {
  return rest.ends_with(kEnding) ? rest.substr(0, rest.size() - kEnding.size()) : std::string_view();
}

ReplyMessage FeedReply(unsigned status, const std::string& etag) {
  ReplyMessage reply{
      status, {{"ETag", "\"" + etag + "\""}, {"Cache-Control", "private, no-cache"}}, std::string()};
  reply.IsDocument = false;
  return reply;
}

}  // namespace

ReplyMessage FeedService::Answer(const BranchRequest& request) const {
  if (request.Message.Method != "GET" && request.Message.Method != "HEAD") {
    ReplyMessage refusal = Refusal(405);
    refusal.Headers.emplace_back("Allow", "GET, HEAD");
    return refusal;
  }
  const std::unique_ptr<Connection> database = parts_.Databases.Open(parts_.Database);
  PrepareExchange(*database, parts_.Secrets);
  const std::string_view secret = SecretIn(request.Rest);
  const auto target = FindSecretLink(*database, parts_.Secrets, secret);
  if (!target) return AnswerWrongSecret(secret, request);
  const auto maker = LoadParticipant(*database, target->LoginName);
  const SharedCalendar* calendar = maker ? maker->Find(target->Calendar) : nullptr;
  if (calendar == nullptr) return Refusal(404);
  const Date today = parts_.Clock.Now().Day;
  NoteUseOfSecretLink(*database, {parts_.Secrets, parts_.Regional, today}, *target);

  const ExchangeTools tools =
      MakeExchangeTools(parts_.Texts, parts_.Secrets, parts_.Regional, today, parts_.Localiser.get());
  const std::string etag = FileETag(*database, tools, *maker, *calendar);
  if (request.Message.Headers.Find("If-None-Match").find("\"" + etag + "\"") != std::string_view::npos)
    return FeedReply(304, etag);
  ReplyMessage reply = FeedReply(200, etag);
  reply.Headers.emplace_back("Content-Type", "text/calendar; charset=utf-8");
  std::vector<SharedObject> objects = LoadObjects(*database, tools, *calendar);
  const std::size_t memory = MemoryOf(objects);
  auto text = std::make_shared<FeedText>(parts_.Texts, calendar->FriendlyName, std::move(objects));
  reply.Body = BodySource{[text](std::string& piece) { return text->AddTo(piece); }, memory};
  return reply;
}

/// Secrets cannot be guessed; but who tries it is slowed down, by address.
ReplyMessage FeedService::AnswerWrongSecret(std::string_view secret, const BranchRequest& request) const {
  constexpr std::size_t kDigits = 8;
  const std::string name = "feed " + parts_.Secrets.Digest(secret).substr(0, kDigits);
  const std::string address = request.Sender.Address.Text();
  const LoginAttempt attempt{parts_.Database, name, address};
  const std::chrono::seconds pause = parts_.Logins.Admit(attempt);
  if (pause == std::chrono::seconds::zero()) {
    parts_.Logins.Failed(attempt);
    return Refusal(404);
  }
  ReplyMessage refusal = BusyRefusal(429);
  std::erase_if(refusal.Headers, [](const Header& header) { return header.first == "Retry-After"; });
  refusal.Headers.emplace_back("Retry-After", std::to_string(pause.count()));
  return refusal;
}

}  // namespace orlune

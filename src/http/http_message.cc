#include "http/http_message.h"

#include "base/url_encoding.h"

namespace orlune {
namespace {

struct Reason {
  unsigned Status;
  std::string_view Title;
  std::string_view Sentence;
};

constexpr Reason kReasons[] = {
    {400, "Bad Request", "The request could not be read."},
    {403, "Forbidden", "This request came from another site."},
    {404, "Not Found", "There is nothing at this address."},
    {405, "Method Not Allowed", "This address does not answer requests of this kind."},
    {413, "Content Too Large", "What was sent is too large."},
    {414, "URI Too Long", "The address is too long."},
    {421, "Misdirected Request", "This server does not answer under this name."},
    {431, "Request Header Fields Too Large",
     "What the browser sent about itself, such as cookies, is too large."},
    {429, "Too Many Requests", "There are too many requests from your address. Please try again soon."},
    {500, "Internal Server Error", "Something went wrong here. Please try again."},
    {503, "Service Unavailable", "The server cannot answer right now. Please try again in a moment."},
};

const Reason& FindReason(unsigned status) {
  for (const Reason& reason : kReasons) {
    if (reason.Status == status) return reason;
  }
  return kReasons[0];
}

ReplyMessage RefusalPage(unsigned status, const Reason& reason) {
  std::string page = "<!DOCTYPE html>\n<HTML><HEAD><TITLE>";
  page.append(reason.Title).append("</TITLE></HEAD><BODY><H1>").append(reason.Title).append("</H1><P>");
  page.append(reason.Sentence).append("</P></BODY></HTML>\n");
  return {
      status, {{"Content-Type", "text/html; charset=utf-8"}, {"Cache-Control", "no-store"}}, std::move(page)};
}

}  // namespace

std::size_t ReplyMessage::BodySize() const {
  if (const auto* shared = std::get_if<SharedText>(&Body)) return (*shared)->size();
  if (const auto* text = std::get_if<std::string>(&Body)) return text->size();
  const auto* file = std::get_if<OpenFile>(&Body);
  return file != nullptr ? file->State().Size : 0;
}

std::size_t ReplyMessage::MemoryBytes() const {
  if (const auto* source = std::get_if<BodySource>(&Body)) return source->MemoryBytes + kPieceBytes;
  const auto* text = std::get_if<std::string>(&Body);
  return text != nullptr ? text->capacity() : 0;
}

ReplyMessage Refusal(unsigned status) {
  return RefusalPage(status, FindReason(status));
}

ReplyMessage BusyRefusal(unsigned status) {
  constexpr Reason kBusy{503, "Service Unavailable",
                         "There are too many visitors at the moment. Please try again."};
  ReplyMessage reply = RefusalPage(status, status == kBusy.Status ? kBusy : FindReason(status));
  reply.Headers.emplace_back("Retry-After", "5");
  return reply;
}

ReplyMessage RedirectTo(std::string_view url) {
  return {302, {{"Location", EncodeUrl(url)}, {"Cache-Control", "no-store"}}, std::string()};
}

}  // namespace orlune

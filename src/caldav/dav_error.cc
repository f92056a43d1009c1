#include "caldav/dav_error.h"

#include "caldav/xml_text.h"

namespace orlune {
namespace {

/// No locks (class 2), and no invitations: what clients do without.
constexpr const char* kClasses = "1, 3, access-control, calendar-access";

}  // namespace

ReplyMessage DavReply(unsigned status, std::string_view type, std::string body) {
  ReplyMessage reply{
      status, {{"DAV", kClasses}, {"Cache-Control", "private, no-cache"}}, std::move(body), false};
  if (!type.empty()) reply.Headers.emplace_back("Content-Type", type);
  return reply;
}

ReplyMessage XmlReply(unsigned status, std::string xml) {
  return DavReply(status, "application/xml; charset=utf-8", std::move(xml));
}

ReplyMessage ErrorReply(const DavError& error) {
  std::string xml = XmlDocumentBegin("D:error");
  xml += error.Condition;
  AppendElement(xml, "D:responsedescription", error.what());
  AppendDocumentEnd(xml, "D:error");
  ReplyMessage reply = XmlReply(error.Status, std::move(xml));
  reply.Headers.insert(reply.Headers.end(), error.Headers.begin(), error.Headers.end());
  return reply;
}

}  // namespace orlune

import random
import re
import threading
import unittest
import xml.etree.ElementTree

from calendar_server import DeviceTest, Person

DAV = "{DAV:}"
OPERATIONS = 60


class Mirror:
    """What a device knows of a calendar by synchronising again and again."""

    def __init__(self, server, user, calendar):
        self._server, self._user, self._path = server, user, "calendars/%s/%s/" % (user, calendar)
        self._token, self.tags = "", {}

    def _ask(self, method, body):
        return self._server.as_device(self._user, method, self._path, body, {"Depth": "1"})

    def synchronise(self):
        """The number of changes."""
        answer = self._ask("REPORT", '<sync-collection xmlns="DAV:"><sync-token>%s</sync-token><sync-level>1</sync-level>'
                                     "<prop><getetag/></prop></sync-collection>" % self._token)
        if answer.status == 403 and self._token:
            self._token, self.tags = "", {}
            return self.synchronise()
        told = xml.etree.ElementTree.fromstring(answer.body)
        self._token = told.find(DAV + "sync-token").text
        changes = told.findall(DAV + "response")
        for change in changes:
            address, tag = change.find(DAV + "href").text, change.find(".//" + DAV + "getetag")
            self.tags.pop(address, None)
            if tag is not None:
                self.tags[address] = tag.text
        return len(changes)

    def listed(self):
        """The same, asked for as a whole."""
        answer = self._ask("PROPFIND", '<propfind xmlns="DAV:"><prop><getetag/></prop></propfind>')
        events = [response for response in xml.etree.ElementTree.fromstring(answer.body).iter(DAV + "response")
                  if response.find(DAV + "href").text.endswith(".ics")]
        return {event.find(DAV + "href").text: event.find(".//" + DAV + "getetag").text for event in events}


class MirrorTest(DeviceTest):
    def write(self, user, seed):
        """Changes a calendar as a device and on the pages."""
        dice, page, sent = random.Random(seed), Person(self.server, user), []
        for number in range(OPERATIONS):
            day, path = dice.randint(1, 28), "calendars/%s/%s/" % (user, user)
            shown = re.findall(r"p=e&id=(\d+)", page.see("?p=c&dm=month&cd=6/1/2035"))
            step = dice.choice(("add", "add", "change", "remove", "save", "save again", "delete"))
            if step == "add" or (step == "change" and sent):
                name = "%s-%d.ics" % (seed, number) if step == "add" else dice.choice(sent)
                sent += [name] if step == "add" else []
                self.server.put(path + name, "\r\n".join((
                    "BEGIN:VCALENDAR", "VERSION:2.0", "PRODID:-//Example//Mirror//EN", "BEGIN:VEVENT", "UID:" + name,
                    "DTSTAMP:20350601T080000Z", "SUMMARY:%d" % number, "DTSTART;VALUE=DATE:203506%02d" % day, "END:VEVENT",
                    "END:VCALENDAR", "")))
            elif step == "remove" and sent:
                self.server.as_device(user, "DELETE", path + sent.pop())
            elif step == "delete" and shown:
                page.delete_event(dice.choice(shown))
            elif step == "save again" and shown:
                page.save_event("Again %d" % number, "6/%d/2035" % day, id=dice.choice(shown))
            else:
                page.save_event("Typed %d" % number, "6/%d/2035" % day)

    def test_whoever_synchronises_while_others_write_misses_nothing(self):
        mirrors = [Mirror(self.server, *calendar) for calendar in (("tomas", "tomas"), ("zoe", "zoe"), ("asa", "@salesfloor"))]
        writers = [threading.Thread(target=self.write, args=writer)
                   for writer in (("tomas", "a"), ("tomas", "b"), ("zoe", "c"), ("zoe", "d"))]
        for writer in writers:
            writer.start()
        while any(writer.is_alive() for writer in writers):
            for mirror in mirrors:
                mirror.synchronise()
        for mirror in mirrors:
            mirror.synchronise()
            self.assertEqual(set(mirror.tags.items()) ^ set(mirror.listed().items()), set())
            self.assertTrue(mirror.tags)
            self.assertEqual(mirror.synchronise(), 0)


if __name__ == "__main__":
    unittest.main()

import re
import unittest

from calendar_server import DeviceTest, Person
from local_folder import LocalFolder

JUNE = (2035, 6)
CLIENTS_EVENT = """BEGIN:VCALENDAR\r
VERSION:2.0\r
PRODID:-//Example Corp.//A Client 7.1//EN\r
X-CLIENT-VERSION:7\r
BEGIN:VTIMEZONE\r
TZID:Helsinki (as this client calls it)\r
BEGIN:STANDARD\r
DTSTART:19961027T040000\r
RRULE:FREQ=YEARLY;BYDAY=-1SU;BYMONTH=10\r
TZOFFSETFROM:+0300\r
TZOFFSETTO:+0200\r
END:STANDARD\r
BEGIN:DAYLIGHT\r
DTSTART:19970330T030000\r
RRULE:FREQ=YEARLY;BYDAY=-1SU;BYMONTH=3\r
TZOFFSETFROM:+0200\r
TZOFFSETTO:+0300\r
END:DAYLIGHT\r
END:VTIMEZONE\r
BEGIN:VEVENT\r
UID:%(uid)s\r
DTSTAMP:20350601T080000Z\r
SEQUENCE:3\r
SUMMARY:%(title)s\r
DESCRIPTION:Bring the long list of everything that was promised to the custome\r
 rs\\, and Zoë's "plan"\\;\\nsecond line\r
LOCATION:Room 12\\, third floor\r
DTSTART;TZID=Helsinki (as this client calls it):20350612T093000\r
DTEND;TZID=Helsinki (as this client calls it):20350612T104500\r
RRULE:FREQ=WEEKLY;COUNT=3\r
ATTENDEE;CN="Zoë Fairweather";PARTSTAT=NEEDS-ACTION:mailto:zoe@example.com\r
X-CLIENT-COLOUR;X-KIND=own:plum\r
BEGIN:VALARM\r
ACTION:DISPLAY\r
TRIGGER:-PT15M\r
DESCRIPTION:Soon\r
END:VALARM\r
END:VEVENT\r
END:VCALENDAR\r
"""


def unfolded(text):
    return re.sub(r"\r?\n[ \t]", "", text.decode())


class VdirsyncerTest(DeviceTest):
    def follow(self, user):
        folder = LocalFolder(self, self.server, user)
        folder.sync(user)
        return folder, Person(self.server, user)

    def add_clients_event(self, folder, user, uid, title):
        file = folder.calendar(user) / (uid + ".ics")
        file.write_bytes((CLIENTS_EVENT % {"uid": uid, "title": title}).encode())
        folder.sync(user)
        return file

    def on_server(self, user, name):
        return self.server.get("calendars/%s/%s/%s" % (user, user, name)).body

    def file_with(self, folder, user, text):
        [name] = [name for name, content in folder.files(user).items() if text in unfolded(content)]
        return folder.calendar(user) / name

    def assert_same_on_both_sides(self, folder, user):
        self.assertEqual(folder.sync(user), [])
        texts = [content.decode().replace("\r\n", "\n") for content in folder.files(user).values()]
        self.assertEqual({re.search("^UID:(.*)$", text, re.M)[1]: text for text in texts}, self.server.objects(user, user))

    def test_every_calendar_that_the_user_sees_comes_once(self):
        folder = LocalFolder(self, self.server, "noor")
        folder.vdirsyncer("sync")
        calendars = {calendar.name for calendar in (folder.path / "calendars").iterdir()}
        self.assertEqual(calendars, {"noor", "default", "sales", "sport", "@engineeringteam", "@whoswhere"})
        for calendar in calendars - {"default"}:
            self.assertTrue(folder.files(calendar), calendar)
        self.assertNotIn("Copying", folder.vdirsyncer("sync"))

    def test_what_the_client_writes_is_on_the_pages_and_comes_back_as_it_was(self):
        folder, page = self.follow("asa")
        file = self.add_clients_event(folder, "asa", "plans-1", "Customer's day")
        written = file.read_bytes()
        self.assertEqual(page.dates_of("9:30-10:45 Customer's day", JUNE), [12, 19, 26])
        self.assert_same_on_both_sides(folder, "asa")
        self.assertEqual(self.on_server("asa", file.name), written)

        file.write_bytes(written.replace(b"SUMMARY:Customer", b"SUMMARY:Third customer").replace(b"COUNT=3", b"COUNT=2"))
        folder.sync("asa")
        self.assertEqual(page.dates_of("Third customer's day", JUNE), [12, 19])
        self.assert_same_on_both_sides(folder, "asa")
        self.assertEqual(self.on_server("asa", file.name), file.read_bytes())

        file.unlink()
        folder.sync("asa")
        self.assertEqual(page.dates_of("customer's day", JUNE), [])
        self.assert_same_on_both_sides(folder, "asa")

    def test_what_is_saved_on_pages_reaches_the_folder(self):
        folder, page = self.follow("zoe")
        page.save_event('Say "hello", Zoë & co.; <b>', "6/18/2035", time1="14:00", time2="15:30", addinfo="first\r\nsecond")
        folder.sync("zoe")
        file = self.file_with(folder, "zoe", "Say")
        text = unfolded(file.read_bytes())
        for line in ('SUMMARY:Say "hello"\\, Zoë & co.\\; <b>', "DESCRIPTION:first\\nsecond",
                     "DTSTART;TZID=Europe/Helsinki:20350618T140000", "DTEND;TZID=Europe/Helsinki:20350618T153000"):
            self.assertIn(line, text)

        [number] = re.findall(r"^UID:(\d+)@", text, re.M)
        page.save_event("Moved", "6/20/2035", id=number)
        folder.sync("zoe")
        self.assertIn("DTSTART;VALUE=DATE:20350620", unfolded(file.read_bytes()))
        self.assert_same_on_both_sides(folder, "zoe")
        page.delete_event(number)
        folder.sync("zoe")
        self.assertFalse(file.exists())
        self.assert_same_on_both_sides(folder, "zoe")

    def test_a_page_changes_what_a_client_made_and_leaves_what_it_does_not_show(self):
        folder, page = self.follow("tomas")
        file = self.add_clients_event(folder, "tomas", "plans-2", "Fair")
        before = unfolded(file.read_bytes())
        [number] = set(page.event_numbers("Fair", JUNE))
        page.save_event("Trade fair", "6/12/2035", id=number, reptype="weekday", repweekday="3", frequency="vko_1",
                        date2="6/26/2035", time1="10:00", time2="10:45", addinfo="Changed")
        folder.sync("tomas")
        after = unfolded(file.read_bytes())
        self.assertEqual(page.dates_of("10:00-10:45 Trade fair", JUNE), [12, 19, 26])
        for line in ("SUMMARY:Trade fair", "DESCRIPTION:Changed"):
            self.assertIn(line, after)
        for line in before.splitlines():
            if not re.match("DTSTART|DTEND|RRULE|SUMMARY|DESCRIPTION:B|DTSTAMP|SEQUENCE|LAST-MODIFIED|CLASS", line):
                self.assertIn(line, after)
        self.assert_same_on_both_sides(folder, "tomas")

        page.delete_event(number)
        folder.sync("tomas")
        self.assertFalse(file.exists())

    def test_a_conflict_loses_nothing_until_the_user_decides(self):
        folder, page = self.follow("priya")
        file = self.add_clients_event(folder, "priya", "plans-3", "Contested")
        [number] = set(page.event_numbers("Contested", JUNE))
        page.save_event("Changed on the page", "6/12/2035", id=number)
        ours = file.read_bytes().replace(b"SUMMARY:Contested", b"SUMMARY:Changed in the folder")
        file.write_bytes(ours)

        self.assertIn("conflict", "\n".join(folder.sync("priya", fails=True)))
        self.assertEqual(file.read_bytes(), ours)
        self.assertTrue(page.dates_of("Changed on the page", JUNE))

        folder.resolve_conflicts_by('"a wins"')
        folder.sync("priya")
        self.assertEqual(page.dates_of("Changed in the folder", JUNE), [12, 19, 26])
        self.assertEqual(page.dates_of("Changed on the page", JUNE), [])
        self.assertEqual(self.on_server("priya", file.name), ours)

    def test_a_subscription_is_a_folder_of_events(self):
        page = Person(self.server, "lukasz")
        self.add_clients_event(LocalFolder(self, self.server, "lukasz"), "lukasz", "plans-4", "Subscribed")
        page.save_event("Typed", "6/18/2035")
        [address, *_] = page.secrets_on(page.post("/sharing?act=mklink", {"calendar": "lukasz", "link": "Family"}))
        folder = LocalFolder(self, self.server, "lukasz", subscription=address)
        said = folder.vdirsyncer("sync")
        texts = [unfolded(content) for content in folder.files(".").values()]
        self.assertEqual(len(texts), len(self.server.objects("lukasz", "lukasz")), said)
        for title in ("Subscribed", "Typed"):
            self.assertEqual(len([text for text in texts if "SUMMARY:%s\r" % title in text or "SUMMARY:%s\n" % title in text]), 1, title)
        self.assertNotIn("Copying", folder.vdirsyncer("sync"))

    def test_what_may_only_be_read_is_not_changed(self):
        folder = LocalFolder(self, self.server, "mikko")
        intruder = CLIENTS_EVENT % {"uid": "intruder", "title": "Intruder"}
        (folder.calendar("engineering") / "intruder.ics").write_bytes(intruder.encode())
        self.assertIn("403", "\n".join(folder.sync("engineering", fails=True)))
        self.assertEqual(Person(self.server, "mikko").dates_of("Intruder", JUNE, "engineering"), [])


if __name__ == "__main__":
    unittest.main()

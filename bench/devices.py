"""What devices cost: the first synchronisation, polls without changes, feeds, saving, importing, and what sharing adds to
pages. Prints figures and ratios within this run. Usage: devices.py [EXECUTABLE], on PostgreSQL under
scripts/with_postgresql.sh
"""
import atexit
import base64
import contextlib
import html
import http.client
import os
import re
import shutil
import sqlite3
import statistics
import subprocess
import sys
import tempfile
import time
import urllib.parse

EXECUTABLE = os.path.abspath(sys.argv[1] if len(sys.argv) > 1 else "build/release/orlune")
EVENTS, IMPORTED, ROUNDS, REQUESTS = 10_000, 20_000, 41, 60
MADE_ON_PAGES, SENT, IMPORTING, SAVING = "walter", "noor", "daniel", "ines"
CALDAV = "urn:ietf:params:xml:ns:caldav"
POSTGRESQL = os.environ.get("ORLUNE_TEST_POSTGRESQL")
FOLDER = tempfile.mkdtemp(prefix="orlune-bench-")


class Server:
    """A started server with a connection that is kept, and a logged-in user."""

    def __init__(self, database, sharing):
        folder = tempfile.mkdtemp(dir=FOLDER)
        self.database = POSTGRESQL or shutil.copy(database, folder + "/calendar.db")
        with open(folder + "/orlune.toml", "w") as file:
            file.write('[server]\nlisten = "127.0.0.1:0"\nsite = "%s"\ntime_zone = "Europe/Helsinki"\n'
                       '[[page]]\npath = "/p"\nDBPath = "%s"\n' % (os.path.abspath("site"), self.database))
            if sharing:
                file.write("Sharing = true\nsharing_with_login = true\n")
        self.process = subprocess.Popen([EXECUTABLE, "serve", "--config", folder + "/orlune.toml", "--now", "2035-06-01T12:00:00"],
                                        stdout=subprocess.PIPE, stderr=open(folder + "/log", "w"), text=True)
        self.address = re.search(r"//(.*)/p", self.process.stdout.readline())[1]
        self.connection = http.client.HTTPConnection(self.address)
        self.cookies = {}
        atexit.register(self.process.kill)

    def stop(self):
        self.process.terminate()
        self.process.wait()

    def send(self, method, path, body=None, headers=None, expected=(200, 201, 204, 207, 302)):
        self.connection.request(method, path, body, headers or {})
        response = self.connection.getresponse()
        self.first_byte = time.perf_counter()
        content = response.read()
        if response.status not in expected:
            raise RuntimeError("%s %s: %d %s" % (method, path, response.status, content[:300]))
        return content, response.headers

    def log_in(self, user):
        _, headers = self.post("?p=l", {"Name": user, "Passwd": "demo1"}, {})
        self.cookies[user] = "; ".join(line.split(";")[0] for line in headers.get_all("Set-Cookie"))

    def page(self, user, query):
        return self.send("GET", "/p" + query, headers={"Cookie": self.cookies[user]})[0].decode()

    def post(self, query, fields, headers):
        headers = {"Content-Type": "application/x-www-form-urlencoded", "Origin": "http://" + self.address, **headers}
        return self.send("POST", "/p" + query, urllib.parse.urlencode(fields), headers)

    def post_as(self, user, query, fields):
        return self.post(query, fields, {"Cookie": self.cookies[user]})[0].decode()

    def post_file(self, user, query, field, text):
        body = "".join('--bound\r\nContent-Disposition: form-data; name="%s"%s\r\n\r\n%s\r\n' % part for part in (
            ("calendar", "", user), (field, '; filename="f.ics"' if field == "file" else "", text))) + "--bound--\r\n"
        return self.send("POST", "/p" + query, body.encode(), {
            "Cookie": self.cookies[user], "Origin": "http://" + self.address, "Content-Type": "multipart/form-data; boundary=bound"})[0].decode()

    def dav(self, user, method, path, body=None, **headers):
        basic = base64.b64encode((user + ":" + self.passwords[user]).encode()).decode()
        return self.send(method, "/p/dav/calendars/%s/%s/%s" % (user, user, path), body, {"Authorization": "Basic " + basic, **headers})

    def make_password(self, user):
        made = self.post_as(user, "/sharing?act=mkpw", {"device": "bench"})
        self.passwords[user] = re.findall(r'CLASS="secret">([^<]*)<', made)[2]

    passwords = {}

    def processor_us(self):
        total = 0
        for thread in os.listdir("/proc/%d/task" % self.process.pid):
            with open("/proc/%d/task/%s/schedstat" % (self.process.pid, thread)) as file:
                total += int(file.read().split()[0])
        return total / 1000

    def memory_mib(self, line="VmRSS"):
        with open("/proc/%d/status" % self.process.pid) as file:
            return int(re.search(line + r":\s+(\d+)", file.read())[1]) / 1024


def event_text(number, uid="device"):
    day, hour = 1 + number % 28, 8 + number % 9
    return ("BEGIN:VEVENT\r\nUID:%s-%d@example.com\r\nDTSTAMP:20350101T000000Z\r\nSUMMARY:Appointment %d\r\n"
            "DESCRIPTION:Room %d\\, bring the papers of the last meeting along.\r\nLOCATION:Third floor\r\n"
            "DTSTART;TZID=Europe/Helsinki:20%02d%02d%02dT%02d3000\r\nDURATION:PT45M\r\n"
            "BEGIN:VALARM\r\nACTION:DISPLAY\r\nTRIGGER:-PT15M\r\nDESCRIPTION:Soon\r\nEND:VALARM\r\nEND:VEVENT\r\n"
            % (uid, number, number, number % 40, 25 + number % 10, 1 + number % 12, day, hour))


HEAD = ("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Example//Bench//EN\r\nBEGIN:VTIMEZONE\r\nTZID:Europe/Helsinki\r\n"
        "BEGIN:DAYLIGHT\r\nDTSTART:19810329T030000\r\nRRULE:FREQ=YEARLY;BYDAY=-1SU;BYMONTH=3\r\nTZOFFSETFROM:+0200\r\n"
        "TZOFFSETTO:+0300\r\nEND:DAYLIGHT\r\nBEGIN:STANDARD\r\nDTSTART:19961027T040000\r\nRRULE:FREQ=YEARLY;BYDAY=-1SU;BYMONTH=10\r\n"
        "TZOFFSETFROM:+0300\r\nTZOFFSETTO:+0200\r\nEND:STANDARD\r\nEND:VTIMEZONE\r\n")


def calendar_text(numbers, uid="device"):
    return HEAD + "".join(event_text(number, uid) for number in numbers) + "END:VCALENDAR\r\n"


def timed(action):
    begin = time.perf_counter()
    result = action()
    return time.perf_counter() - begin, result


def compare(caption, server, base, other):
    """Milliseconds and processor time of two actions in turn."""
    walls, processor = ([], []), ([], [])
    for action in (base, other):
        action()
    for round_number in range(ROUNDS):
        for which in (0, 1) if round_number % 2 else (1, 0):
            begin = server.processor_us()
            seconds, _ = timed(lambda: [(base, other)[which]() for _ in range(REQUESTS)])
            walls[which].append(seconds / REQUESTS * 1e6)
            processor[which].append((server.processor_us() - begin) / REQUESTS)
    print("%-52s %6.0f us (processor %5.0f) against %6.0f us (%5.0f): %.2f times, processor %.2f" % (
        caption, statistics.median(walls[1]), statistics.median(processor[1]), statistics.median(walls[0]),
        statistics.median(processor[0]), statistics.median(b / a for a, b in zip(*walls)),
        statistics.median(b / a for a, b in zip(*processor))), flush=True)


def add_rows(database, owner):
    """Events as pages store them, copies of one that a page has saved."""
    with contextlib.closing(sqlite3.connect(database)) as connection, connection:
        columns = [row[1] for row in connection.execute("PRAGMA table_info(Events)") if row[1] != "EventID"]
        model = connection.execute("SELECT %s FROM Events WHERE EventName = 'Model'" % ", ".join(columns)).fetchone()
        begin, name = columns.index("BeginDate"), columns.index("EventName")
        rows = []
        for number in range(EVENTS):
            row = list(model)
            row[begin] = "20%02d-%02d-%02d" % (25 + number % 10, 1 + number % 12, 1 + number % 28) + str(model[begin])[10:]
            row[name] = "Appointment %d" % number
            rows.append(row)
        connection.executemany("INSERT INTO Events (%s) VALUES (%s)" % (", ".join(columns), ", ".join("?" * len(columns))), rows)


def with_rows(database):
    server = Server(database, False)
    server.log_in(MADE_ON_PAGES)
    server.post_as(MADE_ON_PAGES, "?p=e&act=save", {
        "title": "Model", "calendar": MADE_ON_PAGES, "reptype": "none", "date1": "6/15/2035", "date2": "", "time1": "8:30", "time2": "9:15",
        "addinfo": "Room 7, bring the papers of the last meeting along."})
    server.stop()
    add_rows(server.database, MADE_ON_PAGES)
    return server.database


def first_synchronisation(server, user):
    sync = ('<D:sync-collection xmlns:D="DAV:" xmlns:C="%s"><D:sync-token/><D:sync-level>1</D:sync-level>'
            '<D:prop><D:getetag/><C:calendar-data/></D:prop></D:sync-collection>' % CALDAV)
    answer = ""
    for caption in ("sync-collection", "multiget"):
        links = "".join("<D:href>%s</D:href>" % link for link in re.findall(r"<D:href>([^<]*\.ics)</D:href>", answer))
        multiget = ('<C:calendar-multiget xmlns:D="DAV:" xmlns:C="%s"><D:prop><D:getetag/><C:calendar-data/></D:prop>%s</C:calendar-multiget>'
                    % (CALDAV, links))
        body = sync if caption == "sync-collection" else multiget
        times = []
        for _ in range(3):
            begin = server.processor_us()
            seconds, (content, _) = timed(lambda: server.dav(user, "REPORT", "", body, Depth="1"))
            times.append((seconds, server.processor_us() - begin))
        answer = content.decode()
        count = answer.count("BEGIN:VEVENT")
        seconds, processor = min(times)
        print("%-52s %6.2f s, %d events, %.1f MB: %.0f a second (processor: %.0f)" % (
            "first synchronisation of %s, %s" % (user, caption), seconds, count, len(content) / 1e6, count / seconds, count / processor * 1e6), flush=True)


def polls(server, user):
    wish = '<D:propfind xmlns:D="DAV:" xmlns:S="http://calendarserver.org/ns/"><D:prop><S:getctag/><D:sync-token/></D:prop></D:propfind>'
    answer = server.dav(user, "PROPFIND", "", wish, Depth="0")[0].decode()
    token = re.search(r"<D:sync-token>([^<]*)<", answer)[1]
    newest = '<D:sync-collection xmlns:D="DAV:"><D:sync-token>%s</D:sync-token><D:sync-level>1</D:sync-level><D:prop><D:getetag/></D:prop></D:sync-collection>' % token
    day = lambda: server.page(user, "?p=c&dm=day")
    compare("poll of the ctag against a day view", server, day, lambda: server.dav(user, "PROPFIND", "", wish, Depth="0"))
    compare("poll by the newest token against a day view", server, day, lambda: server.dav(user, "REPORT", "", newest, Depth="1"))


def feed(server, user):
    made = server.post_as(user, "/sharing?act=mklink", {"calendar": user, "link": "bench"})
    path = "/p/feed/" + re.search(r"/p/feed/([^<]*)<", made)[1]
    for _ in range(2):
        begin = time.perf_counter()
        content, headers = server.send("GET", path)
        first, end = server.first_byte, time.perf_counter()
    seconds, _ = timed(lambda: [server.send("GET", path, headers={"If-None-Match": headers["ETag"]}, expected=(304,)) for _ in range(50)])
    print("%-52s first byte after %.0f ms, whole after %.0f ms (%.1f MB), unchanged %.2f ms" % (
        "feed of %s, %d events" % (user, content.count(b"BEGIN:VEVENT")), (first - begin) * 1e3, (end - begin) * 1e3, len(content) / 1e6, seconds / 50 * 1e3), flush=True)


def saving(server, user):
    server.log_in(user)
    server.make_password(user)
    number = iter(range(1_000_000))
    form = lambda **more: server.post_as(user, "?p=e&act=save", {
        "title": "Appointment %d" % next(number), "calendar": user, "reptype": "none", "date1": "6/15/2035", "date2": "", "time1": "8:30", "time2": "9:15",
        "addinfo": "Room 7, bring the papers of the last meeting along.", **more})
    put = lambda name, n: server.dav(user, "PUT", name, HEAD + event_text(n, "put").replace("UID:", "UID:%s-" % (name if name[0] == "n" else "c"), 1).replace("put-%d" % n, "put") + "END:VCALENDAR\r\n", **{"Content-Type": "text/calendar"})
    compare("PUT of a new event against a saved form", server, form, lambda: put("n%d.ics" % next(number), 1))
    page = server.page(user, "?p=c&dm=month&cd=6/15/2035")
    event = re.search(r"p=e&id=(\d+)", page)[1]
    compare("PUT of a changed event against a saved form", server, lambda: form(id=event), lambda: put("c.ics", next(number)))


def importing(server, user):
    text = calendar_text(range(IMPORTED), "import")
    before = server.memory_mib()
    preview, page = timed(lambda: server.post_file(user, "/sharing?act=preview", "file", text))
    posted = html.unescape(re.search(r'<TEXTAREA NAME="text" HIDDEN>(.*?)</TEXTAREA>', page, re.S)[1])
    seconds, _ = timed(lambda: server.post_file(user, "/sharing?act=import", "text", posted))
    print("%-52s preview %.1f s, import %.1f s; resident %.0f MiB before, %.0f after, %.0f at most" % (
        "%d events (%.1f MB)" % (IMPORTED, len(text) / 1e6), preview, seconds, before, server.memory_mib(), server.memory_mib("VmHWM")), flush=True)


class Both:
    """Two servers as one for `compare`."""

    def __init__(self, *servers):
        self._servers = servers

    def processor_us(self):
        return sum(server.processor_us() for server in self._servers)


def pages_beside(database):
    without, beside = Server(database, False), Server(database, True)
    for server in (without, beside):
        server.log_in("asa")
    day = time.strftime("%m/%d/%Y")  # around which the demo company's events are
    for view in ("month", "week", "day"):
        query = "?p=c&cd=%s&dm=%s" % (day, view)
        compare("%s page with empty tables against without sharing" % view, Both(without, beside),
                lambda: without.page("asa", query), lambda: beside.page("asa", query))
    without.stop()
    beside.stop()


def main():
    database = POSTGRESQL or FOLDER + "/demo.db"
    subprocess.run([EXECUTABLE, "init", database, "--demo"], check=True, stdout=subprocess.DEVNULL)
    pages_beside(database)
    if not POSTGRESQL:
        database = with_rows(database)
    server = Server(database, True)
    users = (SENT,) if POSTGRESQL else (MADE_ON_PAGES, SENT)
    for user in (*users, IMPORTING):
        server.log_in(user)
        server.make_password(user)
    text = calendar_text(range(EVENTS))
    page = server.post_file(SENT, "/sharing?act=preview", "file", text)
    server.post_file(SENT, "/sharing?act=import", "text", html.unescape(re.search(r'HIDDEN>(.*?)</TEXTAREA>', page, re.S)[1]))
    if POSTGRESQL:
        # The server does it by itself within minutes.
        subprocess.run(["psql", "-q", POSTGRESQL, "-c", "ANALYZE"], check=True)
    for user in users:
        first_synchronisation(server, user)
    for user in users:
        feed(server, user)
        polls(server, user)
    saving(server, SAVING)
    server.stop()
    fresh = Server(server.database, True)
    fresh.log_in(IMPORTING)
    importing(fresh, IMPORTING)
    fresh.stop()


try:
    main()
finally:
    shutil.rmtree(FOLDER)

"""A started server with the demo company, its pages as a person sees them, and its answers as a device gets them."""
import base64
import datetime
import html
import http.client
import os
import pathlib
import re
import subprocess
import tempfile
import unittest
import urllib.parse
import uuid
import xml.etree.ElementTree

REPOSITORY = pathlib.Path(__file__).resolve().parents[2]
ORLUNE = os.environ.get("ORLUNE", str(REPOSITORY / "build/release/orlune"))
PASSWORD = "demo1"
PAGE = "/calendar"
CONFIGURATION = """
[server]
listen = "127.0.0.1:0"
site = "%s"
time_zone = "Europe/Helsinki"
[[page]]
path = "%s"
DBPath = "calendar.db"
Sharing = true
sharing_with_login = true
"""


class Answer:
    def __init__(self, response):
        self.status, self.headers = response.status, response.headers
        self.body = response.read()
        self.text = self.body.decode()


class Server:
    """Its clock stands at noon of 1 June 2035, far from the company's own events."""

    def __init__(self):
        self._folder = tempfile.TemporaryDirectory(prefix="orlune-devices-")
        self.folder = pathlib.Path(self._folder.name)
        database = os.environ.get("ORLUNE_TEST_POSTGRESQL", str(self.folder / "calendar.db"))
        configuration = self.folder / "orlune.toml"
        configuration.write_text(CONFIGURATION % (REPOSITORY / "site", PAGE))
        subprocess.run([ORLUNE, "init", database, "--demo"], check=True, stdout=subprocess.DEVNULL)
        command = [ORLUNE, "serve", "--config", str(configuration), "--database", database, "--now", "2035-06-01T12:00:00"]
        self.log = open(self.folder / "log", "w+")
        self._process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=self.log, text=True)
        started = re.match(r"listening on http://([\d.]+):(\d+)", self._process.stdout.readline())
        if not started:
            raise RuntimeError("The server does not start: " + (self.folder / "log").read_text())
        self.host, self.port = started[1], int(started[2])
        self.url = "http://%s:%d" % (self.host, self.port)

    def stop(self):
        self._process.terminate()
        status = self._process.wait(30)
        self._process.stdout.close()
        self.log.close()
        self._folder.cleanup()
        if status != 0:
            raise RuntimeError("The server ended with %d" % status)

    def request(self, method, path, body=None, headers=None):
        connection = http.client.HTTPConnection(self.host, self.port, timeout=60)
        try:
            connection.request(method, path, body, headers or {})
            return Answer(connection.getresponse())
        finally:
            connection.close()

    def as_device(self, user, method, path, body=None, headers=None, password=PASSWORD):
        """`path` is below the address for devices."""
        basic = base64.b64encode(("%s:%s" % (user, password)).encode()).decode()
        return self.request(method, PAGE + "/dav/" + path, body, {"Authorization": "Basic " + basic, **(headers or {})})

    def put(self, path, text, **headers):
        """By the user who is named in "calendars/USER/..."."""
        return self.as_device(path.split("/")[1], "PUT", path, text, {"Content-Type": "text/calendar", **headers})

    def objects(self, user, calendar):
        """The texts of a calendar's events by their UIDs, with LF at the end of lines, as XML has them."""
        query = ('<C:calendar-query xmlns:C="urn:ietf:params:xml:ns:caldav" xmlns:D="DAV:"><D:prop><C:calendar-data/></D:prop>'
                 '<C:filter><C:comp-filter name="VCALENDAR"/></C:filter></C:calendar-query>')
        answer = self.as_device(user, "REPORT", "calendars/%s/%s/" % (user, calendar), query, {"Depth": "1"})
        texts = [data.text.replace("\r\n", "\n") for data in
                 xml.etree.ElementTree.fromstring(answer.body).iter("{urn:ietf:params:xml:ns:caldav}calendar-data")]
        return {re.search(r"^UID:(.*)$", text.replace("\n ", ""), re.M)[1]: text for text in texts}

    def get(self, path):
        return self.as_device(path.split("/")[1], "GET", path)


class Person:
    """A logged-in user in front of the pages."""

    def __init__(self, server, name):
        self._server, self.name = server, name
        answer = self._post("?p=l", {"Name": name, "Passwd": PASSWORD})
        self._cookies = "; ".join(line.split(";")[0] for line in answer.headers.get_all("Set-Cookie"))

    _cookies = ""

    def see(self, query):
        return self._server.request("GET", PAGE + query, headers={"Cookie": self._cookies}).text

    def _send(self, query, content_type, body):
        answer = self._server.request("POST", PAGE + query, body, {
            "Cookie": self._cookies, "Content-Type": content_type, "Origin": self._server.url})
        if answer.status not in (200, 302):
            raise AssertionError("POST %s: %d\n%s" % (query, answer.status, answer.text))
        return answer

    def _post(self, query, fields):
        return self._send(query, "application/x-www-form-urlencoded", urllib.parse.urlencode(fields).encode())

    def post(self, query, fields):
        """Returns the page that follows, or what is wrong with the form."""
        answer = self._post(query, fields)
        return answer.text if answer.status == 200 else self.see(answer.headers["Location"].removeprefix(PAGE))

    def post_file(self, query, fields, name, content):
        boundary = uuid.uuid4().hex
        body = b""
        for field, value in fields.items():
            body += ("--%s\r\nContent-Disposition: form-data; name=\"%s\"\r\n\r\n%s\r\n" % (boundary, field, value)).encode()
        if name is not None:
            body += ("--%s\r\nContent-Disposition: form-data; name=\"file\"; filename=\"%s\"\r\n"
                     "Content-Type: text/calendar\r\n\r\n" % (boundary, name)).encode() + content + b"\r\n"
        answer = self._send(query, "multipart/form-data; boundary=" + boundary, body + ("--%s--\r\n" % boundary).encode())
        return answer.text if answer.status == 200 else self.see(answer.headers["Location"].removeprefix(PAGE))

    def days(self, month, calendar=None):
        """The entries of a month, such as "10:00-11:00 Title", by date. `month` is (year, month)."""
        page = self.see("?p=c&dm=month&cd=%d/1/%d&cal=%s" % (month[1], month[0], urllib.parse.quote(calendar or self.name)))
        days = {}
        for cell in re.finditer(r"cd=(\d+)/(\d+)/(\d+)&dm=day\" CLASS=\"daynumber\".*?</TD>", page, re.S):
            day = datetime.date(int(cell[3]), int(cell[1]), int(cell[2]))
            lines = [html.unescape(re.sub("<[^>]*>", "", line)).strip() for line in cell[0].split("<BR>\r\n")[1:]]
            days[day] = [line for line in lines if line]
        return days

    def dates_of(self, text, month, calendar=None):
        """The days of the month that have an entry with `text`."""
        return [day.day for day, entries in self.days(month, calendar).items() if any(text in entry for entry in entries)]

    def save_event(self, title, day, **fields):
        """`day` as dates are typed, such as "6/15/2035". Fields: those of the form, also "id" of an event."""
        form = {"title": title, "calendar": self.name, "reptype": "none", "date1": day, "date2": "", **fields}
        return self.post("?p=e&act=save", form)

    def event_numbers(self, title, month):
        page = self.see("?p=c&dm=month&cd=%d/1/%d" % (month[1], month[0]))
        return re.findall(r"p=e&id=(\d+)\"[^>]*>(?:<B>[^<]*</B> )?%s</A>" % re.escape(html.escape(title, quote=False)), page)

    def delete_event(self, number):
        return self.post("?p=e&act=delete", {"id": number})

    @staticmethod
    def secrets_on(page):
        """The addresses, names and secrets that a page of /sharing shows."""
        return [html.unescape(text) for text in re.findall(r'CLASS="secret">([^<]*)<', page)]

    @staticmethod
    def keys_on(page):
        """The numbers of the keys that may be revoked on it."""
        return re.findall(r'NAME="key" VALUE="(\d+)"', page)


class DeviceTest(unittest.TestCase):
    """Tests with one server for all of them."""
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.server = Server()
        cls.addClassCleanup(cls.server.stop)

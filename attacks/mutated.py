"""mutated.py [COUNT [SEED]] | mutated.py --replay FILE...: honest requests with bytes, headers, encodings and numbers changed.

The server has to live, without a word of the sanitizers; no answer may be 500, repeat a tag that was sent, or have a
header that was sent as a value; the database has to stay sound. What fails is written to a file of var/attacks/, which
--replay sends again to a new demo.
"""
import html.parser
import os
import random
import re
import socket
import sys
import threading
import urllib.parse

from server import REPOSITORY, Browser, Server, finish, held
from walk import walk

ROUND = 20_000  # requests to one server
CLIENTS = 6
PAGES = (("/cal", "admin"), ("/cookie", "admin"), ("/cal", "asa"), ("/fixed", None))
TAG = b"<orlune"
VALUES = [value.encode() if isinstance(value, str) else value for value in (
    "", "'", "''", '"', "\\", "' OR ''='", "'; DELETE FROM Events --", "{}", "{0}", "%s%n%d", "</TEXTAREA>" + TAG.decode() + ">",
    "</SCRIPT>" + TAG.decode() + ">", "\">" + TAG.decode() + " a='", "x\r\nX-Injected: 1", "\r\n\r\n" + TAG.decode() + ">", "javascript:alert(1)", "../../etc/passwd",
    "0", "-1", "1e999", "NaN", "00000000001", "2147483648", "-2147483649", "9223372036854775808", "18446744073709551616", "9" * 400,
    "2/29/2027", "2/30/2026", "0/0/0", "1/1/0001", "12/31/9999", "1/1/10000", "13/13/13", "2026-11-20", "24:60", "25:00 PM",
    "yes", "Null", "all", "*", "%", "_", ",", ",,,,", "1,2,3,,", "a, b, 'c'", "admin", "asa", "default", "İıſKﬁ\u0345", "\U0001f600" * 9,
    b"\x00", b"a\x00b", b"\xff\xfe", b"\xc0\x80", b"\xed\xa0\x80", b"\xf4\x90\x80\x80", b"\xe2\x82", "x" * 300, "x" * 70_000)]
HEADERS = [b"Content-Length: -1", b"Content-Length: 99999999999999999999", b"Transfer-Encoding: chunked", b"Expect: 100-continue",
           b"Range: bytes=9-1", b"If-None-Match: *", b"If-Modified-Since: x", b"Cookie: orlune_session=", b"Cookie: OLOR=x&y; OLOR=",
           b"X-Forwarded-For: 1.2.3.4, x", b"Host: x", b"Accept-Language: \xff", b"Content-Encoding: gzip", b"Upgrade: h2c", b" folded: 1",
           b"Origin: null", b"Referer: http://127.0.0.1:1/", b"Connection: close, keep-alive", b"Content-Type: multipart/form-data"]
FREQUENT = b"'\"%&=;,./-:\\()<>* 0129\x00\r\n\xc3\x80\xff"


class Mutator:
    """Changes requests, which are (line and headers, body) without Content-Length; "@name@" in a header is a cookie."""

    def __init__(self, requests, randomness):
        self.requests, self.random = requests, randomness

    def changedBytes(self, text):
        choose = self.random
        for _ in range(1 + choose.randrange(4)):
            at = choose.randrange(len(text) + 1)
            byte = bytes([choose.choice(FREQUENT) if choose.random() < .5 else choose.randrange(256)])
            text = choose.choice((lambda: text[:at] + byte + text[at:], lambda: text[:at] + text[at + 1 + choose.randrange(4):],
                                  lambda: text[:at] + byte + text[at + 1:], lambda: text[:at] + text[:at][-8:] + text[at:]))()
        return text

    def changedFields(self, text):
        """Of a query or a form: other values, names and numbers of fields."""
        choose = self.random
        fields = text.split(b"&")
        for _ in range(1 + choose.randrange(3)):
            at = choose.randrange(len(fields))
            name, _, value = fields[at].partition(b"=")
            way = choose.randrange(8)
            if way < 5:
                fields[at] = name + b"=" + urllib.parse.quote_from_bytes(choose.choice(VALUES)).encode()
            elif way == 5:
                fields.insert(at, name + b"=" + urllib.parse.quote_from_bytes(choose.choice(VALUES)).encode())
            elif way == 6:
                fields[at] = re.sub(rb"\d+", lambda _: b"%d" % choose.choice((0, 1, 7, 12, 31, 99, 2026, 2**31, 2**63)), fields[at])
            else:
                del fields[at]
            if not fields:
                break
        if choose.random() < .01:
            fields *= 300
        return b"&".join(fields)

    def multipart(self, body):
        boundary = self.random.choice((b"b", b"--", b"x" * 70, b"\"b\"", b""))
        parts = [b"--" + boundary + b"\r\nContent-Disposition: form-data; name=\"" + name + b"\"\r\n\r\n" + value + b"\r\n"
                 for name, _, value in (field.partition(b"=") for field in body.split(b"&"))]
        return b"multipart/form-data; boundary=" + boundary, b"".join(parts) + b"--" + boundary + b"--\r\n"

    def next(self):
        """The bytes of a request, and whether its end is where the server will look for it."""
        choose = self.random
        head, body = choose.choice(self.requests)
        line, *headers = head.split(b"\r\n")
        isFramed = True
        way = choose.random()
        if body and way < .45:
            body = self.changedFields(body)
        elif body and way < .55:
            body = self.changedBytes(body)
        elif body and way < .6:
            kind, body = self.multipart(body)
            headers = [header for header in headers if not header.startswith(b"Content-Type")] + [b"Content-Type: " + kind]
            if choose.random() < .5:
                body = self.changedBytes(body)
        elif way < .85:
            method, _, rest = line.partition(b" ")
            target, _, version = rest.rpartition(b" ")
            path, _, query = target.partition(b"?")
            line = method + b" " + path + b"?" + self.changedFields(query) + b" " + version
            if choose.random() < .2:
                line, isFramed = self.changedBytes(line), False
        elif way < .95:
            isFramed = False
            at = choose.randrange(len(headers) + 1)
            if choose.random() < .5 and at < len(headers):
                headers[at] = self.changedBytes(headers[at])
            else:
                headers.insert(at, choose.choice(HEADERS))
        else:
            isFramed = False
            head, body = self.changedBytes(b"\r\n".join([line] + headers)), self.changedBytes(body)
            line, *headers = head.split(b"\r\n")
        if body or line.startswith(b"POST"):
            length = len(body)
            if choose.random() < .01:
                length, isFramed = length + choose.choice((-1, 1, 1000, 2**31, 2**64)), False
            headers.append(b"Content-Length: %d" % length)
        return b"\r\n".join([line] + headers) + b"\r\n\r\n" + body, isFramed and not line.startswith(b"HEAD")


class Connection:
    """Sends requests on a kept connection, and on one of its own what may not end where it should."""

    def __init__(self, server, number):
        self.server, self.source, self.kept = server, "127.0.%d.1" % (2 + number), None

    def answer(self, request, isFramed):
        """Head and body of the answer; empty when the connection ended without one."""
        if not isFramed:
            with self.server.connect(self.source, 30) as connection:
                try:
                    connection.sendall(request)
                    connection.shutdown(socket.SHUT_WR)
                except OSError:
                    pass
                return self.read(connection, True)
        for _ in range(2):  # again when the server had ended the kept one
            isNew = self.kept is None
            if isNew:
                self.kept = self.server.connect(self.source, 30)
            try:
                self.kept.sendall(request)
            except OSError:
                pass
            head, body = self.read(self.kept, False)
            if not head or b"\r\nconnection: close" in head.lower():
                self.kept.close()
                self.kept = None
            if head or isNew:
                return head, body
        return head, body

    @staticmethod
    def read(connection, toItsEnd):
        got, length = b"", None
        try:
            while True:
                if length is None and (end := got.find(b"\r\n\r\n") + 4) > 3:
                    match = re.search(rb"\r\ncontent-length: (\d+)", got[:end].lower())
                    length = end + int(match[1]) if match else end
                if length is not None and not toItsEnd and len(got) >= length:
                    break
                piece = connection.recv(65536)
                if not piece:
                    break
                got += piece
                got = re.sub(rb"\AHTTP/1.1 100 [^\r]*\r\n\r\n", b"", got)
        except TimeoutError:
            return b"timeout", b""
        except OSError:
            pass
        head, _, body = got.partition(b"\r\n\r\n")
        return head, body


def recorded(browser, requests):
    """As the mutator takes them."""
    names = "; ".join("%s=@%s@" % (name, name) for name in browser.cookies)
    for query, form in requests:
        head = "%s %s%s HTTP/1.1\r\nHost: 127.0.0.1" % (
            "GET" if form is None else "POST", browser.page, urllib.parse.quote(query, safe="%/?&=;+,:@!$'()*~"))
        if names:
            head += "\r\nCookie: " + names
        if form is not None:
            head += "\r\nContent-Type: application/x-www-form-urlencoded"
        yield head.encode(), urllib.parse.urlencode(form or ()).encode()


class _Tags(html.parser.HTMLParser):
    """Whether a page has a tag of ours, outside its attributes and scripts."""

    def __init__(self, page):
        super().__init__()
        self.areFound = False
        self.feed(page.decode("utf-8", "replace"))

    def handle_starttag(self, tag, attributes):
        self.areFound |= tag.startswith("orlune")


class Attack:
    """One demo, visited by several clients at a time."""

    def __init__(self, server, page, user):
        self.server, self.page, self.user = server, page, user
        self.lock, self.failures, self.statuses, self.refused = threading.Lock(), [], {}, 0
        requests, self.browser = walk(server, page, user)
        self.requests = list(recorded(self.browser, requests))
        if user:
            self.requests.append((b"POST %s?p=l HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Type: application/x-www-form-urlencoded"
                                  % page.encode(), b"Name=%s&Passwd=demo1" % user.encode()))

    def withCookies(self, request):
        head, end, body = request.partition(b"\r\n\r\n")
        for name, (value, _) in list(self.browser.cookies.items()):
            head = head.replace(b"@%s@" % name.encode(), value.encode())
        return head + end + body

    def refreshLogin(self):
        """A mutation logged out, or changed the password."""
        try:
            if not self.browser.isIn():
                browser = Browser(self.server, self.page)
                self.browser = browser.login(self.user) if self.user else browser
                self.browser.get("?p=c")
        except (RuntimeError, OSError, ValueError):
            self.refused += 1

    def check(self, request, head, body):
        status = head.split(b"\r\n")[0][9:12].decode("latin-1") if head.startswith(b"HTTP/") else head.decode("latin-1") or "none"
        fault = ("is 500" if status == "500" else "has a tag that was sent" if TAG in body and _Tags(body).areFound else
                 "has a header that was sent" if b"\r\nx-injected" in head.lower() else
                 "did not come in 30 s" if status == "timeout" else "is none: the server ended" if self.server.process.poll() is not None
                 else None)
        with self.lock:
            self.statuses[status] = self.statuses.get(status, 0) + 1
            if fault and len(self.failures) < 20:
                folder = REPOSITORY + "/var/attacks"
                os.makedirs(folder, exist_ok=True)
                path = "%s/%d_%d.request" % (folder, os.getpid(), len(os.listdir(folder)))
                with open(path, "wb") as file:
                    file.write(b"%s %s\n" % (self.page.encode(), (self.user or "-").encode()) + request)
                self.failures.append("the answer to %s %s" % (path, fault))

    def run(self, count, seed):
        def client(number):
            mutator = Mutator(self.requests, random.Random("%s %d" % (seed, number)))
            connection = Connection(self.server, number)
            for i in range(count // CLIENTS):
                if self.server.process.poll() is not None or len(self.failures) >= 20:
                    return
                if i % 100 == 0 and number == 0:
                    self.refreshLogin()
                request, isFramed = mutator.next()
                try:
                    self.check(request, *connection.answer(self.withCookies(request), isFramed))
                except OSError:
                    self.check(request, b"", b"")
        threads = [threading.Thread(target=client, args=(number,)) for number in range(CLIENTS)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()


def attacked(page, user, title, run):
    with Server() as server:
        attack = Attack(server, page, user)
        run(attack)
        errors = [line for line in server.log().splitlines() if "[error]" in line]
        held(title, not attack.failures, "; ".join(attack.failures + errors[:5]))
        print("      answers: " + ", ".join("%d %s" % (n, status) for status, n in sorted(attack.statuses.items())),
              "; %d logins refused" % attack.refused)
        server.heldThrough(title)


def replay(paths):
    for path in paths:
        with open(path, "rb") as file:
            page, user = file.readline().decode().split()
            request = file.read()
        attacked(page, None if user == "-" else user, path, lambda attack: attack.check(
            request, *Connection(attack.server, 0).answer(attack.withCookies(request), False)))


def main():
    if sys.argv[1:2] == ["--replay"]:
        return replay(sys.argv[2:])
    count, seed = (int(argument) for argument in (sys.argv[1:] + ["200000", "1"][len(sys.argv) - 1:]))
    rounds = max(1, count // ROUND)
    for number in range(rounds):
        page, user = PAGES[number % len(PAGES)]
        title = "%d mutated requests to %s as %s" % (count // rounds, page, user or "everybody")
        attacked(page, user, title, lambda attack: attack.run(count // rounds, seed * 1_000_000 + number))


main()
finish()

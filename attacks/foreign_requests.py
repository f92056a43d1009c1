"""Requests of other people: of foreign pages through a browser, of careless colleagues, of strangers.

Each attack is tried; then what honest people do has to work still.
"""
import atexit

from server import Browser, Server, finish, held

server = Server()
atexit.register(server.__exit__)
sql = server.sql


def attack(name, works):
    held(name, not works)


def honest(name, works):
    held("honest: " + name, works)


def message(recipient, subject="s"):
    sql("INSERT INTO Messages (Sender, Recipient, SentDate, Subject, Content, Viewed) VALUES ('admin', ?, "
        "'2026-11-20 10:00:00', ?, 'SECRETCONTENT', 0)", recipient, subject)
    return sql("SELECT max(MessageID) FROM Messages")[0][0]


def event(owner, title="t", private=0):
    sql("INSERT INTO Events (EventName, Owner, Type, BeginDate, Private) VALUES (?, ?, 'none', '2026-11-25', ?)", title,
        owner, private)
    return sql("SELECT max(EventID) FROM Events")[0][0]


exists = lambda table, key, number: sql("SELECT count(*) FROM %s WHERE %s = ?" % (table, key), number)[0][0] > 0
users = [name for (name,) in sql("SELECT Name FROM Calendars WHERE IsGroup = 0 AND Name <> 'admin'")]
ann, ben = users[:2]
kMessage, kEvent = ("Messages", "MessageID"), ("Events", "EventID")

for page in ("/cal", "/cookie"):
    b = Browser(server, page).login(ann)
    n = message(ann)
    b.get("?p=m&act=del&msg=%d" % n, foreign=True)
    attack(page + " foreign link deletes a message", not exists(*kMessage, n))
    n = event(ann)
    b.get("?p=e&act=delete&id=%d" % n, foreign=True)
    attack(page + " foreign link deletes an event", not exists(*kEvent, n))
    n = event(ben)
    sql("INSERT INTO Events (EventName, Owner, Type, BeginDate, SuggID, SuggestState) VALUES ('x', ?, 'none', '2026-11-25', "
        "?, 'undecided')", ann, str(n))
    copy = sql("SELECT max(EventID) FROM Events")[0][0]
    b.get("?p=e&act=declined&id=%d" % n, foreign=True)
    attack(page + " foreign link declines an event", sql("SELECT SuggestState FROM Events WHERE EventID = ?", copy)[0][0] == "declined")
    b.get("?p=l", foreign=True)
    attack(page + " foreign link logs out", not b.isIn())
    b = Browser(server, page).login(ann)
    n = message(ann)
    b.get("?p=m&act=del&msg=%d" % n, headers={"Referer": "http://127.0.0.1:%d/x" % (server.port + 1)})
    attack(page + " link of another port deletes a message", not exists(*kMessage, n))
    n = message(ann)
    b.post("?p=m&act=del", {"msg": n}, foreign=True)
    attack(page + " foreign form deletes a message (no headers)", not exists(*kMessage, n))

b = Browser(server).login(ben)
n = message(ann, "foreign")
attack("somebody else's message is read", "SECRETCONTENT" in b.get("?p=m&act=view&msg=%d" % n).text)
attack("somebody else's message is answered", "SECRETCONTENT" in b.get("?p=m&act=reply&msg=%d" % n).text)
b.post("?p=m&act=del", {"msg": ", ".join(str(i) for i in range(1, n + 1))})
attack("somebody else's messages are deleted", not exists(*kMessage, n))

event(ann, "Zxqw dentist", 1)
known = "zx"
for step in range(4):  # the title, letter by letter
    for letter in "abcdefghijklmnopqrstuvwxyz":
        text = b.post("?p=e&act=results", {"search": known + letter, "cal": ann, "reptype": "",
                                           "date1": "11/25/2026"}).text
        if 'NAME="id"' in text or 'NAME="cd1"' in text:
            known += letter
            break
attack("a search reads a private title (%r)" % known, len(known) > 2)

before = server.log().count("[error]")
for msg in ("x", "1;", "", "1%20OR%201=1"):
    b.get("?p=m&act=view&msg=" + msg)
attack("a message number that is none fills the log", server.log().count("[error]") > before)

for number in range(10):
    answer = Browser(server).post("?p=l", {"Name": users[2], "Passwd": "guess %d" % number})
attack("an account is guessed without a pause", answer.status != 429)

NEEDED = ("content-security-policy", "permissions-policy", "x-content-type-options", "referrer-policy")
host = "Host: 127.0.0.1\r\nConnection: close\r\n"
for name, text in {
    "a page": "GET /cal HTTP/1.1\r\n" + host, "a file": "GET /css/default.css HTTP/1.1\r\n" + host,
    "404": "GET /x HTTP/1.1\r\n" + host, "405": "PUT /cal HTTP/1.1\r\n" + host,
    "403": "POST /cal HTTP/1.1\r\nOrigin: http://evil\r\nContent-Length: 0\r\n" + host,
    "413": "POST /cal HTTP/1.1\r\nContent-Length: 30000000\r\nContent-Type: application/x-www-form-urlencoded\r\n" + host,
    "414": "GET /cal?" + "z" * 9000 + " HTTP/1.1\r\n" + host,
    "431": "GET /cal HTTP/1.1\r\nX: " + "z" * 18000 + "\r\n" + host,
    "no Host": "GET /cal HTTP/1.1\r\nConnection: close\r\n",
    "two Hosts": "GET /cal HTTP/1.1\r\nHost: a\r\n" + host,
    "a blank in the address": "GET /cal x HTTP/1.1\r\n" + host,
}.items():
    head = server.raw((text + "\r\n").encode()).split("\r\n\r\n")[0].lower()
    attack("an answer without protection: %s (%s)" % (name, head[9:12]), any(h + ": " not in head for h in NEEDED))
page = server.raw(("GET /cal HTTP/1.1\r\nHost: evil.example\r\nConnection: close\r\n\r\n").encode())
attack("a page answers under a foreign name (rebinding)", page[9:12] != "421")

b = Browser(server).login(ann)
count = lambda: sql("SELECT count(*) FROM Messages")[0][0] + sql("SELECT count(*) FROM Events")[0][0]
before = count()
b.post("?p=m&act=send", {"Vastaanottaja": ben, "Otsikko": "s", "Sisalto": "x" * 200_000})
b.post("?p=m&act=send", {"Vastaanottaja": ben, "Otsikko": "s" * 100_000, "Sisalto": "x"})
b.post("?p=e&act=save", {"title": "t" * 100_000, "calendar": ann, "reptype": "none", "date1": "11/25/2026"})
b.post("?p=e&act=save", {"title": "t", "addinfo": "x" * 200_000, "calendar": ann, "reptype": "none", "date1": "11/25/2026"})
attack("fields of 100 to 200 kB are stored (%d)" % (count() - before), count() > before)
sql("INSERT INTO Calendars (Name, FriendlyName, IsGroup, MemberOfGroups, AdminOfGroups) SELECT 'v' || i, 'v' || i, 0, '', '' FROM "
    "(WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) SELECT i FROM n)")
before = count()
b.post("?p=m&act=send", {"Vastaanottaja": "default", "Otsikko": "s", "Sisalto": "x" * 60_000})
attack("one sending stores %d copies of 60 kB" % (count() - before), count() > before)
before = count()
b.post("?p=m&act=send", {"Vastaanottaja": "default", "Otsikko": "s", "Sisalto": "x" * 1_000})
honest("one sending of 1 kB to %d" % (count() - before), count() > before)

for page in ("/cal", "/cookie"):
    b = Browser(server, page).login(ann)
    link = b.get("?p=c", foreign=True, headers={"Referer": "http://mail.example/"})
    honest(page + " a link from a mail shows the calendar", link.status == 200 and 'NAME="Passwd"' not in link.text)
    n = message(ann)
    b.post("?p=m&act=del", {"msg": n})
    honest(page + " a client without headers but with cookies deletes its message", not exists(*kMessage, n))
    if page == "/cal":
        b.cookies.pop("orlune_same_site", None)
        b.get("?p=c")
        n = message(ann)
        b.get("?p=m&act=del&msg=%d" % n)
        honest(page + " a login from before is completed by the next page", not exists(*kMessage, n))
    kept = dict(b.cookies)
    b.get("?p=l")
    honest(page + " logging out leaves no cookie", not b.cookies and not b.isIn())
    b.cookies = {name: pair for name, pair in kept.items() if name == "orlune_session"}
    honest(page + " a login over an ended session", b.login(ben).isIn())

server.heldThrough("requests of other people")
finish()

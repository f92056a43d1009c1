"""A server that is killed again and again while people save and send suggestions: what was acknowledged is there, and
nothing is there in part. Usage: kills.py [ROUNDS]
"""
import http.client
import random
import sys
import threading
import time
import urllib.parse

from server import Browser, Server, finish, held

ROUNDS = int(sys.argv[1]) if len(sys.argv) > 1 else 100
SAVERS, RECIPIENTS = 16, 3


def save(server, cookies, user, recipients, name, acknowledged):
    """Saves until the server is gone. Every second event is a suggestion to others, which is seven rows."""
    connection = http.client.HTTPConnection("127.0.0.1", server.port, timeout=20)
    try:
        for number in range(1_000_000):
            title = "%s %d" % (name, number)
            form = {"title": title, "reptype": "none", "date1": "3/15/2004", "calendar": user}
            action = "save"
            if number % 2:
                action, form["vastaanottaja"] = "send", ", ".join(recipients)
            connection.request("POST", "/cal?p=e&act=" + action, urllib.parse.urlencode(form), {
                "Cookie": cookies, "Content-Type": "application/x-www-form-urlencoded"})
            answer = connection.getresponse()
            text = answer.read()
            if answer.status == 302:
                acknowledged[title] = number % 2
            elif answer.status != 503:
                held("saving", False, "%d %s" % (answer.status, text[:200]))
                return
    except (OSError, http.client.HTTPException):
        pass


def rows(server, table, column):
    found = {}
    for title, count in server.sql("SELECT %s, COUNT(*) FROM %s GROUP BY %s" % (column, table, column)):
        found[title] = count
    return found


with Server() as server:
    users = []
    for (name,) in server.sql("SELECT Name FROM Calendars ORDER BY CalendarID"):
        try:
            Browser(server).login(name)
            users.append(name)
        except RuntimeError:
            pass
    users = users[1:]
    acknowledged, lost, partial = {}, [], []
    for round in range(ROUNDS):
        cookies = ["; ".join("%s=%s" % (name, value) for name, (value, _) in Browser(server).login(user).cookies.items())
                   for user in (users[i % len(users)] for i in range(SAVERS))]
        savers = [threading.Thread(target=save, args=(
            server, cookies[i], users[i % len(users)], [u for u in users if u != users[i % len(users)]][:RECIPIENTS],
            "%d-%d" % (round, i), acknowledged)) for i in range(SAVERS)]
        for saver in savers:
            saver.start()
        time.sleep(random.uniform(.05, .6))
        server.kill()
        for saver in savers:
            saver.join()
        server.start()
        events = rows(server, "Events", "EventName")
        for title, isSuggestion in acknowledged.items():
            expected = 1 + RECIPIENTS if isSuggestion else 1
            if events.get(title) != expected:
                lost.append((title, events.get(title), expected))
        partial += [(title, count) for title, count in events.items()
                    if "-" in title and title.split(" ")[0].replace("-", "").isdigit()
                    and count != (1 + RECIPIENTS if int(title.split(" ")[1]) % 2 else 1)]
    held("%d kills: all of %d acknowledged saves are there, once" % (ROUNDS, len(acknowledged)), not lost, lost[:3])
    held("and nothing in part", not partial, partial[:3])
    held("and there were some", len(acknowledged) > ROUNDS)
    server.heldThrough("the kills")
finish()

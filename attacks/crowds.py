"""Slow, half and silent connections and a log that nobody reads, beside a visitor from another address."""
import os
import resource
import socket
import time

from server import Browser, Server, finish, held

resource.setrlimit(resource.RLIMIT_NOFILE, (resource.getrlimit(resource.RLIMIT_NOFILE)[1],) * 2)
OUTSIDE = "127.0.9.9"
HALF = b"GET /cal HTTP/1.1\r\nHost: 127.0.0.1\r\nX: "


def until(condition, seconds):
    end = time.monotonic() + seconds
    while not condition() and time.monotonic() < end:
        time.sleep(.1)
    return condition()


def connections(server, count, addresses, request=HALF, receiveBuffer=None):
    """As many as the server accepts. Each has sent the request."""
    accepted = []
    for number in range(count):
        try:
            connection = server.connect("127.0.1.%d" % (number % addresses + 1))
            if receiveBuffer:
                connection.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, receiveBuffer)
            connection.sendall(request)
            accepted.append(connection)
        except OSError:
            pass
    return accepted


def isOpen(connection):
    connection.setblocking(False)
    try:
        return connection.recv(65536) != b""
    except BlockingIOError:
        return True
    except OSError:
        return False


def halfRequests():
    with Server() as server:
        crowd = connections(server, 1200, 3)
        for connection in crowd:
            try:
                connection.shutdown(socket.SHUT_WR)
            except OSError:
                pass
        held("1,200 half requests that ended: the visitor is answered", server.answers(OUTSIDE))
        held("and so is their address", server.answers("127.0.1.1"))
        until(lambda: not any(map(isOpen, crowd)), 2)
        held("and within 2 s none is open", not any(map(isOpen, crowd)), sum(map(isOpen, crowd)))
        crowd = connections(server, 2000, 5)
        held("2,000 half requests left open: the visitor is answered", server.answers(OUTSIDE))
        until(lambda: not any(map(isOpen, crowd)), 9)
        held("and after 9 s none is open", not any(map(isOpen, crowd)), sum(map(isOpen, crowd)))
        body = b"POST /cal?p=l HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Type: application/x-www-form-urlencoded\r\nContent-Length: 900\r\n\r\nN"
        crowd = connections(server, 2000, 5, body)
        held("2,000 half forms left open: the visitor is answered", server.answers(OUTSIDE))
        server.heldThrough("half requests")


def manyConnections():
    with Server() as server:
        crowd = connections(server, 9500, 250, b"GET /healthz HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n")
        held("9,500 idle connections of 250 addresses: the visitor is answered", server.answers(OUTSIDE), len(crowd))
        for connection in crowd:
            connection.close()
        server.heldThrough("many connections")


def proxy():
    with Server({"trusted_proxies": '["127.0.1.1"]'}) as server:
        crowd = []
        for number in range(5000):
            crowd += connections(server, 1, 1, b"GET /cal HTTP/1.1\r\nHost: 127.0.0.1\r\nX-Forwarded-For: 10.0.%d.%d\r\n\r\n" % (
                number // 250, number % 250))
        answered = 0
        for connection in crowd:
            try:
                answered += b" 200 " in connection.recv(65536)[:13]
            except OSError:
                pass
        held("5,000 visitors behind one proxy: none is refused", answered == 5000, "%d answered" % answered)
        server.heldThrough("a proxy")


def nonReaders():
    with Server() as server:
        cookies = "; ".join("%s=%s" % (name, value) for name, (value, _) in Browser(server).login("admin").cookies.items())
        server.sql("INSERT INTO Messages (Sender, Recipient, SentDate, Subject, Content, Viewed) WITH RECURSIVE n(i) AS (SELECT 1 "
                   "UNION ALL SELECT i + 1 FROM n WHERE i < 20000) SELECT 'admin', 'admin', '2026-11-20 10:00:00', ?, '', 0 FROM n",
                   "x" * 200)
        before = server.megabytes()
        crowd = connections(server, 100, 5, b"GET /cal?p=m HTTP/1.1\r\nHost: 127.0.0.1\r\nCookie: %s\r\n\r\n" % cookies.encode(), 4096)
        peak = [before]

        def allAreMade():
            peak[0] = max(peak[0], server.megabytes())
            return server.log().count("GET /cal ") >= 100
        until(allAreMade, 60)
        held("100 readers that do not read a page of 10 MB: the memory is bounded", peak[0] - before < 900,
             "%d MB more" % (peak[0] - before))
        held("and the visitor is answered", server.answers(OUTSIDE))
        for connection in crowd:
            connection.close()
        server.heldThrough("readers that do not read")


def fewFiles():
    with Server(files=64) as server:
        server.answers(OUTSIDE)
        crowd = connections(server, 120, 40)
        before = server.processorSeconds()
        time.sleep(2)
        used = server.processorSeconds() - before
        held("more connections than descriptors: the server does not spin", used < .5, "%.2f s of the processor in 2 s" % used)
        for connection in crowd:
            connection.close()
        held("and answers when there are some", server.answers(OUTSIDE))
        server.heldThrough("few descriptors")


def unreadLog():
    reading, writing = os.pipe()
    with Server(log=writing) as server:
        os.close(writing)
        answered = 0
        while answered < 1500 and server.answers(OUTSIDE):
            answered += 1
        held("a log that nobody reads: 1,500 requests are answered", answered == 1500, "%d answered" % answered)
        code = server.stop()
        held("and the server stops", code == 0, code)
    os.close(reading)


for attack in (halfRequests, manyConnections, proxy, nonReaders, fewFiles, unreadLog):
    attack()
finish()

#!/usr/bin/env python3
"""Many clients at once: each asks for the same pages again and again over a connection it keeps.

usage: web_clients.py HOST PORT CLIENTS SECONDS PATH…      prints "ANSWERS FAILURES"
A failure is anything but status 200 with a whole body.
"""
import http.client
import sys
import threading
import time

host, port, clients, seconds = sys.argv[1], int(sys.argv[2]), int(sys.argv[3]), float(sys.argv[4])
paths = sys.argv[5:]
end = time.monotonic() + seconds
lock = threading.Lock()
answers, failures = 0, 0


def ask(number):
    global answers, failures
    good, bad, turn = 0, 0, number
    connection = http.client.HTTPConnection(host, port, timeout=30)
    while time.monotonic() < end:
        try:
            connection.request("GET", paths[turn % len(paths)])
            response = connection.getresponse()
            body = response.read()
            if response.status == 200 and body:
                good += 1
            else:
                bad += 1
        except (OSError, http.client.HTTPException):
            bad += 1
            connection.close()
        turn += 1
    connection.close()
    with lock:
        answers += good
        failures += bad


threads = [threading.Thread(target=ask, args=(number,)) for number in range(clients)]
for thread in threads:
    thread.start()
for thread in threads:
    thread.join()
print(answers, failures)

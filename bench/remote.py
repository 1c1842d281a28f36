#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""remote.py BUILD_DIR: measures kelvo-remote-sim: bus bytes of a sample, reads with 1 and 32 viewers, silence without
viewers, time from an order to the bus, memory, requests per second while the board is busy. Takes two minutes. Prints a
list in JSON: what was measured, its figure, whether it is as wanted."""
import json
import os
import pathlib
import re
import shutil
import socket
import statistics
import subprocess
import sys
import tempfile
import threading
import time

build = pathlib.Path(sys.argv[1])
folder = pathlib.Path(tempfile.mkdtemp())
rows = []
environment = os.environ | {"KELVO_SIM_STATE": f"{folder}/board.json", "STATE_DIRECTORY": f"{folder}"}


def start(interval, **variables):
    program = subprocess.Popen(
        [build / "kelvo-remote-sim", "--listen", "127.0.0.1:0", "--interval", str(interval)],
        env=environment | variables, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    program.port = int(re.search(r":(\d+);", program.stdout.readline())[1])
    program.key = (folder / "kelvo-remote-sim.key").read_text().strip()
    return program


def end(program):
    program.terminate()
    program.wait()


def connect(program, method, path, body=""):
    connection = socket.create_connection(("127.0.0.1", program.port))
    head = f"{method} {path} HTTP/1.1\r\nHost: localhost\r\nCookie: kelvo-remote={program.key}\r\n"
    if body:
        head += f"Content-Type: application/json\r\nContent-Length: {len(body)}\r\n"
    connection.sendall(f"{head}\r\n{body}".encode())
    return connection


class Viewers:
    """Listeners that read all they get, until closed."""

    def __init__(self, program, count):
        self.connections = [connect(program, "GET", "/events") for _ in range(count)]
        for connection in self.connections:
            threading.Thread(target=self.read, args=[connection], daemon=True).start()

    @staticmethod
    def read(connection):
        try:
            while connection.recv(65536):
                pass
        except OSError:
            pass

    def close(self):
        for connection in self.connections:
            connection.shutdown(socket.SHUT_RDWR)
            connection.close()


def order(program, **members):
    connection = connect(program, "POST", "/do", json.dumps(members))
    assert connection.recv(4096).startswith(b"HTTP/1.1 202"), "an order is accepted"
    connection.close()


PLAY = {"order": "play", "service_id": 17333, "component": 12, "index": 33}


def transactions(trace):
    """The names and lengths of the transactions in a trace."""
    return [(name, int(length)) for name, length in re.findall(r" spi (\S+) (\d+) ", trace.read_text())]


def sample_cost(sent):
    """Bytes for each sample; the first is not counted, which may be cut."""
    first, *others = [at for at, (name, _) in enumerate(sent) if name == "DAB_DIGRAD_STATUS"]
    return sum(length for _, length in sent[first:others[-1]]) / len(others)


def status(program, name):
    return int(re.search(rf"^{name}:\s+(\d+)", pathlib.Path(f"/proc/{program.pid}/status").read_text(), re.M)[1])


def wake_ups(program):
    tasks = pathlib.Path(f"/proc/{program.pid}/task").iterdir()
    return sum(int(re.search(r"\nvoluntary_ctxt_switches:\s+(\d+)", (task / "status").read_text())[1]) for task in tasks)


def row(what, figure, wanted):
    rows.append([what, figure, wanted])


# Its chip is booted and its stations are known in the runs that follow.
program = start(100, KELVO_SIM_REALTIME="0")
crowd = Viewers(program, 32)
order(program, order="find")
while not (folder / "kelvo-remote-sim.scan.json").exists():
    time.sleep(0.1)
order(program, **PLAY)
time.sleep(2)
resident = status(program, "VmHWM")
end(program)

trace = folder / "trace"
counts = {}
for viewers in 1, 32:
    program = start(100, KELVO_SIM_TRACE=str(trace))
    time.sleep(1)
    crowd = Viewers(program, viewers)
    time.sleep(1)
    before = transactions(trace)
    time.sleep(10)
    counts[viewers] = transactions(trace)[len(before):]
    crowd.close()
    time.sleep(2)
    quiet, awake = len(transactions(trace)), wake_ups(program)
    if viewers == 32:
        time.sleep(60)
        quiet, awake = len(transactions(trace)) - quiet, wake_ups(program) - awake
    end(program)

watch = folder / "watch"
subprocess.run([build / "kelvo-watch-sim", "-i", "0", "-n", "50"], stdout=subprocess.DEVNULL, check=True,
               env=environment | {"KELVO_SIM_TRACE": str(watch)})
minimum = sample_cost(transactions(watch))
for viewers, sent in counts.items():
    ratio = sample_cost(sent) / minimum
    row(f"bus bytes of a sample with {viewers} viewer{'s' * (viewers > 1)}, beside `kelvo-watch`", f"{ratio:.3f}",
        f"{ratio:.3f}" == "1.000")
taken = [sum(name == "DAB_DIGRAD_STATUS" for name, _ in sent) for sent in counts.values()]
row("samples in 10 s with 1 and with 32 viewers, one each 100 ms at most", f"{taken[0]}, {taken[1]}",
    max(taken) <= 101)
row("transactions in 60 s without viewers", quiet, quiet == 0)
row("wake-ups in 60 s without viewers", awake, awake == 0)

pipe = folder / "pipe"
os.mkfifo(pipe)
reader = os.open(pipe, os.O_RDONLY | os.O_NONBLOCK)
program = start(1000, KELVO_SIM_TRACE=str(pipe))
os.set_blocking(reader, True)
lines = os.fdopen(reader)
moments = []


def note():
    for line in lines:
        if " spi " in line:
            moments.append(time.monotonic())


threading.Thread(target=note, daemon=True).start()
time.sleep(2)
delays = []
for level in range(100):
    moments.clear()
    sent = time.monotonic()
    order(program, order="volume", level=level % 64)
    while not moments:
        time.sleep(0.0005)
    delays.append(1000 * (moments[0] - sent))
    time.sleep(0.1)
median = statistics.median(delays)
row("from an order to the first byte on the bus, median of 100", f"{median:.2f} ms", median < 10)
end(program)
row("peak of resident memory, with a boot, a search and 32 viewers", f"{resident:,} KB", resident < 10000)
page = connect(program := start(1000), "GET", "/")
size = int(re.search(rb"Content-Length: (\d+)", page.recv(4096))[1])
page.close()
end(program)
row("the page, bytes in one request", size, size < 40000)

faults = folder / "faults.json"
faults.write_text('[{"command": "DAB_TUNE_FREQ", "stc_never": true}]')
program = start(1000, KELVO_SIM_FAULTS=str(faults))
time.sleep(1)
order(program, **(PLAY | {"index": 7}))
request = (f"GET /stations HTTP/1.1\r\nHost: localhost\r\nCookie: kelvo-remote={program.key}\r\n\r\n").encode()
connection = socket.create_connection(("127.0.0.1", program.port))
begin = time.monotonic()
answered = 0
while time.monotonic() < begin + 5:
    connection.sendall(request)
    answer = connection.recv(65536)
    length = int(re.search(rb"Content-Length: (\d+)", answer)[1]) + answer.index(b"\r\n\r\n") + 4
    while len(answer) < length:
        answer += connection.recv(65536)
    assert answer.startswith(b"HTTP/1.1 200"), answer
    answered += 1
rate = answered / (time.monotonic() - begin)
connection.close()
end(program)
row("requests of `/stations` in a second while the board is busy", int(rate), rate > 1000)
shutil.rmtree(folder)
print(json.dumps(rows))

#!/usr/bin/env python3
"""A network of our own between collectors and servers on loopback: cut, slow, or losing what was just about to arrive.

    proxy.py CONTROL LISTEN:SERVER…      ports; prints "ready" and goes on until it is ended

Whoever connects to the port CONTROL sends a line and gets one ("ok", or a number):

    LINK delay MILLISECONDS  of a round trip, half of it each way
    LINK cut WHAT            both: nothing arrives; requests, answers: nothing of these; off: connections break, none is made
    LINK late SECONDS        statements arrive so much later, and their answers go nowhere
    LINK lose COUNT          of so many inserts the answers are lost, and their connections break
    LINK tear COUNT          so many answers break off in their middle
    LINK well                none of it any more; what was on its way arrives
    LINK count               statements that have arrived since it began

LINK counts from 1, or is "all". What is silent in a cut arrives after it, as TCP sends it again.
"""
import asyncio
import dataclasses
import re
import sys
import urllib.parse

BLOCK = 256 * 1024


@dataclasses.dataclass
class Statement:
    """What a client sends, as far as it has to be known what it is."""
    head: bytes
    body: bytes

    @property
    def text(self):
        query = urllib.parse.parse_qs(urllib.parse.urlsplit(self.head.split(b" ", 2)[1].decode()).query).get("query")
        return query[0] if query else self.body.decode(errors="replace")

    @property
    def is_insert(self):
        return self.text.startswith("INSERT")

    @property
    def step(self):
        """Of a writer, in its own words."""
        table = re.search(r"_(young|chunk|batch|amendment|turn|catalogue|about)`", self.text)
        table = table.group(1) if table else ""
        if self.is_insert and table == "turn":
            renewed, state = int.from_bytes(self.body[-9:-1], "little"), self.body[-1]
            return "gives the turn back" if state == 0 else "claims the turn" if renewed == 1 else "renews its claim"
        if self.is_insert:
            return {"young": "inserts young records", "chunk": "inserts chunks", "amendment": "inserts amendments",
                    "batch": "commits a batch"}.get(table, "inserts something else")
        if self.text.startswith("ALTER"):
            return "sweeps"
        if table == "turn":
            return "asks whose turn it is"
        return {"young": "reads young records", "chunk": "reads chunks", "amendment": "reads amendments"}.get(
            table, "asks about the server")


class Lost(Exception):
    """The connection ends here."""


class Link:
    """From one port to one server. `watch`, if any, is awaited with (statement, moment) at "before", "forwarded" and
    "answered"; it may raise Lost, and then the server's answer is still waited for, but goes nowhere."""

    def __init__(self, listen, server, watch=None):
        self.listen, self.server, self.watch = listen, server, watch
        self.delay = self.late = 0.0
        self.lose = self.tear = self.statements = self.busy = 0
        self.off = False
        self.passes = {"requests": asyncio.Event(), "answers": asyncio.Event()}
        self.writers = set()
        self.well()

    async def start(self):
        self.listening = await asyncio.start_server(self.serve, "127.0.0.1", self.listen, limit=2**20)
        return self

    def well(self):
        self.delay = self.late = 0.0
        self.lose = self.tear = 0
        self.off = False
        for event in self.passes.values():
            event.set()

    def cut(self, what):
        for name in ("requests", "answers") if what == "both" else (what,) if what != "off" else ():
            self.passes[name].clear()
        if what == "off":
            self.off = True
            for writer in list(self.writers):
                writer.transport.abort()

    async def serve(self, reader, writer):
        if self.off:
            return writer.transport.abort()
        self.writers.add(writer)
        upstream = None
        try:
            await self.passes["requests"].wait()
            while statement := await self.received(reader):
                if upstream is None or upstream[0].at_eof():  # servers close what was idle for some seconds
                    upstream = await asyncio.open_connection("127.0.0.1", self.server, limit=2**20)
                self.busy += 1
                try:
                    await self.carry(statement, upstream, writer)
                finally:
                    self.busy -= 1
        except (Lost, OSError, asyncio.IncompleteReadError):
            pass
        finally:
            self.writers.discard(writer)
            writer.transport.abort() if self.off else writer.close()
            if upstream:
                upstream[1].close()

    async def received(self, reader):
        try:
            head = await reader.readuntil(b"\r\n\r\n")
        except asyncio.IncompleteReadError:
            return None
        length = re.search(rb"\r\n[Cc]ontent-[Ll]ength: *(\d+)", head)
        return Statement(head, await reader.readexactly(int(length.group(1))) if length else b"")

    async def carry(self, statement, upstream, writer):
        await self.seen(statement, "before")
        if self.delay:
            await asyncio.sleep(self.delay / 2)
        await self.passes["requests"].wait()
        loses = False
        if self.late:
            writer.transport.abort()
            await asyncio.sleep(self.late)
            loses = True
        elif statement.is_insert and self.lose > 0:
            self.lose -= 1
            loses = True
        upstream[1].write(statement.head + statement.body)
        await upstream[1].drain()
        self.statements += 1
        try:
            await self.seen(statement, "forwarded")
        except Lost:
            await self.answer(upstream[0], None)
            raise
        queue = asyncio.Queue(16)
        sending = asyncio.create_task(self.send(queue, writer, loses))
        try:
            await self.answer(upstream[0], queue, statement)
            await sending
        finally:
            sending.cancel()
        if loses:
            writer.transport.abort()
            raise Lost

    async def seen(self, statement, moment):
        if self.watch:
            await self.watch(statement, moment)

    async def answer(self, reader, queue, statement=None):
        """Reads one whole answer, and puts its bytes with the time they are due at."""
        due = asyncio.get_running_loop().time

        async def put(data):
            if queue:
                await queue.put((due() + self.delay / 2, data))

        head = await reader.readuntil(b"\r\n\r\n")
        length = re.search(rb"\r\n[Cc]ontent-[Ll]ength: *(\d+)", head)
        if length:
            rest = int(length.group(1))
            if statement and rest == 0:
                await self.seen(statement, "answered")
            await put(head)
            while rest:
                data = await reader.read(min(BLOCK, rest))
                if not data:
                    raise Lost
                rest -= len(data)
                if statement and not rest:
                    await self.seen(statement, "answered")
                await put(data)
        else:
            await put(head)
            while True:
                size = await reader.readuntil(b"\r\n")
                data = await reader.readexactly(int(size, 16) + 2)
                if statement and size == b"0\r\n":
                    await self.seen(statement, "answered")
                await put(size + data)
                if size == b"0\r\n":
                    break
        if queue:
            await queue.put((due(), None))

    async def send(self, queue, writer, loses):
        now, sent = asyncio.get_running_loop().time, 0
        while True:
            due, data = await queue.get()
            if due > now():
                await asyncio.sleep(due - now())
            if data is None:
                return
            if loses:
                continue
            await self.passes["answers"].wait()
            if self.tear > 0 and (sent > 0 or len(data) > 200):
                self.tear -= 1
                writer.write(data[:len(data) // 2])
                await writer.drain()
                writer.transport.abort()
                continue
            if writer.is_closing():
                continue  # the server's answer is read to its end all the same
            writer.write(data)
            sent += len(data)
            try:
                await writer.drain()
            except OSError:
                continue

    def told(self, word, value):
        if word == "count":
            return str(self.statements)
        if word == "delay":
            self.delay = float(value) / 1000
        elif word == "late":
            self.late = float(value)
        elif word == "cut":
            if value not in ("both", "requests", "answers", "off"):
                raise ValueError(value)
            self.cut(value)
        elif word in ("lose", "tear"):
            setattr(self, word, int(value))
        elif word == "well":
            self.well()
        else:
            raise ValueError(word)
        return "ok"


async def run(control, pairs):
    links = [await Link(*pair).start() for pair in pairs]

    async def ordered(reader, writer):
        try:
            while line := (await reader.readline()).decode().split():
                try:
                    which, word, value = (line + [""])[:3]
                    chosen = links if which == "all" else [links[int(which) - 1]]
                    answer = [link.told(word, value) for link in chosen][-1]
                except (ValueError, IndexError) as problem:
                    answer = f"not understood: {problem}"
                writer.write(answer.encode() + b"\n")
                await writer.drain()
        finally:
            writer.close()

    async with await asyncio.start_server(ordered, "127.0.0.1", control) as server:
        print("ready", flush=True)
        await server.serve_forever()


if __name__ == "__main__":
    asyncio.run(run(int(sys.argv[1]), [tuple(map(int, pair.split(":"))) for pair in sys.argv[2:]]))

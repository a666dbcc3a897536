#!/usr/bin/env python3
"""The network of proxy.py: what arrives, when, and what does not. With a small server of its own."""
import asyncio
import time
import unittest

from proxy import Link, Lost


class Network(unittest.IsolatedAsyncioTestCase):
    async def asyncSetUp(self):
        self.got = []
        self.server = await asyncio.start_server(self.answer, "127.0.0.1", 0)
        self.link = Link(0, self.server.sockets[0].getsockname()[1])
        await self.link.start()
        self.port = self.link.listening.sockets[0].getsockname()[1]

    async def asyncTearDown(self):
        self.server.close()
        self.link.listening.close()

    async def answer(self, reader, writer):
        try:
            while True:
                head = await reader.readuntil(b"\r\n\r\n")
                length = int(head.split(b"Content-Length: ")[1].split(b"\r\n")[0])
                self.got.append((await reader.readexactly(length)).decode())
                writer.write(b"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n" + b"200\r\n" + 512 * b"x" +
                             b"\r\n0\r\n\r\n")
        except (asyncio.IncompleteReadError, asyncio.CancelledError):
            pass
        finally:
            writer.close()

    async def ask(self, text="SELECT 1", patience=2):
        """The whole answer, or None where it does not come whole."""
        reader, writer = await asyncio.open_connection("127.0.0.1", self.port)
        try:
            writer.write(b"POST / HTTP/1.1\r\nContent-Length: %d\r\n\r\n" % len(text) + text.encode())
            return await asyncio.wait_for(reader.readuntil(b"\r\n0\r\n\r\n"), patience)
        except (asyncio.TimeoutError, asyncio.IncompleteReadError, OSError):
            return None
        finally:
            writer.close()

    async def test_passes_statements_and_answers(self):
        self.assertEqual((await self.ask()).count(b"x"), 512)
        self.assertEqual(self.got, ["SELECT 1"])

    async def test_delays_a_round_trip(self):
        self.link.told("delay", "200")
        begin = time.monotonic()
        await self.ask()
        self.assertGreater(time.monotonic() - begin, 0.19)

    async def test_a_cut_of_requests_lets_nothing_arrive(self):
        self.link.told("cut", "requests")
        self.assertIsNone(await self.ask(patience=0.2))
        self.assertEqual(self.got, [])

    async def test_a_cut_of_answers_lets_statements_arrive(self):
        self.link.told("cut", "answers")
        self.assertIsNone(await self.ask(patience=0.3))
        self.assertEqual(self.got, ["SELECT 1"])

    async def test_after_a_cut_all_is_well(self):
        self.link.told("cut", "off")
        self.assertIsNone(await self.ask(patience=0.2))
        self.link.told("well", "")
        self.assertIsNotNone(await self.ask())

    async def test_the_answer_of_an_insert_is_lost(self):
        self.link.told("lose", "1")
        self.assertIsNone(await self.ask("INSERT INTO it"))
        self.assertIsNotNone(await self.ask("INSERT INTO it"))
        self.assertEqual(len(self.got), 2)

    async def test_an_answer_is_torn(self):
        self.link.told("tear", "1")
        self.assertIsNone(await self.ask())
        self.assertIsNotNone(await self.ask())

    async def test_a_late_statement_arrives_without_an_answer(self):
        self.link.told("late", "0.2")
        self.assertIsNone(await self.ask())
        self.assertEqual(self.got, [])
        await asyncio.sleep(0.4)
        self.assertEqual(self.got, ["SELECT 1"])

    async def lost_at(self, moment):
        async def watch(statement, at):
            if at == moment:
                raise Lost
        self.link.watch = watch
        self.assertIsNone(await self.ask("INSERT INTO it"))
        return self.got

    async def test_who_is_stopped_before_a_statement_has_not_sent_it(self):
        self.assertEqual(await self.lost_at("before"), [])

    async def test_who_is_stopped_after_a_statement_has_sent_it(self):
        self.assertEqual(await self.lost_at("forwarded"), ["INSERT INTO it"])

    async def test_who_is_stopped_at_the_answer_has_sent_it(self):
        self.assertEqual(await self.lost_at("answered"), ["INSERT INTO it"])


if __name__ == "__main__":
    unittest.main()

# SPDX-License-Identifier: MIT
"""A TCP proxy that makes a server on loopback look as far away as the round trip that it adds."""
import asyncio
import threading

READ_BYTES = 256 * 1024


class DelayProxy:
    """Forwards connections to 127.0.0.1:`port`. Every byte arrives half a round trip later, and what a
    client sends first also waits for the round trip that opening a connection would have cost."""

    def __init__(self, port, round_trip):
        self._target = port
        self._round_trip = round_trip
        ready = threading.Event()
        self._loop = asyncio.new_event_loop()
        self._thread = threading.Thread(target=self._serve, args=(ready,), daemon=True)
        self._thread.start()
        ready.wait()

    def _serve(self, ready):
        asyncio.set_event_loop(self._loop)
        server = self._loop.run_until_complete(
            asyncio.start_server(self._accept, "127.0.0.1", 0, limit=READ_BYTES))
        self.port = server.sockets[0].getsockname()[1]
        ready.set()
        self._loop.run_forever()

    async def _accept(self, reader, writer):
        far_reader, far_writer = await asyncio.open_connection(
            "127.0.0.1", self._target, limit=READ_BYTES)
        await asyncio.gather(self._forward(reader, far_writer, self._round_trip),
                             self._forward(far_reader, writer, 0))

    async def _forward(self, reader, writer, opening):
        # What was read waits in the queue until its time; reading goes on meanwhile, as packets
        # follow each other on a long line.
        queue = asyncio.Queue()
        sender = asyncio.create_task(self._send(queue, writer))
        try:
            while data := await reader.read(READ_BYTES):
                due = self._loop.time() + self._round_trip / 2 + opening
                queue.put_nowait((due, data))
                opening = 0
        except ConnectionError:
            pass
        queue.put_nowait((self._loop.time() + self._round_trip / 2, None))
        await sender

    async def _send(self, queue, writer):
        try:
            while True:
                due, data = await queue.get()
                await asyncio.sleep(max(0, due - self._loop.time()))
                if data is None:
                    break
                writer.write(data)
                await writer.drain()
        except ConnectionError:
            pass
        writer.close()

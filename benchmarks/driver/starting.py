"""From starting `plotix open` to the drawn trend of the demonstration site, in a window on a virtual screen.

The program says when the X server has its trend, and ends; whether it is there is seen on the screen itself, which keeps
its picture in a file.
"""
import mmap
import os
import select
import shutil
import struct
import subprocess
import tempfile
import time

from contenders import Contender, Failed

SCREEN = (1400, 900)
GRAPH = (range(150, 500, 12), (350, 1150))  # rows and columns that lie in the graph wherever the panels end
DRAWN_COLORS = 300  # antialiased lines bring many, panels, texts and an empty graph about a hundred
PATIENCE_SECONDS = 180


class ProgramStart(Contender):
    """The first start, which builds the site, is not measured: it happens once in a site's life."""

    def missing(self, where):
        if not os.access(where.program("plotix"), os.X_OK):
            return "plotix is not built"
        return None if shutil.which("Xvfb") else "Xvfb is not installed"

    def start(self, where):
        super().start(where)
        self.home = tempfile.mkdtemp(prefix="start-", dir=where.data)
        self.screen = VirtualScreen(self.home)
        self.round()

    def round(self):
        environment = self.where.environment(DISPLAY=self.screen.display, XDG_RUNTIME_DIR=self.home, LANGUAGE="en",
                                             PLOTIX_DATA_HOME=os.path.join(self.home, "data"),
                                             XDG_CONFIG_HOME=os.path.join(self.home, "config"),
                                             PLOTIX_QUIT_WHEN_DRAWN="1")
        del environment["QT_QPA_PLATFORM"]
        begin = time.monotonic()
        process = subprocess.Popen([self.where.program("plotix"), "open"], env=environment, text=True,
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        try:
            said = self.line_of(process)
            elapsed = time.monotonic() - begin
            if said != "drawn\n" or not self.screen.is_drawn():
                raise Failed(f"plotix said {said!r}, and {self.screen.colors()} colours are in the graph's place")
            process.wait(PATIENCE_SECONDS)  # it stores the site, and ends
            return {"ms": 1e3 * elapsed}
        finally:
            end(process)
            self.screen.wait_until_empty()

    @staticmethod
    def line_of(process):
        if not select.select([process.stdout], [], [], PATIENCE_SECONDS)[0]:
            raise Failed("no trend was drawn")
        return process.stdout.readline()

    def stop(self):
        if getattr(self, "screen", None):
            self.screen.close()
            self.screen = None


def end(process):
    """Terminates it; whoever has ended already stays as it is."""
    process.terminate()
    try:
        process.wait(5)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()


class VirtualScreen:
    def __init__(self, folder):
        reading, writing = os.pipe()
        width, height = SCREEN
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", f"{width}x{height}x24",
                                        "-fbdir", folder, "-noreset", "-nolisten", "tcp"],
                                       pass_fds=[writing], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as answer:
            self.display = ":" + answer.readline().strip()
        with open(os.path.join(folder, "Xvfb_screen0"), "rb") as picture:
            self.pixels = mmap.mmap(picture.fileno(), 0, prot=mmap.PROT_READ)
        # An XWD file: its header says how long it is itself, how wide a row is, and how many colours follow it.
        header = struct.unpack(">25I", self.pixels[:100])
        self.row_bytes, self.first_pixel = header[12], header[0] + 12 * header[19]

    def colors(self):
        """How many colours there are in a sample of the graph's place."""
        rows, (left, right) = GRAPH
        seen = set()
        for row in rows:
            begin = self.first_pixel + row * self.row_bytes
            seen.update(memoryview(self.pixels[begin + 4 * left:begin + 4 * right]).cast("I"))
        return len(seen)

    def is_drawn(self):
        return self.colors() >= DRAWN_COLORS

    def wait_until_empty(self):
        deadline = time.monotonic() + 5
        while self.colors() > 1 and time.monotonic() < deadline:
            time.sleep(0.02)

    def close(self):
        self.pixels.close()
        end(self.server)

"""A folder with small tables, and the command `lemara` run in it, for the tests beside this."""
import os
import pty
import select
import signal
import subprocess
import sys
import time
import unittest

from command_line_test import Folder, Result


class World(Folder):
    lemara = ""

    def setUp(self):
        super().setUp()
        self.environment = {"XDG_DATA_HOME": self.path("data"), "PATH": os.environ["PATH"],
                            "LEMARA_TABLES": self.path("sareak.cfg"), "NO_COLOR": "1"}

    def lemara_run(self, *arguments, text=b"", **options):
        options.setdefault("stdout", subprocess.PIPE)
        options.setdefault("timeout", 60)
        return Result(subprocess.run([self.lemara, *arguments], input=text,
                                     stderr=subprocess.PIPE, cwd=self.folder.name,
                                     env=self.environment, **options))

    def expect(self, result, status, out, err=""):
        self.assertEqual((result.err, result.out, result.status), (err, out, status))


class Terminal:
    """A command on a terminal of its own."""

    def __init__(self, world, *arguments):
        self.process, self.side = pty.fork()
        if self.process == 0:
            os.chdir(world.folder.name)
            os.execve(world.lemara, [world.lemara, *arguments], world.environment)
        self.seen = ""

    def wait_for(self, text, seconds=30):
        """Reads until `text` is there; returns what stood before it."""
        end = time.monotonic() + seconds
        while text not in self.seen:
            ready, _, _ = select.select([self.side], [], [], end - time.monotonic())
            if not ready:
                raise AssertionError(f"{text!r} never came; there is {self.seen!r}")
            try:
                got = os.read(self.side, 4096)
            except OSError:  # the other side is closed
                got = b""
            if not got:
                raise AssertionError(f"the end came before {text!r}: {self.seen!r}")
            self.seen += got.decode().replace("\r\n", "\n")
        before, self.seen = self.seen.split(text, 1)
        return before

    def answer(self, line, prompt="?: "):
        """Waits for the prompt and types a line; returns what stood before the prompt."""
        before = self.wait_for(prompt)
        os.write(self.side, line.encode() + b"\n")
        return before

    def finish(self):
        """The exit status and what was written last."""
        while True:
            try:
                got = os.read(self.side, 4096)
            except OSError:
                got = b""
            if not got:
                break
            self.seen += got.decode().replace("\r\n", "\n")
        _, status = os.waitpid(self.process, 0)
        os.close(self.side)
        return os.waitstatus_to_exitcode(status), self.seen

    def kill(self):
        os.kill(self.process, signal.SIGINT)
        return self.finish()[0]


def main():
    World.lemara = os.path.abspath(sys.argv.pop(1))
    unittest.main()

#!/usr/bin/env python3
"""What nobody sends on purpose, and disks that are full: hostile_test.py PATH-OF-LEMARA.

Every command ends by itself, in time, with a message and status 2 (or with 1 where single
lines are refused), and what was on the disk before is unharmed.
"""
import contextlib
import os
import random
import resource
import subprocess
import tempfile
import threading
import time

from world import World, main

DICTIONARY = b"blog\t<ARR>\t\t\tHP\n" * 20  # more bytes than the smallest limit below


class Hostile(World):
    READERS = [("check",), ("check", "--jobs", "2"), ("check", "--format", "zuzenlex"),
               ("fix", "--yes-better"), ("analyze",), ("analyze", "--format", "cg3"),
               ("analyze", "--format", "conllu"), ("analyze", "--jsonl"), ("coverage",),
               ("dict", "import"),
               ("table", "check"), ("table", "stats"), ("table", "compile", "-o", "out"),
               ("table", "convert", "-o", "out"), ("table", "text", "-o", "out")]

    def told(self, result, statuses, text=""):
        """The command ended by itself with one of the statuses, and said why."""
        self.assertIn(result.status, statuses, result.err)
        for line in result.err.splitlines():
            self.assertTrue(line.startswith("lemara "), result.err)
        self.assertIn(text, result.err)

    def test_random_bytes(self):
        with open("/dev/urandom", "rb") as file:
            noise = file.read(200_000)
        self.write("noise", noise)
        for seed, text in [("system", noise), (1, random.Random(1).randbytes(100_000)),
                           ("no NUL", random.Random(2).randbytes(100_000).replace(b"\0", b"a"))]:
            self.write("noise", text)
            for command in self.READERS:
                with self.subTest((seed, command)):
                    # There is nothing wrong with a table of no state to count.
                    statuses = (0, 2) if command == ("table", "stats") else (1, 2)
                    self.told(self.lemara_run(*command, "noise"), statuses)
                    self.told(self.lemara_run(*command, "-", text=text), statuses)
                    self.assertFalse(os.path.exists(self.path("out")))

    def test_random_words(self):
        words = random.Random(3).randbytes(4000).replace(b"\0", b"a")
        for command in (("valid", "-"), ("suggest", "-"), ("lookup", "-"),
                        ("generate", "-", "IZE")):
            with self.subTest(command):
                self.told(self.lemara_run(*command, text=words), (1,))

    def test_endless_devices(self):
        for device in ("/dev/urandom", "/dev/zero"):
            for command in (("check",), ("check", "--jobs", "2")):
                with self.subTest((device, command)):
                    self.told(self.lemara_run(*command, device), (2,), device + ": not a text")
            self.told(self.lemara_run("fix", "--yes-better", device), (2,),
                      device + ": not a regular file")
            self.told(self.lemara_run("dict", "list", "--dictionary", device), (2,),
                      device + ": not a regular file")

    def test_a_directory(self):
        for command in self.READERS:
            with self.subTest(command):
                self.told(self.lemara_run(*command, "."), (2,), ".: is a directory")
        self.told(self.lemara_run("dict", "add", "--dictionary", ".", "blog"), (2,), "directory")
        self.told(self.lemara_run("table", "compile", "hp.sare", "-o", "."), (2,),
                  ".: is a directory")

    def test_megabytes_in_one_line(self):
        """Time and memory are bounded by the length: all findings of a line are kept until it
        is through. The limits are wide, as a loaded machine is slow and a sanitizer wants
        memory; LEMARA_LINE sets the length in MiB."""
        most = int(os.environ.get("LEMARA_LINE", "50")) * 2 ** 20
        for label, unit, size in [
            ("words", b"etxe zzzzzz haundi, ", most), ("no blank", b"a", most),
            ("no UTF-8", b"\xff", most), ("dots", b".", most // 10),
            ("quotes", "«’ ".encode(), most // 10),
        ]:
            with self.subTest(label):
                self.write("line", unit * (size // len(unit)))
                start = time.monotonic()
                with open(self.path("found"), "wb") as found:
                    result = self.lemara_run("check", "--no-suggest", "line", stdout=found,
                                             timeout=200)
                self.assertIn(result.status, (0, 1), result.err)
                kib = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss
                self.assertLess(kib, 40 * (most >> 10) + 1_000_000)
                print(f"{label}: {size >> 20} MiB in {time.monotonic() - start:.1f} s, {kib} KiB")

    def test_a_file_that_vanishes(self):
        os.mkfifo(self.path("pipe"))
        self.write("a.txt", b"etxe\n")

        def feed():
            with open(self.path("pipe"), "wb") as pipe:
                pipe.write(b"etxe\n")
                os.unlink(self.path("a.txt"))

        for command in (("check",), ("analyze",), ("coverage",)):
            with self.subTest(command):
                self.write("a.txt", b"etxe\n")
                feeder = threading.Thread(target=feed)
                feeder.start()
                result = self.lemara_run(*command, "pipe", "a.txt")
                feeder.join()
                self.told(result, (2,), "a.txt: cannot open: No such file or directory")

    def test_a_dictionary_that_vanishes(self):
        self.write("my.hp", DICTIONARY)
        terminal_text = b"bloga\n@kkk\n"
        process = subprocess.Popen([self.lemara, "-a", "-p", "my.hp"], cwd=self.folder.name,
                                   env=self.environment, stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        process.stdout.readline()
        os.unlink(self.path("my.hp"))
        out, err = process.communicate(terminal_text + b"*klip\n#\n", timeout=60)
        self.assertEqual((process.returncode, err, out), (0, b"", b"*\n\n"))
        self.assertEqual(self.read("my.hp"), b"klip\t<ARR>\t\t\tHP\n")

    # --- full disks ---

    @contextlib.contextmanager
    def full_disk(self, kind):
        """Gives a folder on which little more can be written, options for running there, and
        why it fails."""
        with tempfile.TemporaryDirectory(prefix="lemara-disk-") as folder:
            if kind == "limit":
                def limit():
                    resource.setrlimit(resource.RLIMIT_FSIZE, (64, 64))
                yield folder, {"preexec_fn": limit}, "File too large"
                return
            subprocess.run(["mount", "-t", "tmpfs", "-o", "size=64k", "lemara-test", folder],
                           check=True)
            try:
                yield folder, {}, "No space left on device"
            finally:
                subprocess.run(["umount", folder], check=True)

    def kinds(self):
        """A limit on the size of files, and, for those who may mount one, a small disk."""
        os.makedirs(self.path("disk"))
        may_mount = subprocess.run(
            ["unshare", "-m", "mount", "-t", "tmpfs", "lemara-test", self.path("disk")],
            stderr=subprocess.DEVNULL).returncode == 0
        return ["limit", "disk"] if may_mount else ["limit"]

    def fail_on_full_disk(self, kind, command, files, text=b"", output=None):
        """Runs a command on a full disk: it fails with a message, `files` stay as they are,
        and nothing is left beside them."""
        with self.full_disk(kind) as (folder, options, reason):
            for name, data in files.items():
                with open(os.path.join(folder, name), "wb") as file:
                    file.write(data)
            if kind == "disk":
                with contextlib.suppress(OSError), \
                        open(os.path.join(folder, "fill"), "wb", 0) as file:
                    while True:
                        file.write(bytes(512))
            names = {*os.listdir(folder), output} - {None}
            with contextlib.ExitStack() as stack:
                if output:
                    options["stdout"] = stack.enter_context(
                        open(os.path.join(folder, output), "wb"))
                result = self.lemara_run(*[part.replace("DISK", folder) for part in command],
                                         text=text, **options)
            for name, data in files.items():
                with open(os.path.join(folder, name), "rb") as file:
                    self.assertEqual(file.read(), data)
            there = {name for name in os.listdir(folder) if not name.endswith(".lock")}
            self.assertEqual(there, names)
            self.assertIn(reason, result.err)
            self.assertTrue(result.err.startswith("lemara "), result.err)
            self.assertEqual(result.status, 2)

    def test_full_disks(self):
        text = b"haundi zzzzzz\n" * 20
        words = b"".join(b"blog%s\t<ARR>\t\t\tHP\n" % (b"i" * i) for i in range(200))
        cases = [
            ("a word is added", ("dict", "add", "--dictionary", "DISK/my.hp", "klip"),
             {"my.hp": DICTIONARY}, None),
            ("a word is removed", ("dict", "remove", "--dictionary", "DISK/my.hp", "blog"),
             {"my.hp": words}, None),
            ("words are imported", ("dict", "import", "--dictionary", "DISK/my.hp", "-"),
             {"my.hp": DICTIONARY}, None),
            ("words are exported", ("dict", "export", "--dictionary", "DISK/my.hp", "DISK/list"),
             {"my.hp": words, "list": b"old\n"}, None),
            ("a text is corrected", ("fix", "--yes-better", "DISK/a.txt"), {"a.txt": text},
             None),
            ("a table is compiled", ("table", "compile", "hp.sare", "-o", "DISK/old.sarec"),
             {"old.sarec": b"old"}, None),
            ("findings are written", ("check", "DISK/a.txt"), {"a.txt": text}, "out"),
            ("corrections are written", ("fix", "--yes-better", "-"),
             {"a.txt": text}, "out"),
        ]
        for kind in self.kinds():
            for label, command, files, output in cases:
                with self.subTest((kind, label)):
                    self.fail_on_full_disk(kind, command, files,
                                           text * 20 if output else b"klip\ntren\n", output)


if __name__ == "__main__":
    main()

"""Base class of the journeys: a store of their own, the program run in it, and records taken apart.

CTest sets HERON_BIN (the program), HERON_LIB (the libraries) and HERON_SOURCE (the sources).
"""

import json
import os
import pathlib
import pty
import select
import signal
import subprocess
import tempfile
import unittest

BIN = os.environ["HERON_BIN"]
LIB = os.environ["HERON_LIB"]
SOURCE = pathlib.Path(os.environ["HERON_SOURCE"])
SAMPLES = SOURCE / "samples"


class Journey(unittest.TestCase):
    """A test with an empty store in a folder that is gone afterwards."""

    country = 49

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="heron-test-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.home = self.folder / "home"

    def environment(self, **more):
        inherited = {k: v for k, v in os.environ.items() if not k.startswith("HERON_")}
        return {**inherited, "HERON_HOME": str(self.home), "HERON_COUNTRY": str(self.country), "NO_COLOR": "1",
                "LC_ALL": "C.UTF-8", **more}

    def run_heron(self, *arguments, stdin=b"", program=BIN, env=None, **options):
        """Runs the program to its end; streams come back as bytes."""
        return subprocess.run([program, *map(str, arguments)], input=stdin, capture_output=True, timeout=120,
                              env=env or self.environment(), check=False, **options)

    def heron(self, *arguments, code=0, **options):
        """Runs the program, which must end with `code`, and with a reason if that isn't 0; returns stdout as text."""
        done = self.run_heron(*arguments, **options)
        errors = done.stderr.decode()
        self.assertEqual(done.returncode, code, f"{arguments}: {errors}")
        if code != 0:
            self.assertRegex(errors, r"\Aheron: \S.*\n", f"{arguments} gave no reason")
            self.assertEqual(done.stdout, b"", f"{arguments} failed and answered all the same")
        self.last_errors = errors
        return done.stdout.decode()

    def json(self, *arguments, **options):
        """The answer to `arguments` with --json, its envelope checked."""
        answer = json.loads(self.heron(*arguments, "--json", **options))
        self.assertTrue(answer["schema"].startswith("heron."))
        self.assertEqual(answer["version"], 1)
        return answer

    def add_printer(self, name="Office", *more):
        self.heron("printer", "add", name, *more)

    def write(self, name, data):
        path = self.folder / name
        path.write_bytes(bytes(data))
        return path

    def default_record(self):
        """Bytes of the printer's default record, to be changed at will."""
        path = self.folder / "default.bin"
        self.heron("record", "default", "-p", "Office", "--out", path)
        return bytearray(path.read_bytes())

    def merged(self, source):
        """The record that comes out for `source`: bytes and fields."""
        out = self.folder / "merged.bin"
        self.heron("record", "merge", "-p", "Office", "--in", source, "--out", out)
        return out.read_bytes(), self.json("record", "show", out)

    def own_records(self):
        """Files of the records that users keep."""
        return sorted(self.home.glob("users/*.records/*"))

    def change(self, *changes, code=0, more=(), **options):
        """`heron settings` with an -o for each change."""
        arguments = [part for change in changes for part in ("-o", change)]
        return self.heron("settings", "-p", "Office", *arguments, *more, code=code, **options)

    def rows(self, *more):
        """The settings by key, as JSON shows them."""
        return {row["key"]: row for row in self.json("settings", "-p", "Office", *more)["settings"]}

    def values(self, *keys, more=()):
        rows = self.rows(*more)
        return [rows[key]["value"] for key in keys]

    def on_terminal(self, arguments, steps=()):
        """Runs the program on a terminal of its own: exit code and everything it showed.

        `steps` are prompts with what is typed there, as bytes or as a function that returns them.
        """
        process, terminal = pty.fork()
        if process == 0:
            os.execve(BIN, [BIN, *map(str, arguments)], self.environment())
        self.addCleanup(os.close, terminal)
        shown, seen, steps = b"", 0, list(steps)
        while select.select([terminal], [], [], 60)[0]:
            try:
                shown += os.read(terminal, 4096)
            except OSError:  # the program has ended
                break
            if steps and steps[0][0] in shown[seen:]:
                typed, seen = steps.pop(0)[1], len(shown)
                os.write(terminal, typed() if callable(typed) else typed)
        else:
            os.kill(process, signal.SIGKILL)
        status = os.waitpid(process, 0)[1]
        self.assertEqual(steps, [], shown)
        return os.waitstatus_to_exitcode(status), shown

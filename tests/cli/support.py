"""What the journeys share: a store of their own, the program run in it, and records taken apart.

CTest tells where things are: HERON_BIN (the program), HERON_LIB (the libraries), HERON_SOURCE (the sources).
"""

import json
import os
import pathlib
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
        """Runs the program, which must end with `code` and tell why if that isn't 0; returns stdout as text."""
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

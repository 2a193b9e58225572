"""Queues from their making to their end, and stores that are in use or can't be made."""

import os
import pathlib
import sqlite3
import subprocess
import sys
import threading
import unittest

import support


class Printers(support.Journey):
    def test_add_list_show_remove(self):
        self.assertEqual(self.heron("printer", "list"), "")
        self.add_printer("Office")
        self.add_printer("Büro 2", "--server", r"\\host", "--port", "LPT1:")
        self.assertEqual(self.heron("printer", "list").splitlines(), ["Büro 2", "Office"])
        shown = self.json("printer", "show", "Büro 2")
        self.assertEqual((shown["name"], shown["server"], shown["port"]), ("Büro 2", r"\\host", "LPT1:"))
        self.assertEqual(shown["savedRecordSize"], 3328, "the driver got no event for the new queue")
        self.assertEqual(shown["devModeSize"], 0)
        self.assertTrue(os.path.isfile(shown["dataFile"]), "the driver's files weren't installed")
        self.heron("printer", "remove", "Office")
        self.assertEqual([p["name"] for p in self.json("printer", "list")["printers"]], ["Büro 2"])
        self.heron("printer", "show", "Office", code=5)
        self.heron("printer", "add", "Büro 2", "--port", "B:", code=1)
        self.assertEqual(self.json("printer", "show", "Büro 2"), shown)
        self.heron("printer", "add", "Büro 2", "--port", "B:", "--replace")
        self.assertEqual(self.json("printer", "show", "Büro 2")["port"], "B:")

    def test_the_queues_own_record_reaches_applications(self):
        self.add_printer("Office", "--dev-mode", support.SAMPLES / "bare-220.bin")
        self.assertEqual(self.json("printer", "show", "Office")["devModeSize"], 220)
        self.assertEqual(self.json("record", "show", "-p", "Office")["fields"]["dmCopies"], 3)

    def test_unknown_printer_names_the_nearest(self):
        self.add_printer("Office")
        sample = support.SAMPLES / "bare-220.bin"
        out = self.folder / "out.bin"
        for arguments in (["printer", "show", "Ofice"], ["printer", "remove", "ofice"], ["capabilities", "-p", "Ofice"],
                          ["record", "default", "-p", "Ofice", "--out", out], ["record", "show", "-p", "Ofice"],
                          ["record", "merge", "-p", "Ofice", "--in", sample, "--out", out],
                          ["record", "convert", "-p", "Ofice", "--in", sample, "--to", "legacy", "--out", out]):
            self.heron(*arguments, code=5)
            self.assertIn('"Office"', self.last_errors)
        self.assertFalse(out.exists())

    def test_names_that_no_printer_can_have(self):
        for name in ("", "a,b", "tab\there", "x" * 220):
            self.heron("printer", "add", name, code=2)
        self.assertEqual(self.heron("printer", "list"), "")

    def test_driver_files_that_were_spoilt_are_mended(self):
        self.add_printer()
        module = pathlib.Path(self.json("printer", "show", "Office")["dataFile"])
        whole = module.read_bytes()
        module.write_bytes(whole[:100])
        self.add_printer("Other")
        self.assertEqual(module.read_bytes(), whole)


class Stores(support.Journey):
    def databases(self):
        return [path for path in self.home.rglob("*")
                if path.is_file() and path.read_bytes()[:15] == b"SQLite format 3"]

    def test_a_home_that_cant_be_made(self):
        self.home.write_bytes(b"a file, no folder")
        done = self.run_heron("printer", "add", "Office")
        self.assertIn(done.returncode, (1, 6))
        self.assertIn(b"heron: ", done.stderr)
        self.assertEqual(self.home.read_bytes(), b"a file, no folder")

    def test_a_store_in_use_is_waited_for(self):
        self.add_printer()
        holders = [sqlite3.connect(path, isolation_level=None, check_same_thread=False) for path in self.databases()]
        for holder in holders:
            holder.execute("BEGIN IMMEDIATE")
        release = threading.Timer(1, lambda: [holder.rollback() for holder in holders])
        release.start()
        self.add_printer("Other")
        release.join()
        self.assertEqual(self.heron("printer", "list").split(), ["Office", "Other"])

class FromPython(support.Journey):
    def test_another_language_gets_a_valid_record(self):
        self.add_printer()
        script = support.SAMPLES / "use_from_python.py"
        prefix = "HERON_CHILD_"  # what a sanitized library wants of the program that loads it
        child = {name[len(prefix):]: value for name, value in os.environ.items() if name.startswith(prefix)}
        done = subprocess.run([sys.executable, script, "Office", support.LIB], capture_output=True, text=True,
                              check=False, env=self.environment(**child))
        self.assertEqual(done.returncode, 0, done.stderr)
        for expected in ("Office", "3328 bytes: 220 public, 3108 private", "code 9, 210.0 x 297.0 mm, portrait", "QDRV"):
            self.assertIn(expected, done.stdout)


if __name__ == "__main__":
    unittest.main()

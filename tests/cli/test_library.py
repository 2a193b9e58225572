"""The settings library from the command line. Each command is a process of its own: what the next one sees is stored."""

import os
import unittest

import support


class Library(support.Journey):
    def setUp(self):
        super().setUp()
        self.add_printer()
        self.files = self.folder / "files"
        self.files.mkdir()

    def library(self, command, *arguments, **options):
        return self.heron("library", command, *arguments, "-p", "Office", **options)

    def save(self, name, *more, **options):
        return self.library("save", name, "--folder", self.files, *more, **options)

    def names(self):
        return [entry["name"] for entry in self.json("library", "list", "-p", "Office")["entries"]]

    def test_a_life_of_settings(self):
        self.assertEqual(self.names(), ["Standard settings"])
        self.change("Copies=7", "lpPRNType=2", "lpOrientation=2")
        self.assertIn("Saved", self.save("Draft", "--comment", "two\nlines"))
        self.change(more=["--reset"])
        self.assertIn("7 (now 1)", self.library("show", "Draft", "--diff"))
        self.assertIn("lines\n", self.library("show", "draft"))
        self.library("recall", "Draft", "--only", "watermarks,forms")
        self.assertEqual(self.values("Copies", "lpPRNType", "lpOrientation"), [1, 2, 1])
        answer = self.json("library", "recall", "2", "-p", "Office", "--only", "size")
        self.assertEqual((answer["applied"], answer["parts"], answer["recall"]["result"]), (True, ["size"], 0))
        self.assertEqual(self.values("Copies", "lpPRNType", "lpOrientation"), [7, 2, 2])
        self.assertIn("The current settings are the same.", self.library("show", "Draft", "--diff"))
        self.library("rename", "Draft", "Final")
        self.assertEqual(sorted(path.name for path in self.files.iterdir()), ["Final.vxs"])
        self.library("comment", "Final", "one line")
        self.library("move", "Final", "up")
        self.library("move", "Final", "up", code=4)
        self.assertEqual(self.names(), ["Final", "Standard settings"])
        self.library("remove", "Final", "--yes")
        self.assertEqual(self.names(), ["Standard settings"])
        self.library("register", self.files / "Final.vxs")
        listed = self.json("library", "list", "-p", "Office")["entries"][1]
        self.assertEqual((listed["name"], listed["comment"], listed["kind"]), ("Final", "one line", "own"))

    def test_what_is_no_settings_file_of_this_driver(self):
        standard = (self.home / "driver" / "TVOR610.vxs").read_text().replace("attributes=0\n", "")
        other = standard.replace("\nmodel=", "\nmodel=Another ").replace("*Standard settings*", "*Other*")
        self.library("register", self.write("other.vxs", other.replace("\n", "\r\n").encode()), code=4)
        self.assertIn("another printer model", self.last_errors)
        self.library("register", self.folder / "nothing.vxs", code=5)
        self.library("register", self.write("text.vxs", b"hello"), code=1)
        self.library("register", self.write("text.txt", b"hello"), code=2)
        os.mkfifo(self.folder / "pipe.vxs")
        self.library("register", self.folder / "pipe.vxs", code=1)
        self.assertEqual(self.names(), ["Standard settings"])

    def test_questions_and_trials(self):
        self.save("One")
        path = self.files / "One.vxs"
        (self.files / "One file.vxs").write_bytes(b"of another program")
        for arguments in (["remove", "One"], ["save", "One file", "--folder", self.files]):
            done = self.run_heron("library", *arguments, "-p", "Office")
            self.assertEqual((done.returncode, done.stdout), (3, b""))
            self.assertIn(b"?", done.stderr)
        self.library("remove", "One", "--no", code=3)
        self.library("remove", "One", "--dry-run")
        self.library("rename", "One", "Two", "--dry-run")
        self.change("Copies=9")
        before = path.read_bytes()
        self.library("recall", "One", "--only", "size", "--dry-run")
        self.assertEqual(self.values("Copies"), [9])
        self.assertEqual((self.names(), path.read_bytes()), (["Standard settings", "One"], before))
        self.save("One file", "--no", code=3)
        self.assertEqual((self.files / "One file.vxs").read_bytes(), b"of another program")
        self.save("One file", "--yes")
        remove = ["library", "remove", "One file", "-p", "Office"]
        self.assertEqual(self.on_terminal(remove, [(b"[yes/no] ", b"yes\n")])[0], 0)
        self.assertEqual(self.names(), ["Standard settings", "One"])

    def test_a_recall_follows_the_records_flags_and_says_what_it_leaves(self):
        self.change("Copies=7", "lpPRNType=2")
        self.save("Seven")
        self.save("Seven", "--no", code=3)
        self.change(more=["--reset"])
        trial = self.library("recall", "Seven", "--dry-run")
        self.assertRegex(trial, r"lpPRNType .*Two-sided \(now One-sided\)")
        self.assertNotIn("Copies", trial)
        self.assertEqual(self.values("Copies", "lpPRNType"), [1, 1])
        answer = self.json("library", "recall", "Seven", "-p", "Office")
        self.assertEqual((answer["parts"], answer["leftOut"]),
                         (["user-papers", "watermarks", "per-page", "fax-cover"], ["size"]))
        self.assertEqual(self.values("Copies", "lpPRNType"), [1, 2])
        self.library("recall", "Seven")
        self.assertRegex(self.last_errors, "copies; --with size")
        self.change("UsetPaperChk=1")
        self.library("recall", "Seven")
        self.assertEqual((self.values("Copies"), self.last_errors), ([7], ""))
        self.change("Copies=3")
        self.save("Seven", "--yes")
        self.change("Copies=1")
        self.library("recall", "Seven", "--with", "size")
        self.assertEqual((self.values("Copies"), self.names()), ([3], ["Standard settings", "Seven"]))

    def test_a_folder_that_is_away(self):
        self.save("Away")
        moved = self.folder / "moved"
        self.files.rename(moved)
        self.assertIn("not reachable", self.library("list"))
        self.assertIn(str(self.files), self.last_errors)
        for command in (["recall", "Away"], ["comment", "Away", "lost"]):
            self.library(*command, code=5)
        moved.rename(self.files)
        self.assertEqual(self.names(), ["Standard settings", "Away"])

    def test_records_as_files(self):
        record = self.write("in.bin", self.default_record())
        out = self.folder / "out.bin"
        self.change("Copies=5")
        self.save("Own")
        self.save("Plain", "--in", record)
        self.library("recall", "Own", "--in", record, "--out", out, "--only", "size")
        self.assertEqual(self.json("record", "show", out)["fields"]["dmCopies"], 5)
        self.library("recall", "Plain", "--only", "size")
        self.assertEqual(self.values("Copies"), [1])

    def test_what_cant_be(self):
        self.save("Name")
        self.library("show", "Nmae", code=5)
        self.assertIn('"Name"', self.last_errors)
        for name, code in (("a/b", 2), ("", 2), ("x" * 65, 2), ("tab\t", 2)):
            self.save(name, code=code)
            self.library("rename", "1", name, code=code)
        self.library("rename", "1", "name", code=4)
        self.library("save", "Lost", "--folder", self.folder / "nowhere", code=6)
        self.library("recall", "Name", "--only", "all", code=2)
        self.library("comment", "Name", "c" * 513, code=2)
        self.library("comment", "1", "not mine", code=6)
        self.library("rename", "1", "Mine", code=4)
        self.library("remove", "1", "--yes", code=4)
        self.assertEqual(self.names(), ["Standard settings", "Name"])


if __name__ == "__main__":
    unittest.main()

"""The settings library from the command line: each command is a process of its own, so that all of it is a restart."""

import os
import pty
import subprocess
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

    def settings(self, *wishes, **options):
        return self.heron("settings", "-p", "Office", *[part for wish in wishes for part in ("-o", wish)], **options)

    def values(self, *keys):
        rows = {row["key"]: row["value"] for row in self.json("settings", "-p", "Office")["settings"]}
        return [rows[key] for key in keys]

    def file(self, name, **identity):
        """A settings file made from the standard one."""
        text = (self.home / "driver" / "TVOR610.vxs").read_text().replace("attributes=0\n", "")
        text = text.replace("*Standard settings*", f"*{name}*")
        for key, value in identity.items():
            lines = [f"{key}={value}" if line.startswith(key + "=") else line for line in text.splitlines()]
            text = "\n".join(lines) + "\n"
        return self.write(f"{name}.vxs", text.replace("\n", "\r\n").encode())

    def test_a_life_of_settings(self):
        self.assertEqual(self.names(), ["Standard settings"])
        self.settings("Copies=7", "lpPRNType=2", "lpOrientation=2")
        self.assertIn("Saved", self.save("Draft", "--comment", "two\nlines"))
        self.heron("settings", "-p", "Office", "--reset")
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

    def test_files_of_other_drivers(self):
        self.library("register", self.file("Far", DrvMachineDestination="EU"), code=4)
        self.assertIn("another language or region", self.last_errors)
        self.library("register", self.file("Other", model="Another model"), code=4)
        self.assertIn("another printer model", self.last_errors)
        self.library("register", self.file("Anywhere", DrvMachineDestination="0"))
        self.library("register", self.folder / "nothing.vxs", code=5)
        self.library("register", self.write("text.vxs", b"hello"), code=1)
        self.library("register", self.write("text.txt", b"hello"), code=2)
        os.mkfifo(self.folder / "pipe.vxs")
        self.library("register", self.folder / "pipe.vxs", code=1)
        self.assertEqual(self.names(), ["Standard settings", "Anywhere"])

    def test_three_keys_of_an_editor(self):
        identity = ("manufacture=Varnell\r\nproduct=Varnell PCL6 Driver\r\nsystem=MS Windows NT4.0\r\n"
                    "model=Varnell 70/36MX-2 PCL\r\nversion=02.00.00.00\r\nDrvLanguage=CHS\r\nDrvMachineDestination=US\r\n")
        text = f"[IP_SETTING LIBRARY DRIVERINFO]\r\n{identity}[IP_SETTING LIBRARY UIPARAM]\r\n"
        path = self.write("Byhand.vxs", (text + "Copies=4\r\nlpOrientation=2\r\nlpPRNType=2\r\n").encode())
        self.library("register", path)
        before = path.read_bytes()
        self.library("recall", "Byhand", "--only", "size")
        self.assertEqual(self.values("Copies", "lpOrientation", "lpPRNType", "Zoom", "Staple_Check"), [4, 2, 2, 100, 0])
        self.assertEqual(path.read_bytes(), before)

    def test_questions_and_trials(self):
        self.save("One")
        path = self.files / "One.vxs"
        (self.files / "One file.vxs").write_bytes(b"somebody's")
        for arguments in (["remove", "One"], ["save", "One file", "--folder", self.files]):
            done = self.run_heron("library", *arguments, "-p", "Office")
            self.assertEqual((done.returncode, done.stdout), (3, b""))
            self.assertIn(b"?", done.stderr)
        self.library("remove", "One", "--no", code=3)
        self.library("remove", "One", "--dry-run")
        self.library("rename", "One", "Two", "--dry-run")
        self.settings("Copies=9")
        before = path.read_bytes()
        self.library("recall", "One", "--only", "size", "--dry-run")
        self.assertEqual(self.values("Copies"), [9])
        self.assertEqual((self.names(), path.read_bytes()), (["Standard settings", "One"], before))
        self.save("One file", "--no", code=3)
        self.assertEqual((self.files / "One file.vxs").read_bytes(), b"somebody's")
        self.save("One file", "--yes")
        master, slave = pty.openpty()
        with subprocess.Popen([support.BIN, "library", "remove", "One file", "-p", "Office"], stdin=slave,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env=self.environment()) as process:
            os.write(master, b"yes\n")
            self.assertEqual(process.wait(timeout=60), 0)
        os.close(slave)
        os.close(master)
        self.assertEqual(self.names(), ["Standard settings", "One"])

    def test_a_recall_follows_the_records_flags_and_says_what_it_leaves(self):
        self.settings("Copies=7", "lpPRNType=2")
        self.save("Seven")
        self.save("Seven", "--no", code=3)
        self.heron("settings", "-p", "Office", "--reset")
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
        self.settings("UsetPaperChk=1")
        self.library("recall", "Seven")
        self.assertEqual((self.values("Copies"), self.last_errors), ([7], ""))
        self.settings("Copies=3")
        self.save("Seven", "--yes")
        self.settings("Copies=1")
        self.library("recall", "Seven", "--with", "size")
        self.assertEqual((self.values("Copies"), self.names()), ([3], ["Standard settings", "Seven"]))

    def test_a_disk_that_is_taken_out_and_put_back(self):
        self.save("Away")
        moved = self.folder / "taken out"
        self.files.rename(moved)
        self.assertIn("not reachable", self.library("list"))
        self.assertIn(str(self.files), self.last_errors)
        self.library("recall", "Away", code=5)
        self.library("comment", "Away", "lost", code=5)
        moved.rename(self.files)
        self.assertEqual([entry["reachable"] for entry in self.json("library", "list", "-p", "Office")["entries"]],
                         [True, True])
        (self.files / "Away.vxs").unlink()
        self.assertEqual(self.names(), ["Standard settings"])

    def test_two_queues_with_one_folder(self):
        self.add_printer("Other")
        self.save("Shared")
        path = self.files / "Shared.vxs"
        before = path.read_bytes()
        self.heron("library", "register", path, "-p", "Other")
        done = self.run_heron("library", "save", "Shared", "--folder", self.files, "-p", "Other")
        self.assertIn(b'list of the printer "Office"', done.stderr)
        done = self.run_heron("library", "rename", "Shared", "Mine", "-p", "Office")
        self.assertEqual(done.returncode, 3)
        self.assertIn(b'list of the printer "Other"', done.stderr)
        self.assertEqual(path.read_bytes(), before)

    def test_records_as_files(self):
        record = self.write("in.bin", self.default_record())
        out = self.folder / "out.bin"
        self.settings("Copies=5")
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

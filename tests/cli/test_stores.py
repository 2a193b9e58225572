"""Stores that are shared, moved, damaged, full or left unfinished, and queues that come and go."""

import fcntl
import json
import os
import pathlib
import shlex
import shutil
import subprocess
import tempfile
import unittest

import support

PLAIN_USER = 65534


def is_root():
    return os.geteuid() == 0


class Lists(support.Journey):
    def names(self):
        return self.heron("printer", "list").splitlines()

    def test_a_list_is_added_as_one_and_sorted(self):
        rows = self.write("list.csv", b'\xef\xbb\xbfname,port\r\n"b, left",LPT1:\r\nAlpha,\r\n\r\n'.replace(b", left", b" left"))
        self.heron("printer", "add", "--from", rows)
        self.assertEqual(self.names(), ["Alpha", "b left"])
        self.assertEqual(self.json("printer", "show", "b left")["port"], "LPT1:")
        self.assertEqual(self.json("printer", "show", "Alpha")["savedRecordSize"], 3328)
        again = self.write("more.json", json.dumps([{"name": "New"}, {"name": "alpha"}]).encode())
        self.heron("printer", "add", "--from", again, code=1)
        self.assertEqual(self.names(), ["Alpha", "b left"], "a list was added in part")
        self.heron("printer", "add", "--from", again, "--replace")
        self.assertEqual(self.names(), ["alpha", "b left", "New"])

    def test_a_list_brings_queues_back_with_their_identity(self):
        self.add_printer()
        self.change("ZoomCheck=1")
        listed = self.write("list.json", self.heron("printer", "list", "--json").encode())
        for database in self.home.glob("printers.db*"):
            database.unlink()
        self.heron("printer", "add", "--from", listed)
        self.assertIn("Zoom", self.heron("settings", "-p", "Office"))

    def test_refused_lists_name_the_reason(self):
        for text, reason in ((b"name\n", "no printer"), (b"nmae\nx\n", '"name"'), (b"port\nLPT1:\n", "printer 1.*no name"),
                             (b"name\nx\nX\n", "printer 2.*before"), (b'name\n"x\n', "quote"), (b"[1]", "printer 1.*object"),
                             (b'{"a":', "JSON"), (b'[{"name": 5}]', "text"), (b"name\nx,y\n", "more fields")):
            self.heron("printer", "add", "--from", self.write("bad", text), code=1)
            self.assertRegex(self.last_errors, reason)
        self.heron("printer", "add", "--from", self.folder / "missing", code=5)
        self.heron("printer", "add", code=2)
        self.assertEqual(self.names(), [])


class Identities(support.Journey):
    def changed(self):
        return "Zoom" in self.heron("settings", "-p", "Office")

    def test_a_new_queue_of_the_name_inherits_nothing(self):
        self.add_printer()
        self.change("ZoomCheck=1", "Watermark_Use=1")
        self.change("lpFAXUnit=2", more=["--device"])
        self.heron("printer", "add", "Office", "--replace")
        self.assertTrue(self.changed(), "a replaced printer isn't a new one")
        self.assertEqual(self.values("lpFAXUnit", more=["--device"]), [2])
        other = {**self.environment(), "HERON_USER": "anna"}
        self.heron("settings", "-p", "OFFICE", "-o", "ZoomCheck=1", env=other)
        self.heron("library", "save", "-p", "Office", "Mine", env=other)
        self.heron("printer", "remove", "Office")
        self.assertEqual(list(self.home.glob("users/root.records/*")), [])
        self.add_printer()
        self.assertFalse(self.changed())
        self.assertNotIn("Zoom", self.heron("settings", "-p", "Office", env=other))
        self.assertNotIn("Mine", self.heron("library", "list", "-p", "Office", env=other))
        self.assertEqual(list(self.home.glob("users/anna.records/*")), [], "the removed queue's record is still there")

    def test_another_machines_queue_of_the_name_takes_nothing_away(self):
        homes = {**{k: v for k, v in self.environment().items() if k != "HERON_HOME"}, "XDG_DATA_HOME": str(self.folder)}
        machines = [{**homes, "HERON_MACHINE_HOME": str(self.folder / name)} for name in ("one", "two")]
        for machine in machines:
            self.heron("printer", "add", "Office", env=machine)
            self.heron("settings", "-p", "Office", "-o", "ZoomCheck=1", env=machine)
        self.heron("library", "save", "-p", "Office", "Mine", env=machines[0])
        for machine in machines * 2:
            self.assertIn("Zoom", self.heron("settings", "-p", "Office", env=machine))
            self.assertIn("Mine", self.heron("library", "list", "-p", "Office", env=machine))


class Moves(support.Journey):
    def test_a_moved_store_finds_its_driver_and_a_missing_one_is_named(self):
        self.add_printer()
        self.change("ZoomCheck=1")
        labels = self.heron("settings", "-p", "Office", "-l")
        self.home.rename(self.folder / "moved")
        self.home = self.folder / "moved"
        self.assertEqual(self.heron("settings", "-p", "Office", "-l"), labels)
        self.assertTrue(self.json("printer", "show", "Office")["dataFile"].startswith(str(self.home)))
        shutil.rmtree(self.home / "driver")
        for arguments in (["settings", "-p", "Office"], ["controls", "-p", "Office"], ["library", "list", "-p", "Office"]):
            self.heron(*arguments, code=1)
            self.assertIn(str(self.home / "driver"), self.last_errors)
        self.heron("printer", "show", "Office")
        self.heron("printer", "add", "Office", "--replace")
        self.assertEqual(self.heron("settings", "-p", "Office", "-l"), labels)


class Locales(support.Journey):
    def test_papers_follow_the_locale(self):
        self.add_printer()
        out = self.folder / "default.bin"
        for locale, paper in (({"LANG": "de_DE.UTF-8"}, 9), ({"LANG": "en_US.UTF-8"}, 1), ({"LC_ALL": "C", "LANG": "de_AT"}, 9),
                              ({"LANG": "en_US.UTF-8", "LC_PAPER": "fr_FR@euro"}, 9), ({"LC_ALL": "zh_CN.UTF-8"}, 9),
                              ({"LC_ALL": "en_CA", "LC_PAPER": "de_DE"}, 1), ({}, 1),
                              ({"LANG": "de_DE", "HERON_COUNTRY": "1"}, 1)):
            env = {k: v for k, v in self.environment().items() if not k.startswith(("LC_", "LANG")) and k != "HERON_COUNTRY"}
            self.heron("record", "default", "-p", "Office", "--out", out, env={**env, **locale})
            self.assertEqual(self.json("record", "show", out)["fields"]["dmPaperSize"], paper, locale)


class Unfinished(support.Journey):
    def test_leftovers_of_killed_runs_go_and_running_ones_stay(self):
        self.add_printer()
        self.change("ZoomCheck=1")
        records = next(self.home.glob("users/*.records"))
        left = records / ".heron-aB3dE6"
        left.write_bytes(b"half")
        job = self.folder / ".heron-job-aB3dE6"
        job.mkdir()
        (job / "pages.pdf").write_bytes(b"half")
        running = self.folder / ".heron-job-Run123"
        running.mkdir()
        mine = self.folder / ".heron-notes"
        mine.write_bytes(b"of another program")
        holder = os.open(running, os.O_RDONLY)
        try:
            fcntl.flock(holder, fcntl.LOCK_EX)
            self.heron("settings", "-p", "Office")
            self.heron("print", "-p", "Office", support.SAMPLES / "letter.txt", "--out", self.folder / "job")
        finally:
            os.close(holder)
        self.assertFalse(left.exists() or job.exists())
        self.assertTrue(running.exists() and mine.exists())


class Secrets(support.Journey):
    def test_a_queues_record_keeps_no_password(self):
        self.add_printer()
        record = self.default_record()
        secret = "Geheim7".encode("utf-16-le")
        for offset in (1459, 1481, 1503, 1789, 1919):
            record[offset:offset + len(secret)] = secret
        self.heron("printer", "add", "Second", "--dev-mode", self.write("in.bin", record))
        self.assertRegex(self.last_errors, "passwords.*left out")
        self.assertEqual(self.json("printer", "show", "Second")["devModeSize"], 3328)
        for path in [self.home, *self.home.rglob("*")]:
            if path.is_file() and path.stat().st_mode & 0o044:
                self.assertNotIn(secret, path.read_bytes(), f"{path} can be read by others")


class FullDisk(support.Journey):
    """A store on a disk without room, in a mount namespace of the test's own."""

    def on_full_disk(self, *commands):
        """Exit code and streams of each command, run after the store's disk was filled."""
        self.home.mkdir()
        heron = shlex.quote(str(support.BIN))
        lines = [f"mount -t tmpfs -o size=16m none {shlex.quote(str(self.home))}", f"{heron} printer add Office >/dev/null",
                 f"{heron} settings -p Office -o Copies=2 >/dev/null",
                 f"cat /dev/zero >{shlex.quote(str(self.home))}/filler 2>/dev/null || true"]
        for n, command in enumerate(commands):
            place = shlex.quote(str(self.folder / f"answer{n}"))
            lines.append(f"code=0; {heron} {shlex.join(map(str, command))} >{place}.out 2>{place}.err || code=$?")
            lines.append(f"echo $code >{place}.code")
        subprocess.run(["unshare", "-rm", "sh", "-ec", "\n".join(lines)], env=self.environment(), check=True, timeout=120)
        read = lambda n, kind: (self.folder / f"answer{n}.{kind}").read_text()  # noqa: E731
        return [(int(read(n, "code")), read(n, "out"), read(n, "err")) for n in range(len(commands))]

    def test_one_can_look_and_print_to_another_disk(self):
        job = self.folder / "job"
        looked, listed, printed, changed, added = self.on_full_disk(
            ["settings", "-p", "Office"], ["printer", "list"], ["print", "-p", "Office", support.SAMPLES / "letter.txt", "--out", job],
            ["settings", "-p", "Office", "-o", "Copies=5"], ["printer", "add", "Second"])
        self.assertEqual(looked[0], 0, looked[2])
        self.assertRegex(looked[1], r"Copies +2\n")
        self.assertEqual((listed[0], listed[1]), (0, "Office\n"))
        self.assertEqual(printed[0], 0, printed[2])
        self.assertTrue((job / "pages.pdf").exists())
        for code, out, errors in (changed, added):
            self.assertEqual(code, 1, errors)
            self.assertEqual(out, "")
            self.assertIn(str(self.home), errors)
            self.assertRegex(errors, "(?i)no space|full")


class Shared(support.Journey):
    """Two users of one machine; where the tests run as root the second one is real."""

    def setUp(self):
        super().setUp()
        self.folder.chmod(0o755)
        self.machine = self.folder / "machine"
        for folder, files in (("bin", ["heron", "heron-spool"]), ("lib", ["libheron_platform.so.0", "libheron.so.0"])):
            (self.folder / folder).mkdir(mode=0o755)
            for file in files:
                shutil.copy2(os.path.join(support.LIB, "..", folder, file), self.folder / folder)
        shutil.copytree(os.path.join(support.LIB, "heron", "driver"), self.folder / "lib" / "heron" / "driver")
        user = tempfile.mkdtemp(prefix="user-", dir=self.folder)
        self.user_home = pathlib.Path(user)
        if is_root():
            os.chown(user, PLAIN_USER, PLAIN_USER)

    def environment(self, **more):
        return {k: v for k, v in super().environment(**more).items() if k not in ("HERON_HOME",)} | {
            "XDG_DATA_HOME": str(self.folder / "admin"), "HERON_MACHINE_HOME": str(self.machine)}

    def user(self, *arguments, **options):
        env = {**self.environment(), "XDG_DATA_HOME": str(self.user_home / "data"), "HOME": str(self.user_home)}
        who = {"user": PLAIN_USER, "group": PLAIN_USER, "extra_groups": []} if is_root() else {}
        return self.heron(*arguments, program=str(self.folder / "bin" / "heron"), env=env, cwd=self.folder, **who, **options)

    def lock(self):
        """Takes the right to write the machine's store from an ordinary user who runs these tests."""
        if not is_root():
            for path in [self.machine, *self.machine.rglob("*")]:
                path.chmod(0o555 if path.is_dir() else 0o444)
            self.addCleanup(lambda: [p.chmod(0o755) for p in [self.machine, *self.machine.rglob("*")]])

    def test_an_administrator_adds_and_a_user_sets_and_prints(self):
        mask = os.umask(0o077)
        try:
            self.add_printer()
        finally:
            os.umask(mask)
        self.lock()
        self.assertEqual(self.user("printer", "list"), "Office\n")
        self.user("settings", "-p", "Office", "-o", "ZoomCheck=1")
        self.assertIn("Zoom", self.user("settings", "-p", "Office"))
        self.assertNotIn("Zoom", self.heron("settings", "-p", "Office"))
        letter = self.folder / "letter.txt"
        letter.write_text("Hello\n")
        self.user("print", "-p", "Office", letter, "--out", self.user_home / "job")
        self.assertTrue((self.user_home / "job" / "pages.pdf").exists())
        for arguments in (["printer", "add", "Other"], ["printer", "remove", "Office"],
                          ["settings", "-p", "Office", "--device", "-o", "lpSourceUnit=2"]):
            self.user(*arguments, code=6)
            self.assertRegex(self.last_errors, "administrator|HERON_HOME")
        for path in self.machine.rglob("*"):
            self.assertNotIn("user", path.name)
        for path in self.user_home.rglob("*.db"):
            self.assertEqual(path.stat().st_mode & 0o077, 0)

    @unittest.skipUnless(is_root(), "an ordinary user owns what the tests make, and may mend it")
    def test_damage_that_a_user_cant_mend_is_named(self):
        self.add_printer()
        database = self.machine / "printers.db"
        database.write_bytes(b"\0" * 4096 + database.read_bytes()[4096:])
        self.user("printer", "list", code=1)
        self.assertRegex(self.last_errors, f"{database}.*administrator")
        self.assertEqual(self.heron("printer", "list"), "")
        self.assertRegex(self.last_errors, "damaged-1")


if __name__ == "__main__":
    unittest.main()

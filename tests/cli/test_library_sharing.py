"""Six programs at once on one user's settings library: whatever one of them acknowledged is there afterwards.

HERON_LIBRARY_SWEEP is the number of changes; scripts/sweep-library makes it large.
"""

import os
import random
import signal
import subprocess
import threading
import time
import unittest

import support

CHANGES = int(os.environ.get("HERON_LIBRARY_SWEEP", "120"))
WORKERS = 6
NAMES = 3  # of each worker; all of them and the standard settings fit into the library


class Worker:
    """Changes entries of its own, and knows for each the comment that it acknowledged last."""

    def __init__(self, test, number, kills):
        self.test, self.kills = test, kills
        self.names = [f"w{number}-{i}" for i in range(NAMES)]
        self.dice = random.Random(number)
        self.entries = {}
        self.killed = 0
        self.serial = 0
        self.error = None

    def run(self, changes):
        try:
            for _ in range(changes):
                self.change()
        except Exception as error:  # pylint: disable=broad-except
            self.error = error

    def change(self):
        present = [name for name in self.names if name in self.entries]
        absent = [name for name in self.names if name not in self.entries]
        self.serial += 1
        comment = f"change {self.serial}"
        kind = self.dice.choice(["save", "save", "comment", "rename", "remove", "move"])
        if kind == "save" or not present:
            name = self.dice.choice(self.names)
            return self.make(["save", name, "--comment", comment, "--folder", self.test.files], {**self.entries, name: comment})
        name = self.dice.choice(present)
        rest = {other: text for other, text in self.entries.items() if other != name}
        if kind == "rename" and absent:
            return self.make(["rename", name, absent[0]], {**rest, absent[0]: self.entries[name]}, may_refuse=True)
        if kind == "remove":
            return self.make(["remove", name], rest)
        if kind == "move":
            return self.make(["move", name, self.dice.choice(["up", "down"])], dict(self.entries), may_refuse=True)
        return self.make(["comment", name, comment], {**rest, name: comment})

    def make(self, arguments, after, may_refuse=False):
        """Runs one change. A file that a removed or killed entry left prevents a renaming, and the first
        entry can't go up: such a change is refused."""
        command = [support.BIN, "library", *map(str, arguments), "-p", "Office", "--yes"]
        with subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, env=self.test.environment()) as process:
            if self.kills and self.dice.random() < 0.3:
                time.sleep(self.dice.uniform(0, 0.08))
                process.send_signal(signal.SIGKILL)
            errors = process.communicate(timeout=120)[1].decode()
        if process.returncode == -signal.SIGKILL:
            self.killed += 1
            found = self.found()
            assert found in (self.entries, after), f"killed in {arguments}: {found}, not {self.entries} or {after}"
            self.entries = found
        elif process.returncode == 0:
            self.entries = after
        else:
            assert may_refuse and process.returncode == 4, f"{arguments}: {process.returncode} {errors}"

    def found(self):
        rows = self.test.json("library", "list", "-p", "Office")["entries"]
        return {row["name"]: row["comment"] for row in rows if row["name"] in self.names}


class LibrarySharing(support.Journey):
    def setUp(self):
        super().setUp()
        self.add_printer()
        self.files = self.folder / "files"
        self.files.mkdir()

    def sweep(self, kills):
        workers = [Worker(self, number, kills) for number in range(WORKERS)]
        threads = [threading.Thread(target=worker.run, args=(CHANGES // WORKERS,)) for worker in workers]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        for worker in workers:
            if worker.error is not None:
                raise worker.error
        rows = self.json("library", "list", "-p", "Office")["entries"]
        acknowledged = {name: text for worker in workers for name, text in worker.entries.items()}
        self.assertEqual({row["name"]: row["comment"] for row in rows if row["kind"] == "own"}, acknowledged)
        for name in acknowledged:
            self.heron("library", "show", name, "-p", "Office")
        print(f"{CHANGES} changes, {sum(worker.killed for worker in workers)} killed, {len(acknowledged)} entries")

    def test_nothing_acknowledged_is_lost(self):
        self.sweep(kills=False)

    def test_nothing_acknowledged_is_lost_when_some_are_killed(self):
        self.sweep(kills=True)


if __name__ == "__main__":
    unittest.main()

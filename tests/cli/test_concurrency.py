"""Several programs change the same things at once, some of them killed: every acknowledged change must be there.

Six writers change one record, each a setting of its own, so that whatever a writer finds at its next change (the old
value that the command reports) must equal the value reported before. HERON_SWEEP_CHANGES is the number of changes of each
part, 1,000 in scripts/sweep-concurrency.
"""

import itertools
import json
import os
import random
import signal
import subprocess
import threading
import time
import unittest

import support

WRITERS = 6
CHANGES = int(os.environ.get("HERON_SWEEP_CHANGES", "60"))

# Settings that move nothing else, and values in turn.
OWN = {"Copies": range(2, 900), "fMargin": range(11, 50), "lpCoverSource": [2, 4, 1], "lpOrientation": [2, 1],
       "UnDisplayPW": [0, 1], "lpMediaSource": [1, 2]}
DEVICE = {"lpSourceUnit": [2, 3, 4, 5, 1], "lpFAXUnit": [2, 1], "lpCopierHardDisk": [2, 1], "Secur_Check": [1, 0],
          "lpPDLType": [1, 2, 3, 4], "lpOutputUnit": [5, 1]}


class Writer(threading.Thread):
    """Changes one setting again and again; with `kills` about every third command is killed somewhere on its way."""

    def __init__(self, sweep, options, key, values, changes, kills):
        super().__init__()
        self.sweep, self.options, self.key, self.changes = sweep, options, key, changes
        self.values = itertools.cycle(values)
        self.kills = kills
        self.dice = random.Random(key)
        self.may_be = None  # values that may be stored now; None: not known yet
        self.acknowledged = self.killed = 0
        self.lost, self.failed = [], []

    def run(self):
        for _ in range(self.changes):
            self.change(next(self.values))

    def command(self, value):
        return [support.BIN, "settings", "-p", "Office", *self.options, "-o", f"{self.key}={value}", "--yes", "--json"]

    def change(self, value):
        child = subprocess.Popen(self.command(value), env=self.sweep.environment(), stdout=subprocess.PIPE,
                                 stderr=subprocess.PIPE)
        if self.kills and self.dice.random() < 0.33:
            time.sleep(self.dice.uniform(0, 0.06))
            child.kill()
        out, errors = child.communicate(timeout=120)
        if child.returncode == -signal.SIGKILL:
            self.killed += 1
            if self.may_be is not None:
                self.may_be.add(value)
        elif child.returncode != 0:
            self.failed.append(errors.decode())
        else:
            self.acknowledged += 1
            self.check(json.loads(out)["changes"][0]["old"])
            self.may_be = {value}

    def check(self, found):
        if self.may_be is not None and found not in self.may_be:
            self.lost.append(f"{self.key} is {found}, not one of {sorted(self.may_be)}")


class Sweep(support.Journey):
    def sweep(self, settings, *options, kills):
        self.add_printer("Office", "--replace")
        share = -(-CHANGES // WRITERS)
        writers = [Writer(self, options, key, values, share, kills) for key, values in settings.items()]
        for writer in writers:
            writer.start()
        for writer in writers:
            writer.join()
        for writer in writers:  # what the last change of each left
            writer.kills = False
            writer.change(next(writer.values))
        lost = [text for writer in writers for text in writer.lost]
        acknowledged = sum(writer.acknowledged for writer in writers)
        killed = sum(writer.killed for writer in writers)
        print(f"{' '.join(options) or 'own record'}: {acknowledged} changes acknowledged by {len(writers)} processes, "
              f"{killed} killed, {len(lost)} lost")
        self.assertEqual([text for writer in writers for text in writer.failed], [])
        self.assertEqual(lost, [])
        self.assertGreaterEqual(acknowledged + killed, CHANGES)

    def test_own_record(self):
        for kills in (False, True):
            self.sweep(OWN, kills=kills)

    def test_saved_record(self):
        for kills in (False, True):
            self.sweep(DEVICE, "--device", kills=kills)

    def race(self, *commands):
        """Starts the commands together; how many ended with 0. Any other end but 1 and 5 is a failure."""
        children = [subprocess.Popen([support.BIN, *command], env=self.environment(), stdout=subprocess.DEVNULL,
                                     stderr=subprocess.DEVNULL) for command in commands]
        codes = [child.wait(timeout=120) for child in children]
        self.assertLessEqual(set(codes), {0, 1, 5})
        return codes.count(0)

    def test_a_printer_is_added_and_removed_by_one(self):
        for number in range(max(CHANGES // 20, 3)):
            name = f"P{number}"
            self.assertEqual(self.race(*[("printer", "add", name)] * WRITERS), 1)
            self.assertEqual(self.race(*[("printer", "remove", name)] * WRITERS), 1)

    def test_a_new_printer_keeps_what_is_set_at_once(self):
        """The driver's first record of a queue never replaces one that was changed already."""
        for number in range(max(CHANGES // 20, 3)):
            name = f"Q{number}"
            add = subprocess.Popen([support.BIN, "printer", "add", name], env=self.environment(),
                                   stdout=subprocess.DEVNULL)
            set_fax = ("settings", "-p", name, "--device", "-o", "lpFAXUnit=2", "--yes")
            end = time.monotonic() + 60
            while self.run_heron(*set_fax).returncode != 0:
                self.assertLess(time.monotonic(), end, f"{name} never came")
            self.assertEqual(add.wait(timeout=120), 0)
            self.assertEqual(self.json(*set_fax)["changes"][0]["old"], 2, name)

    def test_a_recall_that_is_overtaken_is_made_again(self):
        self.add_printer()
        self.heron("settings", "-p", "Office", "-o", "Copies=5")
        self.heron("library", "save", "-p", "Office", "Five")
        recall = ("library", "recall", "-p", "Office", "Five", "--yes")
        for number in range(max(CHANGES // 40, 3)):
            change = ("settings", "-p", "Office", "-o", f"fMargin={number + 11}", "--yes")
            self.assertEqual(self.race(*[recall] * 3, *[change] * 3), 6)


class Asked(support.Journey):
    """A question is open while another program changes the same record."""

    def value(self, key):
        return self.json("settings", "-p", "Office", "-o", f"{key}=1", "--yes", "--dry-run")["changes"][0]["old"]

    def setUp(self):
        super().setUp()
        self.add_printer()
        self.heron("settings", "-p", "Office", "--device", "-o", "lpOutputUnit=41", "--yes")
        self.heron("settings", "-p", "Office", "-o", "lpPRNType=3")
        self.question = ("settings", "-p", "Office", "-o", "Staple_Check=1")  # a booklet takes no corner staple

    def answer(self, *steps):
        """Each step is what another program does at a question, and the answer: exit code, and what was shown."""
        def step(change, typed):
            self.heron("settings", "-p", "Office", *change, "--yes")
            return typed
        code, shown = self.on_terminal(self.question, [(b"[yes/no] ", lambda s=s: step(*s)) for s in steps])
        return code, shown.decode()

    def test_the_same_question_is_asked_once_and_locks_nothing(self):
        code, shown = self.answer((("-o", "Copies=7"), b"yes\n"))  # a locked store would refuse the other program
        self.assertEqual((code, shown.count("[yes/no]")), (0, 1), shown)
        self.assertEqual([self.value(key) for key in ("Copies", "lpPRNType", "Staple_Check")], [7, 1, 1])

    def test_other_consequences_are_asked_for_again(self):
        for typed, code, expected in ((b"no\n", 3, [1, 3, 0]), (b"yes\n", 0, [0, 1, 1])):
            self.change("Collate_Check=0", "lpPRNType=3", more=["--yes"])
            found, shown = self.answer((("-o", "Collate_Check=1"), b"yes\n"), ((), typed))
            self.assertEqual(found, code, shown)
            self.assertIn("another program has changed", shown)
            self.assertIn("Offset => Off", shown)
            self.assertEqual([self.value(key) for key in ("Collate_Check", "lpPRNType", "Staple_Check")], expected)


if __name__ == "__main__":
    unittest.main()

"""Every setting and every control with every value, through `heron settings -o`: what is accepted reads back as it
was reported, and what is refused names the way there.

The journeys take a share of it, `scripts/sweep-settings` all.
"""

import json
import re
from collections import Counter

STEP = re.compile(r"`heron settings( --device)? -o (\S+=-?\d+)`")
OWN_REASON = re.compile(r"give a number|follows from another|opens a dialog|lasts only|the order can be|custom size"
                        r"|of the job's own|this model|has no choice|has a switch of its own")
OUTSIDE = re.compile(r"the list of forms is empty|the form needs a file|a fax needs a recipient")  # no setting brings them
EQUIPMENT = ("lpSourceUnit=4", "lpOutputUnit=3", "lpPunchKit=21", "lpSaddleUnit=2", "lpMailBinKit=2", "lpFAXUnit=2",
             "lpCopierHardDisk=2")


class Sweep:
    """`run(*arguments)` runs the program in a store of its own and returns what subprocess.run does."""

    def __init__(self, run, folder, equipment=()):
        self.run = run
        self.folder = folder
        self.equipment = equipment
        self.counts = Counter()
        self.faults = []
        run("printer", "add", "Swept")
        self.restart()
        self.record = folder / "swept-default.bin"
        run("record", "default", "-p", "Swept", "--out", self.record)
        self.start = {row["parameter"]: row["value"] for row in self.settings("--in", self.record)}

    def restart(self):
        """The printer with its equipment again, and the user's own settings at their start."""
        self.run("settings", "-p", "Swept", "--device", "--reset")
        for option in self.equipment:
            self.run("settings", "-p", "Swept", "--device", "-o", option, "--yes")
        self.run("settings", "-p", "Swept", "--reset")

    def settings(self, *more):
        return json.loads(self.run("settings", "-p", "Swept", "--json", *more).stdout)["settings"]

    def wishes(self):
        """Key or control number, value, and the parameter that is read back; None: any row that has the key."""
        for row in self.settings("--in", self.record):
            if row["tray"] is not None:
                continue
            low, high = row["min"], row["max"]
            values = {option["value"] for option in row["options"]} if low is None else {low, high, (low + high) // 2}
            for value in sorted(values) if row["key"] else ():
                yield row["key"], value
        controls = json.loads(self.run("controls", "-p", "Swept", "--in", self.record, "--json").stdout)["controls"]
        for row in controls:
            values = {item["value"] for item in row["items"]}
            if row["type"] == "check":
                values = {0, 1}
            for value in sorted(values) if row["type"] != "button" else ():
                yield str(row["control"]), value

    def try_all(self, share=1, first=0):
        for number, (key, value) in enumerate(self.wishes()):
            if number % share == first % share:
                self.attempt(key, value)

    def attempt(self, key, value):
        out = self.folder / "swept.bin"
        done = self.run("settings", "-p", "Swept", "--in", self.record, "--out", out, "-o", f"{key}={value}", "--yes",
                        "--json")
        self.counts[done.returncode] += 1
        if done.returncode == 0:
            self.compare(f"{key}={value}", json.loads(done.stdout), self.settings("--in", out))
        elif done.returncode == 4:
            self.follow(f"{key}={value}", done.stderr.decode())
        else:
            self.faults.append(f"{key}={value}: exit {done.returncode}: {done.stderr.decode().strip()}")

    def compare(self, wish, answer, read):
        """What the answer said of every setting, and of the wished one, is what the next call says."""
        (change,) = answer["changes"]
        if not answer["applied"] or change["new"] != int(wish.split("=")[1]):
            self.faults.append(f"{wish}: reported as {change}")
        then = [(row["parameter"], row["tray"], row["value"]) for row in answer["settings"]]
        now = [(row["parameter"], row["tray"], row["value"]) for row in read]
        lost = [pair for pair in zip(then, now) if pair[0] != pair[1]]
        if any(row["key"] == change["key"] for row in read if (row["parameter"],) in {(a[0],) for a, _ in lost}):
            self.counts["lost"] += 1
            self.faults.append(f"{wish}: {lost}")
        elif lost:
            self.counts["silent"] += 1
            self.faults.append(f"{wish}: silently {lost}")

    def follow(self, wish, reason):
        """Goes the way that a refusal names; then the wish is accepted."""
        steps = STEP.findall(reason)
        if not steps:
            self.counts["no way"] += 1
            if not OWN_REASON.search(reason) and not OUTSIDE.search(reason):
                self.faults.append(f"{wish}: names no way: {reason.strip()}")
            return
        self.counts["way"] += 1
        self.restart()
        # An option of the printer is itself what the way sets.
        for device, step in steps if steps[-1][1] == wish else (*steps, ("", wish)):
            done = self.run("settings", "-p", "Swept", "-o", step, "--yes", *([device.strip()] if device else []))
            if done.returncode == 4 and device and step == wish:
                break  # the printer's sheet has its own say, and its own way
            if done.returncode == 4 and OUTSIDE.search(done.stderr.decode()):
                break
            if done.returncode != 0:
                self.faults.append(f"{wish}: {step} leads nowhere: {done.stderr.decode().strip()}\n  {reason.strip()}")
                break
        self.restart()

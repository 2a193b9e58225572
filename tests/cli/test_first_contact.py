"""Help, examples that work, command lines that aren't understood, and readers that leave early."""

import re
import shutil
import subprocess
import unittest

import support
from sample_device import SampleDevice
from support import BIN, SAMPLES

COMMAND = re.compile(r"^  (\w+)  ", re.MULTILINE)


class FirstContactTest(support.Journey):
    def help(self, *command):
        return self.heron("help", *command)

    def commands(self, *group):
        """Every command of the program below `group`, as lists of words."""
        part = self.help(*group).partition("\nCommands\n")[2].partition("\n\n")[0]
        names = COMMAND.findall("\n" + part)
        found = []
        for name in names:
            found += [[*group, name], *self.commands(*group, name)]
        return found

    def test_every_command_shows_its_usage(self):
        commands = self.commands()
        self.assertIn(["library", "recall"], commands)
        self.assertIn(["print"], commands)
        for command in [[], *commands]:
            text = self.help(*command)
            with self.subTest(command):
                self.assertTrue(text.startswith(f"Usage: {' '.join(['heron', *command])} "))
                self.assertLessEqual(max(map(len, text.splitlines())), 80)
                self.assertNotRegex(text, r"\bTEXT TEXT|Excludes|[a-z] TEXT +[A-Z].*(file|printer)")
                self.assertIn("\nExamples\n  ", text)
                self.assertEqual(text, self.heron(*command, "--help"))
                self.assertRegex(self.heron(*command, "--version"), r"\Aheron \d+\.\d+\.\d+\n\Z")
        self.assertRegex(self.help("settings"), r"-p, --printer NAME .*\(required\)")
        self.assertNotIn("(required)", self.help("catalog"))

    def test_the_examples_work(self):
        shutil.copy(SAMPLES / "letter.txt", self.folder)
        shutil.copy(SAMPLES / "three-pages.pdf", self.folder / "report.pdf")
        shutil.copy(SAMPLES / "foreign-driver.bin", self.folder / "other-driver.bin")
        # Windows have their own journeys; the rest goes in an order in which one builds on the other.
        order = ["printer add", "", "record", "settings", "library save", "library rename", "library comment"]
        commands = [command for command in map(" ".join, self.commands()) if command != "sheet"]
        last = ["library remove", "library register", "printer remove"]
        commands = order + [command for command in commands if command not in order + last] + last
        self.add_printer()
        device = SampleDevice(self, 'model "Varnell 70MX-2"\n')
        seen = set()
        for command in commands:
            examples = self.help(*command.split()).partition("\nExamples\n")[2].partition("\n\n")[0]
            for example in examples.splitlines():
                if example in seen or "heron sheet" in example:
                    continue
                seen.add(example)
                if "board.vxs" in example:
                    shutil.copy(next(self.home.rglob("Booklet.vxs")), self.folder / "board.vxs")
                line = example.replace("heron", str(BIN), 1).replace("printer add Office", "printer add Office --replace")
                line = line.replace("printer.example", device.address)
                done = subprocess.run(["sh", "-ec", line], cwd=self.folder, env=self.environment(), input=b"",
                                      capture_output=True, timeout=60, check=False)
                self.assertEqual(done.returncode, 0, f"{example}: {done.stderr.decode()}")
        self.assertGreater(len(seen), 25)

    def test_what_does_not_exist_is_no_success_with_help_either(self):
        for words, hint in {("setings",): 'did you mean "settings"?', ("libary", "list"): 'did you mean "library"?',
                            ("record", "shwo"): 'did you mean "show"?', ("help", "prnt"): 'did you mean "print"?',
                            ("xyzzy",): "`heron --help`", ("library", "xyzzy"): "`heron library --help`"}.items():
            for more in ((), ("--help",), ("--json",)):
                self.heron(*words, *more, code=2)
                self.assertIn(hint, self.last_errors)
        self.heron(code=2)
        self.assertIn("needs a command: printer, settings,", self.last_errors)
        self.heron("printer", code=2)
        self.assertIn("add, list, show, remove", self.last_errors)
        self.heron("catalog", "--jsn", code=2)
        self.assertIn('did you mean "--json"', self.last_errors)
        for arguments in (["printer", "add"], ["printer", "list", "extra"], ["record"], ["record", "show"],
                          ["record", "merge", "-p", "X"], ["record", "diff", "one"], ["record", "diff", "-", "-"],
                          ["record", "convert", "-p", "X", "--in", "x", "--to", "newest"], ["capabilities"],
                          ["record", "show", "x", "-p", "X"], ["catalog", "--country", "x"],
                          ["record", "show", "--nonsense", "x"]):
            self.heron(*arguments, code=2)
        self.assertFalse(self.home.exists(), "a command line that isn't understood touched the store")

    def test_names_may_look_like_commands_and_options(self):
        self.heron("printer", "show", "help", code=5)
        self.heron("printer", "add", "--", "--help")
        self.assertEqual(self.heron("printer", "list"), "--help\n")

    def test_a_reader_that_leaves_early_is_no_failure(self):
        self.add_printer()
        for reset in (True, False):  # a shell's way with SIGPIPE, and a service's, which ignores it
            for command in (["settings", "-p", "Office", "-l"], ["help"], ["settings", "-p", "Office", "-o", "lpPRNType=Booklet"]):
                program = subprocess.Popen([BIN, *command], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                           env=self.environment(), restore_signals=reset)
                program.stdout.close()
                self.assertEqual((program.wait(60), program.stderr.read()), (0, b""))
                program.stderr.close()
            self.assertIn("Booklet", self.heron("settings", "-p", "Office", "-l"))
            self.heron("settings", "-p", "Office", "--reset")
        with open("/dev/full", "wb") as full:
            done = subprocess.run([BIN, "help"], stdout=full, stderr=subprocess.PIPE, check=False)
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"couldn't be written", done.stderr)


if __name__ == "__main__":
    unittest.main()

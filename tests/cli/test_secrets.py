"""Passwords and identifiers of a job: set from files or a prompt, kept in the record, never shown in clear."""

import unittest

import support

MASK = 0x5A5A  # of the stored passwords, part of the record's format

# Where each lies in the record, its width, whether it is stored scrambled, and a text of the greatest length.
FIELDS = {
    "secureId": (1545, 17, False, "plans-of-house 9"),
    "securePassword": (1481, 11, True, "Tulpe 7~"),
    "secureCodeA": (1459, 11, False, "code-a-123"),
    "secureCodeB": (1503, 11, False, "code-b-456"),
    "boxNumber": (1525, 10, False, "001234567"),
    "boxFileName": (1579, 31, False, "Übersicht 2026, zweiter Teil."),
    "authUserName": (1641, 65, False, "Jürgen Müller"),
    "authPassword": (1789, 65, True, "p" * 63 + "!"),
    "departmentName": (1771, 9, False, "Dept. 17"),
    "departmentPassword": (1919, 9, True, "geheim#1"),
}
SECRETS = {"secureId", "securePassword", "secureCodeA", "secureCodeB", "authPassword", "departmentPassword"}


def held(record, key):
    """The text of a field as a person knows it."""
    offset, width, scrambled, _ = FIELDS[key]
    units = [int.from_bytes(record[offset + 2 * i:offset + 2 * i + 2], "little") for i in range(width)]
    units = units[:units.index(0)] if 0 in units else units
    return "".join(chr(unit ^ MASK if scrambled else unit) for unit in units)


class Secrets(support.Journey):
    def setUp(self):
        super().setUp()
        self.add_printer()

    def own_record(self):
        (path,) = self.own_records()
        return path.read_bytes()

    def set(self, *pairs, code=0):
        """Runs `heron settings` with a file for each pair of key and bytes; what it said."""
        options = []
        for number, (key, text) in enumerate(pairs):
            path = self.write(f"secret-{number}", text if isinstance(text, bytes) else text.encode())
            options += ["--secret", f"{key}={path}"]
        said = self.heron("settings", "-p", "Office", *options, code=code)
        return said + self.last_errors

    def test_each_is_kept_and_none_is_shown(self):
        said = self.set(*((key, row[3] + "\n") for key, row in FIELDS.items()))
        record = self.own_record()
        for key, row in FIELDS.items():
            self.assertEqual(held(record, key), row[3], key)
        # Other processes read them back, all of what they say looked through.
        (path,) = self.own_records()
        default = self.write("plain.bin", self.default_record())
        shown = self.json("record", "show", path)["fields"]
        identity = {row["key"]: row["value"] for row in self.json("settings", "-p", "Office")["identity"]}
        for key, row in FIELDS.items():
            self.assertEqual((shown[key], identity[key]), ("***", "***") if key in SECRETS else (row[3], row[3]))
        for arguments in (["settings", "-p", "Office"], ["settings", "-p", "Office", "-l"],
                          ["settings", "-p", "Office", "--json"], ["record", "show", path, "--all"],
                          ["record", "show", path, "--json"], ["record", "diff", default, path],
                          ["settings", "-p", "Office", "-o", "UnDisplayPW=0", "-o", "Copies=2"]):
            said += self.heron(*arguments) + self.last_errors
        for key in SECRETS:
            self.assertNotIn(FIELDS[key][3], said, key)
        self.assertIn("***", said)

    def test_they_belong_to_the_user_who_set_them(self):
        self.heron("settings", "-p", "Office", "-o", "SecMana_Check=1")
        self.set(("departmentPassword", "mine"))
        self.assertEqual(held(self.own_record(), "departmentPassword"), "mine")
        (path,) = self.own_records()
        fields = self.json("record", "show", path)["fields"]
        self.assertEqual(fields["SecMana_Check"], 1, "what was set before stays")
        out = self.folder / "out.bin"
        env = self.environment(HERON_USER="eve")
        self.heron("settings", "-p", "Office", "--in", path, "--out", out, "--secret",
                   f"secureId={self.write('id', b'eve')}", env=env)
        self.assertIn("another user", self.last_errors)
        taken = out.read_bytes()
        self.assertEqual((held(taken, "secureId"), held(taken, "departmentPassword")), ("eve", ""))
        self.assertEqual(self.json("record", "show", out)["fields"]["ownerUserName"], "eve")

    def test_what_the_dialog_refuses_is_refused_and_changes_nothing(self):
        self.set(("secureId", "first"), ("securePassword", "one"))
        before = self.own_record()
        for key, text in (("secureId", ""), ("secureId", "seventeen letters"), ("secureId", 'quo"te'),
                          ("securePassword", "plus+sign"), ("securePassword", "ninechars"), ("securePassword", "grün"),
                          ("boxNumber", "12a"), ("boxNumber", "000"), ("boxNumber", "1234567890"),
                          ("boxFileName", "n" * 31), ("boxFileName", "ä" * 16), ("boxFileName", "a+b"),
                          ("authPassword", "p" * 65), ("departmentName", "Dept. 170"), ("securePassword", b"\xff\xfe"),
                          ("securePassword", "two\nlines"), ("authUserName", "tab\there"), ("secureId", "x" * 5000)):
            said = self.set((key, text), code=4)
            self.assertIn(key, said)
            if text:
                self.assertNotIn(text if isinstance(text, str) else "\xff", said)
        # If one is refused, none is kept.
        self.set(("securePassword", "other"), ("secureId", ""), code=4)
        self.assertEqual(self.own_record(), before)
        self.set(("securePassword", ""))
        self.assertEqual(held(self.own_record(), "securePassword"), "")
        self.heron("settings", "-p", "Office", "-o", "UserAuth_Check=1", "-o", "lpAuthUserMode=2")
        self.set(("authUserName", ""), code=4)

    def test_what_cant_be_understood_or_read(self):
        path = self.write("hunter2", b"x")
        for code, secret in ((2, "securePassword"), (2, "securePassword="), (2, f"securePasword={path}"),
                             (5, "securePassword=hunter2"), (1, f"securePassword={self.folder}")):
            self.heron("settings", "-p", "Office", "--secret", secret, code=code)
            self.assertNotIn("hunter2", self.last_errors, "the secret itself may be given as the file")
        self.heron("settings", "-p", "Office", "--secret", f"secureId={path}", "--secret", f"secureid={path}", code=2)
        self.heron("settings", "-p", "Office", "--device", "--secret", f"secureId={path}", code=2)
        self.heron("settings", "-p", "Office", "--in", "-", "--secret", "secureId=-", code=2)
        self.heron("settings", "-p", "Office", "--secret", "secureId=-", code=1)  # at its end
        self.heron("settings", "-p", "Office", "-o", "securePassword=hunter2", code=2)
        self.assertIn("--secret securePassword=FILE", self.last_errors)
        self.assertNotIn("hunter2", self.last_errors)
        self.assertEqual(self.own_records(), [])

    def test_standard_input_gives_a_line_for_each(self):
        self.heron("settings", "-p", "Office", "--secret", "secureId=-", "--secret", "securePassword=-",
                   stdin=b"plans\r\nTulpe7\n")
        record = self.own_record()
        self.assertEqual((held(record, "secureId"), held(record, "securePassword")), ("plans", "Tulpe7"))

    def test_a_prompt_shows_nothing_of_what_is_typed(self):
        arguments = ["settings", "-p", "Office", "--secret", "securePassword=-"]
        code, shown = self.on_terminal(arguments, [(b"Password: ", b"Tulpe7\n"), (b"once more: ", b"Tulpe7\n")])
        self.assertEqual(code, 0, shown)
        self.assertNotIn(b"Tulpe7", shown)
        self.assertIn(b"***", shown)
        self.assertEqual(held(self.own_record(), "securePassword"), "Tulpe7")
        code, shown = self.on_terminal(arguments, [(b"Password: ", b"Tulpe8\n"), (b"once more: ", b"Tulpe9\n")])
        self.assertEqual(code, 2, shown)
        self.assertEqual(self.on_terminal(arguments, [(b"Password: ", b"\x03")])[0], -2, "Ctrl-C")
        self.assertEqual(held(self.own_record(), "securePassword"), "Tulpe7")

    def test_a_terminal_gets_no_record(self):
        self.set(("secureId", "plans"))
        code, shown = self.on_terminal(["settings", "-p", "Office", "--out", "-"])
        self.assertEqual(code, 2)
        self.assertNotIn(b"p\0l\0a\0n\0s", shown)

    def test_a_job_takes_them_for_itself_alone(self):
        self.heron("settings", "-p", "Office", "--device", "-o", "lpCopierHardDisk=2", "--yes")
        document = self.write("note.txt", b"text")
        out = self.folder / "job"
        self.heron("print", "-p", "Office", document, "--out", out, "-o", "lpOutputMethod=2", "-o", "UnDisplayPW=0",
                   "--secret", f"secureId={self.write('id', b'plans')}", "--secret",
                   f"securePassword={self.write('password', b'Tulpe7')}", "--yes")
        self.assertIn("***", self.last_errors)
        self.assertNotIn("Tulpe7", self.last_errors)
        self.assertNotIn("plans", self.last_errors)
        ticket = (out / "job.json").read_text()
        self.assertNotIn("Tulpe7", ticket)
        self.assertEqual(self.own_records(), [])


if __name__ == "__main__":
    unittest.main()

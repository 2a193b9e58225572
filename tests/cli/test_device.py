"""Asking a device what is installed: a real agent on this machine, and agents that don't behave."""

import threading
import time
import unittest

import support
from sample_device import Relay, SampleDevice

BARE = 'model "Varnell 36MX-2"\ninput Tray1\n'
BIN = BARE + 'finisher "Bin-type finisher" stacker\n'
FLOOR = 'model "Varnell 70MX-2"\nfinisher "Floor-type finisher" stacker '
NO_ANSWER = "The printer doesn't answer at this address, or it is another model."


class DeviceTest(support.Journey):
    def setUp(self):
        super().setUp()
        self.add_printer()

    def query(self, address, *more, **options):
        return self.json("device", "query", "-p", "Office", "--address", address, *more, **options)

    def values(self, answer):
        return {option["key"]: option["value"] for option in answer["options"]}

    def stored(self):
        return self.values(self.json("device", "show", "-p", "Office"))

    def test_every_option_of_both_models(self):
        device = {
            BARE: {},
            BARE + "input Tray3+Tray4\n": {"lpSourceUnit": 2},
            BARE + "input Tray3\ninput LCT\ndisk 1000\n": {"lpSourceUnit": 5, "lpCopierHardDisk": 2},
            BIN + 'output "Exit Tray2"\noutput "Mail-bin unit"\n': {"lpOutputUnit": 3, "lpMailBinKit": 2},
            BIN + 'finisher "Punch unit" puncher 2 3\nfinisher "Saddle unit" folder\nfax\n':
                {"lpOutputUnit": 2, "lpPunchKit": 22, "lpSaddleUnit": 2, "lpFAXUnit": 2},
            BARE + 'output "Job separator"\ninput Tray3\ninput Tray3\ncopier\n': {"lpOutputUnit": 5},
            FLOOR + "2\n": {"lpOutputUnit": 41, "lpEngine": 1},
            FLOOR + "2 3\ninput Tray3+Tray4\ninput LCT\n": {"lpOutputUnit": 42, "lpEngine": 1, "lpSourceUnit": 4},
            FLOOR + "4\ninput \"Tray 9\"\n": {"lpOutputUnit": 43, "lpEngine": 1},
        }
        bare = {"lpSourceUnit": 1, "lpOutputUnit": 1, "lpMailBinKit": 1, "lpPunchKit": 1, "lpSaddleUnit": 1,
                "lpFAXUnit": 1, "lpCopierHardDisk": 1, "lpEngine": 2}
        for description, installed in device.items():
            with self.subTest(description):
                answer = self.query(SampleDevice(self, description).address, "--yes")
                self.assertTrue(answer["complete"])
                self.assertEqual(self.values(answer), {**bare, **installed})
                self.assertEqual(self.stored(), {**bare, **installed}, "what was acknowledged reads back")

    def test_the_answer_says_where_it_comes_from(self):
        agent = SampleDevice(self, FLOOR + "2 3\ndisk 40960\n")
        answer = self.query(agent.address, "--dry-run")
        self.assertEqual((answer["address"], answer["model"], answer["family"], answer["applied"]),
                         (agent.address, "Varnell 70MX-2", "Varnell 70MX-2", False))
        rows = {option["key"]: option for option in answer["options"]}
        self.assertEqual([option["control"] for option in answer["options"]], [802, 804, 886, 828, 842, 808, 838, 834])
        self.assertEqual((rows["lpOutputUnit"]["bits"], rows["lpOutputUnit"]["default"]), (0x70000020, False))
        self.assertEqual((rows["lpSourceUnit"]["bits"], rows["lpSourceUnit"]["default"]), (0, True))
        self.assertEqual(rows["lpEngine"]["label"], "Varnell 70MX-2")
        self.assertEqual(self.json("device", "show", "-p", "Office")["address"], "", "a dry run stores nothing")

        text = self.heron("device", "query", "-p", "Office", "--address", agent.address, "--yes")
        self.assertRegex(text, r"Output unit: \S.* -> Floor")
        self.assertEqual(self.json("device", "show", "-p", "Office")["address"], agent.address)
        self.assertEqual(self.json("printer", "show", "Office")["directory"],
                         {"printStaplingSupported": 1, "printDuplexSupported": 1})
        # The stored address is asked; nothing is left to change.
        self.assertNotIn("->", self.heron("device", "query", "-p", "Office", "--yes"))
        self.heron("settings", "--device", "-p", "Office", "-o", "lpOutputUnit=5", "--yes")
        self.assertEqual(self.json("printer", "show", "Office")["directory"]["printStaplingSupported"], 0)

    def test_a_queue_is_set_up_in_one_step(self):
        agent = SampleDevice(self, BIN + "fax\n")
        self.heron("printer", "add", "Hall", "--address", agent.address, "--query")
        answer = self.json("device", "show", "-p", "Hall")
        self.assertEqual(answer["address"], agent.address)
        self.assertEqual((self.values(answer)["lpOutputUnit"], self.values(answer)["lpFAXUnit"]), (2, 2))
        self.heron("settings", "-p", "Hall", "-o", "Staple_Check=1", "--dry-run")  # what the finisher is for

        self.heron("printer", "add", "Cellar", "--address", "printer.example:161")
        self.assertEqual(self.json("device", "show", "-p", "Cellar")["address"], "printer.example:161")
        self.heron("printer", "add", "Attic", "--query", code=2)
        self.heron("printer", "add", "Attic", "--address", "x" * 64, code=2)
        self.heron("printer", "add", "Attic", "--address", Relay(self).address, "--query", code=7)
        self.heron("printer", "show", "Attic", code=5)

    def test_who_does_not_agree_is_not_asked_for(self):
        relay = Relay(self, SampleDevice(self, BARE).address)
        before = self.stored()
        for answer in ([], ["--no"]):
            self.heron("device", "query", "-p", "Office", "--address", relay.address, *answer, code=3)
        self.assertEqual(relay.answers, 0)
        self.assertEqual(self.stored(), before)

    def test_devices_that_cannot_be_used(self):
        for address, code, message in (
                (SampleDevice(self, 'model "Other 9000"\n').address, 4, f'{NO_ANSWER} (it is a "Other 9000")'),
                (Relay(self).address, 7, NO_ANSWER), ("printer:0", 7, NO_ANSWER), ("a b", 7, NO_ANSWER),
                ("  ", 2, "Enter the network address of the printer."), ("x" * 64, 2, "at most 63 characters")):
            self.heron("device", "query", "-p", "Office", "--address", address, "--yes", code=code)
            self.assertIn(message, self.last_errors)
        self.heron("device", "query", "-p", "Office", "--yes", code=2)
        self.assertIn("Enter the network address of the printer.", self.last_errors)
        self.heron("device", "query", "-p", "Offic", "--yes", code=5)
        next(self.home.rglob("ETVORBD.DLL")).unlink()
        self.heron("device", "query", "-p", "Office", "--address", "printer", "--yes", code=7)
        self.assertIn("The device communication module can't be loaded.", self.last_errors)
        self.assertEqual(self.json("device", "show", "-p", "Office")["address"], "")

    def test_an_agent_that_dies_leaves_a_marked_answer(self):
        agent = SampleDevice(self, FLOOR + "2\ndisk 1000\n")
        for lives in (1, 2, 4):
            relay = Relay(self, agent.address, lambda answer, number, lives=lives: answer if number <= lives else None)
            done = self.run_heron("device", "query", "-p", "Office", "--address", relay.address, "--dry-run", "--json")
            self.assertIn(done.returncode, (0, 7), done.stderr)
            if done.returncode == 0:
                self.assertIn(b'"complete": false', done.stdout)

    def test_hostile_answers_end(self):
        agent = SampleDevice(self, FLOOR + "2\n")
        spoilers = {
            "truncated": lambda answer, _: answer[:len(answer) // 2],
            "empty": lambda answer, _: b"",
            "noise": lambda answer, _: bytes((byte * 7 + place) & 0xFF for place, byte in enumerate(answer)),
            "long length": lambda answer, _: answer[:1] + b"\x84\x7f\xff\xff\xff" + answer[2:],
        }
        for name, spoil in spoilers.items():
            with self.subTest(name):
                address = Relay(self, agent.address, spoil).address
                self.heron("device", "query", "-p", "Office", "--address", address, "--yes", code=7)

    def test_an_answer_after_the_limit_and_one_that_never_stops(self):
        agent = SampleDevice(self, FLOOR + "2\n")

        def late(answer, _):
            time.sleep(6)
            return answer

        self.heron("device", "query", "-p", "Office", "--address", Relay(self, agent.address, late).address, "--yes", code=7)
        # Rows without end: the walk is cut, and the device is still the one that it says it is.
        rows = "".join(f"row 1.3.6.1.2.1.43.8.2.1.13.1.{row} string Tray3\n" for row in range(100, 2000))
        answer = self.query(SampleDevice(self, FLOOR + "2\n" + rows).address, "--dry-run")
        self.assertEqual(self.values(answer)["lpSourceUnit"], 1)

    def test_noise_without_end_does_not_hold_a_query(self):
        relay = Relay(self, SampleDevice(self, BARE).address, lambda answer, number: None)

        def spam():
            while relay.thread.is_alive():
                if relay.asker is not None:
                    relay.front.sendto(b"\x30\x03\x02\x01\x01", relay.asker)
                time.sleep(0.001)

        spammer = threading.Thread(target=spam)
        spammer.start()
        self.addCleanup(spammer.join)
        self.addCleanup(relay.ends.set)
        self.heron("device", "query", "-p", "Office", "--address", relay.address, "--yes", code=7)

    def test_an_agent_of_version_1(self):
        agent = SampleDevice(self, FLOOR + "4\nfax\n")
        # What only knows version 1 (0 behind the packet's head) drops all others.
        relay = Relay(self, agent.address, takes=lambda request: request[request.index(b"\x02\x01") + 2] == 0)
        answer = self.query(relay.address, "--dry-run")
        self.assertTrue(answer["complete"])
        self.assertEqual((self.values(answer)["lpOutputUnit"], self.values(answer)["lpFAXUnit"]), (43, 2))

    def test_a_table_for_another_device_needs_no_build(self):
        agent = SampleDevice(self, BARE.replace("Varnell 36MX-2", "Relabelled 36") + "input PF-3\n")
        self.heron("device", "query", "-p", "Office", "--address", agent.address, "--yes", code=4)
        table = next(self.home.rglob("varnell.device")).parent / "other.device"
        table.write_text('model "Varnell 36MX-2" 1.3.6.1.2.1.25.3.2.1.3 has "36"\n'
                         'option 3 "Tray3" 1.3.6.1.2.1.43.8.2.1.13 is "PF-3"\n', encoding="utf-8")
        self.assertEqual(self.values(self.query(agent.address, "--yes"))["lpSourceUnit"], 3)
        self.heron("printer", "add", "Office", "--replace")
        self.assertTrue(table.exists(), "the files of others stay")

    def test_nothing_of_the_conversation_is_kept_or_shown(self):
        done = self.run_heron("device", "query", "-p", "Office", "--address", Relay(self).address, "--yes")
        self.assertNotIn(b"kelvoz", done.stdout + done.stderr)
        agent = SampleDevice(self, BARE)
        self.query(agent.address, "--yes")
        for path in self.home.rglob("*"):
            if path.is_file() and path.suffix not in (".DLL", ".so"):
                self.assertNotIn(b"kelvoz", path.read_bytes(), path)


if __name__ == "__main__":
    unittest.main()

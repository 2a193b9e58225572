"""Devices to ask on this machine: a real agent with a description, and a relay before it that spoils its answers."""

import socket
import subprocess
import sys
import threading

import support

LONGEST_PACKET = 65536


class SampleDevice:
    """scripts/sample-device with a description, until the test ends."""

    def __init__(self, test, description):
        path = test.folder / f"device-{len(list(test.folder.glob('device-*')))}.txt"
        path.write_text(description, encoding="utf-8")
        self.agent = subprocess.Popen([sys.executable, "-B", support.SOURCE / "scripts" / "sample-device", path],
                                      stdout=subprocess.PIPE, text=True)
        test.addCleanup(self.stop)
        self.address = self.agent.stdout.readline().strip()
        test.assertRegex(self.address, r"\A127\.0\.0\.1:\d+\Z", "the sample device didn't start")

    def stop(self):
        self.agent.terminate()
        self.agent.wait(60)
        self.agent.stdout.close()


class Relay:
    """A port whose packets go to an agent and back, each answer through `spoil`: the bytes to send on, or None for silence.

    `spoil(answer, number)` counts answers from 1; requests that `takes` refuses are dropped. Without an agent there is
    silence.
    """

    def __init__(self, test, agent=None, spoil=lambda answer, number: answer, takes=lambda request: True):
        self.front = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self.front.bind(("127.0.0.1", 0))
        self.front.settimeout(0.1)
        self.address = f"127.0.0.1:{self.front.getsockname()[1]}"
        self.agent = ("127.0.0.1", int(agent.split(":")[1])) if agent else None
        self.spoil = spoil
        self.takes = takes
        self.asker = None
        self.answers = 0
        self.ends = threading.Event()
        self.thread = threading.Thread(target=self.run)
        self.thread.start()
        test.addCleanup(self.stop)

    def run(self):
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as back:
            back.settimeout(20)
            while not self.ends.is_set():
                try:
                    request, asker = self.front.recvfrom(LONGEST_PACKET)
                    if self.agent is None or not self.takes(request):
                        continue
                    self.asker = asker
                    back.sendto(request, self.agent)
                    answer = back.recv(LONGEST_PACKET)
                except TimeoutError:
                    continue
                self.answers += 1
                answer = self.spoil(answer, self.answers)
                if answer is not None:
                    self.front.sendto(answer, asker)

    def stop(self):
        self.ends.set()
        self.thread.join()
        self.front.close()

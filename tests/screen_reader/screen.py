"""A private screen with a screen reader: what a user without sight has of the program.

Orca runs there without a voice; what it would say is read from its debug output. MIDI messages come
from a JACK server of the robot's own.
"""

import json
import os
import pty
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time
import tty
from datetime import datetime

NEEDED = ["orca", "Xvfb", "openbox", "xdotool", "dbus-daemon", "jackd", "jack_midi_dump"]
LAUNCHER = "/usr/libexec/at-spi-bus-launcher"
LAPTOP = {"profile": ["Default", "default"], "keyboardLayout": 2}
NOTE_ON = re.compile(r"[+ \d]+: 90 ([0-9a-f]{2}) ([0-9a-f]{2})", re.I)
DROPPED = re.compile(r"EVENT MANAGER: (\d+) events pruned")
SPEECH = re.compile(r"^(\d\d:\d\d:\d\d\.\d+) - SPEECH OUTPUT: '(.*)'(?: voice=\w+)? ?\{")


def missing():
    """What is not installed here; empty where the robot can run."""
    names = [name for name in NEEDED if not shutil.which(name)]
    if not os.path.exists(LAUNCHER):
        names.append("at-spi2-core")
    if not names and subprocess.run(["pgrep", "-r", "R,S,D", "-x", "orca"], stdout=subprocess.DEVNULL).returncode == 0:
        names.append("a desktop without a running Orca")
    return names


class Utterance:
    def __init__(self, clock, text):
        today = datetime.now().strftime("%Y-%m-%d ")
        self.time = datetime.strptime(today + clock, "%Y-%m-%d %H:%M:%S.%f").timestamp()
        self.text = text.rstrip(".")


class Screen:
    """Starts everything, presses keys, and listens. To be used in a `with` statement."""

    def __init__(self, program_folder):
        self.home = tempfile.mkdtemp(prefix="hear-")
        self.processes = []
        self.said = []
        self.played = []
        self.dropped = 0
        self.reached_at = 0.0  # when Orca was told of the last key
        self.pressed_at = 0.0
        self.presses = []
        self.heard_so_far = 0
        self.folder = os.path.join(self.home, "cantavista")
        shutil.copytree(os.path.join(program_folder, "note"), os.path.join(self.folder, "note"))
        self.program = os.path.join(program_folder, "cantavista")

    def __enter__(self):
        # Whoever ends the robot ends what it started as well.
        signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
        run = os.path.join(self.home, "run")
        os.mkdir(run, 0o700)
        self.environment = dict(
            os.environ, HOME=self.home, XDG_RUNTIME_DIR=run, LC_ALL="C.UTF-8",
            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_QPA_PLATFORM="xcb",
            SPEECHD_ADDRESS="inet_socket:127.0.0.1:1", CANTAVISTA_HOME=self.folder,
            ASAN_OPTIONS="detect_leaks=0", PULSE_SERVER="unix:/nowhere")
        # With the other layout the numeric keypad, which answers in the automatic drill, is Orca's.
        settings = os.path.join(self.home, ".local", "share", "orca")
        os.makedirs(settings)
        with open(os.path.join(settings, "user-settings.conf"), "w") as file:
            json.dump({"general": LAPTOP, "pronunciations": {}, "keybindings": {}, "profiles": {
                "default": dict(LAPTOP, pronunciations={}, keybindings={})}}, file)
        reading, writing = os.pipe()
        self.start("Xvfb", "-displayfd", str(writing), "-screen", "0", "1366x768x24", pass_fds=[writing])
        display = os.read(reading, 20).decode().strip()
        self.environment["DISPLAY"] = ":" + display
        # A name that comes again: the next server takes over the entry of one that was killed.
        self.environment["JACK_DEFAULT_SERVER"] = "hear" + display
        bus = self.start("dbus-daemon", "--session", "--nofork", "--print-address", stdout=subprocess.PIPE)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().decode().strip()
        self.start_window_manager()
        self.start(LAUNCHER, "--launch-immediately")
        jack = self.start("jackd", "-r", "-n", self.environment["JACK_DEFAULT_SERVER"], "-d", "dummy", "-r", "48000", "-p", "256")
        time.sleep(1)
        if jack.poll() is not None:
            self.__exit__()
            raise RuntimeError("The JACK server did not start; ended ones may hold all entries of /dev/shm/jack-shm-registry")
        dump = self.start("stdbuf", "-oL", "jack_midi_dump", "-r", stdout=subprocess.PIPE, ends_by=signal.SIGINT)
        threading.Thread(target=self.listen_to_notes, args=(dump.stdout,), daemon=True).start()
        # Orca writes whole lines at once only where its file is a terminal.
        ours, its = pty.openpty()
        tty.setraw(its)
        threading.Thread(target=self.listen, args=(ours,), daemon=True).start()
        self.start("orca", "--disable=braille", "--debug-file=" + os.ttyname(its), ends_by=signal.SIGKILL)
        self.wait_for(r"Screen reader on", 60)
        self.start(self.program)
        if not self.wait_for(r"Start push button", 60):
            self.__exit__()
            raise RuntimeError("The program's first words were not heard: %s" % [u.text for u in self.said])
        time.sleep(4)  # the tune at the start
        return self

    def __exit__(self, *_):
        # Each ends before what it needs: a JACK server that loses a client under way ends late, and
        # one that is killed leaves its entry among the few that this machine has.
        for process, signal_ in reversed(self.processes):
            process.send_signal(signal_)
            try:
                process.wait(10)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        shutil.rmtree(self.home, ignore_errors=True)

    def start_window_manager(self):
        """Now and then it hangs while it starts; then no window ever gets the focus."""
        for _ in range(5):
            manager = self.start("openbox")
            for _ in range(20):
                time.sleep(0.1)
                if subprocess.run(["xdotool", "get_desktop"], env=self.environment, stdout=subprocess.DEVNULL,
                                  stderr=subprocess.DEVNULL).returncode == 0:
                    return
            manager.kill()

    def start(self, *command, ends_by=signal.SIGTERM, **options):
        options.setdefault("stdout", subprocess.DEVNULL)
        process = subprocess.Popen(command, env=self.environment, stderr=subprocess.DEVNULL, **options)
        self.processes.append((process, ends_by))
        return process

    def press(self, *keys, pause=0.0):
        """What is waited for from now on comes after the last of these keys."""
        for key in keys:
            self.heard_so_far = len(self.utterances())
            self.pressed_at = time.time()
            subprocess.run(["xdotool", "key", key], env=self.environment, check=True)
            self.presses.append(self.pressed_at)
            time.sleep(pause)

    @property
    def strokes(self):
        return len(self.presses)

    def listen(self, terminal):
        """Collects what is said; the echo of keys, which ends in a blank, is left out. Of too many
        reports at once Orca drops those that wait, words as well."""
        with os.fdopen(terminal, "rb") as lines:
            for line in lines:
                text = line.decode(errors="replace")
                found = SPEECH.match(text)
                if found and found.group(2).endswith(" "):
                    self.reached_at = Utterance(*found.groups()).time
                elif found:
                    self.said.append(Utterance(*found.groups()))
                dropped = DROPPED.search(text)
                self.dropped += int(dropped.group(1)) if dropped else 0

    def utterances(self):
        return list(self.said)

    def wait_for(self, pattern, seconds=4.0):
        """The next utterance that matches, or nothing; what comes after it can be waited for."""
        end = time.time() + seconds
        while time.time() < end:
            said = self.utterances()
            for place in range(self.heard_so_far, len(said)):
                if re.search(pattern, said[place].text):
                    self.heard_so_far = place + 1
                    return said[place]
            time.sleep(0.03)
        return None

    def listen_to_notes(self, lines):
        """Collects the MIDI notes that begin."""
        for line in lines:
            message = NOTE_ON.match(line.decode(errors="replace"))
            if message and message.group(2) != "00":
                self.played.append(int(message.group(1), 16))

    def notes_since(self, place):
        """The notes that began after a place in the list of what was played, and the end of the list."""
        played = self.played[place:]
        return played, place + len(played)

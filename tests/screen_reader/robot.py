#!/usr/bin/env python3
"""Uses the program by ear alone: hears what Orca says and presses keys.

What is right it knows from elsewhere: a note from its place on the staff, what is played from the
MIDI messages. Prints what it heard and how soon; its exit code is 1 where it heard something wrong
or nothing, and 77 where it cannot run.
"""

import random
import re
import statistics
import sys
import time

from screen import Screen, missing

QUESTIONS = 20
STARTS = 4  # of the metronome
ORDINALS = {"prim": 0, "second": 1, "terz": 2, "quart": 3, "quint": 4}
PLACE = r"linea|spazio|taglio"
NOTES = ["Do", "Do diesis", "Re", "Re diesis", "Mi", "Fa", "Fa diesis", "Sol", "Sol diesis", "La",
         "La diesis", "Si"]
CHORDS = {(3, 7): "minore", (4, 7): "maggiore", (3, 6): "diminuito", (4, 8): "eccedente"}
MIDDLE_C = 60
PIANO_BASE = 48
SCALE = [0, 2, 4, 5, 7, 9, 11, 12]


def name_of(note):
    """The note in words, as the keys of the piano are named."""
    return "Do centrale" if note == MIDDLE_C else "%s %d" % (NOTES[note % 12], note // 12 - 1)


def degree_of(clef, place):
    """The degree 0 (Do) to 6 (Si) of a note at a place like "terzo spazio"."""
    count = next(number for word, number in ORDINALS.items() if word in place)
    if "taglio" in place:
        position = 10 + 2 * count if "in alto" in place else -2 - 2 * count
        position += place.startswith("sopra") - place.startswith("sotto")
    elif "spazio" in place:
        position = 2 * count + 1
    else:
        position = 2 * count + place.startswith("sopra") - place.startswith("sotto")
    return ((2 if clef == "Sol" else 4) + position) % 7


class Robot:
    def __init__(self, screen):
        self.screen = screen
        self.random = random.Random(1)
        self.task = ""
        self.results = {}

    def begin(self, task):
        self.task = task
        self.results[task] = {"heard": 0, "wrong": [], "seconds": [], "strokes": self.screen.strokes,
                              "dropped": self.screen.dropped}

    def end(self):
        result = self.results[self.task]
        result["strokes"] = self.screen.strokes - result["strokes"]
        result["dropped"] = self.screen.dropped - result["dropped"]
        self.report()

    def hear(self, pattern, seconds=4.0, timed=False, with_pulse=False):
        """Waits for an utterance; one that does not come counts as wrong. It is timed from the key, or
        from where the metronome's next pulse lets the key through to Orca and to its effect."""
        said = self.screen.wait_for(pattern, seconds)
        result = self.results[self.task]
        if not said:
            recent = [u.text for u in self.screen.utterances()[-3:]]
            result["wrong"].append("no /%s/ after %s" % (pattern, recent))
            return ""
        result["heard"] += 1
        if timed:
            since = self.screen.reached_at if with_pulse else self.screen.pressed_at
            result["seconds"].append(said.time - since)
        return said.text

    def verdict(self, right, words):
        said = self.hear("^(%s)$" % "|".join(words), 4, timed=True)
        if said and said != words[0 if right else 1]:
            self.results[self.task]["wrong"].append("%s instead of %s" % (said, right))

    def tab_to(self, pattern, key="Tab", limit=40):
        for _ in range(limit):
            self.screen.press(key)
            for end in (0, 1):
                if self.screen.wait_for(pattern, 0.5):
                    return True
                if len(self.screen.utterances()) > self.screen.heard_so_far:
                    break
        self.results[self.task]["wrong"].append("no control /%s/" % pattern)
        return False

    def notes_after(self, place, count):
        end = time.time() + 5
        while time.time() < end:
            notes, now = self.screen.notes_since(place)
            if len(notes) >= count:
                return notes, now
            time.sleep(0.05)
        self.results[self.task]["wrong"].append("%d MIDI notes instead of %d; the last: %s" % (
            len(notes), count, self.screen.played[-6:]))
        return notes + [MIDDLE_C] * count, now

    def drill(self, automatic):
        self.begin("lettura automatica" if automatic else "lettura normale")
        words = ["Sì", "No"] if automatic else ["Giusto", "Sbagliato"]
        keys = "d KP_1 f KP_2 g KP_3 h".split() if automatic else "d 1 f 2 g 3 h".split()
        self.screen.press("ctrl+a" if automatic else "ctrl+p", "space")
        clef = "Sol"
        place = self.hear(PLACE)
        for question in range(QUESTIONS):
            named = re.match(r"Chiave di (Sol|Fa), (.*)", place)
            clef, place = named.groups() if named else (clef, place)
            degree = degree_of(clef, place) if place else 0
            if question % 4 == 3:
                self.screen.press(keys[(degree + 1 + self.random.randrange(6)) % 7])
                self.verdict(False, words)
                if automatic:
                    place = self.hear(PLACE, 8)
                    continue
            self.screen.press(keys[degree])
            self.verdict(True, words)
            place = self.hear(PLACE, 8)
        self.screen.press("F2")
        self.hear(r"^Note: \d+, errori: 5$")
        self.screen.press("Escape" if automatic else "space")
        self.hear(r"Risposte esatte: %d\. Risposte errate: 5" % (QUESTIONS - 5 * automatic))
        self.end()

    def open_options(self):
        """A busy machine may still be starting the program."""
        for _ in range(5):
            self.screen.press("alt+o")
            if self.screen.wait_for("^Metronomo", 2):
                return
            self.screen.press("Escape")

    def choose_midi_port(self):
        self.begin("uscita MIDI")
        self.open_options()
        self.screen.press("Up", "Return", pause=0.3)
        self.hear("List with 2 items", 6)
        self.screen.press("Down")
        self.hear("^Uscita: .*monitor", 6)
        self.screen.press("Escape")
        self.hear("Cantavista frame")
        self.end()

    def go_to_key(self, here, key):
        for _ in range(abs(key - here)):
            self.screen.press("Right" if key > here else "Left")
        if key != here:
            self.hear("^%s push button" % name_of(key))

    def pitch(self):
        self.begin("altezza")
        self.screen.press("ctrl+o")
        self.hear("Do centrale", 6)
        self.screen.press("Return")
        self.hear("nota superiore")
        self.go_to_key(MIDDLE_C, MIDDLE_C + 2)
        self.screen.press("Return")
        self.hear("nota di riferimento")
        self.go_to_key(MIDDLE_C + 2, MIDDLE_C + 1)
        self.screen.press("Return")
        self.hear("Start push button")
        place = self.screen.notes_since(0)[1]
        self.screen.press("space")
        self.hear("Riconosci la nota suonata")
        self.tab_to("diesis 4|Re 4|Do centrale")
        here = MIDDLE_C + 1
        notes, place = self.notes_after(place, 1)
        for question in range(QUESTIONS):
            drawn = notes[-1]
            self.screen.press("F4")
            again = self.notes_after(place, 1)
            if again[0][-1] != drawn:
                self.results[self.task]["wrong"].append("F4 plays another note")
            place = again[1]
            if question % 4 == 3:
                wrong = MIDDLE_C + (drawn - MIDDLE_C + 1) % 3
                self.go_to_key(here, wrong)
                here = wrong
                self.screen.press("Return")
                self.verdict(False, ["Giusto", "Sbagliato"])
            self.go_to_key(here, drawn)
            here = drawn
            self.screen.press("Return")
            self.verdict(True, ["Giusto", "Sbagliato"])
            notes, place = self.notes_after(place, 1)
        self.finish_ear_training(QUESTIONS, 5)

    def finish_ear_training(self, right, wrong):
        self.screen.press("F2")
        self.hear("Risposte esatte: %d. Risposte errate: %d" % (right, wrong))
        self.screen.press("ctrl+Return", pause=0.5)
        self.screen.press("Escape")
        self.hear("Cantavista frame", 6)
        self.end()

    def interval(self):
        self.begin("intervallo")
        self.screen.press("ctrl+i")
        self.hear("Do centrale", 6)
        place = self.screen.notes_since(0)[1]
        self.screen.press("ctrl+Return")
        self.hear("Riconosci intervallo suonato", 6)
        self.tab_to("^0 semitoni")
        here = 0
        notes, place = self.notes_after(place, 2)
        for question in range(QUESTIONS):
            size = abs(notes[-1] - notes[-2])
            answers = ([(size + 3) % 14] if question % 4 == 3 else []) + [size]
            for answer in answers:
                for _ in range(abs(answer - here)):
                    self.screen.press("Tab" if answer > here else "shift+Tab")
                if answer != here:
                    self.hear("^%d semiton" % answer)
                here = answer
                self.screen.press("space")
                self.verdict(answer == size, ["Giusto", "Sbagliato"])
            notes, place = self.notes_after(place, 2)
        self.finish_ear_training(QUESTIONS, 5)

    def chord(self):
        self.begin("accordo")
        self.screen.press("ctrl+t")
        self.hear("Do centrale", 6)
        self.screen.press("Return")
        self.hear("nota superiore")
        self.go_to_key(MIDDLE_C, MIDDLE_C + 3)
        self.screen.press("Return")
        self.hear("Riconosci tipo accordo suonato")
        place = self.screen.notes_since(0)[1]
        self.screen.press("ctrl+Return")
        notes, place = self.notes_after(place, 3)
        order = list(CHORDS.values())
        self.tab_to("Accordo minore")
        here = 0
        for question in range(QUESTIONS):
            root = min(notes[-3:])
            name = CHORDS.get(tuple(sorted(note - root for note in notes[-3:])[1:]), "minore")
            right = order.index(name)
            answers = ([(right + 1) % 4] if question % 4 == 3 else []) + [right]
            for answer in answers:
                for _ in range(abs(answer - here)):
                    self.screen.press("Tab" if answer > here else "shift+Tab")
                if answer != here:
                    self.hear("^Accordo %s push" % order[answer])
                here = answer
                self.screen.press("space")
                self.verdict(answer == right, ["Giusto", "Sbagliato"])
            notes, place = self.notes_after(place, 3)
        self.finish_ear_training(QUESTIONS, 5)

    def melody(self):
        self.begin("melodia")
        self.screen.press("ctrl+s")
        self.hear("Ins. Nota push button", 6)
        written = []
        attributes = {2: ("alt+2", "staccato"), 5: ("alt+6", "accentato")}
        for number, key in enumerate("zxcvbnmq"):
            value = "semiminima" if number < 4 else "croma"
            if number == 4:
                self.screen.press("ctrl+4")
                self.hear("^croma$")
            self.screen.press(key, pause=0.2)
            words = "%s, %s" % (name_of(PIANO_BASE + SCALE[number]), value)
            if number in attributes:
                shortcut, attribute = attributes[number]
                self.screen.press(shortcut)
                self.hear("^%s, %s$" % (value, attribute))
                words += ", " + attribute
            self.screen.press("Return")
            written.append(words)
            self.hear("^%d: %s$" % (len(written), words), timed=True)
            if number == 3:
                self.screen.press("shift+Return")
                written.append("pausa, semiminima")
                self.hear("^5: pausa, semiminima$", timed=True)
        whole = ". ".join("%d: %s" % (place + 1, words) for place, words in enumerate(written))
        self.screen.press("F3")
        self.hear(re.escape(whole), timed=True)
        self.screen.press("ctrl+s")
        self.hear("[Nn]ome", 6)
        self.screen.press(*"prova", "Return")
        self.hear(r"^Salvata: .*prova\.mel$", 6)
        self.screen.press("ctrl+w")
        self.hear("Cantavista frame", 6)
        self.screen.press("ctrl+s")
        self.hear("Ins. Nota push button", 6)
        self.screen.press("ctrl+o", pause=1)
        self.screen.press("Down", pause=0.5)
        self.screen.press("Return")
        self.hear("^prova, 9 voci$", 6)
        self.hear("^Fermo$", 30)
        self.screen.press("F3")
        self.hear(re.escape(whole))
        self.screen.press("ctrl+w")
        self.hear("Cantavista frame", 6)
        self.end()

    def metronome(self):
        self.begin("metronomo")
        self.open_options()
        self.screen.press("Return")
        self.hear("Start / Stop push button")
        self.tab_to("^Tempo 2/4")
        self.screen.press("space")
        self.hear("^Tempo 3/4$")
        self.tab_to("^Pulsazioni al minuto")
        for _ in range(36):
            self.screen.press("Right")
        self.hear("^96 pulsazioni al minuto$", 20)
        self.tab_to("^Start / Stop", key="shift+Tab")
        for _ in range(STARTS):
            self.screen.press("space")
            self.hear("^Metronomo avviato, 3/4, 96$", 8, timed=True, with_pulse=True)
            self.screen.press("space")
            self.hear("^Metronomo fermato$", timed=True, with_pulse=True)
        self.end()

    def sheets(self):
        """Walks two tables cell by cell; what each must hold is known by the theory of music."""
        self.begin("promemoria")
        self.screen.press("ctrl+r")
        self.hear("Pagina Nomi Note", 6)
        self.tab_to("^Semibreve")
        values = ["semibreve", "minima", "semiminima", "croma", "semicroma", "biscroma", "semibiscroma"]
        for row, name in enumerate(values[1:], 1):
            self.screen.press("Down")
            self.hear("^%s$" % name.capitalize(), timed=True)
            self.hear("^Pausa di %s: " % name)
        self.screen.press("Left")
        self.hear("testa piena, gambo, 4 codette", timed=True)
        self.screen.press("End")
        self.hear("Pausa di semibiscroma: asta con 4 uncini", timed=True)
        self.screen.press("Tab", "shift+Tab", "shift+Tab")
        self.hear("Pagina Intervalli")
        self.screen.press("space", "Tab")
        self.hear("^0 semitoni", 6)
        for size in range(1, 14):
            self.screen.press("Down")
            self.hear("^%d semiton[oi]$" % size, timed=True)
            if size == 7:
                self.hear("^Quinta giusta$")
        self.screen.press("ctrl+Home", "Right", "Right")
        self.hear("Seconda diminuita$", timed=True)
        self.screen.press("Escape")
        self.hear("Cantavista frame", 6)
        self.end()

    def key(self):
        self.begin("tonalità")
        self.screen.press("ctrl+r")
        self.hear("Pagina Nomi Note", 6)
        self.tab_to("^Pagina Tonalità")
        self.screen.press("space")
        self.tab_to("^Mi maggiore")
        self.screen.press("space")
        self.hear("4 diesis: Fa, Do, Sol, Re. Mi maggiore, Do diesis minore")
        self.screen.press("Escape")
        self.hear("Cantavista frame", 6)
        self.end()

    def said_twice(self):
        """Utterances that follow the same one at once, without a key between."""
        said = self.screen.utterances()
        return [b.text for a, b in zip(said, said[1:])
                if a.text == b.text and b.time - a.time < 0.5
                and not any(a.time < press < b.time for press in self.screen.presses)]

    def report(self):
        result = self.results[self.task]
        line = "%s: heard %d, wrong %d, strokes %d" % (
            self.task, result["heard"], len(result["wrong"]), result["strokes"])
        if result["dropped"]:
            line += ", reports dropped by Orca %d" % result["dropped"]
        if result["seconds"]:
            line += ", seconds to the words: median %.2f, largest %.2f" % (
                statistics.median(result["seconds"]), max(result["seconds"]))
        print("\n    ".join([line] + result["wrong"]), flush=True)

    def failed(self):
        twice = self.said_twice()
        print("said twice: %d %s" % (len(twice), twice[:3]))
        return twice or any(result["wrong"] for result in self.results.values())


def main():
    if len(sys.argv) < 2:
        print("Usage: robot.py PROGRAM_FOLDER [TASK...]")
        return 2
    absent = missing()
    if absent:
        print("Skipped: this needs " + ", ".join(absent))
        return 77
    with Screen(sys.argv[1]) as screen:
        robot = Robot(screen)
        tasks = {"lettura": lambda: (robot.drill(False), robot.drill(True)), "midi": robot.choose_midi_port,
                 "altezza": robot.pitch, "intervallo": robot.interval, "accordo": robot.chord,
                 "melodia": robot.melody, "metronomo": robot.metronome, "promemoria": robot.sheets, "tonalita": robot.key}
        for name in sys.argv[2:] or tasks:
            tasks[name]()
        return 1 if robot.failed() else 0


if __name__ == "__main__":
    sys.exit(main())

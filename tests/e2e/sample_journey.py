#!/usr/bin/env python3
"""The README's sample project onto a card image: make-sample.sh makes it, the real dq480 opens it,
the sentence table and program 1 show playing times, and Card write fills a FAT16 card image.

Usage: sample_journey.py --dq480 PATH --cli PATH --artifacts DIR [--shots DIR] [--keep]
--shots DIR writes the README's pictures there: the program's window at each step."""

import os
import subprocess
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from desktop import CardJourney, JourneyFailed, check_card_image, run, wait_until  # noqa: E402

HERE = os.path.dirname(os.path.abspath(__file__))
MAKE_SAMPLE = os.path.join(HERE, "..", "..", "scripts", "make-sample.sh")
SENTENCES = ["WELCOME", "PLATFORM", "CLOSING"]
TABLE = "Card creation Sentence data copy PC -> Card"


class Journey(CardJourney):
    def __init__(self, args, desktop, workdir):
        super().__init__(args, desktop, workdir)
        self.sample = os.path.join(workdir, "dq480-sample")
        self.project = os.path.join(self.sample, "SAMPLE.stf")

    def shot(self, name):
        """The README's picture: the screen cut to the main window, so that a message box over it
        is in the picture too."""
        if not self.args.shots:
            return
        window = run(["xdotool", "search", "--onlyvisible", "--name", "DQ-480 Setting Software"]).stdout.split()[0]
        geometry = dict(line.split("=") for line in
                        run(["xdotool", "getwindowgeometry", "--shell", window]).stdout.split())
        os.makedirs(self.args.shots, exist_ok=True)
        subprocess.run(["import", "-window", "root", "-crop",
                        f"{geometry['WIDTH']}x{geometry['HEIGHT']}+{geometry['X']}+{geometry['Y']}",
                        "-strip", "-colors", "128", os.path.join(self.args.shots, f"first-card-{name}.png")],
                       check=True)

    def make_sample(self):
        run([MAKE_SAMPLE, self.sample], env={**os.environ, "DQ480_CLI": self.args.cli})
        os.environ["DQ480_HOME"] = os.path.join(self.sample, "home")
        self.desktop.mount_card(self.image, self.card)

    def open_project(self):
        self.desktop.launch(self.args.dq480, self.project)
        self.op.started()
        self.edit = self.op.window("SAMPLE.stf", exact=True)
        self.op.select_tab(self.edit, "Card Edit", "push button", "Card write")
        self.shot("1-project")

    def sentence_table(self):
        self.op.press(self.edit, "Start sentence copy PC -> Card")
        table = self.op.window(TABLE)
        for number, name in enumerate(SENTENCES):
            box = self.op.control(table, "text", f"{number + 1:03d}:")
            wait_until(lambda: self.op.text_of(box) == name + ".MP2", f"box {number + 1:03d} to read {name}.MP2")
            wait_until(lambda: box.description.startswith("Playing time 0:0"),
                       f"the playing time of {name} (it says {box.description!r})")
        self.shot("2-sentences")
        self.op.press(table, "Cancel")
        self.op.gone(TABLE)

    def program_1(self):
        self.op.select_tab(self.edit, "Program", "push button", "Open")
        self.op.press(self.edit, "Open")
        program = self.op.window("Program : ")
        time = wait_until(lambda: next((label for label in self.op.find_all(program, "label")
                                        if label.name.startswith("Playing time: 0:")), None),
                          "program 1's playing time")
        if "not found" in time.name:
            raise JourneyFailed(f"program 1 misses a sentence: {time.name}")
        self.shot("3-program")
        self.op.press(program, "Cancel")
        self.op.gone("Program : ")

    def card_write(self):
        self.op.select_tab(self.edit, "Card Edit", "push button", "Card write")
        self.op.press(self.edit, "Card write")
        self.op.answer(f"Write setting file at drive:{self.card}?", "OK")
        self.op.message("Card write is complete")
        self.shot("4-written")
        self.op.answer("Card write is complete", "OK")

    def check_card(self):
        self.desktop.unmount(self.card)
        home = os.path.join(self.sample, "home")
        sentences = {f"{name}.MP2": os.path.join(home, "SAMPLE", f"{name}.MP2") for name in SENTENCES}
        sentences["SIN1KHZ.MP2"] = os.path.join(home, "SIN1KHZ.MP2")
        check_card_image(self.image, self.args.cli, self.project, sentences, self.work)

    def run(self):
        for step in ("make_sample", "open_project", "sentence_table", "program_1", "card_write", "check_card"):
            self.desktop.step(step.replace("_", "-"), getattr(self, step))


if __name__ == "__main__":
    sys.exit(Journey.main(__doc__, "dq480-sample-", ["espeak-ng"], "1024x768x24", [("--shots", {})]))

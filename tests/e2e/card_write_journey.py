#!/usr/bin/env python3
"""A card write that meets a sentence file which is not MP2: its message comes over the card write's
progress window and is answered with a click, the write goes on, and the card holds the other
sentences and the control file, byte for byte.

Usage: card_write_journey.py --dq480 PATH --cli PATH --artifacts DIR [--keep] [--no-window-manager]"""

import os
import shutil
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from desktop import CardJourney, check_card_image, run, wait_until  # noqa: E402

SENTENCES = ["FIRST", "K160", "THIRD"]
BROKEN = "K160"


class Journey(CardJourney):
    def __init__(self, args, desktop, workdir):
        super().__init__(args, desktop, workdir)
        self.home = os.environ["DQ480_HOME"] = os.path.join(workdir, "home")
        self.folder = os.path.join(self.home, "GATE")  # the project's sentence folder
        self.project = os.path.join(workdir, "GATE.stf")

    def prepare(self):
        os.makedirs(self.folder)
        wav = os.path.join(self.work, "tone.wav")
        run(["sox", "-n", "-r", "32000", "-c", "1", wav, "synth", "0.5", "sine", "440"])
        run([self.args.cli, "import", wav, "--to", self.folder, "--name", "TONE", "--loudness", "off"])
        for name in SENTENCES:
            target = os.path.join(self.folder, f"{name}.MP2")
            if name == BROKEN:
                with open(target, "wb") as broken:
                    broken.write(b"not MPEG audio" * 100)
            else:
                shutil.copyfile(os.path.join(self.folder, "TONE.MP2"), target)
        run([self.args.cli, "new", self.project])
        lines = open(self.project, "rb").read().decode("ascii").split("\r\n")

        def replaced(key, values):
            first = next(i for i, line in enumerate(lines) if line.startswith(key + ","))
            count = sum(1 for line in lines if line.startswith(key + ","))
            lines[first:first + count] = [f"{key},{value}," for value in values]

        replaced("PJNAME", ["GATE"])
        replaced("SNTCTTL", ["SIN1KHZ "] + [f"A{n:03d}    " for n in range(1, len(SENTENCES) + 1)])
        replaced("FILENAME", ["SIN1KHZ "] + [f"{name:<8}" for name in SENTENCES])
        replaced("AUTOLVL", ["000"] * (len(SENTENCES) + 1))
        replaced("PRGSORT", [f"{n:04d}" for n in range(len(SENTENCES) + 1)])
        with open(self.project, "wb") as project:
            project.write("\r\n".join(lines).encode("ascii"))
        run([self.args.cli, "check", self.project])
        self.desktop.mount_card(self.image, self.card)

    def card_write(self):
        app = self.desktop.launch(self.args.dq480, self.project)
        self.op.started()
        edit = self.op.window("GATE.stf", exact=True)
        self.op.select_tab(edit, "Card Edit", "push button", "Card write")
        self.op.press(edit, "Card write")
        self.op.answer(f"Write setting file at drive:{self.card}?", "OK")
        # The operator reads the message for a moment; a click on its OK reaches it only where
        # nothing has come up over it meanwhile.
        self.op.message(f"Filesystem error :{BROKEN}.MP2")
        time.sleep(1)
        self.op.answer(f"Filesystem error :{BROKEN}.MP2", "OK")
        self.op.answer("Card write is complete", "OK")
        self.op.menu("File(F)", "Exit")
        wait_until(lambda: app.poll() is not None, "the program to end")

    def check_card(self):
        self.desktop.unmount(self.card)
        sentences = {f"{name}.MP2": os.path.join(self.folder, f"{name}.MP2") for name in SENTENCES if name != BROKEN}
        sentences["SIN1KHZ.MP2"] = os.path.join(self.home, "SIN1KHZ.MP2")
        check_card_image(self.image, self.args.cli, self.project, sentences, self.work)

    def run(self):
        for step in ("prepare", "card_write", "check_card"):
            self.desktop.step(step.replace("_", "-"), getattr(self, step))


if __name__ == "__main__":
    sys.exit(Journey.main(__doc__, "dq480-card-write-", ["sox"]))

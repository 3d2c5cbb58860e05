#!/usr/bin/env python3
"""One operator's day with the real dq480 on a desktop with a window manager (or, with
--no-window-manager, without one), driven through the accessibility tree with the real mouse and
keyboard, from a new project to program copy, Card write, Card -> PC and a print-out. Where a sound
server of its own starts, a sentence is recorded from its input and a program played to it. In the program,
step and card edit windows a refused entry is answered and the next one typed where the focus went;
the saved setting file holds what was typed, and the card image is checked against dq480-cli's
conversion of it.

Usage: operator_journey.py --dq480 PATH --cli PATH --artifacts DIR [--keep] [--no-window-manager]"""

import os
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from desktop import CardJourney, JourneyFailed, check_card_image, run, wait_until  # noqa: E402

CONTENTS_QUESTION = "Updating the contents of edit has not been continued. Does close it?"
INCORRECT = "Incorrect value has been entered."
SENTENCES = ["TONE1.MP2", "TONE2.MP2", "TONE3.MP2"]
RECORDED = "TAKE.MP2"  # recorded into box 004
STEPS = ["A001", "A002", "A003"]
PROJECT = "Harbour"
CREATOR = "Ann Operator"
EXPLANATION = ["Platform announcements", "for the morning shift"]
TABLE = "Card creation Sentence data copy PC -> Card"
# Program 1's lines in the saved setting file, and program 3's once it is a copy of it.
PROGRAM_LINES = ["PRGDATA[{number}]:PRGDATA,0001,0002,0003,3000,", "PRGOPT[{number}]:PRGOPT,6D01,",
                 "RPTCNT[{number}]:RPTCNT,003,", "RPTITV[{number}]:RPTITV,003,", "PRGNAME[{number}]:PRGNAME,P001,"]


class Journey(CardJourney):
    def __init__(self, args, desktop, workdir):
        super().__init__(args, desktop, workdir)
        self.home = os.environ["DQ480_HOME"] = os.path.join(workdir, "dq480-home")
        self.saved = os.path.join(workdir, "projects", "harbour.stf")
        self.pdf = os.path.join(workdir, "projects", "all-settings.pdf")
        self.app = self.edit = None
        self.sound = False

    def prepare(self):
        self.sound = self.desktop.start_sound_server()
        os.makedirs(self.home)
        os.makedirs(os.path.dirname(self.saved))
        # The operator's sentences sit in the program folder, where the sentence path starts.
        for number, name in enumerate(SENTENCES):
            wav = os.path.join(self.work, name.lower().replace(".mp2", ".wav"))
            run(["sox", "-n", "-r", "32000", "-c", "1", wav, "synth", "0.5", "sine", str(440 * (number + 1))])
            run([self.args.cli, "import", wav, "--to", self.home, "--loudness", "off"])
        self.desktop.mount_card(self.image, self.card)

    def start(self):
        self.app = self.desktop.launch(self.args.dq480)
        self.op.started()

    def new_project(self):
        self.op.menu("File(F)", "New(N)")
        self.edit = edit = self.op.window("New File", exact=True)
        self.op.select_tab(edit, "Data information", "text", "Creator:")
        self.op.replace_text(self.op.control(edit, "text", "Project name:"), PROJECT)
        self.op.replace_text(self.op.control(edit, "text", "Creator:"), CREATOR)
        explanation = self.op.control(edit, "text", "Explanation:")
        self.op.focus(explanation)
        self.op.type(EXPLANATION[0])
        self.op.key("Return")
        self.op.type(EXPLANATION[1])
        wait_until(lambda: self.op.text_of(explanation) == "\n".join(EXPLANATION), "the explanation")
        self.op.press(edit, "Apply")
        wait_until(lambda: os.path.isdir(os.path.join(self.home, PROJECT)), "the project's folder")

    def sentence_table(self):
        self.op.select_tab(self.edit, "Card Edit", "push button", "Card write")
        self.op.press(self.edit, "Start sentence copy PC -> Card")
        table = self.op.window(TABLE)
        self.op.focus(self.op.control(table, "text", "001:"))
        self.type_with_enter(table, SENTENCES)
        self.check_boxes(table, SENTENCES)
        if self.sound:
            self.record(table)
        apply = self.op.press(table, "Apply")
        wait_until(lambda: not self.op.enabled(apply), "Apply to have been done")
        for name in SENTENCES:
            wait_until(lambda: os.path.isfile(os.path.join(self.home, PROJECT, name)),
                       f"{name} in the project's sentence folder")
        self.op.press(table, "OK")
        self.op.gone(TABLE)

    def record(self, table):
        """Half a second of the sound server's input, recorded into box 004 and made its sentence."""
        self.op.focus(self.op.control(table, "text", "004:"))
        self.op.press(table, "Record...")
        recorder = self.op.window("Record a sentence for entry 004")
        self.op.press(recorder, "Record")
        time.sleep(0.5)
        self.op.press(recorder, "Stop")
        self.op.press(recorder, "OK")
        self.op.gone("Record a sentence")
        box = self.op.control(table, "text", "004:")
        wait_until(lambda: self.op.text_of(box) == RECORDED, f"box 004 to read {RECORDED}")

    def check_boxes(self, window, expected):
        for number, text in enumerate(expected):
            box = self.op.control(window, "text", f"{number + 1:03d}:")
            wait_until(lambda: self.op.text_of(box) == text,
                       f"box {number + 1:03d} to read {text} (it reads {self.op.text_of(box)!r})", 2)

    def type_with_enter(self, window, texts, first=1):
        for number, text in enumerate(texts, first):
            self.op.type(text)
            self.op.key("Return")
            # Enter takes the operator to the next box and leaves the window open.
            box = self.op.control(window, "text", f"{number + 1:03d}:")
            wait_until(lambda: self.op.focused(box), f"Enter to move on to box {number + 1:03d}")

    def refused_then_typed(self, refused, leave_with, window, label, typed, shown):
        """Types `refused` and leaves with `leave_with`, answers the message, then types `typed` in
        the field labelled `label`, which must have taken the focus, and leaves it with Tab."""
        self.op.key("ctrl+a")
        self.op.type(refused)
        self.op.key(leave_with)
        self.op.answer(INCORRECT, "OK")
        field = self.op.control(window, "text", label)
        wait_until(lambda: self.op.focused(field), f"'{label}' to have the focus after the message")
        self.op.key("ctrl+a")
        self.op.type(typed)
        self.op.key("Tab")
        wait_until(lambda: self.op.text_of(field) == shown, f"'{label}' to read {shown!r} once checked")

    def program_1(self):
        self.op.select_tab(self.edit, "Program", "push button", "Open")
        self.op.press(self.edit, "Open")
        program = self.op.window("Program : ")
        self.op.click(self.op.control(program, "combo box"))
        self.op.click(self.op.control(program, "list item", "3.Repeat"))
        self.op.focus(self.op.control(program, "text", "Output level"))
        self.refused_then_typed("9", "Tab", program, "Repeat Interval", "30", "30")
        self.op.replace_text(self.op.beside(program, "Repeat No:"), "3")
        self.op.key("Tab")
        # Committed before the step window opens: its OK asks about any uncommitted program edit.
        apply = self.op.press(program, "Apply")
        wait_until(lambda: not self.op.enabled(apply), "the program to be applied")
        self.op.press(program, "Step input")
        steps = self.op.window("Repeat - Step Input")
        self.op.focus(self.op.control(steps, "text", "001:"))
        self.refused_then_typed("A999", "Return", steps, "002:", "A2", STEPS[1])
        self.type_with_enter(steps, STEPS[2:], first=3)
        self.check_boxes(steps, STEPS)
        self.op.press(steps, "OK")
        self.op.gone("Repeat - Step Input")
        # The program window is where the operator goes on: in front, not under the card edit window.
        wait_until(lambda: self.op.focused(program), "the program window to come back to the front")
        if self.sound:
            self.op.press(program, "Play program")
            self.op.label_starting(program, "Playing step 1: A001")
            self.op.press(program, "Stop")
            self.op.label_starting(program, "Stopped.")
        self.op.press(program, "OK")
        self.op.gone("Program : ")

    def save_as(self):
        self.op.menu("File(F)", "Save as(A)")
        self.file_dialog("Save as", self.saved)
        wait_until(lambda: os.path.isfile(self.saved), "the setting file")
        self.op.window(os.path.basename(self.saved), exact=True)

    def file_dialog(self, title, path):
        dialog = self.op.window(title, exact=True)
        self.op.focus(self.op.control(dialog, "text", "File name:"))
        self.op.type(path)
        self.op.key("Return")
        self.op.gone(title)

    def exit_with_pending_edit(self):
        edit = self.op.bring_forward(self.op.window(os.path.basename(self.saved), exact=True))
        creator = self.op.select_tab(edit, "Data information", "text", "Creator:")
        self.op.focus(creator)
        self.op.key("End")
        self.op.type(" and Bob")
        self.op.menu("File(F)", "Exit")
        self.op.answer(CONTENTS_QUESTION, "Cancel")
        self.op.window(os.path.basename(self.saved), exact=True)
        if self.app.poll() is not None or self.op.text_of(creator) != CREATOR + " and Bob":
            raise JourneyFailed("Cancel closed the program or lost the pending edit")
        self.op.menu("File(F)", "Exit")
        self.op.answer(CONTENTS_QUESTION, "OK")
        wait_until(lambda: self.app.poll() is not None, "the program to end")
        if self.app.returncode != 0:
            raise JourneyFailed(f"dq480 ended with {self.app.returncode}")

    def open_again(self):
        self.start()
        self.op.menu("File(F)", "Open(S)")
        self.file_dialog("Open", self.saved)
        self.edit = self.op.window(os.path.basename(self.saved), exact=True)
        # The texts and sentences come back in the print-out and on the card; OK dropped the edit.
        creator = self.op.select_tab(self.edit, "Data information", "text", "Creator:")
        wait_until(lambda: self.op.text_of(creator) == CREATOR, f"the creator {CREATOR!r} without the dropped edit", 2)
        self.check_program(1)

    def check_program(self, number):
        self.op.select_tab(self.edit, "Program", "push button", "Open")
        self.op.replace_text(self.op.beside(self.edit, "Program No:"), f"P{number:02d}")
        self.op.press(self.edit, "Open")
        program = self.op.window("Program : ")
        self.op.control(program, "label", f"Program No:P{number:03d}")
        self.op.control(program, "combo box", "3.Repeat", timeout=2)
        count = self.op.beside(program, "Repeat No:")
        wait_until(lambda: self.op.text_of(count) == "3", "the repeat count 3", 2)
        interval = self.op.control(program, "text", "Repeat Interval")
        wait_until(lambda: self.op.text_of(interval) == "30", "the repeat interval 30", 2)
        self.op.press(program, "Step input")
        steps = self.op.window("Repeat - Step Input")
        self.check_boxes(steps, STEPS + [""])
        self.op.press(steps, "Close")
        self.op.gone("Repeat - Step Input")
        self.op.press(self.op.bring_forward(program), "Cancel")
        self.op.gone("Program : ")

    def card_write(self):
        self.op.select_tab(self.edit, "Card Edit", "push button", "Card write")
        self.op.press(self.edit, "Card write")
        self.op.answer(f"Write setting file at drive:{self.card}?", "OK")
        self.op.answer("Card write is complete", "OK")

    def card_to_pc(self):
        self.op.press(self.edit, "Start sentence copy Card -> PC")
        dialog = self.op.window("Card creation Sentence data copy Card -> PC")
        self.op.replace_text(self.op.control(dialog, "text", "Folder name"), "Backup")
        self.op.press(dialog, "Start copying all sentences")
        self.op.answer("File copy complete", "OK")
        for name in SENTENCES:
            run(["cmp", os.path.join(self.home, name), os.path.join(self.home, "Backup", name)])
        self.op.press(dialog, "Exit")
        self.op.gone("Card creation Sentence data copy Card -> PC")

    def program_copy(self):
        self.op.select_tab(self.edit, "Program", "push button", "Execute")
        self.op.focus(self.op.control(self.edit, "text", "Copy from program"))
        self.refused_then_typed("Q01", "Tab", self.edit, "Copy to program", "p3", "p3")
        self.op.press(self.edit, "Execute")
        self.op.answer("Program setting copy P001->p3", "OK")
        self.check_program(3)
        self.op.press(self.edit, "Save")
        copied = PROGRAM_LINES[-1].format(number=3)
        wait_until(lambda: copied in self.saved_lines(), "the copy in the saved setting file")
        # What was typed after each refused entry is in the file: Repeat with the output level kept
        # (6D01), a 30 s interval, count 3, steps A001 to A003, and program 3 a copy of program 1.
        missing = {line.format(number=n) for n in (1, 3) for line in PROGRAM_LINES} - self.saved_lines()
        if missing:
            raise JourneyFailed(f"the saved setting file lacks {sorted(missing)}")

    def saved_lines(self):
        with open(self.saved, "rb") as saved:
            lines = saved.read().split(b"\r\n")
        # Each program's lines of one key, in program order: the program's own line of each key.
        by_key = {}
        for line in lines:
            by_key.setdefault(line.split(b",")[0], []).append(line)
        return {f"{key.decode()}[{number}]:{entries[number - 1].decode()}"
                for key, entries in by_key.items() if len(entries) == 64
                for number in range(1, 65)}

    def print_all(self):
        self.op.menu("File(F)", "Print", "All setting data copy")
        dialog = self.op.window("Print setting", exact=True)
        self.op.control(dialog, "combo box", "Save as PDF")
        self.op.press(dialog, "Print")
        self.file_dialog("Save as PDF", self.pdf)
        self.op.gone("Print setting")
        # The dialog closes before the last page is on the disk: read it once it is whole.
        text = wait_until(lambda: run(["pdftotext", self.pdf, "-"], check=False).stdout, "the PDF print-out")
        for expected in [PROJECT, CREATOR, *EXPLANATION, *SENTENCES]:
            if expected not in text:
                raise JourneyFailed(f"the print-out lacks {expected!r}")

    def exit(self):
        # Everything was saved: nothing to ask.
        self.op.menu("File(F)", "Exit")
        wait_until(lambda: self.app.poll() is not None, "the program to end")

    def check_card(self):
        self.desktop.unmount(self.card)
        sentences = {name: os.path.join(self.home, name) for name in SENTENCES + ["SIN1KHZ.MP2"]}
        if self.sound:
            sentences[RECORDED] = os.path.join(self.home, PROJECT, RECORDED)
        check_card_image(self.image, self.args.cli, self.saved, sentences, self.work)

    def run(self):
        for step in ("prepare", "start", "new_project", "sentence_table", "program_1", "save_as",
                     "exit_with_pending_edit", "open_again", "program_copy", "card_write", "card_to_pc",
                     "print_all", "exit", "check_card"):
            self.desktop.step(step.replace("_", "-"), getattr(self, step))


if __name__ == "__main__":
    sys.exit(Journey.main(__doc__, "dq480-journey-", ["pdftotext", "sox"]))

#!/usr/bin/env python3
"""The real dq480 in Japanese on a private X display, driven through the accessibility tree with the
real mouse and keyboard: the system language (LANGUAGE=ja) alone makes it speak Japanese, at twice
the pixel density too. A new project from the Japanese menus, a refused program number answered in
a Japanese message box, and the program's end through the menus.

Usage: japanese_journey.py --dq480 PATH --artifacts DIR [--scale N] [--keep]"""

import argparse
import importlib.util
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from desktop import SKIP, Skip, require_tools, run_journey, wait_until  # noqa: E402

INCORRECT_VALUE = "不正な値が入力されました。"


def journey(args, desktop, workdir):
    import pyatspi  # needs the session bus chosen by the desktop

    from atspi_operator import Operator

    class ScaledOperator(Operator):
        """Qt tells the accessibility bus its places in device-independent pixels; the mouse moves
        in the screen's own."""

        def centre(self, acc):
            x, y = super().centre(acc)
            return round(x * float(args.scale)), round(y * float(args.scale))

    op = ScaledOperator(pyatspi)
    home = os.path.join(workdir, "dq480-home")
    os.makedirs(home)
    os.environ["DQ480_HOME"] = home
    os.environ["LANGUAGE"] = "ja"
    os.environ["QT_SCALE_FACTOR"] = args.scale

    def step(name, action):
        print(f"--- {name}", flush=True)
        try:
            return action()
        finally:
            desktop.screenshot(name)

    app = desktop.launch(args.dq480)

    def start():
        op.main_window()
        wait_until(lambda: not any(w.getRoleName() == "dialog" for w in op.windows()),
                   "the splash window to close", timeout=10)

    step("start", start)

    def new_project():
        op.menu("ファイル(F)", "新規作成(N)")
        edit = op.window("新規ファイル", exact=True)
        # Captions a screen reader hears are Japanese as well.
        op.control(edit, "push button", "カード書き込み")
        op.select_tab(edit, "データ情報", "text", "作成者:")
        return edit

    edit = step("new-project", new_project)

    def refused_program_number():
        op.select_tab(edit, "プログラム", "push button", "開く")
        box = op.control(edit, "text", "プログラム番号")
        op.replace_text(box, "99")
        op.key("Return")
        op.answer(INCORRECT_VALUE, "OK")

    step("refused-program-number", refused_program_number)

    def leave():
        op.press(edit, "終了")
        op.gone("新規ファイル")
        op.menu("ファイル(F)", "終了")
        wait_until(lambda: app.poll() is not None, "the program to end")

    step("exit", leave)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--dq480", required=True)
    parser.add_argument("--artifacts", required=True)
    parser.add_argument("--scale", default="1")
    parser.add_argument("--keep", action="store_true", help="keep the screenshots after success")
    args = parser.parse_args()
    try:
        require_tools(["Xvfb", "dbus-daemon", "xdotool", "import"])
        if importlib.util.find_spec("pyatspi") is None:
            raise Skip("python3-pyatspi is not installed")
    except Skip as reason:
        print(f"SKIP: {reason}")
        return SKIP

    def body(desktop, workdir):
        # The same room in device-independent pixels at every scale, as a HiDPI screen gives.
        scale = float(args.scale)
        desktop.start(f"{round(1280 * scale)}x{round(1024 * scale)}x24")
        journey(args, desktop, workdir)

    return run_journey(args, "dq480-japanese-", body)


if __name__ == "__main__":
    sys.exit(main())

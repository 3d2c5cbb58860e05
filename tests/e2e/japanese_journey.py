#!/usr/bin/env python3
"""The real dq480 in Japanese by the system language (LANGUAGE=ja) alone, at any pixel density: a
new project from the Japanese menus, a refused program number answered in Japanese, and the end.

Usage: japanese_journey.py --dq480 PATH --artifacts DIR [--scale N] [--keep]"""

import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from desktop import journey_main, wait_until  # noqa: E402


def journey(args, desktop, workdir):
    # The same room in device-independent pixels at every scale, as a HiDPI screen gives.
    scale = float(args.scale)
    desktop.start(f"{round(1280 * scale)}x{round(1024 * scale)}x24")
    import pyatspi  # needs the session bus chosen by the desktop

    from atspi_operator import Operator

    class ScaledOperator(Operator):
        """Qt tells the accessibility bus its places in device-independent pixels; the mouse moves
        in the screen's own."""

        def centre(self, acc):
            x, y = super().centre(acc)
            return round(x * scale), round(y * scale)

    op = ScaledOperator(pyatspi)
    os.environ.update(DQ480_HOME=os.path.join(workdir, "dq480-home"), LANGUAGE="ja", QT_SCALE_FACTOR=args.scale)
    os.makedirs(os.environ["DQ480_HOME"])

    app = desktop.launch(args.dq480)
    desktop.step("start", op.started)

    def new_project():
        op.menu("ファイル(F)", "新規作成(N)")
        edit = op.window("新規ファイル", exact=True)
        # Captions a screen reader hears are Japanese as well.
        op.control(edit, "push button", "カード書き込み")
        op.select_tab(edit, "データ情報", "text", "作成者:")
        return edit

    edit = desktop.step("new-project", new_project)

    def refused_program_number():
        op.select_tab(edit, "プログラム", "push button", "開く")
        op.replace_text(op.control(edit, "text", "プログラム番号"), "99")
        op.key("Return")
        op.answer("不正な値が入力されました。", "OK")

    desktop.step("refused-program-number", refused_program_number)

    def leave():
        op.press(edit, "終了")
        op.gone("新規ファイル")
        op.menu("ファイル(F)", "終了")
        wait_until(lambda: app.poll() is not None, "the program to end")

    desktop.step("exit", leave)


if __name__ == "__main__":
    sys.exit(journey_main(__doc__, "dq480-japanese-", lambda args: None, journey,
                          [("--scale", {"default": "1"})]))

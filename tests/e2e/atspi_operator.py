"""The operator's hands and eyes: finds controls in the accessibility tree by role and name (or by the
label beside them) and uses them through the real pointer and keyboard (xdotool), so modal windows,
focus and Enter behave exactly as for a person at the screen."""

import subprocess

from desktop import JourneyFailed, wait_until

WINDOW_ROLES = ("frame", "dialog", "alert", "window", "internal frame", "file chooser")


class Operator:
    def __init__(self, pyatspi):
        self.at = pyatspi

    def app(self):
        # libatspi takes in windows and applications coming and going only while its loop runs.
        from gi.repository import GLib

        context = GLib.MainContext.default()
        while context.pending():
            context.iteration(False)
        for app in self.at.Registry.getDesktop(0):
            if app is not None and app.name == "dq480":
                return app
        return None

    def showing(self, acc):
        try:
            return acc.getState().contains(self.at.STATE_SHOWING)
        except Exception:
            return False

    def walk(self, acc):
        """Every showing descendant of `acc`, depth first in the tree's order."""
        stack = [acc]
        while stack:
            node = stack.pop()
            yield node
            try:
                children = [c for c in node if c is not None and self.showing(c)]
            except Exception:
                continue
            stack.extend(reversed(children))

    def _matching(self, root, test):
        def passes(node):
            try:
                return test(node)
            except Exception:
                return False

        return [node for node in (self.walk(root) if root is not None else []) if passes(node)]

    def find_all(self, root, role, name=None):
        return self._matching(root, lambda node: node.getRoleName() == role and name in (None, node.name))

    def windows(self):
        """The top-level windows and the document windows inside the main window, newest last."""
        return self._matching(self.app(), lambda node: node.getRoleName() in WINDOW_ROLES)

    def main_window(self, timeout=30.0):
        """The main window, looked up afresh: its accessible object is replaced while it starts."""

        return wait_until(lambda: next((node for node in self.app() or [] if node is not None and node.getRoleName()
                                        == "frame" and self.showing(node) and self.find_all(node, "menu bar")), None),
                          "the main window", timeout)

    def started(self):
        """Waits for the main window and for the splash to close by itself."""
        self.main_window()
        wait_until(lambda: not any(w.getRoleName() == "dialog" for w in self.windows()),
                   "the splash window to close", timeout=10)

    def window(self, title, exact=False):
        """The showing window whose title starts with (or is) `title`."""
        return wait_until(lambda: next((w for w in reversed(self.windows()) if w.name == title
                                        or (not exact and w.name.startswith(title))), None), f"the window '{title}'")

    def gone(self, title):
        wait_until(lambda: not any(w.name.startswith(title) for w in self.windows()), f"the window '{title}' to close")

    def control(self, root, role, name=None, timeout=15.0):
        return wait_until(lambda: next(iter(self.find_all(root, role, name)), None),
                          f"{role} '{name or ''}' in '{root.name}'", timeout)

    def label_starting(self, root, text, timeout=15.0):
        """The label of `root` whose text starts with `text`, once it shows."""
        return wait_until(lambda: next(iter(self._matching(root, lambda node: node.getRoleName() == "label"
                                                           and node.name.startswith(text))), None),
                          f"a label '{text}...' in '{root.name}'", timeout)

    def beside(self, root, label, role="text"):
        """The control right of the label `label` on the same line (the tree does not name it)."""

        def match():
            box = self.find_all(root, "label", label)[0].queryComponent().getExtents(self.at.DESKTOP_COORDS)
            middle = box.y + box.height // 2
            places = [(other.x, node) for node in self.find_all(root, role)
                      for other in [node.queryComponent().getExtents(self.at.DESKTOP_COORDS)]
                      if other.x >= box.x + box.width and other.y <= middle <= other.y + other.height]
            return min(places, key=lambda place: place[0])[1] if places else None

        return wait_until(match, f"the {role} beside '{label}' in '{root.name}'")

    def text_of(self, acc):
        try:
            text = acc.queryText()
            return text.getText(0, text.characterCount)
        except NotImplementedError:
            return acc.name

    def enabled(self, acc):
        return acc.getState().contains(self.at.STATE_ENABLED)

    def focused(self, acc):
        return acc.getState().contains(self.at.STATE_FOCUSED)

    def message_labels(self):
        """(message box, label) for every label of every showing message box, newest box last."""
        return [(node, label) for node in self.windows()
                if node.getRoleName() in ("dialog", "alert") for label in self.find_all(node, "label")]

    def xdotool(self, *args):
        result = subprocess.run(["xdotool", *args], capture_output=True, text=True)
        if result.returncode != 0:
            raise JourneyFailed(f"xdotool {' '.join(args)}: {result.stderr}")

    def centre(self, acc):
        box = acc.queryComponent().getExtents(self.at.DESKTOP_COORDS)
        if box.width <= 0 or box.height <= 0:
            raise JourneyFailed(f"'{acc.name}' has no place on the screen")
        return box.x + box.width // 2, box.y + box.height // 2

    def click(self, acc):
        self.xdotool("mousemove", "--sync", *map(str, self.centre(acc)), "click", "1")

    def press(self, root, caption):
        """Clicks the push button `caption` of `root` once it is enabled."""
        button = self.control(root, "push button", caption)
        wait_until(lambda: self.enabled(button), f"the button '{caption}' to be enabled")
        self.click(button)
        return button

    def message(self, text):
        """The message box showing exactly `text`, once it shows."""
        return wait_until(lambda: next((b for b, label in reversed(self.message_labels())
                                        if label.name == text or self.text_of(label) == text), None),
                          f"the message '{text}'")

    def answer(self, text, caption):
        """Answers the message box showing exactly `text` with its button `caption`."""
        self.press(self.message(text), caption)
        wait_until(lambda: text not in [self.text_of(label) for _, label in self.message_labels()],
                   f"the message '{text}' to close")

    def key(self, *keys):
        self.xdotool("key", "--delay", "30", *keys)

    def type(self, text):
        self.xdotool("type", "--delay", "15", text)

    def focus(self, acc):
        self.click(acc)
        wait_until(lambda: self.focused(acc), f"'{acc.name}' to take the focus")

    def replace_text(self, acc, text):
        self.focus(acc)
        self.key("ctrl+a")
        self.type(text)
        wait_until(lambda: self.text_of(acc) == text, f"'{acc.name}' to read '{text}'")

    def menu(self, *path):
        """Opens the main window's menus along `path` and clicks the last item."""
        bar = self.control(self.main_window(), "menu bar")
        self.click(self.control(bar, "menu item", path[0]))
        for caption in path[1:]:
            def item(node):  # an item of the open menu, not the menu bar's own
                return node.getRoleName() in ("menu item", "menu") and node.name == caption \
                    and node.parent.getRoleName() != "menu bar"

            self.click(wait_until(lambda: next(iter(self._matching(self.app(), item)), None),
                                  f"the menu item '{caption}'"))

    def bring_forward(self, frame):
        """Makes the document window `frame` the active one with Ctrl+Tab, as on the keyboard."""
        if len([w for w in frame.parent if w is not None and self.showing(w)]) == 1:
            return frame
        for _ in range(10):
            if self.focused(frame):
                return frame
            self.key("ctrl+Tab")
            try:
                wait_until(lambda: self.focused(frame), f"'{frame.name}' to come forward", timeout=1)
            except JourneyFailed:
                continue
        raise JourneyFailed(f"'{frame.name}' does not come forward")

    def select_tab(self, window, caption, role, name):
        """Clicks the tab `caption` and waits for a control of its page to show."""
        self.click(self.control(window, "page tab", caption))
        return self.control(window, role, name)

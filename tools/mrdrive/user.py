"""Mouse and keyboard of a display, as a user's hands."""

import subprocess

LEFT, MIDDLE, RIGHT, WHEEL_UP, WHEEL_DOWN = 1, 2, 3, 4, 5


class User:
    """Real X input through xdotool. Points are (x, y) in screen pixels.

    The X focus is never moved by hand: that happens behind Wine's back and loses keys. A click activates.
    """

    def __init__(self, display):
        self._display = display

    def _do(self, *words):
        subprocess.run(["xdotool", *map(str, words)], check=True, env={"DISPLAY": self._display, "PATH": "/usr/bin:/bin"},
                       stdin=subprocess.DEVNULL)

    def move(self, point):
        self._do("mousemove", *point)

    def click(self, point, button=LEFT, holding=None):
        """One click; `holding` is a key held down meanwhile, such as "ctrl"."""
        press = ["keydown", holding] if holding else []
        release = ["keyup", holding] if holding else []
        self._do("mousemove", *point, *press, "click", button, *release)

    def double_click(self, point, button=LEFT):
        self._do("mousemove", *point, "click", "--repeat", 2, "--delay", 60, button)

    def press(self, point, button=LEFT):
        self._do("mousemove", *point, "mousedown", button)

    def release(self, point, button=LEFT):
        self._do("mousemove", *point, "mouseup", button)

    def drag(self, start, end, button=LEFT, steps=5):
        """Presses at start, moves in a few steps as a hand does, releases at end."""
        words = ["mousemove", *start, "mousedown", button]
        for step in range(1, steps + 1):
            words += ["mousemove", *(a + (b - a) * step // steps for a, b in zip(start, end))]
        self._do(*words, "mouseup", button)

    def key(self, *chords):
        """Presses keys or chords such as "ctrl+n", "Return", "ctrl+Break"."""
        self._do("key", *chords)

    def type(self, text):
        self._do("type", "--delay", 30, text)

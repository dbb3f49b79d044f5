"""mrrec as a driver sees it."""

import pathlib
import re
import time

from .desktop import wait_for_end, windows_path
from .waiting import TimedOut, wait_until


class Recording:
    """A running `mrrec record`. Entered when the hooks are in place; left with the script written."""

    def __init__(self, wine, program, script, log, *arguments, **environment):
        self.script = pathlib.Path(script)
        self.script.unlink(missing_ok=True)
        self._log = pathlib.Path(log)
        self._output = open(self._log, "wb")
        self._process = wine.start(program, "record", *arguments, "--out", windows_path(script),
                                   output=self._output, **environment)
        self.wait_for_line(r"recording .* \(pid \d+, thread \d+\)")

    def text(self):
        return self._log.read_bytes().decode("cp1252").replace("\r\n", "\n")

    def wait_for_line(self, pattern, after=0):
        """Waits for output that holds the pattern beyond position `after`; returns it and the position behind."""
        def look():
            found = re.compile(pattern).search(self.text(), after)
            if not found and self._process.poll() is not None:
                raise RuntimeError(f"mrrec ended with status {self._process.returncode}:\n{self.text()}")
            return found
        try:
            found = wait_until(look, f"mrrec to print {pattern}")
        except TimedOut as error:
            raise TimedOut(f"{error}; it printed:\n{self.text()}") from None
        return found[0], found.end()

    def position(self):
        """Where the output ends now, for wait_for_line."""
        return len(self.text())

    def follow(self):
        """Waits, as long as it takes, for somebody to end the recording; shows what is recorded meanwhile."""
        shown = 0
        running = True
        while running:
            running = self._process.poll() is None
            text = self.text()
            print(text[shown:], end="", flush=True)
            shown = len(text)
            time.sleep(0.1)

    def wait_for_end(self):
        """The exit status; the recording was stopped by other means."""
        status = wait_for_end(self._process, "the recording")
        self._output.close()
        return status


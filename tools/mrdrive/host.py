"""SampleCad, the sample host, as a driver sees it: places, controls and their rectangles."""

import dataclasses
import pathlib

from .desktop import windows_path, wait_for_end
from .waiting import wait_until


@dataclasses.dataclass(frozen=True)
class Spot:
    """A rectangle of the host's screen, in pixels: a window, a control, or an item of one."""

    place: str   # dialog, view or menu that it belongs to
    name: str    # symbolic id, with [item] for a part of a control
    handle: int
    rect: tuple  # left, top, right, bottom

    @property
    def centre(self):
        left, top, right, bottom = self.rect
        return (left + right) // 2, (top + bottom) // 2

    def at(self, x, y):
        """The screen point x, y pixels right of and below the top left corner."""
        return self.rect[0] + x, self.rect[1] + y


class SampleCad:
    """A running SampleCad. Its ready file says where everything is; it is rewritten whenever the host is idle."""

    def __init__(self, wine, program, folder, *arguments):
        """folder: its current folder, which its file dialogs show first; the ready file stands there too."""
        self._ready_file = pathlib.Path(folder) / "samplecad.ready"
        self._ready_file.unlink(missing_ok=True)
        self._process = wine.start(program, "--ready", windows_path(self._ready_file), *arguments, folder=folder)
        self.wait_for("frame", "window")

    def _read(self):
        """(revision, spots) of the last time that the host was idle."""
        try:
            lines = self._ready_file.read_text(encoding="cp1252").splitlines()
        except OSError:
            lines = []
        if not lines:
            # Not there yet; or the program ended and took the file with it.
            if self._process.poll() is not None:
                raise RuntimeError(f"SampleCad ended with status {self._process.returncode}")
            return 0, []
        spots = []
        for line in lines[1:]:
            place, name, handle, *rect = line.split(" ")
            spots.append(Spot(place, name, int(handle, 16), tuple(map(int, rect))))
        return int(lines[0].split()[1]), spots

    def spots(self):
        return self._read()[1]

    def find(self, place, name):
        """The spot, or None. Where several have the name the first, which is the topmost window's, is meant."""
        return next((spot for spot in self.spots() if (spot.place, spot.name) == (place, name)), None)

    def wait_for(self, place, name):
        return wait_until(lambda: self.find(place, name), f"{name} in {place} of SampleCad")

    def wait_until_gone(self, place, name="window"):
        wait_until(lambda: not self.find(place, name), f"{name} in {place} of SampleCad to go away")

    def end(self):
        """Ends it outright; nothing is saved. Does nothing when it has ended."""
        self._process.kill()
        self._process.wait()

    def wait_for_end(self):
        return wait_for_end(self._process, "SampleCad")

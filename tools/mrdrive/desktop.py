"""A desktop of our own: an X server that shows nothing and a Wine prefix that draws on it."""

import contextlib
import ctypes
import fcntl
import os
import pathlib
import signal
import subprocess

from .waiting import wait_until

ROOT = pathlib.Path(__file__).resolve().parents[2]
PR_SET_PDEATHSIG = 1


def _end_with_parent():
    """In the child: should this process be killed outright, the X server ends too, and with it all that draws."""
    ctypes.CDLL(None).prctl(PR_SET_PDEATHSIG, signal.SIGTERM)


class XServer:
    """An Xvfb on a free display; `display` is its name."""

    def __init__(self, size="1280x960x24"):
        read_end, write_end = os.pipe()
        self._process = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", size, "-nolisten", "tcp", "-noreset"],
            pass_fds=[write_end], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            start_new_session=True, preexec_fn=_end_with_parent)
        os.close(write_end)
        # The server writes its number once it accepts connections; an early end closes the pipe.
        with os.fdopen(read_end) as numbers:
            number = numbers.readline().strip()
        if not number:
            raise RuntimeError("Xvfb did not start")
        self.display = ":" + number

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._process.terminate()
        self._process.wait()


class Wine:
    """A Wine prefix on a display, held by one driver at a time.

    managed: windows are the window manager's, for a user's own desktop; else Wine draws the captions itself.
    """

    def __init__(self, display, managed=False):
        graphics = "managed" if managed else "x11"
        environment = dict(os.environ, DISPLAY=display, MR_WINE_GRAPHICS=graphics)
        # The prefix of a surrounding test run is another one.
        environment.pop("MR_WINEPREFIX", None)
        (ROOT / "build").mkdir(exist_ok=True)
        self._lock = open(ROOT / "build" / f"wine-{graphics}.inuse", "w")
        try:
            fcntl.flock(self._lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except BlockingIOError:
            print("waiting for another demo or test of this checkout to end", flush=True)
            fcntl.flock(self._lock, fcntl.LOCK_EX)
        settings = subprocess.run(
            ["bash", "-c", '. tools/wine-env && mr_make_prefix >&2 && env -0'], cwd=ROOT, env=environment,
            check=True, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True).stdout
        self.environment = dict(entry.split("=", 1) for entry in settings.split("\0") if entry)
        self._programs = []

    def start(self, program, *arguments, output=subprocess.DEVNULL, folder=ROOT, **environment):
        """Starts a Windows program in a folder; `output` is a file, since Wine's services keep a pipe open."""
        process = subprocess.Popen(
            ["wine", str(pathlib.Path(program).resolve()), *map(str, arguments)], cwd=folder,
            env={**self.environment, **environment},
            stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT, start_new_session=True)
        self._programs.append(process)
        return process

    def run(self, program, *arguments, seconds=60):
        """Runs a Windows console program to its end; returns (status, output)."""
        path = ROOT / "build" / "wine-run.output"
        with open(path, "w+b") as output:
            process = self.start(program, *arguments, output=output)
            status = process.wait(seconds)
            output.seek(0)
            return status, output.read().decode("cp1252").replace("\r\n", "\n")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        # Ends every program and service of this prefix and no other.
        subprocess.run(["wineserver", "-k"], env=self.environment, check=False)
        for process in self._programs:
            with contextlib.suppress(subprocess.TimeoutExpired):
                process.wait(10)
        subprocess.run(["wineserver", "-w"], env=self.environment, check=False)
        self._lock.close()


def windows_path(path):
    """The name that a Windows program has for a file of this machine."""
    return "Z:" + str(pathlib.Path(path).resolve()).replace("/", "\\")


def screenshot(display, rect, path):
    """A picture of a part of the screen, taken when it no longer changes: painting lags behind input."""
    left, top, right, bottom = rect
    part = ["-display", display, "-window", "root", "-crop", f"{right - left}x{bottom - top}+{left}+{top}", "+repage"]
    last = []

    def is_still():
        last.append(subprocess.run(["import", *part, "rgb:-"], check=True, stdout=subprocess.PIPE).stdout)
        return last[-2:-1] == last[-1:]

    wait_until(is_still, "the screen to stand still", 10)
    subprocess.run(["import", *part, str(path)], check=True)


def join_pictures(rows, path):
    """One picture of several, row by row, which go away."""
    words = ["-background", "#e8e8e8", "-bordercolor", "#e8e8e8"]
    edge = ["-border", "5"] if sum(map(len, rows)) > 1 else []
    for row in rows:
        words += ["(", *map(str, row), *edge, "+append", ")"]
    subprocess.run(["convert", *words, "-append", str(path)], check=True)
    for row in rows:
        for picture in row:
            picture.unlink()


def has_display(display):
    """Whether an X server answers there."""
    return bool(display) and subprocess.run(["xdpyinfo", "-display", display], stdout=subprocess.DEVNULL,
                                            stderr=subprocess.DEVNULL, check=False).returncode == 0


def wait_for_end(process, what, seconds=30):
    """The status of a program that is expected to end by itself."""
    wait_until(lambda: process.poll() is not None, f"the end of {what}", seconds)
    return process.returncode

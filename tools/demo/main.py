"""The demo: works in SampleCad with the real mouse and keyboard, records it, and checks the script.

Started by ./demo, which sets up and builds. Everything it starts it ends, also on Ctrl+C.
"""

import argparse
import os
import pathlib
import re
import signal
import subprocess
import sys

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))

from mrdrive.desktop import ROOT, Wine, XServer, has_display, screenshot
from mrdrive.host import SampleCad
from mrdrive.recording import Recording
from mrdrive.script import compare, statements, undeclared
from mrdrive.user import User
from mrdrive.waiting import TimedOut

from scenes import SCENES



class Stage:
    """What a step of a scene works with."""

    def __init__(self, display, host, recording, out):
        self.host = host
        self.recording = recording
        self.user = User(display)
        self._display = display
        self._out = out

    def point(self, place, name, at=None):
        """The screen point in the middle of a spot of the host, or counted from its top left corner."""
        spot = self.host.wait_for(place, name)
        return spot.at(*at) if at else spot.centre

    def screenshot(self, name):
        """A picture of SampleCad's frame and what stands in it."""
        screenshot(self._display, self.host.wait_for("frame", "window").rect, self._out / name)


def is_reported(pattern):
    """Whether the recorder reports the statement while it records: the change of focus is found at the end."""
    return not pattern.endswith(re.escape(".SetFocus();"))


def play(stage, scenes):
    """Plays the scenes; returns the patterns of everything that must be in the script."""
    expected = []
    for scene in scenes:
        print(f"\n{scene.title}", flush=True)
        for step in scene.steps:
            position = stage.recording.position()
            what = step.what
            step.do(stage)
            for pattern in filter(is_reported, step.records):
                statement, position = stage.recording.wait_for_line(pattern, position)
                print(f"  {what:36} {statement}", flush=True)
                what = ""
            expected += step.records
    return expected


def start_recording(wine, tree, out):
    """SampleCad and a recorder on it, both as installed."""
    programs = tree / "bin" / "x64"
    host = SampleCad(wine, programs / "SampleCad.exe", out / "samplecad.ready")
    recording = Recording(wine, programs / "mrrec.exe", out / "demo.wsf", out / "mrrec.log",
                          "--process", "SampleCad.exe")
    return host, recording


def finish(recording):
    """Waits for the recorder to end by itself; returns the script."""
    status = recording.wait_for_end()
    if status != 0:
        raise RuntimeError(f"mrrec ended with status {status}:\n{recording.text()}")
    return recording.script.read_bytes().decode("cp1252").replace("\r\n", "\n")


def played(tree, out, scenes):
    """The demo by itself, on a desktop of its own: pointer and keyboard belong to nobody else."""
    with XServer() as server, Wine(server.display) as wine:
        host, recording = start_recording(wine, tree, out)
        stage = Stage(server.display, host, recording, out)
        expected = play(stage, scenes)
        stage.user.key("ctrl+Break")
        script = finish(recording)
    print(f"\n{script}")
    findings = compare(statements(script), expected)
    findings += [f"not declared once: {name}" for name in undeclared(script)]
    for finding in findings:
        print(f"./demo: {finding}", file=sys.stderr)
    return not findings


def interactive(tree, out):
    """The hands are the user's."""
    display = os.environ.get("DISPLAY")
    if not has_display(display):
        raise RuntimeError("--interactive needs a desktop: DISPLAY names no X server that answers")
    with Wine(display, managed=True) as wine:
        _, recording = start_recording(wine, tree, out)
        print("SampleCad is being recorded. Work in it; Ctrl+Break in it, or its end, ends the recording.", flush=True)
        recording.wait_for_user()
        script = finish(recording)
    print(f"\n{script}")
    return True


def main():
    parser = argparse.ArgumentParser(prog="./demo", description=__doc__)
    parser.add_argument("--interactive", action="store_true", help="leave the hands to you, on your desktop")
    parser.add_argument("--tree", type=pathlib.Path, required=True, help="the install tree to run")
    parser.add_argument("--out", type=pathlib.Path, default=ROOT / "out", help="where script and screenshot go")
    options = parser.parse_args()

    # A kill ends what was started just as Ctrl+C does.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    options.out.mkdir(parents=True, exist_ok=True)
    try:
        if options.interactive:
            good = interactive(options.tree, options.out)
        else:
            good = played(options.tree, options.out, SCENES)
    except (RuntimeError, TimedOut, subprocess.SubprocessError) as error:
        print(f"./demo: {error}", file=sys.stderr)
        good = False
    except KeyboardInterrupt:
        print("\n./demo: interrupted", file=sys.stderr)
        return 130
    kept = f"; script and screenshot are in {options.out}" if good else ""
    print(f"\n./demo: {'passed' if good else 'FAILED'}{kept}")
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())

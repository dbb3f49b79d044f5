"""The demo: works in SampleCad with the real mouse and keyboard, records it, and checks the script.

Started by ./demo, which sets up and builds. Everything it starts it ends, also on Ctrl+C.
"""

import argparse
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))

from mrdrive.desktop import ROOT, Wine, XServer, has_display, join_pictures, screenshot
from mrdrive.host import SampleCad
from mrdrive.recording import Recording
from mrdrive.script import chain, compare, statements, undeclared, unnamed
from mrdrive.user import User
from mrdrive.waiting import TimedOut

from scenes import SESSIONS


class Stage:
    """What a step of a scene works with."""

    def __init__(self, display, host, recording, picture):
        self.host = host
        self.recording = recording
        self.user = User(display)
        self._display = display
        self._picture = picture
        self._parts = []

    def point(self, place, name, at=None):
        """The screen point in the middle of a spot of the host, or counted from its top left corner."""
        spot = self.host.wait_for(place, name)
        return spot.at(*at) if at else spot.centre

    def screenshot(self, place):
        """A picture of a window of SampleCad and of what stands in it. Those of one session become one."""
        self._parts.append(self._picture.with_name(f"{self._picture.stem}-{len(self._parts)}.png"))
        screenshot(self._display, self.host.wait_for(place, "window").rect, self._parts[-1])

    def finish_picture(self, in_a_row):
        """The session's picture, with so many parts side by side in each row."""
        parts = iter(self._parts)
        join_pictures([[next(parts) for _ in range(count)] for count in in_a_row], self._picture)


def play(stage, scenes):
    """Plays the scenes; returns the patterns of the statements that must be in the script."""
    expected = []
    for scene in scenes:
        print(f"\n{scene.title}", flush=True)
        for step in scene.steps:
            position = stage.recording.position()
            what = step.what
            step.do(stage)
            for pattern in step.records:
                statement, position = stage.recording.wait_for_line(pattern, position)
                print(f"  {what:40} {statement}", flush=True)
                what = ""
            if what:
                print(f"  {what:40} (not recorded)", flush=True)
            expected += step.records
    return expected


def start_recording(wine, tree, out, name):
    """SampleCad and a recorder on it, both as installed."""
    programs = tree / "bin" / "x64"
    host = SampleCad(wine, programs / "SampleCad.exe", out)
    recording = Recording(wine, programs / "mrrec.exe", out / f"{name}.wsf", out / f"{name}.log",
                          "--process", "SampleCad.exe")
    return host, recording


def finish(recording):
    """Waits for the recorder to end by itself; returns the script."""
    status = recording.wait_for_end()
    if status != 0:
        raise RuntimeError(f"mrrec ended with status {status}:\n{recording.text()}")
    script = recording.script.read_bytes().decode("cp1252").replace("\r\n", "\n")
    print(f"\n{script}", flush=True)
    return script


def play_session(session, display, wine, tree, out):
    """Plays and records one session; returns what is wrong with the script."""
    print(f"\n==== {session.title}", flush=True)
    host, recording = start_recording(wine, tree, out, session.name)
    stage = Stage(display, host, recording, out / f"{session.name}.png")
    expected = play(stage, session.scenes)
    if not session.ends_by_itself:
        stage.user.key("ctrl+Break")
    script = finish(recording)
    host.end()
    stage.finish_picture(session.pictures_in_a_row)
    return check(script, session, expected)


def check(script, session, expected):
    """What is wrong with a script, one text per finding."""
    # All windows of SampleCad belong to its frame, which therefore gets the focus once.
    findings = compare(statements(script), [re.escape("Main_SampleCad().SetFocus();"), *expected])
    findings += [f"not declared once: {name}" for name in undeclared(script)]
    findings += [f"told by a number: {item}" for item in unnamed(script)]
    for name, way in session.ways():
        found = chain(script, name)
        if found != way:
            findings.append(f"{name} is reached by {found or 'nothing'} instead of {way}")
    return findings


def played(sessions, tree, out):
    """The demo by itself, on a desktop of its own: pointer and keyboard belong to nobody else."""
    shutil.copy(pathlib.Path(__file__).with_name("gearbox.scm"), out)
    good = True
    with XServer() as server, Wine(server.display) as wine:
        for session in sessions:
            for finding in play_session(session, server.display, wine, tree, out):
                print(f"./demo: {session.name}: {finding}", file=sys.stderr)
                good = False
    return good


def interactive(tree, out):
    """The hands are the user's."""
    display = os.environ.get("DISPLAY")
    if not has_display(display):
        raise RuntimeError("--interactive needs a desktop: DISPLAY names no X server that answers")
    with Wine(display, managed=True) as wine:
        _, recording = start_recording(wine, tree, out, "interactive")
        print("SampleCad is being recorded. Work in it; Ctrl+Break in it, or its end, ends the recording.", flush=True)
        recording.follow()
        finish(recording)
    return True


def main():
    parser = argparse.ArgumentParser(prog="./demo", description=__doc__)
    parser.add_argument("--interactive", action="store_true", help="leave the hands to you, on your desktop")
    parser.add_argument("--session", choices=[session.name for session in SESSIONS], help="play only this one")
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
            sessions = [session for session in SESSIONS if options.session in (None, session.name)]
            good = played(sessions, options.tree, options.out)
    except (RuntimeError, TimedOut, subprocess.SubprocessError) as error:
        print(f"./demo: {error}", file=sys.stderr)
        good = False
    except KeyboardInterrupt:
        print("\n./demo: interrupted", file=sys.stderr)
        return 130
    kept = f"; scripts and pictures are in {options.out}" if good else ""
    print(f"\n./demo: {'passed' if good else 'FAILED'}{kept}")
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())

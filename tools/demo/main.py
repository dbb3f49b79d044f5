"""The demo: works in SampleCad with the real mouse and keyboard, records it, and checks the script.

Started by ./demo, which sets up and builds. Everything it starts it ends, also on Ctrl+C.
"""

import argparse
import contextlib
import os
import pathlib
import signal
import sys

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))

from mrdrive.desktop import ROOT, Wine, XServer, has_display, screenshot
from mrdrive.host import SampleCad
from mrdrive.recording import Recording, compare, statements
from mrdrive.user import User
from mrdrive.waiting import TimedOut

OUT = ROOT / "out"


class Stage:
    """What a step of a scene works with."""

    def __init__(self, display, host, recording):
        self.display = display
        self.host = host
        self.recording = recording
        self.user = User(display)

    def screenshot(self, name):
        screenshot(self.display, OUT / name)


def play(stage, scenes):
    """Plays the scenes; returns the patterns of everything that must be in the script."""
    expected = []
    for scene in scenes:
        print(f"\n{scene.title}", flush=True)
        for step in scene.steps:
            before = stage.recording.position()
            step.do(stage)
            for pattern in step.records:
                stage.recording.wait_for_line(pattern, before)
            print(f"  {step.what}", flush=True)
            expected += step.records
    return expected

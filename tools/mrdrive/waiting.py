"""Waiting for a condition, never for a time."""

import time


class TimedOut(Exception):
    pass


def wait_until(condition, what, seconds=30.0):
    """The first true answer of condition(). Raises TimedOut, naming `what`, when there is none within the bound.

    The bound is generous: it is only reached when something is broken.
    """
    deadline = time.monotonic() + seconds
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > deadline:
            raise TimedOut(f"waited {seconds:.0f} s for {what}")
        time.sleep(0.02)

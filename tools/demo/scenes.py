"""What the demo does in SampleCad, and what the recorder must make of it.

A scene is a list of steps; a step is something that a user does and the statements that it must leave in the script,
as patterns. Steps that open or close something wait for the host to show it; every step with statements waits until
the recorder has reported the last of them.
"""

import dataclasses
import typing

from mrdrive.user import RIGHT


@dataclasses.dataclass(frozen=True)
class Step:
    what: str                                          # as shown to the reader
    do: typing.Callable                                # takes the Stage
    records: tuple = ()                                # patterns of statements, in order


@dataclasses.dataclass(frozen=True)
class Scene:
    title: str
    steps: tuple

"""A recorded script: its statements, its window functions, and their comparison with what was done."""

import re


class Repeatable(str):
    """A pattern whose statement may stand there once or several times in a row."""


def statements(script):
    """The statements between the script's own marks, without their indentation."""
    body = re.search(r"// Script begin\r?\n(.*?)  // Script end", script, re.S)
    if not body:
        raise ValueError("this is no recorded script")
    return [line.strip() for line in body[1].splitlines() if line.strip()]


def compare(recorded, expected):
    """Compares statements with patterns, in order and as a whole. Returns what is wrong, one text per finding.

    A pattern stands for one statement. A statement that no pattern asks for is a finding too: the recorder has
    recorded something that nobody did.
    """
    findings = []
    position = 0
    for pattern in expected:
        found = next((i for i in range(position, len(recorded)) if re.fullmatch(pattern, recorded[i])), None)
        if found is None:
            findings.append(f"missing: {pattern}")
            continue
        findings += [f"not asked for: {line}" for line in recorded[position:found]]
        position = found + 1
        while isinstance(pattern, Repeatable) and recorded[position:position + 1] == [recorded[found]]:
            position += 1
    return findings + [f"not asked for: {line}" for line in recorded[position:]]


def undeclared(script):
    """The window functions that statements call and the script does not declare, or declares twice."""
    declared = re.findall(r"^function (\w+)\(\)", script, re.M)
    called = {name for line in statements(script) for name in re.findall(r"^(\w+)\(\)\.", line)}
    return sorted(name for name in called if declared.count(name) != 1)


def functions(script):
    """What the window functions return, by their names; each as one line without blanks between the calls."""
    bodies = re.findall(r"^function (\w+)\(\)\r?\n\{\s*return (.*?);\s*\}", script, re.S | re.M)
    return {name: re.sub(r"\.\s*\n\s*", ".", body.replace("\r", "")) for name, body in bodies}


def chain(script, name):
    """The way to a window, from the main window on; "" for a window that the script does not declare.

    Windows that several others lie in are functions of their own; what they return stands in their place.
    """
    declared = functions(script)
    way = declared.get(name, "")
    while True:
        first, rest = re.match(r"(?:(\w+)\(\))?(.*)", way, re.S).groups()
        if first not in declared or declared[first].startswith("macro_player."):
            return way
        way = declared[first] + rest


def unnamed(script):
    """Buttons and items of menus that are told by a number: one that no header names, or a handle."""
    return re.findall(r"GetItemByID\(.*, \d+\)", script)

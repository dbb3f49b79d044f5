"""Drives a host program and the recorder as a user does: X server, Wine, mouse, keyboard.

Used by ./demo and by the end-to-end tests. Everything that is started here is a context manager and is ended by it;
whatever waits, waits for a condition and gives up after a bound.
"""

"""The same fault again and again: what it costs the program, and what it leaves behind in it."""

import os
import pathlib
import time
import typing

from .menu import Menu
from .meter import activity, memory, spent, threads
from .processes import wait_until

# A sanitizer's build says nothing of the memory and the time that the program itself takes.
IS_MEASURABLE = not os.environ.get("KELVANE_SANITIZE")
_WARM_UP = 5  # rounds after which whatever is made once has been made
_ALLOWED_GROWTH = 160  # kB of private dirty memory, whatever the number of rounds


class Holdings(typing.NamedTuple):
    """What a program has taken of the computer."""

    dirty: int  # kB
    descriptors: list  # of what kinds, sorted
    threads: int


def say(fault, count):
    """One line for scripts that list what was tried, and how often."""
    # The test runner has left its line unfinished.
    print(f"\nfault {fault} count {count}", flush=True)


def settled(pid):
    """What the program holds once none of its threads has run for half a second."""
    last, since = activity(pid), time.monotonic()

    def when_idle():
        nonlocal last, since
        if time.monotonic() - since >= 0.5:
            held = _holdings(pid)
            if activity(pid) == last:
                return held
        now = activity(pid)
        if now != last:
            last, since = now, time.monotonic()
        return None

    return wait_until(when_idle, "the program to be idle", interval=0.05)


def wait_for_line(item, line, what, seconds=15.0):
    """Waits until the item's menu has that line and gives all its lines."""

    def has_it():
        labels = Menu.of(item).labels()
        return labels if line in labels else None

    return wait_until(
        has_it, lambda: f"“{line}” after {what}: {Menu.of(item).labels()}", seconds)


def _holdings(pid):
    kinds = []
    for link in pathlib.Path(f"/proc/{pid}/fd").iterdir():
        try:
            kinds.append(os.readlink(link).rstrip("]0123456789"))
        except FileNotFoundError:
            kinds.append("closed in this moment")
    return Holdings(memory(pid).dirty, sorted(kinds), threads(pid))


def outlives(test, kelvane, fault, count, once, milliseconds):
    """Runs `once(number)` so often; then the program must hold no more than before, and be idle.

    `milliseconds` are what one round may take of the processor's time.
    """
    pid = kelvane.process.pid
    for number in range(_WARM_UP):
        once(number)
    before, done_before = settled(pid), activity(pid)
    for number in range(_WARM_UP, count):
        once(number)
    after, cost = settled(pid), spent(done_before, activity(pid))
    each = cost.milliseconds / (count - _WARM_UP)
    told = [f"{state.dirty} kB, {len(state.descriptors)} descriptors" for state in (before, after)]
    print(f"{fault}: {told[0]} before, {told[1]} after, {each:.1f} ms each")
    test.assertEqual(after.descriptors, before.descriptors)
    test.assertLessEqual(after.threads, before.threads)  # those of the start end by themselves
    if IS_MEASURABLE:
        test.assertLessEqual(after.dirty - before.dirty, _ALLOWED_GROWTH)
        test.assertLess(each, milliseconds)
    say(fault, count)

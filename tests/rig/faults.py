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


def holdings(pid):
    links = pathlib.Path(f"/proc/{pid}/fd").iterdir()
    kinds = sorted(os.readlink(link).rstrip("]0123456789") for link in links)
    return Holdings(memory(pid).dirty, kinds, threads(pid))


def say(fault, count):
    """One line for scripts that list what was tried, and how often."""
    print(f"fault {fault} count {count}", flush=True)


def wait_until_idle(pid):
    """Waits until for half a second none of the program's threads has run."""
    last, since = activity(pid), time.monotonic()

    def is_idle():
        nonlocal last, since
        now = activity(pid)
        if now != last:
            last, since = now, time.monotonic()
        return time.monotonic() - since >= 0.5

    wait_until(is_idle, "the program to be idle", interval=0.05)


def wait_for_line(item, line, what, seconds=15.0):
    """Waits until the item's menu has that line and gives all its lines."""

    def has_it():
        labels = Menu.of(item).labels()
        return labels if line in labels else None

    return wait_until(
        has_it, lambda: f"“{line}” after {what}: {Menu.of(item).labels()}", seconds)


def outlives(test, kelvane, fault, count, once, milliseconds):
    """Runs `once(number)` so often; then the program must hold no more than before, and be idle.

    `milliseconds` are what one round may take of the processor's time.
    """
    pid = kelvane.process.pid
    for number in range(_WARM_UP):
        once(number)
    wait_until_idle(pid)
    before, done_before = holdings(pid), activity(pid)
    for number in range(_WARM_UP, count):
        once(number)
    wait_until_idle(pid)
    after, cost = holdings(pid), spent(done_before, activity(pid))
    each = cost.milliseconds / (count - _WARM_UP)
    told = [f"{state.dirty} kB, {len(state.descriptors)} descriptors" for state in (before, after)]
    print(f"{fault}: {told[0]} before, {told[1]} after, {each:.1f} ms each")
    test.assertEqual(after.descriptors, before.descriptors)
    test.assertLessEqual(after.threads, before.threads)  # those of the start end by themselves
    if IS_MEASURABLE:
        test.assertLessEqual(after.dirty - before.dirty, _ALLOWED_GROWTH)
        test.assertLess(each, milliseconds)
    say(fault, count)

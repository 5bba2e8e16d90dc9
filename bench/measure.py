"""Measures one program on a running desk."""

import dataclasses
import statistics
import time

from rig import meter
from rig.processes import Processes

PAUSE = 0.15  # seconds after a battery change, for all it sets off


@dataclasses.dataclass
class Row:
    name: str
    # ms from exec to the tray, the median; None when it does not come there. It comes by a call of
    # RegisterStatusNotifierItem or, where it has the older kind of icon, by a window in the tray.
    start: float | None = None
    # All below is None when the program ended by itself.
    memory: meter.Memory | None = None
    threads: int | None = None
    idle: meter.Activity | None = None
    idle_signals: int | None = None  # signals it sent on the session bus while idle
    event_cpu: float | None = None  # ms of processor time per battery change; none if it polls


def measure(program, power, desk, options):
    row = Row(program.name)
    directory = desk.directory / "bench" / program.name
    environment = {
        **(desk.mock_environment if program.reads_sys else desk.environment),
        **program.variables,
        "XDG_CONFIG_HOME": str(directory / "config"),
    }
    for name, contents in program.configuration.items():
        file = directory / "config" / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(contents)
    power.reset()
    with Processes(directory) as processes:
        for number, command in enumerate(program.preparation):
            processes.start(f"preparation-{number}", command, desk.environment).wait(10)

        def start():
            return processes.start(program.name, program.command, environment)

        def stop():
            processes.stop(program.name)

        row.start = _start(start, stop, desk, options.runs)
        child = start()
        time.sleep(options.settle)
        if child.poll() is None:
            row.memory = meter.memory(child.pid)
            row.threads = meter.threads(child.pid)
            row.idle, row.idle_signals = _idle(child.pid, desk, options.idle)
            if not program.reads_sys:  # such a one polls, and hears of no event
                row.event_cpu = _event_cpu(child.pid, power, options.events)
    return row


def _start(start, stop, desk, runs):
    """The median of several starts; one start shows whether the program comes to the tray at all."""
    times = []
    with (
        meter.Registrations(desk.environment["DBUS_SESSION_BUS_ADDRESS"]) as registrations,
        meter.Embeddings(desk.display) as embeddings,
    ):
        for _ in range(runs):
            known = len(registrations.times)
            icons = embeddings, len(embeddings.times)
            began = time.monotonic()
            start()
            came = registrations.wait_for_next(known, 4, icons)
            time.sleep(0.3)
            stop()
            if came is None:
                return None
            times.append(1000 * (came - began))
    return statistics.median(times)


def _idle(pid, desk, seconds):
    """What the program did, and how many signals it sent, while nothing visible changed."""
    signals = desk.bus.record()
    before = meter.activity(pid)
    time.sleep(seconds)
    spent = meter.spent(before, meter.activity(pid))
    senders = {name for name in desk.bus.names() if desk.bus.process_of(name) == pid}
    sent = signals.signals(lambda signal: signal.sender in senders)
    return spent, len(sent)


def _event_cpu(pid, power, events):
    before = meter.activity(pid)
    for number in range(events):
        power.set(f"capacity={40 + number % 2}")
        time.sleep(PAUSE)
    return meter.spent(before, meter.activity(pid)).milliseconds / max(events, 1)

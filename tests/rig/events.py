"""Battery events by the thousand against a running kelvane, each seen in the tray."""

import contextlib

from .fake_upower import FakeUPower
from .power import Power
from .supplies import SupplyDirectory


class EventSource:
    """A battery that changes as fast as the item follows; `directory` is for its fake supplies."""

    def __init__(self, directory):
        self._directory = directory
        self._stack = contextlib.ExitStack()
        self._count = 0

    def __enter__(self):
        self.power = self._stack.enter_context(Power(self._directory, upower=False))
        self._upower = self._stack.enter_context(FakeUPower(self.power.address))
        self.tree = SupplyDirectory(self._directory / "power_supply")
        return self

    def __exit__(self, *_):
        self._stack.close()

    def send(self, count, item, seconds=5.0):
        """Sends so many events, each once the last is drawn: levels, every tenth the adapter."""
        said = item.record()
        for _ in range(count):
            said.clear()
            self._next()
            said.wait_for("NewIcon", seconds)

    def flood(self, count, last):
        """Sends so many levels as fast as the bus takes them, the last one `last` per cent."""
        for _ in range(count - 1):
            self._count += 1
            self._upower.level(self._level())
        self._upower.level(last)

    def _next(self):
        self._count += 1
        if self._count % 10 == 0:
            on = self._count % 20 == 10
            (self.tree.plug if on else self.tree.unplug)()
            self._upower.plug(on)
        else:
            level = self._level()
            self.tree.set(f"capacity={level}")
            self._upower.level(level)

    def _level(self):
        return 30 + self._count * 7 % 60
